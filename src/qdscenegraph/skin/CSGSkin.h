// What makes the vertices of a mesh follow the joints of a skeleton.
#pragma once

#include "qdscenegraph/skin/CSGJoint.h"
#include "qdscenegraph/skin/CSGSkinVertexWeights.h"

#include <string_view>
#include <unordered_map>
#include <vector>

// Joints, and the weights of the vertices over them; does not know which nodes the joints follow: that is a
// CSGSkinBinding's. Does not change once it is made, so that all copies of a character share it.
class CSGSkin final : public SGStreamableInterface<CSGSkin>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGSkin";
    using CJointPtr = boost::intrusive_ptr<CSGJoint>;

    // Null (reported) when a joint is null, when there are more than CSGSkinVertexWeights::MAX_JOINTS, and
    // when a weight names a joint that is not there.
    static boost::intrusive_ptr<CSGSkin> Create(const CTransform3& rBindShape,
                                                std::span<const CJointPtr> arrJoints,
                                                const boost::intrusive_ptr<CSGSkinVertexWeights>& spWeights);

    // The skin with those of its joints alone that a vertex follows, in their order. Joint n of the result
    // was joint rvecKept[n].
    boost::intrusive_ptr<CSGSkin> CreateWithoutUnusedJoints(std::vector<int32_t>& rvecKept) const;

    // From the space of the mesh to the space in which the skin was bound.
    const CTransform3& GetBindShapeTransform() const { return m_objBindShape; }
    int32_t GetNumJoints() const { return static_cast<int32_t>(m_vecJoints.size()); }
    // Null for a joint that is not there.
    CSGJoint* GetJoint(int32_t nJoint) const;
    // The first joint of the local name, -1 when there is none.
    int32_t FindJoint(const CQDCompactString& rLocalName) const;
    // Never null in a skin that was created or loaded.
    const CSGSkinVertexWeights* GetWeights() const { return m_spWeights.get(); }
    int32_t GetMaxJointsPerVertex() const { return m_spWeights->GetMaxJointsPerVertex(); }

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    // Below 0, so that a joint's cookie is its index.
    enum ECookie : int32_t
    {
        COOKIE_WEIGHTS = -1
    };

    // Whether joints and weights are there and fit together, reported where not; makes the index of names.
    bool Complete();

    CTransform3 m_objBindShape;
    std::vector<CJointPtr> m_vecJoints;
    boost::intrusive_ptr<CSGSkinVertexWeights> m_spWeights;
    std::unordered_map<std::string_view, int32_t> m_mapJoints; // by local name; the joints hold the texts
};
