// The transforms of nodes against numbers computed by hand: as the reader evaluates them, and as the scene
// graph's lists of transforms make them.
#include "qdsgloader_fbx/CFBXTestGraph.h"
#include "support/FBXTestScene.h"

#include <gtest/gtest.h>

namespace
{

struct CCase
{
    const char* m_szWhat;
    std::vector<CValues> m_vecChain; // the properties of nodes, the first below the root
    FbxDouble3 m_objPoint;           // in the space of the last one
    FbxDouble3 m_objExpected;
};

CValues Order(const std::string& rOrder, const std::string& rActive = "1")
{
    return {"RotationActive " + rActive, "RotationOrder " + rOrder, "Lcl Rotation 90,90,90"};
}

const CCase CASES[] = {
    {"nothing", {{}}, {1, 2, 3}, {1, 2, 3}},
    {"translation", {{"Lcl Translation 1,2,3"}}, {1, 0, 0}, {2, 2, 3}},
    // Quarter turns about all axes: each order sends (1, 2, 3) elsewhere.
    {"order XYZ", {Order("0")}, {1, 2, 3}, {3, 2, -1}},
    {"order XZY", {Order("1")}, {1, 2, 3}, {2, 1, -3}},
    {"order YZX", {Order("2")}, {1, 2, 3}, {-2, 1, 3}},
    {"order YXZ", {Order("3")}, {1, 2, 3}, {-1, 3, 2}},
    {"order ZXY", {Order("4")}, {1, 2, 3}, {1, -3, 2}},
    {"order ZYX", {Order("5")}, {1, 2, 3}, {3, -2, 1}},
    {"spheric", {Order("6")}, {1, 2, 3}, {3, 2, -1}},
    {"unknown order", {Order("99")}, {1, 2, 3}, {3, 2, -1}},
    {"order of inactive rotation", {Order("5", "0")}, {1, 2, 3}, {3, 2, -1}},
    {"pre-rotation",
     {{"RotationActive 1", "Lcl Rotation 90,0,0", "PreRotation 0,0,90"}},
     {0, 1, 0},
     {0, 0, 1}},
    {"post-rotation",
     {{"RotationActive 1", "Lcl Rotation 90,0,0", "PostRotation 0,0,90"}},
     {0, 1, 0},
     {1, 0, 0}},
    {"both of inactive rotation",
     {{"Lcl Rotation 90,0,0", "PreRotation 0,0,90", "PostRotation 0,0,90"}},
     {0, 1, 0},
     {0, 0, 1}},
    {"rotation pivot", {{"Lcl Rotation 0,0,90", "RotationPivot 1,0,0"}}, {2, 0, 0}, {1, 1, 0}},
    {"rotation offset", {{"Lcl Rotation 0,0,90", "RotationOffset 1,0,0"}}, {2, 0, 0}, {1, 2, 0}},
    {"scaling pivot", {{"Lcl Scaling 2,3,1", "ScalingPivot 1,1,0"}}, {2, 2, 0}, {3, 4, 0}},
    {"scaling offset", {{"Lcl Rotation 90,0,0", "ScalingOffset 0,0,7"}}, {0, 0, 0}, {0, -7, 0}},
    {"all of these",
     {{"RotationActive 1", "Lcl Translation 1,0,0", "RotationOffset 0,1,0", "RotationPivot 1,0,0",
       "PreRotation 0,0,90", "Lcl Rotation 90,0,0", "PostRotation 0,90,0", "ScalingOffset 0,0,2",
       "ScalingPivot 0,1,0", "Lcl Scaling 2,2,3"}},
     {1, 2, 1},
     {3, -4, 3}},
    {"no numbers", {{"Lcl Translation 1,nan,inf", "Lcl Scaling nan,2,2"}}, {1, 1, 1}, {2, 2, 2}},
};

const CValues PARENT = {"Lcl Translation 10,0,0", "Lcl Rotation 0,0,90", "Lcl Scaling 2,1,1",
                        "InheritType 1"};

CValues Child(const char* szInheritType)
{
    return {"Lcl Translation 1,0,0", "Lcl Rotation 0,0,90", "Lcl Scaling 1,3,1", szInheritType};
}

const CCase INHERIT_CASES[] = {
    {"RrSs", {PARENT, Child("InheritType 0")}, {1, 1, 0}, {8, -1, 0}},
    {"RSrs", {PARENT, Child("InheritType 1")}, {1, 1, 0}, {9, -4, 0}},
    {"Rrs", {PARENT, Child("InheritType 2")}, {1, 1, 0}, {9, -1, 0}},
    {"not said", {PARENT, Child("Show 1")}, {1, 1, 0}, {8, -1, 0}},
    {"Rrs below two scalings",
     {{"Lcl Scaling 1,5,1", "InheritType 1"}, PARENT, Child("InheritType 2")},
     {1, 1, 0},
     {5, 7, 0}},
    {"RrSs with pivots",
     {PARENT, {"Lcl Rotation 0,0,90", "RotationPivot 1,0,0", "ScalingPivot 0,1,0", "Lcl Scaling 1,3,1"}},
     {2, 3, 0},
     {7, -3, 0}},
    {"scaling of zero above", {{"Lcl Scaling 0,0,0"}, Child("InheritType 0")}, {1, 1, 0}, {0, 0, 0}},
    {"geometric transform above",
     {{"GeometricTranslation 0,0,1", "GeometricRotation 0,0,90", "GeometricScaling 2,1,1"}, {}},
     {1, 0, 0},
     {1, 0, 0}},
};

void ExpectPoint(const FbxDouble3& rActual, const FbxDouble3& rExpected, double dTolerance)
{
    for (size_t n = 0; n < 3; ++n)
    {
        EXPECT_NEAR(rActual[n], rExpected[n], dTolerance) << "coordinate " << n;
    }
}

void Check(const CCase& rCase)
{
    SCOPED_TRACE(rCase.m_szWhat);
    std::string strObjects;
    std::string strConnections;
    int nNodes = 0;
    for (const CValues& rValues : rCase.m_vecChain)
    {
        const std::string strParent = std::to_string(nNodes++);
        const std::string strNode = std::to_string(nNodes);
        strObjects += Object("Model", nNodes, strNode, "Null", Properties(rValues));
        strConnections += Connect({strNode + "," + strParent});
    }
    const std::string strLast = std::to_string(nNodes);
    const CFBXTestScene objScene(strObjects, strConnections);
    ExpectPoint(objScene.FindNode(strLast)->EvaluateGlobalTransform().MultT(rCase.m_objPoint),
                rCase.m_objExpected, 1e-12);
    const CTempFile objFile("scene.fbx", MakeFBXFile(strObjects, strConnections));
    for (const int nFlags : {0, int{CFBXTestGraph::KEEP_QUATERNIONS}})
    {
        const FbxDouble3& p = rCase.m_objPoint;
        const CSGFloat3 v = CFBXTestGraph(objFile.GetName(), nFlags)
                                .GetWorld(strLast)
                                .TransformPoint({static_cast<float>(p[0]), static_cast<float>(p[1]),
                                                 static_cast<float>(p[2])});
        ExpectPoint({v.x, v.y, v.z}, rCase.m_objExpected, 1e-5);
    }
}

TEST(FBXTransforms, OneNode) { std::ranges::for_each(CASES, Check); }

TEST(FBXTransforms, InheritTypes) { std::ranges::for_each(INHERIT_CASES, Check); }

TEST(FBXTransforms, GeometricTransform)
{
    const CFBXTestScene objScene(Object("Model", 1, "n", "Null",
                                        Properties({"GeometricTranslation 0,0,1", "GeometricRotation 0,0,90",
                                                    "GeometricScaling 2,1,1"})),
                                 Connect({"1,0"}));
    ExpectPoint(objScene.FindNode("n")->GetGeometricTransform().MultT({1, 0, 0}), {0, 2, 1}, 1e-12);
}

} // namespace
