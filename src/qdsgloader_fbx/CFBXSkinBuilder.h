// Makes the meshes of FBX skins follow their joints.
#pragma once

#include "qdscenegraph/skin/CSGSkin.h"
#include "qdsgloader_fbx/CFBXGeometryBuilder.h"

#include <unordered_map>
#include <unordered_set>

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

    // The nodes of the whole scene graph; borrowed. Pieces and meshes must outlive the builder.
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

    // What all nodes with a mesh have of its skins.
    struct CMeshSkin
    {
        CClusters m_vecClusters;
        boost::intrusive_ptr<CSGSkinVertexWeights> m_spWeights; // of the control points; null: no skin
        // Of the vertices of the pieces.
        std::unordered_map<const CFBXGeometryBuilder::CPiece*, boost::intrusive_ptr<CSGSkinVertexWeights>>
            m_mapPieces;
    };

    CMeshSkin& GetMeshSkin(const FbxNode& rFBXNode, const FbxMesh& rMesh);
    // Makes the joints for a node with the mesh. False (reported) on failure.
    bool LoadJoints(const FbxNode& rFBXNode, const FbxMesh& rMesh, const CMeshSkin& rSkin);
    // All of the mesh's skins that have a link; the deformers that are not read are reported. None (reported)
    // when they are too many.
    CClusters FindClusters(const FbxNode& rFBXNode, const FbxMesh& rMesh);
    bool AddJoint(CSGNode& rNode, const FbxAMatrix& rInverseBind);
    // Null (reported) when they cannot be made, and when no point follows a cluster.
    static boost::intrusive_ptr<CSGSkinVertexWeights> LoadWeights(const FbxNode& rFBXNode,
                                                                  const CClusters& rClusters,
                                                                  size_t nNumPoints);
    // From the space of the mesh's node to that of the cluster's link when they were bound. What the cluster
    // does not say comes from the bind poses, else from how the nodes stand at rest.
    FbxAMatrix GetInverseBind(const FbxNode& rFBXNode, const FbxCluster& rCluster);
    FbxAMatrix GetGlobalTransformAtBind(const FbxNode& rFBXNode);

    const CNodeMap& m_rNodes;
    size_t m_nNumJoints = 0;  // of all skins, without the first of each mesh
    size_t m_nNumWeights = 0; // that all meshes have asked for
    std::unordered_map<const FbxMesh*, CMeshSkin> m_mapSkins;
    std::unordered_set<const FbxCluster*> m_setUnlinked; // those that were reported
    const FbxScene* m_pPoseScene = nullptr;
    std::unordered_map<const FbxNode*, const FbxAMatrix*> m_mapBindPose; // of m_pPoseScene

    // Of the node and the mesh that were asked for last:
    const FbxNode* m_pFBXNode = nullptr;
    const FbxMesh* m_pMesh = nullptr;
    std::vector<CJoint> m_vecJoints; // the mesh's own node comes last
};
