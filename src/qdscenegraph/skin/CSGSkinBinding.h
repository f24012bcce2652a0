// A skin on geometry, bound to the nodes of a skeleton: what deforms the vertices.
#pragma once

#include "qdscenegraph/geometry/CSGGeomBinding.h"
#include "qdscenegraph/skin/CSGJointBinding.h"
#include "qdscenegraph/skin/CSGSkin.h"

class CSGSkinBinding final : public SGStreamableInterface<CSGSkinBinding>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGSkinBinding";

    // With no joint bound. Null (reported) when either is missing, and when the skin has not one row of
    // weights for each vertex of the geometry.
    static boost::intrusive_ptr<CSGSkinBinding> Create(const boost::intrusive_ptr<CSGSkin>& spSkin,
                                                       const boost::intrusive_ptr<CSGGeomBinding>& spGeom);
    // The same skin and geometry, bound to the same nodes.
    boost::intrusive_ptr<CSGSkinBinding> CreateCopy() const;
    // The same, of the skin without the joints that no vertex follows.
    boost::intrusive_ptr<CSGSkinBinding> CreateWithoutUnusedJoints() const;

    // Neither is null in a binding that was created or loaded.
    CSGSkin* GetSkin() const { return m_spSkin.get(); }
    CSGGeomBinding* GetGeomBinding() const { return m_spGeomBinding.get(); }

    // Binds every joint that has a name and is not bound yet to the first node of its local name in the trees
    // of the roots, in order, each root included: one walk. Returns how many such joints are left; nothing is
    // logged.
    int32_t BindFoundJoints(std::span<CSGNode* const> arrSkeletonRoots);
    // The same; false when joints are left, with a line for each.
    bool BindJoints(std::span<CSGNode* const> arrSkeletonRoots);

    int32_t GetNumJoints() const { return static_cast<int32_t>(m_vecJoints.size()); }
    // Null for a joint that is not bound or not there.
    boost::intrusive_ptr<CSGNode> GetJointNode(int32_t nJoint) const;
    // Null unbinds the joint. False (reported) for a joint that is not there.
    bool SetJointNode(int32_t nJoint, CSGNode* pNode);
    // Unbinds every joint that follows the node.
    void UnbindNode(const CSGNode* pNode);
    // Joints that follow a node which was copied follow its copy from now on.
    void RebindToCopies(const CSGCopyData& rCopyData);

    // What the pose does to the vertices: a transform for each joint, the bind shape, then the inverse bind,
    // then the world transform of the joint's node; the bind shape alone for a joint that is not bound. One
    // more stands at the end, for vertices that follow no joint.
    bool ComputePalette(std::vector<CTransform3>& rvecPalette) const;
    // Linear blend of the positions over the current pose: x, y, z of each vertex, in the space of the root
    // above the joints (v' = sum of w * (v * palette), row vectors). False when the geometry has no
    // positions.
    bool ComputeSkinnedVertices(std::vector<float>& rvecPositions) const;
    // The normals too: by the inverse transpose of the blended map, of length 1 (0 where the pose flattens
    // them). Empty when the geometry has none. Of both the lowest set is taken.
    bool ComputeSkinnedVertices(std::vector<float>& rvecPositions, std::vector<float>& rvecNormals) const;
    // The positions by a palette of one's own. False (reported) unless the palette is as long as
    // ComputePalette's and there are three floats for each vertex.
    bool SkinPositions(std::span<const CTransform3> arrPalette, std::span<float> arrPositions) const;

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    // Those of the skin and the geometry are below 0, so that a joint's cookie is its index.
    enum ECookie : int32_t
    {
        COOKIE_SKIN = -2,
        COOKIE_GEOM_BINDING = -1
    };

    void SetNumJoints(int32_t nJoints);
    // Skin and geometry are there and fit together; reported where not.
    bool Verify() const;

    boost::intrusive_ptr<CSGSkin> m_spSkin;
    boost::intrusive_ptr<CSGGeomBinding> m_spGeomBinding;
    std::vector<CSGJointBinding> m_vecJoints; // one for each joint of the skin, in order
};
