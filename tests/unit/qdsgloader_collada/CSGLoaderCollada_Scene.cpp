// Scenes: nodes with their transforms, instances and extra data, and how faults in them are reported.
#include "qdscenegraph/node/CSGData_RenderState.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGData_WorldTransform.h"
#include "qdsgloader_collada/CColladaTestScene.h"

#include <gtest/gtest.h>
#include <pthread.h>

namespace
{

const std::string TRIANGLE =
    std::string("<triangles count=\"1\">") + TEST_VERTEX + "<p>0 1 2</p></triangles>";

std::string Node(const std::string& rID, const std::string& rContent = "")
{
    return "<node id=\"" + rID + "\">" + rContent + "</node>";
}

std::string Instance(const std::string& rURL) { return "<instance_node url=\"" + rURL + "\"/>"; }

std::string LibraryNodes(const std::string& rNodes)
{
    return "<library_nodes>" + rNodes + "</library_nodes>";
}

// "a(b,c(d))" of global names.
std::string Describe(const CSGNode& rNode)
{
    std::string strText = rNode.GetGlobalName().c_str();
    for (int32_t n = 0; n < rNode.GetChildrenSize(); ++n)
    {
        strText += (n == 0 ? "(" : ",") + Describe(*rNode.GetChild(n));
    }
    return rNode.GetChildCount() > 0 ? strText + ")" : strText;
}

std::vector<std::string> WithLevel(std::vector<std::string> vecLines)
{
    for (std::string& rLine : vecLines)
    {
        rLine.insert(0, rLine.starts_with("Ignoring") ? "4 " : "1 ");
    }
    return vecLines;
}

// What follows the fault in a node of the scene "scene".
void AppendSceneFailure(std::vector<std::string>& rvecLines, const std::string& rTopNode)
{
    rvecLines.push_back("1 Failed to add <node id=\"" + rTopNode +
                        "\"> as child of <visual_scene id=\"scene\">");
    rvecLines.push_back("1 Failed to load <visual_scene id=\"scene\"> in <library_visual_scenes>.");
    rvecLines.push_back("1 Failed to load all <library_visual_scenes> elements in <COLLADA>.");
}

} // namespace

TEST(ColladaScene, Transforms)
{
    struct CCase
    {
        const char* szElements;
        CSGFloat3 vExpected; // of the point (1, 2, 3)
    };
    const CCase arrCases[] = {
        {"", {1, 2, 3}},
        {"<translate>1 2 3</translate>", {2, 4, 6}},
        {"<scale>2 3 4</scale>", {2, 6, 12}},
        {"<rotate>0 0 1 90</rotate>", {-2, 1, 3}},
        {"<rotate>0 0 5 90</rotate>", {-2, 1, 3}},
        {"<matrix>1 2 3 10 4 5 6 20 7 8 10 30 0 0 0 1</matrix>", {24, 52, 83}},
        // An object at x = 10 that looks at the origin: its -Z is -X, its X is -Z.
        {"<lookat>10 0 0 0 0 0 0 1 0</lookat>", {13, 2, -1}},
        {"<translate>10 0 0</translate><rotate>0 0 1 90</rotate><scale>2 1 1</scale>", {8, 2, 3}},
        {"<rotate>0 0 1 90</rotate><translate>10 0 0</translate>", {-2, 11, 3}},
        {"<skew>45 1 0 0 0 1 0</skew><translate>1 2 3</translate>", {2, 4, 6}},
    };
    for (const CCase& rCase : arrCases)
    {
        const CColladaTestScene objScene(
            TestScene(Node("parent", "<translate>0 0 0</translate>" + Node("n", rCase.szElements))));
        ASSERT_TRUE(objScene.m_spRoot) << rCase.szElements;
        const CSGFloat3 v = CSGData_WorldTransform::GetOrCreateFromNode(objScene.Find("n"))
                                ->GetTransform()
                                .TransformPoint({1, 2, 3});
        EXPECT_NEAR(v.x, rCase.vExpected.x, 1e-5f) << rCase.szElements;
        EXPECT_NEAR(v.y, rCase.vExpected.y, 1e-5f) << rCase.szElements;
        EXPECT_NEAR(v.z, rCase.vExpected.z, 1e-5f) << rCase.szElements;
        const bool bSkew = std::string_view(rCase.szElements).starts_with("<skew");
        EXPECT_EQ(objScene.GetComplaints(), bSkew ? WithLevel({"Ignoring <skew> element in <node id=\"n\">"})
                                                  : std::vector<std::string>{});
    }
}

