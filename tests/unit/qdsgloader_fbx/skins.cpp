// Skins: where the vertices stand that follow clusters, whatever is missing of these.
#include "qdscenegraph/skin/CSGData_SkinBindingSet.h"
#include "qdsgloader_fbx/CFBXTestGraph.h"

#include <gtest/gtest.h>
#include <sstream>

namespace
{

using CEdits = std::vector<std::pair<std::string, std::string>>; // what is there, what stands in its place

// A triangle on a node that was bound at (10, 0, 0) and stands at (20, 0, 0) now; its geometric transform
// moves it up by 1. Joint A was bound at the origin and has moved by (0, 0, 5) since, B at (0, 2, 0), where
// it is still. Point 0 (1, 0, 0) follows A by a half, point 1 (2, 0, 0) A by 1 and B by 3, point 2 (3, 0, 0)
// nothing.
const std::string OBJECTS = R"(
    Model: 1, "Model::Body", "Mesh" { Properties70: {
        P: "Lcl Translation", "Lcl Translation", "", "A",20,0,0
        P: "GeometricTranslation", "Vector3D", "Vector", "",0,1,0 } }
    Model: 2, "Model::A", "LimbNode" { Properties70: {
        P: "Lcl Translation", "Lcl Translation", "", "A",0,0,5 } }
    Model: 3, "Model::B", "LimbNode" { Properties70: {
        P: "Lcl Translation", "Lcl Translation", "", "A",0,2,0 } }
    Geometry: 4, "Geometry::Mesh", "Mesh" {
        Vertices: *9 { a: 1,0,0,2,0,0,3,0,0 }
        PolygonVertexIndex: *3 { a: 0,1,-3 } }
    Deformer: 5, "Deformer::Skin", "Skin" { SkinningType: "Linear" }
    Deformer: 6, "SubDeformer::ClusterA", "Cluster" { Mode: "Normalize"
        Indexes: *2 { a: 0,1 }
        Weights: *2 { a: 0.5,1 }
        Transform: *16 { a: 1,0,0,0,0,1,0,0,0,0,1,0,10,0,0,1 }
        TransformLink: *16 { a: 1,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1 } }
    Deformer: 7, "SubDeformer::ClusterB", "Cluster" { Mode: "Normalize"
        Indexes: *1 { a: 1 }
        Weights: *1 { a: 3 }
        Transform: *16 { a: 1,0,0,0,0,1,0,0,0,0,1,0,10,-2,0,1 }
        TransformLink: *16 { a: 1,0,0,0,0,1,0,0,0,0,1,0,0,2,0,1 } }
    Pose: 8, "Pose::Bind", "BindPose" { Type: "BindPose"
        PoseNode: { Node: 99
            Matrix: *16 { a: 1,0,0,0,0,1,0,0,0,0,1,0,7,0,0,1 } }
        PoseNode: { Node: 1
            Matrix: *16 { a: 1,0,0,0,0,1,0,0,0,0,1,0,10,0,0,1 } } }
)";
const std::string CONNECTIONS = Connect({"1,0", "2,0", "3,0", "4,1", "5,4", "6,5", "7,5", "2,6", "3,7"});

std::string Edit(std::string strText, const CEdits& rEdits)
{
    for (const auto& [strOld, strNew] : rEdits)
    {
        size_t nBegin = strText.find(strOld);
        for (; nBegin != std::string::npos; nBegin = strText.find(strOld, nBegin + strNew.size()))
        {
            strText.replace(nBegin, strOld.size(), strNew);
        }
    }
    return strText;
}

