// Skins: the vertices that come of them, the nodes that joints are bound to, and faults in them. The scene is
// that of data/bending_bar.dae, with changes.
#include "qdscenegraph/skin/CSGData_SkinBindingSet.h"
#include "qdsgloader_collada/CColladaTestScene.h"

#include <fstream>
#include <gtest/gtest.h>

namespace
{

using CLines = std::vector<std::string>;
using CEdits = std::vector<std::pair<std::string, std::string>>; // what is there, what stands in its place

// The document's content.
std::string BendingBar(const CEdits& rEdits = {})
{
    std::ifstream objFile(QDSG_TEST_DATA_DIR "/bending_bar.dae", std::ios::binary);
    std::string strText{std::istreambuf_iterator<char>(objFile), {}};
    strText = strText.substr(strText.find("<asset>"));
    strText.resize(strText.find("</COLLADA>"));
    for (const auto& [strOld, strNew] : rEdits)
    {
        const size_t nBegin = strText.find(strOld);
        EXPECT_NE(nBegin, std::string::npos) << strOld;
        strText.replace(std::min(nBegin, strText.size()), strOld.size(), strNew);
    }
    return strText;
}

// Every skinned node with the nodes of its joints, each behind the top node that it is in:
// "mesh/red[hip:hip hip:knee -]".
std::string DescribeSkins(const CSGNode& rRoot)
{
    std::string strText;
    for (const CSGNode* pNode = &rRoot; pNode != nullptr; pNode = pNode->GetNextInTree(&rRoot))
    {
        const auto* pBindings = pNode->FindData<CSGData_SkinBindingSet>();
        for (int32_t n = 0; pBindings != nullptr && n < pBindings->GetNumBindings(); ++n)
        {
            strText += std::string(pNode->GetGlobalName().c_str()) + "[";
            for (int32_t nJoint = 0; nJoint < pBindings->GetBinding(n)->GetNumJoints(); ++nJoint)
            {
                const auto spJoint = pBindings->GetBinding(n)->GetJointNode(nJoint);
                const CSGNode* pTop = spJoint.get();
                while (pTop != nullptr && pTop->GetParent() != &rRoot)
                {
                    pTop = pTop->GetParent();
                }
                strText += nJoint == 0 ? "" : " ";
                strText += pTop == nullptr ? "-"
                                           : std::string(pTop->GetGlobalName().c_str()) + ":" +
                                                 spJoint->GetGlobalName().c_str();
            }
            strText += "]";
        }
    }
    return strText;
}

const CEdits NO_MATERIALS = {{"<bind_material>", "<!--"}, {"</bind_material>", "-->"}};
const std::string WHOLE = "mesh[hip:hip hip:knee -]mesh[hip:hip hip:knee -]";
constexpr const char* NAMES = "<Name_array id=\"joints-a\" count=\"2\">root bend</Name_array>";
constexpr const char* IGNORING =
    "4 Ignoring <skin> in <controller id=\"skin\">: its geometry is shown as it is";

CEdits With(CEdits vecEdits)
{
    vecEdits.insert(vecEdits.begin(), NO_MATERIALS.begin(), NO_MATERIALS.end());
    return vecEdits;
}

CEdits Joints(const std::string& rIDs)
{
    return With({{NAMES, "<IDREF_array id=\"joints-a\" count=\"2\">" + rIDs + "</IDREF_array>"},
                 {"name=\"JOINT\" type=\"name\"", "type=\"IDREF\""}});
}

} // namespace