TEST(ColladaScene, TransformsAreFoundByTheirSids)
{
    const CColladaTestScene objScene(TestScene(
        Node("one", "<rotate sid=\"r\">0 0 1 90</rotate>") +
        Node("two", "<translate sid=\"t\">1 2 3</translate><scale sid=\"s\">1 1 1</scale>") + Node("none")));
    ASSERT_TRUE(objScene.m_spRoot);
    EXPECT_EQ(objScene.Find("one")->FindData<CSGData_LocalTransform>()->GetTransformObject()->GetName(), "r");
    EXPECT_EQ(objScene.Find("none")->FindData<CSGData_LocalTransform>(), nullptr);
    CLogCapture objLog;
    objScene.Find("two")->FindData<CSGData_LocalTransform>()->OutputDebugInfo("");
    EXPECT_TRUE(objLog.Contains("CSGXFrm_List") && objLog.Contains("Name: 't'") &&
                objLog.Contains("Name: 's'"));
}

TEST(ColladaScene, TransformFaults)
{
    struct CCase
    {
        const char* szElement;
        std::vector<std::string> vecLines;
    };
    const CCase arrCases[] = {
        {"<matrix sid=\"m\">1 0 0 0 0 1 0 0 0 0 1 0 0 0 0</matrix>",
         {"Handed in list of floats that had 15 instead of 16 values.",
          "Failed to load <matrix sid=\"m\"> in <node id=\"n\">"}},
        {"<matrix>1 0 0 0 0 1 0 0 0 0 1 0 0 0 1 1</matrix>",
         {"Tried to get transform from matrix that wasn't an affine transform.",
          "Failed to load <matrix sid=\"\"> in <node id=\"n\">"}},
        {"<translate>1 2</translate>",
         {"Handed in list of floats that had 2 instead of 3 values.",
          "Failed to load <translate sid=\"\"> in <node id=\"n\">"}},
        {"<rotate/>",
         {"Handed in list of floats that had 0 instead of 4 values.",
          "Failed to load <rotate sid=\"\"> in <node id=\"n\">"}},
        {"<lookat>1 2 3 4 5 6 7 8 9 10</lookat>",
         {"Handed in list of floats that had 10 instead of 9 values.",
          "Failed to load <lookat sid=\"\"> in <node id=\"n\">"}},
    };
    for (const CCase& rCase : arrCases)
    {
        const CColladaTestScene objScene(
            TestScene(Node("top", Node("first") + Node("middle", Node("n", rCase.szElement)))));
        EXPECT_FALSE(objScene.m_spRoot);
        std::vector<std::string> vecExpected = WithLevel(rCase.vecLines);
        vecExpected.push_back("1 Failed to read node at index 0 named n, child of middle.");
        vecExpected.push_back("1 Failed to read node at index 1 named middle, child of top.");
        AppendSceneFailure(vecExpected, "top");
        EXPECT_EQ(objScene.GetComplaints(), vecExpected) << rCase.szElement;
    }
}

