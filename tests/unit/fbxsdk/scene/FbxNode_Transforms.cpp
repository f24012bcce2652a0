// The transforms of nodes against numbers computed by hand.
#include "support/FBXTestScene.h"

#include <gtest/gtest.h>

namespace
{

// A chain of nodes, the first below the root; each is the lines of its properties. The innermost one is
// returned.
class CChain : public CFBXTestScene
{
  public:
    explicit CChain(const std::vector<std::string>& rProperties)
        : CFBXTestScene(MakeText(rProperties)),
          m_pNode(FindNode("N" + std::to_string(rProperties.size())))
    {}

    const FbxNode& GetNode() const { return *m_pNode; }

  private:
    static std::string MakeText(const std::vector<std::string>& rProperties)
    {
        std::string strObjects;
        std::string strConnections;
        for (size_t n = 1; n <= rProperties.size(); ++n)
        {
            const std::string strId = std::to_string(n);
            strObjects += "Model: " + strId + ", \"Model::N" + strId + "\", \"Null\" {\n Properties70: {\n" +
                          rProperties[n - 1] + "\n}\n}\n";
            strConnections += "C: \"OO\"," + strId + "," + std::to_string(n - 1) + "\n";
        }
        return "Objects: {\n" + strObjects + "}\nConnections: {\n" + strConnections + "}\n";
    }