TEST(ColladaSkins, VerticesFollowTheirJoints)
{
    const CColladaTestScene objScene(BendingBar());
    ASSERT_TRUE(objScene.m_spRoot);
    EXPECT_EQ(objScene.GetComplaints(), CLines{});
    EXPECT_EQ(DescribeSkins(*objScene.m_spRoot), "mesh/red[hip:hip hip:knee -]mesh/blue[hip:hip hip:knee -]");
    struct CCase
    {
        const char* szNode;
        std::vector<CSGFloat3> vecExpected;
    };
    // The joint in the middle is turned by 90 degrees. Where the mesh's own node stands does not matter.
    const CCase arrCases[] = {
        {"mesh/red",
         {{10, 0, 0},
          {11, 0, 0},
          {10, 1, 0},
          {10.25f, 0.25f, 0}, // 1 and 3 parts
          {10, 0, 0},
          {10, 1, 0},
          {11, 0, 0},
          {10.25f, 0.25f, 0}}},
        {"mesh/blue", {{11, 0, 0}, {11, 1, 0}, {10.25f, 0.25f, 0}, {11.5f, 1, 0}}}, // 3 parts the bind shape
    };
    for (const CCase& rCase : arrCases)
    {
        const CSGSkinBinding* pBinding =
            objScene.Find(rCase.szNode)->FindData<CSGData_SkinBindingSet>()->GetBinding(0);
        EXPECT_EQ(pBinding->GetSkin()->GetMaxJointsPerVertex(), 2);
        std::vector<float> vecPositions;
        ASSERT_TRUE(pBinding->ComputeSkinnedVertices(vecPositions));
        ASSERT_EQ(vecPositions.size(), rCase.vecExpected.size() * 3);
        for (size_t n = 0; n < rCase.vecExpected.size(); ++n)
        {
            EXPECT_NEAR(vecPositions[3 * n], rCase.vecExpected[n].x, 1e-5f) << rCase.szNode << n;
            EXPECT_NEAR(vecPositions[3 * n + 1], rCase.vecExpected[n].y, 1e-5f) << rCase.szNode << n;
            EXPECT_NEAR(vecPositions[3 * n + 2], rCase.vecExpected[n].z, 1e-5f) << rCase.szNode << n;
        }
    }
}