TEST(ColladaScene, Names)
{
    const CColladaTestScene objScene(TestScene("<node id=\"i\" name=\"n\" sid=\"s\"/><node id=\"i2\" "
                                               "name=\"n2\"/><node name=\"n3\"/><node id=\"i4\"/><node/>"));
    ASSERT_TRUE(objScene.m_spRoot);
    std::string strNames;
    for (int32_t n = 0; n < objScene.m_spRoot->GetChildrenSize(); ++n)
    {
        const CSGNode* pNode = objScene.m_spRoot->GetChild(n);
        strNames += std::string(pNode->GetGlobalName().c_str()) + "/" + pNode->GetLocalName().c_str() + " ";
    }
    EXPECT_EQ(strNames, "i/s i2/n2 n3/n3 i4/i4 / ");
}

TEST(ColladaScene, GeometryInstances)
{
    const std::string strInstance = "<instance_geometry url=\"#g\"/>";
    const std::string strEmpty =
        "<library_geometries><geometry id=\"empty\"><mesh/></geometry></library_geometries>";
    const CColladaTestScene objScene(
        TestScene(Node("one", strInstance + "<instance_geometry url=\"#empty\"/>") +
                      Node("two", strInstance + strInstance + Node("child")),
                  TestMesh(TRIANGLE) + strEmpty));
    ASSERT_TRUE(objScene.m_spRoot);
    EXPECT_EQ(Describe(*objScene.m_spRoot), "scene(one,two(two/g,two/g,child))");
    EXPECT_EQ(objScene.Find("two/g")->GetLocalName(), "two/geo");
    EXPECT_EQ(objScene.Find("two")->FindData<CSGData_Geometry>(), nullptr);
    ASSERT_NE(objScene.Find("one")->FindData<CSGData_Geometry>(), nullptr);
    EXPECT_EQ(objScene.Find("one")->FindData<CSGData_Geometry>(),
              objScene.Find("two/g")->FindData<CSGData_Geometry>());
    EXPECT_TRUE(objScene.GetComplaints().empty());

    // Geometry is kept for the next scene graph, nodes are not.
    const auto spSecond = objScene.m_spLoader->LoadSceneGraph();
    ASSERT_TRUE(spSecond);
    EXPECT_NE(spSecond, objScene.m_spRoot);
    EXPECT_EQ(Describe(*spSecond), Describe(*objScene.m_spRoot));
    EXPECT_EQ(spSecond->FindNodeByGlobalName("one")->FindData<CSGData_Geometry>(),
              objScene.Find("one")->FindData<CSGData_Geometry>());
}

TEST(ColladaScene, ControllersShowTheirSource)
{
    const std::string strControllers = "<library_controllers>"
                                       "<controller id=\"skin\"><skin source=\"#morph\"/></controller>"
                                       "<controller id=\"morph\"><morph source=\"#g\"/></controller>"
                                       "<controller id=\"a\"><skin source=\"#b\"/></controller>"
                                       "<controller id=\"b\"><skin source=\"#a\"/></controller>"
                                       "<controller id=\"lost\"><skin source=\"#nothing\"/></controller>"
                                       "</library_controllers>";
    const auto Controller = [](const std::string& rURL) {
        return "<instance_controller url=\"" + rURL + "\"/>";
    };
    const CColladaTestScene objScene(TestScene(
        Node("n", Controller("#skin")) + Node("m", Controller("#a") + Controller("#lost") + Controller("#g")),
        strControllers + TestMesh(TRIANGLE)));
    ASSERT_TRUE(objScene.m_spRoot);
    EXPECT_NE(objScene.Find("n")->FindData<CSGData_Geometry>(), nullptr);
    EXPECT_EQ(objScene.Find("m")->FindData<CSGData_Geometry>(), nullptr);
    std::vector<std::string> vecLines = objScene.GetComplaints();
    ASSERT_EQ(vecLines.size(), 9u);
    const std::vector<std::string> vecSkin(vecLines.begin(), vecLines.begin() + 3);
    EXPECT_EQ(vecSkin, (std::vector<std::string>{
                           "4 Ignoring <morph> in <controller id=\"morph\">: what it stands on is shown",
                           "1 <skin id=\"skin\"> had NULL <joints>",
                           "4 Ignoring <skin> in <controller id=\"skin\">: its geometry is shown as it is"}));
    vecLines.erase(vecLines.begin(), vecLines.begin() + 3);
    EXPECT_EQ(vecLines[0], "1 <controller id=\"a\"> leads to itself or over more than 16 controllers");
    EXPECT_EQ(vecLines[1], "4 Ignoring <instance_controller url=\"#a\"> in <node id=\"m\">");
    EXPECT_EQ(vecLines[2], "1 Reference to unknown geometry in <skin id=\"lost\">");
    EXPECT_EQ(vecLines[3], "4 Ignoring <instance_controller url=\"#lost\"> in <node id=\"m\">");
    EXPECT_TRUE(vecLines[4].starts_with("1 URI '#g' referenced element of type "));
    EXPECT_EQ(vecLines[5], "4 Ignoring <instance_controller url=\"#g\"> in <node id=\"m\">");
}

