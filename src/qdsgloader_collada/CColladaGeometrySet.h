// The geometry made of one COLLADA geometry: one piece per primitive element.
#pragma once

#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdsgloader_collada/CColladaGeometry.h"

#include <map>
#include <vector>

class CColladaBindMaterial;
class CColladaInstanceMaterial;
class CSGNode;

// Nodes that show the same pieces share one geometry.
class CColladaGeometrySet : public CRefObject
{
  public:
    using CGeometryPtr = boost::intrusive_ptr<CColladaGeometry>;

    // False (reported) for null.
    bool AddGeometry(const CGeometryPtr& spGeometry);
    int32_t GetNumGeometries() const { return static_cast<int32_t>(m_vecGeometries.size()); }
    // Null (reported) for an index outside the set.
    CColladaGeometry* GetGeometry(int32_t nIndex) const;

    // Gives the node all pieces, whatever their materials, and their bounds. False (reported) on failure.
    bool BindToAllMaterials(CSGNode& rNode);
    // The same with the materials that the pieces' symbols stand for. When that is one for all, it goes onto
    // the node; otherwise the pieces of each symbol go onto a child named "node/material", in the order of
    // the materials. All pieces whose symbol stands for nothing go onto one last child without material,
    // named by the first one's symbol; the number of those that have a symbol is added to rnNumUnbound.
    bool BindToMaterials(CSGNode& rNode, const CColladaBindMaterial& rBindMaterial, size_t& rnNumUnbound);

  private:
    using CPieces = std::vector<int32_t>; // indices
    struct CGroup
    {
        CPieces vecPieces;
        const CColladaInstanceMaterial* pMaterial; // null: no symbol of theirs is bound
    };

    std::vector<CGroup> GroupByMaterial(const CColladaBindMaterial& rBindMaterial) const;
    const CQDString& GetSymbol(int32_t nPiece) const;
    // The geometry of some pieces; null (reported) on failure.
    boost::intrusive_ptr<CSGData_Geometry> GetData(const CPieces& rvecPieces);
    bool AddToNode(CSGNode& rNode, const CPieces& rvecPieces);
    static bool AddMaterial(CSGNode& rNode, const CColladaInstanceMaterial& rMaterial);
    bool AddChild(CSGNode& rNode, const CGroup& rGroup);

    std::vector<CGeometryPtr> m_vecGeometries;
    std::map<CQDString, CPieces> m_mapPiecesOfSymbol;
    std::map<CPieces, boost::intrusive_ptr<CSGData_Geometry>> m_mapData; // made on first use
};