TEST(ColladaSkins, JointsAreFound)
{
    const std::string strInstances = "<node id=\"one\"><instance_node url=\"#both\"/></node><node "
                                     "id=\"two\"><instance_node url=\"#both\"/></node>";
    const std::string strNoSID = "4 IDRef for value 0, primitive 0 referenced a node with no SID.";
    struct CCase
    {
        CEdits vecEdits;
        std::string strExpected;
        CLines vecLines = {};
    };
    const CCase arrCases[] = {
        {With({}), WHOLE},
        {With({{"<skeleton>#hip</skeleton>", ""}}), WHOLE},
        {With({{"#hip</skeleton>", "#knee</skeleton><skeleton>#hip</skeleton>"}}), WHOLE},
        // In another place of the scene than the skeleton says; a node without id is nothing that a URI
        // names.
        {With({{"#hip<", "#knee<"}}), WHOLE},
        {With({{"#hip<", "#lost<"}}),
         WHOLE,
         {"1 Failed to find element named \"lost\".", "1 URI referenced NULL element.",
          "1 Couldn't find node referred to by <skeleton> 0 in <instance_controller id=\"\">"}},
        // By the names or ids of nodes; a scoped id comes first.
        {With({{"sid=\"bend\"", "sid=\"b\" name=\"bend\""}}), WHOLE},
        {With({{"id=\"knee\" sid=\"bend\"", "id=\"bend\" sid=\"b\" name=\"c\""}}),
         "mesh[hip:hip hip:bend -]mesh[hip:hip hip:bend -]"},
        {With({{"<node id=\"hip\"",
                "<node id=\"bend\"/><node id=\"h\" sid=\"h\" name=\"bend\"/><node id=\"hip\""},
               {"<skeleton>#hip</skeleton>", "<skeleton>#hip</skeleton>"}}),
         WHOLE},
        {Joints("hip knee"), WHOLE},
        {Joints("mesh hip"), "mesh[mesh:mesh hip:hip -]mesh[mesh:mesh hip:hip -]", {strNoSID}},
        {With({{NAMES, "<IDREF_array id=\"joints-a\" count=\"2\">hip knee</IDREF_array>"}}), WHOLE},
        // A joint that nothing follows needs no node.
        {With({{"id=\"binds-a\" count=\"32\">", "id=\"binds-a\">1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1 "},
               {"\">root bend<", "\">none root bend<"},
               {"#joints-a\" count=\"2\"", "#joints-a\" count=\"3\""},
               {"#binds-a\" count=\"2\"", "#binds-a\" count=\"3\""},
               {"<v>0 0 2 0 0 0 0 1 0 0 1 1 0 1 0 1 1 -1", "<v>0 1 2 1 0 1 0 2 0 1 1 2 0 2 0 2 1 -1"}}),
         "mesh[hip:hip hip:knee]mesh[hip:hip hip:knee -]"},
        {With({{"root bend", "root lost"}}),
         "",
         {"1 Failed to find joint node with local name 'lost'.",
          "4 Ignoring the skin of <instance_controller url=\"#skin\"> in <node id=\"mesh\">: its geometry is "
          "shown as it is"}},
        // Copies of a character have skeletons of their own, wherever the mesh stands in it.
        {With({{"<library_visual_scenes><visual_scene id=\"scene\">", "<library_nodes><node id=\"both\">"},
               {"</visual_scene></library_visual_scenes>",
                "</node></library_nodes><library_visual_scenes><visual_scene id=\"scene\">" + strInstances +
                    "</visual_scene></library_visual_scenes>"}}),
         "mesh[one:hip one:knee -]mesh[one:hip one:knee -]mesh[two:hip two:knee -]mesh[two:hip two:knee -]"},
        // Copies of the mesh alone follow the skeleton that is in the scene, or is brought there.
        {With({{"<library_visual_scenes><visual_scene id=\"scene\">", "<library_nodes><node id=\"both\">"},
               {"<node id=\"hip\"", "</node><node id=\"hip\""},
               {"</visual_scene></library_visual_scenes>",
                "</library_nodes><library_visual_scenes><visual_scene id=\"scene\"><instance_node "
                "url=\"#both\"/>"
                "</visual_scene></library_visual_scenes>"},
               {"<instance_node url=\"#both\"/>", "<node id=\"one\"><instance_node url=\"#both\"/></node>"}}),
         WHOLE},
        // A controller on another one.
        {With({{"<skin source=\"#bar\">", "<skin source=\"#morph\">"},
               {"</library_controllers>",
                "<controller id=\"morph\"><morph source=\"#bar\"/></controller></library_controllers>"}}),
         WHOLE,
         {"4 Ignoring <morph> in <controller id=\"morph\">: what it stands on is shown"}},
    };
    for (const CCase& rCase : arrCases)
    {
        const CColladaTestScene objScene(BendingBar(rCase.vecEdits));
        ASSERT_TRUE(objScene.m_spRoot);
        EXPECT_EQ(DescribeSkins(*objScene.m_spRoot), rCase.strExpected) << rCase.vecEdits.back().first;
        EXPECT_EQ(objScene.GetComplaints(), rCase.vecLines);
        EXPECT_TRUE(objScene.Find("mesh")->FindData<CSGData_Geometry>());
    }
}