// "A B Body: 11 1 5, 12 1 1.25, 23 1 0": the nodes of the joints, and the three vertices.
std::string DescribeSkin(const CFBXTestGraph& rGraph)
{
    const CSGNode* pNode = rGraph.Find("Body/default");
    const auto* pBindings = pNode != nullptr ? pNode->FindData<CSGData_SkinBindingSet>() : nullptr;
    if (pBindings == nullptr)
    {
        return pNode != nullptr ? "no skin" : "no node";
    }
    const CSGSkinBinding& rBinding = *pBindings->GetBinding(0);
    std::ostringstream objText;
    for (int32_t n = 0; n < rBinding.GetNumJoints(); ++n)
    {
        objText << (n == 0 ? "" : " ") << rBinding.GetSkin()->GetJoint(n)->GetLocalName().c_str();
        const auto spNode = rBinding.GetJointNode(n);
        EXPECT_TRUE(spNode && spNode->GetLocalName() == rBinding.GetSkin()->GetJoint(n)->GetLocalName());
    }
    std::vector<float> vecPositions;
    rBinding.ComputeSkinnedVertices(vecPositions);
    for (size_t n = 0; n < vecPositions.size(); ++n)
    {
        objText << (n == 0 ? ": " : n % 3 == 0 ? ", " : " ") << vecPositions[n];
    }
    return objText.str();
}

const std::string NORMALIZED = "A B Body: 11 1 5, 12 1 1.25, 23 1 0";

} // namespace

TEST(FBXSkins, VerticesFollowTheirClusters)
{
    struct CCase
    {
        CEdits vecEdits;
        std::string strExpected;
        CValues vecComplaints;
    };
    const CEdits NO_LINK = {{"C: \"OO\",3,7\n", ""}};
    const CCase arrCases[] = {
        {{}, NORMALIZED, {}},
        // What is missing of 1 leaves a point with the mesh, what is beyond it takes it back from there.
        {{{"Normalize", "Total1"}}, "A B Body: 16 1 2.5, -18 1 5, 23 1 0", {}},
        {{{"Normalize", "Additive"}},
         "A B Body: 16 1 2.5, -18 1 5, 23 1 0",
         {"4 The clusters of node 'Body' are additive: what they do to 1 points that follow several is added "
          "up"}},
        {{{"\"Linear\"", "\"DualQuaternion\""}},
         NORMALIZED,
         {"4 Skin 'Skin' of node 'Body' blends dual quaternions: it is skinned linearly instead"}},
        {NO_LINK,
         "A Body: 11 1 5, 12 1 5, 23 1 0",
         {"4 Ignoring cluster 'ClusterB' of node 'Body': it has no link in the scene"}},
        // The joint of what a skin leaves alone is there only where it is needed.
        {{{"Indexes: *2 { a: 0,1 }", "Indexes: *2 { a: 0,2 }"}}, "A B: 11 1 5, 12 1 0, 13 1 5", {}},
        {{{"a: 0,1 }", "a: 0,3 }"}},
         "A B Body: 11 1 5, 12 1 0, 23 1 0",
         {"4 The skin of node 'Body' has 1 weights for points that its mesh does not have"}},
        // Without the matrix of the mesh the bind pose knows where that was, without either of a link its
        // place at rest.
        {{{"Transform: ", "Transfor: "}}, NORMALIZED, {}},
        {{{"Transform: ", "Transfor: "}, {"TransformLink: ", "TransformLin: "}},
         "A B Body: 11 1 0, 12 1 0, 23 1 0",
         {}},
        {{{"0,1,0,7,0,0,1", "0"}},
         NORMALIZED,
         {"4 Pose 'Bind' has no matrix of 16 numbers in 'Matrix' at line 30"}},
        {{{"a: 0.5,1 }", "a: 0,0 }"}, {"a: 3 }", "a: 0 }"}}, "no skin", {}},
        {{{"\"Skin\" {", "\"BlendShape\" {"}},
         "no skin",
         {"4 Ignoring blend shape 'Skin' of node 'Body': the shape it starts from is shown"}},
    };
    for (const CCase& rCase : arrCases)
    {
        SCOPED_TRACE(rCase.vecEdits.empty() ? "" : rCase.vecEdits.front().second);
        const CFBXTestGraph objGraph(Edit(OBJECTS, rCase.vecEdits), Edit(CONNECTIONS, rCase.vecEdits));
        EXPECT_EQ(DescribeSkin(objGraph), rCase.strExpected);
        EXPECT_EQ(objGraph.GetComplaints(), rCase.vecComplaints);
    }
}
