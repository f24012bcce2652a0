// Gives a node the geometry that it instances, dressed in its materials.
#pragma once

#include "qdscenegraph/node/CSGNode.h"
#include "qdsgloader_collada/CColladaIgnored.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

#include <vector>

class CColladaGeometrySet;
class CColladaSkeletons;
class CColladaSkinSet;
class CSGLoaderCollada;

class CColladaNodeGeometry
{
  public:
    // All must outlive it.
    CColladaNodeGeometry(CSGLoaderCollada& rLoader, CColladaSkeletons& rSkeletons, CColladaIgnored& rIgnored)
        : m_rLoader(rLoader),
          m_rSkeletons(rSkeletons),
          m_rIgnored(rIgnored)
    {}

    // The one geometry of a node goes onto the node; of several each gets a child node named "node/geometry".
    // Either is divided by materials, see CColladaGeometrySet. Controllers count as the geometry they start
    // from; their skins come with it. An instance of what is not there is left out (reported). False
    // (reported) when a geometry cannot be converted.
    bool Load(ColladaDOM141::domNode& rNode, CSGNode& rSGNode);

  private:
    struct CInstance
    {
        CColladaGeometrySet* pSet;
        ColladaDOM141::domGeometry* pGeometry;
        const ColladaDOM141::domBind_material* pBindMaterial;       // null for none
        ColladaDOM141::domInstance_controller* pInstance = nullptr; // null for none
        const CColladaSkinSet* pSkins = nullptr;                    // null for none
    };

    bool AddController(ColladaDOM141::domInstance_controller& rInstance);
    template <class INSTANCE>
    bool AddInstance(INSTANCE& rInstance, ColladaDOM141::domGeometry* pGeometry);
    bool AddToNode(const CInstance& rInstance, CSGNode& rSGNode);
    bool AddGeometryToNode(const CInstance& rInstance, CSGNode& rSGNode);

    CSGLoaderCollada& m_rLoader;
    CColladaSkeletons& m_rSkeletons;
    CColladaIgnored& m_rIgnored;
    std::vector<CInstance> m_vecInstances;
};
