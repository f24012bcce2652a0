// What a <skin> says: its joints, and how the vertices of the mesh follow them.
#pragma once

#include "qdcommon/CPointerMap.h"
#include "qdscenegraph/skin/CSGSkin.h"
#include "qdsgloader_collada/CDeindexedVertexBuffer.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

class CColladaDataSourceCache;
class CColladaJointNames;

class CColladaSkinData
{
  public:
    // The id names the skin in messages. All must outlive it.
    CColladaSkinData(const char* szID, CColladaDataSourceCache& rDataSources,
                     const CColladaJointNames& rJointNames)
        : m_szID(szID),
          m_rDataSources(rDataSources),
          m_rJointNames(rJointNames)
    {}

    // False (reported) when the skin cannot be used. The joint index -1, which stands for the bind shape, is
    // a joint without a name, which comes last; a vertex without weights follows no joint.
    bool Load(const ColladaDOM141::domSkin& rSkin);
    // The skin over the vertices that were made of the mesh's; null (reported) on failure.
    boost::intrusive_ptr<CSGSkin> CreateSkin(const CDeindexedVertexBuffer& rVertexBuffer);

  private:
    using CNames = std::vector<CQDCompactString>; // local names of nodes
    struct CWeightInputs;

    bool LoadJoints(const ColladaDOM141::domSkin& rSkin);
    // The first input of a semantic; null (reported) when there is none.
    template <class INPUT, class INPUTS>
    const INPUT* FindInput(const INPUTS& rInputs, const char* szSemantic, const char* szParent) const;
    bool LoadNames(ColladaDOM141::domSource& rSource, CNames& rvecNames);
    bool LoadWeightInputs(const ColladaDOM141::domSkin& rSkin, CWeightInputs& rInputs);
    bool LoadWeights(const CWeightInputs& rInputs);
    // One pair of the <v>.
    bool LoadWeight(const CWeightInputs& rInputs, size_t nPosition, int32_t nVertex, CSGSkinWeight& rWeight);
    bool SetBindShapeJoint();

    const char* m_szID;
    CColladaDataSourceCache& m_rDataSources;
    const CColladaJointNames& m_rJointNames;
    CTransform3 m_objBindShape;
    const ColladaDOM141::domSource* m_pNames = nullptr; // of the joints
    CNames m_vecNames;                                  // in it
    std::vector<CSGSkin::CJointPtr> m_vecJoints;
    CPointerMap<int32_t> m_mapJoints; // by the characters of their names, which the joints hold
    int32_t m_nBindShapeJoint = -1;
    boost::intrusive_ptr<CSGSkinVertexWeights> m_spWeights; // of the vertices of the mesh
};