TEST(ColladaScene, NodeInstances)
{
    struct CCase
    {
        std::string strNodes;
        std::string strLibrary;
        std::string strExpected;
    };
    const CCase arrCases[] = {
        {Node("a", Instance("#lib")), Node("lib", Node("x")), "scene(a(lib(x)))"},
        {Node("a", Instance("#lib") + Instance("#lib") + Node("own")), Node("lib"), "scene(a(lib,lib,own))"},
        {Node("a", Instance("#x")), Node("lib", Node("x", Instance("#y"))) + Node("y"), "scene(a(x(y)))"},
        // Within the scene: after the instance, before it, and with instances of its own.
        {Node("a", Instance("#b")) + Node("b", Node("c")), "", "scene(a(b(c)),b(c))"},
        {Node("b", Node("c")) + Node("a", Instance("#c")), "", "scene(b(c),a(c))"},
        {Node("a", Instance("#d")) + Node("b", Instance("#a") + Node("d", Node("e"))), "",
         "scene(a(d(e)),b(a(d(e)),d(e)))"},
        {Node("a", Node("d", Instance("#e")) + Node("e")), "", "scene(a(d(e),e))"},
    };
    for (const CCase& rCase : arrCases)
    {
        const CColladaTestScene objScene(TestScene(rCase.strNodes, LibraryNodes(rCase.strLibrary)));
        ASSERT_TRUE(objScene.m_spRoot) << rCase.strExpected;
        EXPECT_EQ(Describe(*objScene.m_spRoot), rCase.strExpected);
        EXPECT_TRUE(objScene.GetComplaints().empty()) << rCase.strExpected;
    }
}

TEST(ColladaScene, NodeInstancesThatLeadNowhere)
{
    const CColladaTestScene objScene(TestScene(Node("a", Instance("other.dae#x") + Instance("#nothing") +
                                                             Instance("http://host/x.dae#x") + Node("b"))));
    ASSERT_TRUE(objScene.m_spRoot);
    EXPECT_EQ(Describe(*objScene.m_spRoot), "scene(a(b))");
    EXPECT_EQ(objScene.GetComplaints(),
              WithLevel({"URI 'other.dae#x' leads out of the document, which is not supported.",
                         "URI referenced NULL element.",
                         "Ignoring <instance_node url=\"other.dae#x\"> in <node id=\"a\">",
                         "Failed to find element named \"nothing\".", "URI referenced NULL element.",
                         "Ignoring <instance_node url=\"#nothing\"> in <node id=\"a\">",
                         "URI 'http://host/x.dae#x' leads out of the document, which is not supported.",
                         "URI referenced NULL element.",
                         "Ignoring <instance_node url=\"http://host/x.dae#x\"> in <node id=\"a\">"}));

    // The document's own name is no other document.
    const CColladaTestScene objOwn(TestScene(Node("a", Instance("scene.dae#b")) + Node("b")));
    ASSERT_TRUE(objOwn.m_spRoot);
    EXPECT_EQ(Describe(*objOwn.m_spRoot), "scene(a(b),b)");
}