    const FbxNode* m_pNode;
};

// P("Lcl Scaling", "2,2,2"): a line of a Properties70 record.
std::string P(const std::string& rName, const std::string& rValue)
{
    return "P: \"" + rName + "\", \"\", \"\", \"\"," + rValue + "\n";
}

void ExpectPoint(const FbxDouble3& rActual, const FbxDouble3& rExpected)
{
    for (size_t n = 0; n < 3; ++n)
    {
        EXPECT_NEAR(rActual[n], rExpected[n], 1e-12) << "coordinate " << n;
    }
}

const std::string ACTIVE = P("RotationActive", "1");
const std::string QUARTER_X = P("Lcl Rotation", "90,0,0");
const std::string QUARTER_Z = P("Lcl Rotation", "0,0,90");

struct CCase
{
    const char* m_szWhat;
    std::vector<std::string> m_vecChain;
    FbxDouble3 m_objPoint;
    FbxDouble3 m_objExpected;
};

const std::vector<CCase> CASES = {
    {"nothing", {""}, {1, 2, 3}, {1, 2, 3}},
    {"translation", {P("Lcl Translation", "1,2,3")}, {1, 0, 0}, {2, 2, 3}},
    // Quarter turns about all axes: each order sends (1, 2, 3) elsewhere.
    {"order XYZ", {ACTIVE + P("RotationOrder", "0") + P("Lcl Rotation", "90,90,90")}, {1, 2, 3}, {3, 2, -1}},
    {"order XZY", {ACTIVE + P("RotationOrder", "1") + P("Lcl Rotation", "90,90,90")}, {1, 2, 3}, {2, 1, -3}},
    {"order YZX", {ACTIVE + P("RotationOrder", "2") + P("Lcl Rotation", "90,90,90")}, {1, 2, 3}, {-2, 1, 3}},
    {"order YXZ", {ACTIVE + P("RotationOrder", "3") + P("Lcl Rotation", "90,90,90")}, {1, 2, 3}, {-1, 3, 2}},
    {"order ZXY", {ACTIVE + P("RotationOrder", "4") + P("Lcl Rotation", "90,90,90")}, {1, 2, 3}, {1, -3, 2}},
    {"order ZYX", {ACTIVE + P("RotationOrder", "5") + P("Lcl Rotation", "90,90,90")}, {1, 2, 3}, {3, -2, 1}},
    {"spheric", {ACTIVE + P("RotationOrder", "6") + P("Lcl Rotation", "90,90,90")}, {1, 2, 3}, {3, 2, -1}},
    {"unknown order",
     {ACTIVE + P("RotationOrder", "99") + P("Lcl Rotation", "90,90,90")},
     {1, 2, 3},
     {3, 2, -1}},
    {"order of inactive rotation",
     {P("RotationOrder", "5") + P("Lcl Rotation", "90,90,90")},
     {1, 2, 3},
     {3, 2, -1}},
    {"pre-rotation", {ACTIVE + QUARTER_X + P("PreRotation", "0,0,90")}, {0, 1, 0}, {0, 0, 1}},
    {"post-rotation", {ACTIVE + QUARTER_X + P("PostRotation", "0,0,90")}, {0, 1, 0}, {1, 0, 0}},
    {"both of inactive rotation",
     {QUARTER_X + P("PreRotation", "0,0,90") + P("PostRotation", "0,0,90")},
     {0, 1, 0},
     {0, 0, 1}},
    {"rotation pivot", {QUARTER_Z + P("RotationPivot", "1,0,0")}, {2, 0, 0}, {1, 1, 0}},
    {"rotation offset", {QUARTER_Z + P("RotationOffset", "1,0,0")}, {2, 0, 0}, {1, 2, 0}},
    {"scaling pivot", {P("Lcl Scaling", "2,3,1") + P("ScalingPivot", "1,1,0")}, {2, 2, 0}, {3, 4, 0}},
    {"scaling offset", {QUARTER_X + P("ScalingOffset", "0,0,7")}, {0, 0, 0}, {0, -7, 0}},
    {"all of these",
     {ACTIVE + P("Lcl Translation", "1,0,0") + P("RotationOffset", "0,1,0") + P("RotationPivot", "1,0,0") +
      P("PreRotation", "0,0,90") + QUARTER_X + P("PostRotation", "0,90,0") + P("ScalingOffset", "0,0,2") +
      P("ScalingPivot", "0,1,0") + P("Lcl Scaling", "2,2,3")},
     {1, 2, 1},
     {3, -4, 3}},
    {"values that are no numbers",
     {P("Lcl Translation", "1,nan,inf") + P("Lcl Scaling", "nan,2,2")},
     {1, 1, 1},
     {2, 2, 2}},
};

const std::string PARENT =
    P("Lcl Translation", "10,0,0") + QUARTER_Z + P("Lcl Scaling", "2,1,1") + P("InheritType", "1");
const std::string CHILD = P("Lcl Translation", "1,0,0") + QUARTER_Z + P("Lcl Scaling", "1,3,1");
const std::string GRANDPARENT = P("Lcl Scaling", "1,5,1") + P("InheritType", "1");

const std::vector<CCase> INHERIT_CASES = {
    {"RrSs", {PARENT, CHILD + P("InheritType", "0")}, {1, 1, 0}, {8, -1, 0}},
    {"RSrs", {PARENT, CHILD + P("InheritType", "1")}, {1, 1, 0}, {9, -4, 0}},
    {"Rrs", {PARENT, CHILD + P("InheritType", "2")}, {1, 1, 0}, {9, -1, 0}},
    {"not said", {PARENT, CHILD}, {1, 1, 0}, {8, -1, 0}},
    {"Rrs below two scalings", {GRANDPARENT, PARENT, CHILD + P("InheritType", "2")}, {1, 1, 0}, {5, 7, 0}},
    {"RrSs with pivots",
     {PARENT,
      QUARTER_Z + P("RotationPivot", "1,0,0") + P("ScalingPivot", "0,1,0") + P("Lcl Scaling", "1,3,1")},
     {2, 3, 0},
     {7, -3, 0}},
};

TEST(FbxNode_Transforms, GlobalTransformOfOneNode)
{
    for (const CCase& rCase : CASES)
    {
        SCOPED_TRACE(rCase.m_szWhat);
        ExpectPoint(CChain(rCase.m_vecChain).GetNode().EvaluateGlobalTransform().MultT(rCase.m_objPoint),
                    rCase.m_objExpected);
    }
}

TEST(FbxNode_Transforms, InheritTypes)
{
    for (const CCase& rCase : INHERIT_CASES)
    {
        SCOPED_TRACE(rCase.m_szWhat);
        const CChain objChain(rCase.m_vecChain);
        const FbxNode& rNode = objChain.GetNode();
        ExpectPoint(rNode.EvaluateGlobalTransform().MultT(rCase.m_objPoint), rCase.m_objExpected);

        // The same as a plain product, by the matrix that stands in front of the pre-rotation.
        const FbxGlobalPose objParent = rNode.GetParent()->EvaluateGlobalPose(nullptr, FbxTime());
        const FbxAMatrix objFront = FbxAMatrix::FromTranslation(
            rNode.GetLclTranslation() + rNode.GetRotationOffset() + rNode.GetRotationPivot());
        const FbxAMatrix objProduct = objParent.m_objTransform * objFront *
                                      rNode.GetInheritMatrix(objParent, rNode.GetRestPose()) *
                                      objFront.Inverse() * rNode.GetLocalMatrix(rNode.GetRestPose());
        ExpectPoint(objProduct.MultT(rCase.m_objPoint), rCase.m_objExpected);
    }
}

TEST(FbxNode_Transforms, ScalingOfZeroAbove)
{
    const CChain objChain({P("Lcl Scaling", "0,0,0"), CHILD});
    ExpectPoint(objChain.GetNode().EvaluateGlobalTransform().MultT({1, 1, 0}), {0, 0, 0});
}

TEST(FbxNode_Transforms, GeometricTransformIsOfTheNodeAlone)
{
    const CChain objChain({P("GeometricTranslation", "0,0,1") + P("GeometricRotation", "0,0,90") +
                               P("GeometricScaling", "2,1,1"),
                           ""});
    ExpectPoint(objChain.GetNode().GetParent()->GetGeometricTransform().MultT({1, 0, 0}), {0, 2, 1});
    ExpectPoint(objChain.GetNode().EvaluateGlobalTransform().MultT({1, 0, 0}), {1, 0, 0});
}

} // namespace
