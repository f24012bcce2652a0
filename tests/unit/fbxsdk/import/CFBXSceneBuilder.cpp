// Trees, connections and settings as files describe them, rightly and wrongly.
#include "support/CLogCapture.h"
#include "support/FBXTestScene.h"

#include <gtest/gtest.h>

namespace
{

// "a(b,c(d))": the names of a node and what is below it.
std::string Describe(const FbxNode& rNode)
{
    std::string strText = rNode.GetName();
    for (int n = 0; n < rNode.GetChildCount(); ++n)
    {
        EXPECT_EQ(rNode.GetChild(n)->GetParent(), &rNode);
        strText += (n == 0 ? "(" : ",") + Describe(*rNode.GetChild(n));
    }
    return rNode.GetChildCount() == 0 ? strText : strText + ")";
}

// Models with the ids 1, 2 ... and the names A, B ...
CFBXTestScene MakeTree(int nModels, const std::string& rConnections)
{
    std::string strObjects;
    for (int n = 1; n <= nModels; ++n)
    {
        strObjects += "Model: " + std::to_string(n) + ", \"Model::" + static_cast<char>('A' + (n - 1) % 26) +
                      "\", \"Null\" { }\n";
    }
    return CFBXTestScene("Objects: {\n" + strObjects + "}\nConnections: {\n" + rConnections + "}\n");
}

TEST(CFBXSceneBuilder, Trees)
{
    const struct
    {
        const char* m_szWhat;
        const char* m_szConnections;
        const char* m_szTree;
        const char* m_szLine; // in the log; empty: none
    } CASES[] = {
        {"order of connections, not of objects",
         "C: \"OO\",3,0\nC: \"OO\",1,3\nC: \"OO\",2,0\nC: \"OO\",4,3\n", "RootNode(C(A,D),B)", ""},
        {"several parents: the first",
         "C: \"OO\",1,0\nC: \"OO\",2,0\nC: \"OO\",3,2\nC: \"OO\",3,1\nC: \"OO\",4,3\n", "RootNode(A,B(C(D)))",
         ""},
        {"connected twice", "C: \"OO\",1,0\nC: \"OO\",1,0\nC: \"OO\",2,1\nC: \"OO\",3,1\nC: \"OO\",4,1\n",
         "RootNode(A(B,C,D))", ""},
        {"to a property is not below",
         "C: \"OO\",1,0\nC: \"OO\",2,1\nC: \"OO\",3,1\nC: \"OO\",4,1\n"
         "C: \"OP\",2,3, \"LookAtProperty\"\n",
         "RootNode(A(B,C,D))", ""},
        {"below itself", "C: \"OO\",1,0\nC: \"OO\",2,4\nC: \"OO\",3,2\nC: \"OO\",4,3\n",
         "RootNode(A,B(C(D)))", "4 Node 'B' is below itself; taking it as a child of the root"},
    };
    for (const auto& rCase : CASES)
    {
        SCOPED_TRACE(rCase.m_szWhat);
        CLogCapture objLog;
        const CFBXTestScene objScene = MakeTree(4, rCase.m_szConnections);
        EXPECT_EQ(Describe(*objScene->GetRootNode()), rCase.m_szTree);
        EXPECT_TRUE(*rCase.m_szLine == '\0' ? objLog.GetLines().empty() : objLog.HasLine(rCase.m_szLine));
    }
}

TEST(CFBXSceneBuilder, TooDeepATreeIsCut)
{
    constexpr int MODELS = 2 * FbxNode::MAX_DEPTH + 10;
    std::string strConnections;
    for (int n = 1; n <= MODELS; ++n)
    {
        strConnections += "C: \"OO\"," + std::to_string(n) + "," + std::to_string(n - 1) + "\n";
    }
    const CFBXTestScene objScene = MakeTree(MODELS, strConnections);
    ASSERT_EQ(objScene->GetRootNode()->GetChildCount(), 3);
    int nNodes = 0;
    for (const FbxNode* pNode = objScene->GetRootNode()->GetChild(1); pNode != nullptr;
         pNode = pNode->GetChildCount() == 0 ? nullptr : pNode->GetChild(0))
    {
        ++nNodes;
    }
    EXPECT_EQ(nNodes, FbxNode::MAX_DEPTH);
}

TEST(CFBXSceneBuilder, AttributesAndConnectionsByProperty)
{
    const CFBXTestScene objScene(R"(
        Objects: {
            Model: 10, "Model::Lamp", "Light" { }
            Model: 11, "Model::Arm", "LimbNode" { }
            NodeAttribute: 20, "NodeAttribute::Sun", "Light" { Properties70: {
                P: "LightType", "enum", "", "",1
                P: "Color", "Color", "", "A",1,0.5
                P: "Intensity", "Number", "", "A",250 } }
            NodeAttribute: 21, "NodeAttribute::", "LimbNode" { }
            NodeAttribute: 22, "NodeAttribute::", "LodGroup" { }
            Material: 30, "Material::Red", "" { }
            Material: 31, "Material::Blue", "" { }
        }
        Connections: {
            C: "OO",10,0
            C: "OO",11,10
            C: "OO",20,10
            C: "OO",21,11
            C: "OO",22,11
            C: "OO",31,10
            C: "OO",30,10
            C: "OP",31,11, "SomeProperty"
        })");
    const FbxNode* pLamp = objScene.FindNode("Lamp");
    ASSERT_EQ(pLamp->GetNodeAttributeCount(), 1);
    const FbxLight* pLight = dynamic_cast<FbxLight*>(pLamp->GetNodeAttributeByIndex(0));
    ASSERT_NE(pLight, nullptr);
    EXPECT_EQ(pLight->GetNode(), pLamp);
    EXPECT_EQ(pLight->GetLightType(), FbxLight::eDirectional);
    EXPECT_EQ(pLight->GetColor(), (FbxDouble3{1, 0.5, 1})) << "what is missing is the default's";
    EXPECT_EQ(pLight->GetIntensity(), 250);
    EXPECT_EQ(pLight->GetOuterAngle(), 45);

    EXPECT_EQ(pLamp->GetMaterialCount(), 2);
    EXPECT_EQ(pLamp->GetSrcObjects<FbxObject>("").size(), 4u);
    const FbxNode* pArm = objScene.FindNode("Arm");
    EXPECT_EQ(pArm->GetMaterialCount(), 0);
    EXPECT_EQ(pArm->GetSrcObjects<FbxObject>("SomeProperty").front()->GetName(), "Blue");
    EXPECT_EQ(pArm->GetNodeAttributeByIndex(0)->GetAttributeType(), FbxNodeAttribute::eSkeleton);
    EXPECT_EQ(pArm->GetNodeAttributeByIndex(1)->GetAttributeType(), FbxNodeAttribute::eLODGroup);
}

TEST(CFBXSceneBuilder, UserPropertiesAndTemplates)
{
    const CFBXTestScene objScene(R"(
        Definitions: { ObjectType: "Model" { PropertyTemplate: "FbxNode" { Properties70: {
            P: "Visibility", "Visibility", "", "A",0
            P: "InheritType", "enum", "", "",1 } } } }
        Objects: { Model: 1, "Model::A", "Null" { Properties70: {
            P: "InheritType", "enum", "", "",2
            P: "Note", "KString", "", "U", "a text"
            P: "Amount", "double", "Number", "AU",2.5 } } }
        Connections: { C: "OO",1,0 })");
    const FbxNode* pNode = objScene.FindNode("A");
    EXPECT_FALSE(pNode->GetVisibility());
    EXPECT_EQ(pNode->GetTransformationInheritType(), FbxNode::eInheritRrs);
    const std::vector<FbxProperty> vecProperties = pNode->GetProperties();
    ASSERT_EQ(vecProperties.size(), 3u);
    EXPECT_FALSE(vecProperties[0].IsUserDefined());
    EXPECT_TRUE(vecProperties[1].IsUserDefined() && vecProperties[1].IsString());
    EXPECT_EQ(vecProperties[1].GetString(), "a text");
    EXPECT_TRUE(vecProperties[2].IsUserDefined() && !vecProperties[2].IsString());
    EXPECT_EQ(vecProperties[2].GetDouble(), 2.5);
    EXPECT_FALSE(pNode->FindProperty("Nothing").IsValid());
    EXPECT_EQ(pNode->FindProperty("Nothing").GetInt(7), 7);
}

TEST(CFBXSceneBuilder, GlobalSettings)
{
    const auto Read = [](const std::string& rProperties) {
        return CFBXTestScene("GlobalSettings: { Properties70: {\n" + rProperties + "} }\nObjects: { }\n");
    };
    const auto P = [](const std::string& rName, const std::string& rValue) {
        return "P: \"" + rName + "\", \"\", \"\", \"\"," + rValue + "\n";
    };

    int nSign = 0;
    const CFBXTestScene objZUp =
        Read(P("UpAxis", "2") + P("UpAxisSign", "-1") + P("FrontAxis", "1") + P("CoordAxis", "0") +
             P("TimeMode", "14") + P("CustomFrameRate", "12.5") + P("TimeSpanStop", "46186158000") +
             P("UnitScaleFactor", "2.54"));
    const FbxGlobalSettings& rSettings = objZUp->GetGlobalSettings();
    EXPECT_EQ(rSettings.GetAxisSystem().GetUpVector(nSign), FbxAxisSystem::eZAxis);
    EXPECT_EQ(nSign, -1);
    EXPECT_EQ(rSettings.GetFrameRate(), 12.5);
    EXPECT_EQ(rSettings.GetUnitScaleFactor(), 2.54);
    EXPECT_EQ(rSettings.GetTimelineDefaultTimeSpan().m_objStop.GetSecondDouble(), 1);

    const CFBXTestScene objBad = Read(P("UpAxis", "2") + P("FrontAxis", "2") + P("TimeMode", "999"));
    EXPECT_EQ(objBad->GetGlobalSettings().GetAxisSystem().GetUpVector(nSign), FbxAxisSystem::eYAxis);
    EXPECT_EQ(objBad->GetGlobalSettings().GetFrameRate(), 30);
    const CFBXTestScene objNTSC = Read(P("TimeMode", "9"));
    EXPECT_DOUBLE_EQ(objNTSC->GetGlobalSettings().GetFrameRate(), 30000.0 / 1001.0);
}

TEST(CFBXSceneBuilder, PosesFindTheirNodes)
{
    const std::string strMatrix = "1,0,0,0, 0,1,0,0, 0,0,1,0, 5,6,7,1";
    const CFBXTestScene objScene(R"(
        Objects: {
            Model: 1, "Model::A", "Null" { }
            Pose: 2, "Pose::P", "BindPose" {
                PoseNode: { Node: 99
                    Matrix: *16 { a: )" +
                                 strMatrix + R"( } }
                PoseNode: { Node: 1
                    Matrix: *3 { a: 1,2,3 } }
                PoseNode: { Node: 1
                    Matrix: *16 { a: )" +
                                 strMatrix + R"( } } }
        }
        Connections: { C: "OO",1,0 })");
    const FbxPose* pPose = objScene.Find<FbxPose>("P");
    ASSERT_NE(pPose, nullptr);
    EXPECT_TRUE(pPose->IsBindPose());
    ASSERT_EQ(pPose->GetCount(), 2);
    EXPECT_EQ(pPose->GetNode(0), nullptr);
    const FbxAMatrix* pMatrix = pPose->FindMatrix(objScene.FindNode("A"));
    ASSERT_NE(pMatrix, nullptr);
    EXPECT_EQ(pMatrix->GetT(), (FbxDouble3{5, 6, 7}));
}

} // namespace