TEST(ColladaScene, NodesThatInstanceThemselves)
{
    const CColladaTestScene objDirect(TestScene(Node("top", Node("a", Instance("#a")))));
    EXPECT_FALSE(objDirect.m_spRoot);
    std::vector<std::string> vecExpected =
        WithLevel({"<node id=\"a\"> instances itself through <instance_node url=\"#a\"> in <node id=\"a\">",
                   "Failed to read node at index 0 named a, child of top."});
    AppendSceneFailure(vecExpected, "top");
    EXPECT_EQ(objDirect.GetComplaints(), vecExpected);

    const CColladaTestScene objOthers(
        TestScene(Node("a"), LibraryNodes(Node("p", Node("q", Instance("#r"))) + Node("r", Instance("#p")))));
    EXPECT_FALSE(objOthers.m_spRoot);
    EXPECT_EQ(
        objOthers.GetComplaints(),
        WithLevel({"<node id=\"p\"> instances itself through <instance_node url=\"#p\"> in <node id=\"r\">",
                   "Failed to read <node id=\"r\"> that <node id=\"q\"> instances",
                   "Failed to read node at index 0 named q, child of p.",
                   "Failed to load <node id=\"p\"> in <library_nodes>.",
                   "Failed to load all <library_nodes> elements in <COLLADA>."}));

    // An instance comes upon the child before the parent does.
    const CColladaTestScene objChild(
        TestScene(Node("a", Instance("#c")) + Node("p", Node("c", Instance("#p")))));
    EXPECT_FALSE(objChild.m_spRoot);
    EXPECT_EQ(objChild.GetComplaints().front(),
              "1 <node id=\"c\"> instances itself through a node around it");
}

TEST(ColladaScene, InstancesOfInstancesAreBounded)
{
    std::string strNodes = Node("n0");
    for (int n = 1; n <= 8; ++n)
    {
        std::string strInstances;
        for (int nInstance = 0; nInstance < 10; ++nInstance)
        {
            strInstances += Instance("#n" + std::to_string(n - 1));
        }
        strNodes += Node("n" + std::to_string(n), strInstances);
    }
    const CColladaTestScene objScene(TestScene(Node("a"), LibraryNodes(strNodes)));
    EXPECT_FALSE(objScene.m_spRoot);
    EXPECT_EQ(objScene.GetComplaints().front(),
              "1 The <instance_node> elements come to more than 1000000 nodes");
}

TEST(ColladaScene, DeepTreesOnASmallStack)
{
    constexpr int DEPTH = 10000;
    const auto Load = [](void*) -> void* {
        std::string strNodes;
        for (int n = 0; n < DEPTH; ++n)
        {
            strNodes += "<node id=\"n" + std::to_string(n) + "\"><translate>0 0 1</translate>";
        }
        for (int n = 0; n < DEPTH; ++n)
        {
            strNodes += "</node>";
        }
        const CColladaTestScene objScene(TestScene(Node("a", Instance("#n0")), LibraryNodes(strNodes)));
        int nNodes = 0;
        for (const CSGNode* p = objScene.m_spRoot.get(); p != nullptr;
             p = p->GetNextInTree(objScene.m_spRoot.get()))
        {
            ++nNodes;
        }
        EXPECT_EQ(nNodes, DEPTH + 2);
        return nullptr;
    };
    pthread_attr_t objAttributes;
    pthread_attr_init(&objAttributes);
    pthread_attr_setstacksize(&objAttributes, 512 * 1024);
    pthread_t objThread{};
    ASSERT_EQ(pthread_create(&objThread, &objAttributes, Load, nullptr), 0);
    pthread_join(objThread, nullptr);
    pthread_attr_destroy(&objAttributes);
}

