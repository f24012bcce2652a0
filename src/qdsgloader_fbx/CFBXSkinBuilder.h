// Makes the meshes of FBX skins follow their joints.
#pragma once

#include "qdscenegraph/skin/CSGSkin.h"
#include "qdsgloader_fbx/CFBXGeometryBuilder.h"

#include <unordered_map>

class CSGNode;
class FbxAMatrix;
class FbxCluster;
class FbxMesh;
class FbxNode;
class FbxScene;

// One for a scene graph. The bind shape of a skin is the geometric transform of the mesh's FBX node, the
// space it was bound in that node's. Each cluster with a link is a joint, with the local name of the node
// that was made of the link, and bound to it. Points, or parts of their weights, that no cluster moves follow
// the node of the mesh itself: it is the last joint of a skin that has such.
class CFBXSkinBuilder
{
  public:
    using CNodeMap = std::unordered_map<const FbxNode*, CSGNode*>;

    // The nodes of the whole scene graph; borrowed.
    explicit CFBXSkinBuilder(const CNodeMap& rNodes) : m_rNodes(rNodes) {}

    // Gives a node that shows a piece of a mesh on an FBX node a binding of the mesh's skins; all of them
    // count as one. Nothing happens when it has none, or none that moves anything, and (reported) when it
    // cannot be used. False (reported) without memory. Pieces of one mesh best come one after the other.
    bool AddSkin(CSGNode& rSGNode, const FbxNode& rFBXNode, const FbxMesh& rMesh,
                 const CFBXGeometryBuilder::CPiece& rPiece);

  private:
    struct CJoint
    {
        CSGSkin::CJointPtr m_spJoint;
        CSGNode* m_pNode;
    };
    using CClusters = std::vector<const FbxCluster*>;

    bool LoadMesh(const FbxNode& rFBXNode, const FbxMesh& rMesh);
    // All of the mesh's skins that have a link; the deformers that are not read are reported.
    CClusters FindClusters(const FbxNode& rFBXNode, const FbxMesh& rMesh) const;
    bool AddJoint(CSGNode& rNode, const FbxAMatrix& rInverseBind);
    bool LoadWeights(const FbxNode& rFBXNode, const CClusters& rClusters, size_t nNumPoints);
    // From the space of the mesh's node to that of the cluster's link when they were bound. What the cluster
    // does not say comes from the bind poses, else from how the nodes stand at rest.
    FbxAMatrix GetInverseBind(const FbxNode& rFBXNode, const FbxCluster& rCluster);
    FbxAMatrix GetGlobalTransformAtBind(const FbxNode& rFBXNode);

    const CNodeMap& m_rNodes;
    size_t m_nNumJoints = 0; // of all skins that were made
    const FbxScene* m_pPoseScene = nullptr;
    std::unordered_map<const FbxNode*, const FbxAMatrix*> m_mapBindPose; // of m_pPoseScene

    // Of the mesh that was asked for last:
    const FbxNode* m_pFBXNode = nullptr;
    const FbxMesh* m_pMesh = nullptr;
    std::vector<CJoint> m_vecJoints; // the mesh's own node comes last; none at all: no skin
    CTransform3 m_objBindShape;
    boost::intrusive_ptr<CSGSkinVertexWeights> m_spWeights; // of its control points
};
