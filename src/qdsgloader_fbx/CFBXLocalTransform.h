// The chain of transforms by which an FBX node lies in its parent.
#pragma once

#include "fbxsdk/fbxsdk.h"
#include "qdscenegraph/transform/CSGXFrm_List.h"

#include <vector>

// From what is applied last to what is applied first, as the SDK's documentation has it:
//
//     T * Roff * Rp * Rpre * R * Rpost^-1 * Rp^-1 * Soff * Sp * S * Sp^-1
//
// T, R and S are transforms of their own, which animations find by their names; what stands between them is
// folded into matrices, which are left out where they are the identity.
class CFBXLocalTransform
{
  public:
    static constexpr const char* TRANSLATE_NAME = "translate";
    static constexpr const char* ROTATE_NAME = "rotate"; // as a quaternion
    static constexpr const char* ROTATE_AXIS_NAMES[3] = {"rotateX", "rotateY", "rotateZ"};
    static constexpr const char* SCALE_NAME = "scale";
    // A matrix before Rpre (FbxNode::GetInheritMatrix), in nodes that HasInheritTransform.
    static constexpr const char* INHERIT_NAME = "inherit";

    // The node must outlive it.
    CFBXLocalTransform(const FbxNode& rNode, bool bQuaternion) : m_rNode(rNode), m_bQuaternion(bQuaternion) {}

    // At rest; null (reported) on failure.
    CSGTransform::CTransformPtr CreateTransform();

    // Whether the node takes over the scale of its parents in a way of its own, and one of them is or may be
    // scaled.
    static bool HasInheritTransform(const FbxNode& rNode);

    static CTransform3 ToTransform3(const FbxAMatrix& rMatrix);
    static CSGFloat3 ToFloat3(const FbxDouble3& rVector);

  private:
    // False (reported) for null.
    bool Append(const CSGTransform::CTransformPtr& spTransform, const char* szName = "");
    bool AppendMatrix(const FbxAMatrix& rMatrix);
    bool AppendQuatRotationTransform();
    bool AppendRotationTransforms();

    const FbxNode& m_rNode;
    bool m_bQuaternion;
    std::vector<CSGTransform::CTransformPtr> m_vecTransforms;
};