TEST(ColladaScene, ExtraData)
{
    const auto Extra = [](const std::string& rID, const std::string& rFlags) {
        return Node(rID, "<extra><technique profile=\"OTHER\"/><technique profile=\"MAYA\">" + rFlags +
                             "</technique></extra>");
    };
    const CColladaTestScene objScene(TestScene(
        Extra("hidden", "<visibility> 0 </visibility>") + Extra("shown", "<visibility>1</visibility>") +
        Extra("both", "<double_sided>1</double_sided><visibility>0</visibility>") +
        Extra("float", "<visibility>0.5</visibility>") + Extra("float1", "<visibility>1.0</visibility>") +
        Extra("text", "<visibility>yes</visibility>") + Extra("single", "<double_sided>0</double_sided>")));
    ASSERT_TRUE(objScene.m_spRoot);
    std::string strNodes;
    for (int32_t n = 0; n < objScene.m_spRoot->GetChildrenSize(); ++n)
    {
        const CSGNode* pNode = objScene.m_spRoot->GetChild(n);
        const auto* pState = pNode->FindData<CSGData_RenderState>();
        strNodes +=
            std::string(pNode->GetGlobalName().c_str()) + (pNode->IsVisible() ? "+" : "-") +
            (pState != nullptr && pState->HasFlag(CSGData_RenderState::FLAG_DOUBLE_SIDED) ? "2 " : " ");
    }
    EXPECT_EQ(strNodes, "hidden- shown+ both-2 float- float1+ text+ single+ ");
    const std::string strNoInteger = " is not an integer.  Parsing as float and casting to integer.";
    EXPECT_EQ(objScene.GetComplaints(),
              WithLevel({"0.5" + strNoInteger, "1.0" + strNoInteger, "yes" + strNoInteger,
                         "Ignoring <visibility> element with the value \"yes\""}));
}

TEST(ColladaScene, WhatIsReadOverIsNamedOnce)
{
    const std::string strBind =
        "<instance_geometry "
        "url=\"#g\"><bind_material><technique_common/></bind_material></instance_geometry>";
    const CColladaTestScene objScene(TestScene(
        Node("a", strBind) + Node("b", strBind) + "<evaluate_scene/><extra/><extra/>", TestMesh(TRIANGLE)));
    ASSERT_TRUE(objScene.m_spRoot);
    EXPECT_NE(objScene.Find("b")->FindData<CSGData_Geometry>(), nullptr);
    EXPECT_EQ(objScene.GetComplaints(),
              WithLevel({"Ignoring 1 <evaluate_scene> elements in <visual_scene id=\"scene\">",
                         "Ignoring 2 <extra> elements in <visual_scene id=\"scene\">"}));
}

TEST(ColladaScene, ChoiceOfTheScene)
{
    struct CCase
    {
        std::string strContent;
        std::string strRoot; // empty: fails with the lines
        std::vector<std::string> vecLines;
    };
    const std::string strScenes =
        "<library_visual_scenes><visual_scene id=\"s1\"/><visual_scene name=\"n2\"/></library_visual_scenes>";
    const CCase arrCases[] = {
        {strScenes + "<scene><instance_visual_scene url=\"#s1\"/></scene>", "s1", {}},
        {strScenes + "<scene><instance_visual_scene url=\"#\"/></scene>", "n2", {}},
        {strScenes, "", {"Had no <scene> in <COLLADA>"}},
        {strScenes + "<scene/>", "", {"<scene> had no <instance_visual_scene>"}},
        {strScenes + "<scene><instance_visual_scene url=\"#s3\"/></scene>",
         "",
         {"Failed to find element named \"s3\".", "URI referenced NULL element.",
          "Failed to node for <instance_visual_scene> in default <scene>"}},
    };
    for (const CCase& rCase : arrCases)
    {
        const CColladaTestScene objScene(rCase.strContent);
        EXPECT_EQ(objScene.m_spRoot ? objScene.m_spRoot->GetGlobalName().c_str() : "", rCase.strRoot);
        EXPECT_EQ(objScene.GetComplaints(), WithLevel(rCase.vecLines)) << rCase.strContent;
    }
}