TEST(ColladaSkins, FaultsLeaveTheMeshAsItIs)
{
    const std::string strWeights = " in <vertex_weights> in <skin id=\"skin\">";
    struct CCase
    {
        CEdits vecEdits;
        std::string strLine;
    };
    const CCase arrCases[] = {
        {{{"<bind_shape_matrix>1", "<bind_shape_matrix>"}},
         "Failed to convert <bind_shape_matrix> to a transform in <skin id=\"skin\">"},
        {{{"#binds-a\" count=\"2\"", "#binds-a\" count=\"1\""}}, "Got 2 joints and 1 inverse bind matrices."},
        {{{"type=\"float4x4\"", "type=\"float4\""}},
         "Expected 16 primitives per value for inverse bind matrices source but got 4"},
        {{{"semantic=\"INV_BIND_MATRIX\"", "semantic=\"BIND\""}},
         "<joints> had no <input semantic=\"INV_BIND_MATRIX\"> in <skin id=\"skin\">"},
        {Joints("hip bar"), "IDRef for value 1, primitive 0 did not refer to a node."},
        {{{"<vertex_weights count=\"6\">", "<vertex_weights count=\"7\">"}},
         "<vcount> had 6 values which differed from 7 vertices specified by <vertex_weights> in <skin "
         "id=\"skin\">"},
        {{{"<vertex_weights count=\"6\">", "<vertex_weights count=\"4\">"},
          {"<vcount>1 1 2 2 1 2", "<vcount>1 1 2 5"}},
         "<vertex_weights> had 4 vertices and the geometry 6 in <skin id=\"skin\">"},
        {{{"1 -1</v>", "1</v>"}}, "<v> had only 17 values and ended in vertex 5" + strWeights},
        {{{"<vcount>1 ", "<vcount>18446744073709551615 "}},
         "<v> had only 18 values and ended in vertex 0" + strWeights},
        {{{"1 -1</v>", "1 -1 0</v>"}}, "<v> had 19 values where <vcount> asks for 18" + strWeights},
        {{{"1 -1</v>", "1 2</v>"}}, "<v> had no such joint or weight at index 16 for vertex 5" + strWeights},
        {{{"1 -1</v>", "1 -2</v>"}}, "<v> had no such joint or weight at index 16 for vertex 5" + strWeights},
        {{{"1 -1</v>", "3 0</v>"}}, "<v> had no such joint or weight at index 16 for vertex 5" + strWeights},
        {{{"1 -1</v>", "-1 0</v>"}}, "<v> had no such joint or weight at index 16 for vertex 5" + strWeights},
        {{{">1 3 0.5<", ">1 3 0<"}}, "Failed to normalize weights for vertex 1"},
        {{{">1 3 0.5<", ">1 -1 0.5<"}}, "Failed to normalize weights for vertex 3"},
        {{{">1 3 0.5<", ">1 NaN 0.5<"}}, "Failed to normalize weights for vertex 3"},
        {{{">1 3 0.5<", ">1 INF 0.5<"}}, "Failed to normalize weights for vertex 3"},
        {{{"semantic=\"JOINT\" source=\"#joints\" offset=\"1\"",
           "semantic=\"JOINT\" source=\"#more\" offset=\"1\""},
          {"<source id=\"weights\">",
           "<source id=\"more\"><Name_array id=\"more-a\">root other</Name_array><technique_common><accessor "
           "source=\"#more-a\" count=\"2\"><param "
           "type=\"name\"/></accessor></technique_common></source><source "
           "id=\"weights\">"}},
         "Skin had no joint named other from name value 1 for V index 6 for vertex 2" + strWeights},
    };
    for (const CCase& rCase : arrCases)
    {
        const CColladaTestScene objScene(BendingBar(rCase.vecEdits));
        ASSERT_TRUE(objScene.m_spRoot) << rCase.strLine;
        EXPECT_EQ(DescribeSkins(*objScene.m_spRoot), "");
        CLines vecLines = objScene.GetComplaints();
        ASSERT_GE(vecLines.size(), 2u) << rCase.strLine;
        EXPECT_EQ(vecLines.back(), IGNORING);
        EXPECT_EQ(vecLines[vecLines.size() - 2], "1 " + rCase.strLine);
        EXPECT_NE(objScene.m_spRoot->FindDescendantWithData(&CSGData_Geometry::ms_objDataTypeInfo), nullptr);
    }
}

TEST(ColladaSkins, VerticesWithoutWeightsStayWhereTheyAre)
{
    const CColladaTestScene objScene(BendingBar(With({{"<vcount>1 ", "<vcount>0 "}, {"<v>0 0 ", "<v>"}})));
    ASSERT_TRUE(objScene.m_spRoot);
    std::vector<float> vecPositions;
    ASSERT_TRUE(
        objScene.Find("mesh")->FindData<CSGData_SkinBindingSet>()->GetBinding(0)->ComputeSkinnedVertices(
            vecPositions));
    EXPECT_EQ(std::vector<float>(vecPositions.begin(), vecPositions.begin() + 3),
              (std::vector<float>{10, 0, 0}));
    EXPECT_EQ(objScene.GetComplaints(), CLines{});
}
