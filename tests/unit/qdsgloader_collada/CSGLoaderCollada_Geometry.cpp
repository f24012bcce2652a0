// Meshes: which vertices and primitives they become, and how faults in them are reported.
#include "qdscenegraph/geometry/CSGData_GeomBounds.h"
#include "qdscenegraph/geometry/CSGGeom_Lines.h"
#include "qdsgloader_collada/CColladaGeometrySet.h"
#include "qdsgloader_collada/CColladaTestScene.h"

#include <1.4/dom/domSource.h>
#include <1.4/dom/domVertices.h>
#include <gtest/gtest.h>

namespace
{

std::string Triangles(const std::string& rCount, const std::string& rInputs, const std::string& rIndices)
{
    return "<triangles count=\"" + rCount + "\">" + rInputs + "<p>" + rIndices + "</p></triangles>";
}

std::string Polylist(const std::string& rCount, const std::string& rVCount, const std::string& rIndices)
{
    return "<polylist count=\"" + rCount + "\">" + TEST_VERTEX + "<vcount>" + rVCount + "</vcount><p>" +
           rIndices + "</p></polylist>";
}

const CSGGeomBinding* GetBinding(const CColladaTestScene& rScene, int32_t nBinding = 0)
{
    const CSGNode* pNode = rScene.m_spRoot ? rScene.Find("n") : nullptr;
    const auto* pData = pNode != nullptr ? pNode->FindData<CSGData_Geometry>() : nullptr;
    return pData != nullptr ? pData->GetGeomList()->GetBinding(nBinding) : nullptr;
}

std::vector<int32_t> GetIndices(const CSGGeomBinding* pBinding)
{
    const CSGIndexBuffer* pIndices =
        static_cast<const CSGIndexedGeom*>(pBinding->GetGeom())->GetIndexBuffer();
    std::vector<int32_t> vecIndices;
    for (int32_t n = 0; n < pIndices->GetNumIndices(); ++n)
    {
        vecIndices.push_back(pIndices->GetIndex(n));
    }
    return vecIndices;
}

// Two triangles a side; each corner with the number of its side as its normal, or with normal 0.
std::string Cube(bool bSharedNormal)
{
    static constexpr int QUADS[6][4] = {{0, 1, 3, 2}, {4, 6, 7, 5}, {0, 4, 5, 1},
                                        {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 5, 7, 3}};
    std::string strIndices;
    for (int nSide = 0; nSide < 6; ++nSide)
    {
        for (const int nCorner : {0, 1, 2, 0, 2, 3})
        {
            strIndices +=
                std::to_string(QUADS[nSide][nCorner]) + " " + std::to_string(bSharedNormal ? 0 : nSide) + " ";
        }
    }
    return Triangles("12", std::string(TEST_VERTEX) + TEST_NORMAL, strIndices);
}

} // namespace

TEST(ColladaGeometry, CornersThatAgreeShareAVertex)
{
    for (const bool bSharedNormal : {false, true})
    {
        const CColladaTestScene objScene(TestMeshScene(Cube(bSharedNormal)));
        const CSGGeomBinding* pBinding = GetBinding(objScene);
        ASSERT_NE(pBinding, nullptr);
        EXPECT_EQ(pBinding->GetVertexBuffer()->GetNumVertices(), bSharedNormal ? 8 : 24);
        EXPECT_EQ(static_cast<const CSGGeom_Triangles*>(pBinding->GetGeom())->GetNumTriangles(), 12);
        EXPECT_EQ(objScene.Find("n")->FindData<CSGData_GeomBounds>()->GetBox().m_objMax,
                  (CSGFloat3{1, 1, 1}));
        EXPECT_TRUE(objScene.GetComplaints().empty());
    }
}

TEST(ColladaGeometry, VerticesInTheOrderOfTheirFirstCorners)
{
    // The texture coordinate is turned over; the tangent comes to nothing, but its index tells corners apart.
    const CColladaTestScene objScene(TestMeshScene(Triangles(
        "2",
        std::string(TEST_VERTEX) + "<input semantic=\"TEXCOORD\" source=\"#tex\" offset=\"1\" set=\"1\"/>" +
            "<input semantic=\"TEXTANGENT\" source=\"#nor\" offset=\"2\"/>",
        "7 0 0 2 0 0 4 0 0  2 0 0 7 0 1 4 0 0")));
    const CSGGeomBinding* pBinding = GetBinding(objScene);
    ASSERT_NE(pBinding, nullptr);
    EXPECT_EQ(GetIndices(pBinding), (std::vector<int32_t>{0, 1, 2, 1, 3, 2}));
    EXPECT_EQ(pBinding->GetVertexBuffer()->GetFormat().GetDescription(), "position:3 texcoord1:2");
    const auto arrData = pBinding->GetVertexBuffer()->GetData();
    EXPECT_EQ(std::vector<float>(arrData.begin(), arrData.end()),
              (std::vector<float>{1, 1, 1, 0.25f, 0.25f, 0, 1, 0, 0.25f, 0.25f, //
                                  1, 0, 0, 0.25f, 0.25f, 1, 1, 1, 0.25f, 0.25f}));
    EXPECT_EQ(objScene.GetComplaints(),
              (std::vector<std::string>{
                  "4 Unrecognized input semantic TEXTANGENT",
                  "4 Unrecognized semantic TEXTANGENT.  Data from this <input> will be ignored."}));
}

TEST(ColladaGeometry, Members)
{
    const std::string strSources =
        TestSource("stp", "1 2 3", "count=\"1\" stride=\"3\"", TEST_XYZ) +
        TestSource("rgba", "0.1 0.2 0.3 0.4", "count=\"1\"", "<param name=\"RGBA\" type=\"float4\"/>");
    // The indices of all but the position are 0; a second normal for set 0 is one too many.
    const std::string strInputs = std::string(TEST_VERTEX) +
                                  "<input semantic=\"TEXCOORD\" source=\"#stp\" offset=\"1\" "
                                  "set=\"0\"/><input semantic=\"COLOR\" source=\"#rgba\" offset=\"1\"/>"
                                  "<input semantic=\"NORMAL\" source=\"#nor\" offset=\"1\"/><input "
                                  "semantic=\"NORMAL\" source=\"#pos\" offset=\"0\"/>";
    const CColladaTestScene objScene(TestMeshScene(strSources + Triangles("1", strInputs, "1 0 2 0 4 0")));
    const CSGGeomBinding* pBinding = GetBinding(objScene);
    ASSERT_NE(pBinding, nullptr);
    EXPECT_EQ(pBinding->GetVertexBuffer()->GetFormat().GetDescription(),
              "position:3 texcoord0:3 color0:4 normal:3");
    const auto arrVertex = pBinding->GetVertexBuffer()->GetData().subspan(0, 13);
    EXPECT_EQ(std::vector<float>(arrVertex.begin(), arrVertex.end()),
              (std::vector<float>{0, 0, 1, 1, 2, 3, 0.1f, 0.2f, 0.3f, 0.4f, 1, 0, 0}));
    EXPECT_EQ(objScene.GetComplaints(),
              std::vector<std::string>{"4 Already had an <input semantic=\"NORMAL\"> for set 0.  Data from "
                                       "this <input> will be ignored."});
}

TEST(ColladaGeometry, PolygonsBecomeFans)
{
    const std::string strNotTriangulated = "4 NOT-TRIANGULATED!!!  g => Encountered a <polylist> that was "
                                           "not all triangles.  Converting to triangles, but might be "
                                           "inaccurate.  Triangulating on export would be better.";
    struct CCase
    {
        std::string strPolylist;
        std::vector<int32_t> vecIndices;
        bool bComplaint;
    };
    const CCase arrCases[] = {
        {Polylist("2", "4 4", "0 1 3 2 4 5 7 6"), {0, 1, 2, 0, 2, 3, 4, 5, 6, 4, 6, 7}, true},
        {Polylist("2", "3 5", "0 1 2 2 3 4 5 6"), {0, 1, 2, 2, 3, 4, 2, 4, 5, 2, 5, 6}, true},
        {Polylist("2", "3 3", "0 1 2 2 1 3"), {0, 1, 2, 2, 1, 3}, false},
    };
    for (const CCase& rCase : arrCases)
    {
        const CColladaTestScene objScene(TestMeshScene(rCase.strPolylist));
        const CSGGeomBinding* pBinding = GetBinding(objScene);
        ASSERT_NE(pBinding, nullptr) << rCase.strPolylist;
        EXPECT_EQ(GetIndices(pBinding), rCase.vecIndices) << rCase.strPolylist;
        EXPECT_EQ(objScene.GetComplaints(), rCase.bComplaint ? std::vector<std::string>{strNotTriangulated}
                                                             : std::vector<std::string>{});
    }
}

TEST(ColladaGeometry, OrderAndSkippedKinds)
{
    const std::string strIndices = std::string(TEST_VERTEX) + "<p>0 1 2</p>";
    const CColladaTestScene objScene(TestMeshScene(
        Triangles("1", TEST_VERTEX, "0 1 2") + "<linestrips count=\"1\">" + strIndices + "</linestrips>" +
        "<polygons count=\"1\">" + strIndices + "</polygons><polygons count=\"1\">" + strIndices +
        "</polygons>" + Polylist("1", "3", "2 1 0") + "<trifans count=\"1\">" + strIndices +
        "</trifans><tristrips count=\"1\">" + strIndices + "</tristrips><lines count=\"2\">" + TEST_VERTEX +
        "<p>0 1 1 2</p></lines><extra><technique profile=\"X\"/></extra>"));
    ASSERT_TRUE(objScene.m_spRoot);
    ASSERT_NE(GetBinding(objScene, 2), nullptr);
    EXPECT_EQ(static_cast<CSGGeom_Lines*>(GetBinding(objScene, 0)->GetGeom())->GetNumLines(), 2);
    EXPECT_EQ(GetBinding(objScene, 1)
                  ->GetVertexBuffer()
                  ->GetVertMemberData(0, CSGVertexFormat::MEMBER_POSITION, 0)[1],
              1.0f)
        << "the polylist";
    EXPECT_EQ(objScene.GetComplaints(),
              (std::vector<std::string>{"4 Ignoring 1 <linestrips> elements in <mesh id=\"\">",
                                        "4 Ignoring 2 <polygons> elements in <mesh id=\"\">",
                                        "4 Ignoring 1 <trifans> elements in <mesh id=\"\">",
                                        "4 Ignoring 1 <tristrips> elements in <mesh id=\"\">",
                                        "4 Ignoring 1 <extra> elements in <mesh id=\"\">"}));

    const CColladaTestScene objOthers(
        TestScene("<node id=\"n\"><instance_geometry url=\"#c\"/><instance_geometry url=\"#s\"/></node>",
                  "<library_geometries><geometry id=\"c\"><convex_mesh/></geometry><geometry "
                  "id=\"s\"><spline><control_vertices/></spline>"
                  "</geometry></library_geometries>"));
    ASSERT_TRUE(objOthers.m_spRoot);
    EXPECT_EQ(objOthers.Find("n")->FindData<CSGData_Geometry>(), nullptr);
    EXPECT_EQ(objOthers.GetComplaints(),
              (std::vector<std::string>{"4 Ignoring <convex_mesh> in <geometry id=\"c\">",
                                        "4 Ignoring <spline> in <geometry id=\"s\">"}));
}

TEST(ColladaGeometry, NegativeIndicesBecomeZero)
{
    const CColladaTestScene objScene(
        TestMeshScene(Triangles("1", std::string(TEST_VERTEX) + TEST_NORMAL, "-1 -1 7 0 4 0")));
    ASSERT_NE(GetBinding(objScene), nullptr);
    const auto arrVertex = GetBinding(objScene)->GetVertexBuffer()->GetData().subspan(0, 6);
    EXPECT_EQ(std::vector<float>(arrVertex.begin(), arrVertex.end()), (std::vector<float>{0, 0, 0, 1, 0, 0}));
    const std::string strLine =
        "4 Found a negative input index in vertex data.  WTF?  Just going to use 0 instead.";
    EXPECT_EQ(objScene.GetComplaints(), (std::vector<std::string>{strLine, strLine}));
}

TEST(ColladaGeometry, Faults)
{
    const auto Input = [](const std::string& rText) { return "<input " + rText + "/>"; };
    const std::string strVertex = TEST_VERTEX;
    const std::string strVertexBuffer = "Failed to create a vertex buffer for <triangles>";
    const std::string strInput = "Failed to add <input> to helper object in <triangles>";
    struct CCase
    {
        std::string strPrimitive;
        std::vector<std::string> vecLines; // at level 1, without what every failed triangles or polylist has
    };
    const CCase arrCases[] = {
        {"<triangles count=\"1\">" + strVertex + "</triangles>", {"<triangles> had NULL <p>"}},
        {Triangles("0", strVertex, ""), {"<triangles> had 0 triangles"}},
        {Triangles("1", "", "0 1 2"), {"<triangles> had 0 indices per vertex"}},
        {Triangles("1", strVertex, "0 1 2 3"),
         {"<triangles> had 4 primitive indices, which is different than the expected 3 which is 1 inputs per "
          "vertex * 3 vertices "
          "per triangle * 1 triangles"}},
        {Triangles("6148914691236517206", strVertex, "0 1"), // times 3 it wraps round to 2
         {"<triangles> had 2 primitive indices, which is different than the expected 2147483647 which is 1 "
          "inputs per vertex * 3 "
          "vertices per triangle * 2147483647 triangles"}},
        {Triangles("1", strVertex, "0 1 8"),
         {"Failed to look up input value at index 8 in Float2Array for <input semantic=\"POSITION\"> at "
          "index 0 for vertex 2",
          strVertexBuffer}},
        // The first fault in the order of vertices counts, not the first in that of inputs.
        {Triangles("1", strVertex + TEST_NORMAL, "0 0 1 6 8 0"),
         {"Failed to look up input value at index 6 in Float2Array for <input semantic=\"NORMAL\"> at index "
          "1 for vertex 1",
          strVertexBuffer}},
        {Triangles("1", strVertex, "0 1 99999999999"),
         {"Failed to look up input value at index 2147483647 in Float2Array for <input "
          "semantic=\"POSITION\"> at index 0 for vertex "
          "2",
          strVertexBuffer}},
        {Triangles("1", Input("semantic=\"NORMAL\" source=\"#nor\" offset=\"0\""), "0 1 2"),
         {"Had invalid original vertices input -1", "Had invalid number of original vertices -1.",
          strVertexBuffer}},
        {Triangles("1", strVertex + Input("semantic=\"VERTEX\" source=\"#v\" offset=\"1\""), "0 1 2"),
         {"Already had original vertices input 0", strInput}},
        {Triangles("1", Input("semantic=\"VERTEX\" source=\"#pos\" offset=\"0\""), "0 1 2"),
         {"URI '#pos' referenced element of type " + std::to_string(ColladaDOM141::domSource::ID()) +
              " when expecting type " + std::to_string(ColladaDOM141::domVertices::ID()) + ".",
          "URI for <input> with \"VERTEX\" semantic referenced NULL <vertices>.", strInput}},
        {Triangles("1", strVertex + Input("semantic=\"NORMAL\" source=\"other.dae#nor\" offset=\"1\""),
                   "0 1 2"),
         {"URI 'other.dae#nor' leads out of the document, which is not supported.",
          "URI referenced NULL element.",
          "URI for <input> with \"NORMAL\" semantic referenced NULL <source>.", strInput}},
        {Triangles("1", strVertex + Input("semantic=\"NORMAL\" source=\"#nor\" offset=\"99999999999\""),
                   "0 1 2"),
         {"Handed in invalid offset -1", "Failed to setup <input semantic=\"NORMAL\">",
          "Failed to add input for <input> with \"NORMAL\" semantic.", strInput}},
        {"<polylist count=\"1\">" + strVertex + "<p>0 1 2</p></polylist>", {"<polylist> had NULL <vcount>"}},
        {Polylist("0", "3", "0 1 2"), {"<polylist> had 0 polys"}},
        {Polylist("2", "3 0", "0 1 2"), {"<polylist> had a poly with 0 vertices"}},
        {Polylist("2", "3 3", "0 1 2"),
         {"<polylist> had 3 primitive indices, which is different than the expected 6 which is 1 inputs per "
          "vertex * 3 vertices per "
          "poly * 2 polys"}},
        {Polylist("1", "3 3", "0 1 2"), {"<polylist> had 1 polys but 2 values in <vcount>"}},
        {Polylist("2", "3 18446744073709551614", "0 1 2"),
         {"<polylist> had 3 primitive indices, which is different than the expected 2147483647 which is 1 "
          "inputs per vertex * "
          "2147483647 vertices of all polys"}},
        {Polylist("2", "2 3", "0 1 2 3 4"), {"Assert 'nVCount >= 3' failed"}},
    };
    for (const CCase& rCase : arrCases)
    {
        const CColladaTestScene objScene(TestMeshScene(rCase.strPrimitive));
        EXPECT_FALSE(objScene.m_spRoot) << rCase.strPrimitive;
        std::vector<std::string> vecExpected;
        for (const std::string& rLine : rCase.vecLines)
        {
            vecExpected.push_back("1 " + rLine);
        }
        if (rCase.strPrimitive.starts_with("<triangles"))
        {
            vecExpected.push_back("1 Handed in NULL geometry.");
            vecExpected.push_back(
                "1 Failed to add geometry for <triangles id=\"\"> at index 0 under <mesh id=\"\">");
        }
        else
        {
            vecExpected.push_back("1 Failed to load <polylist id=\"\"> at index 0 under <mesh id=\"\">");
        }
        vecExpected.push_back("1 Failed to load <mesh> in <geometry id=\"g\">");
        vecExpected.push_back("1 Failed to load all <library_geometries> elements in <COLLADA>.");
        std::vector<std::string> vecErrors = objScene.GetComplaints();
        std::erase_if(vecErrors, [](const std::string& r) { return r.starts_with("4 "); });
        EXPECT_EQ(vecErrors, vecExpected) << rCase.strPrimitive;
        // A second attempt names the geometry, too.
        CLogCapture objLog;
        EXPECT_FALSE(objScene.m_spLoader->LoadSceneGraph());
        EXPECT_TRUE(objLog.HasLine("1 Failed to load <mesh> in <geometry id=\"g\">"));
    }
}

TEST(ColladaGeometry, SourcesAreBoundedByTheFile)
{
    constexpr int SOURCES = 40;
    std::string strZeros;
    for (int n = 0; n < 50000; ++n)
    {
        strZeros += "0 ";
    }
    const auto Accessor = [](int n) {
        return "<source id=\"s" + std::to_string(n) +
               "\"><technique_common><accessor source=\"#all\" count=\"49998\" stride=\"1\">" + TEST_XYZ +
               "</accessor></technique_common></source>";
    };
    std::string strSources =
        "<source id=\"zeros\"><float_array id=\"all\">" + strZeros + "</float_array></source>";
    std::string strTriangles;
    for (int n = 0; n < SOURCES; ++n)
    {
        strSources += Accessor(n);
        strTriangles += Triangles("1",
                                  std::string(TEST_VERTEX) + "<input semantic=\"NORMAL\" source=\"#s" +
                                      std::to_string(n) + "\" offset=\"0\"/>",
                                  "0 1 2");
    }
    const CColladaTestScene objScene(TestMeshScene(strSources + strTriangles));
    EXPECT_FALSE(objScene.m_spRoot);
    EXPECT_TRUE(objScene.GetComplaints().front().ends_with("hold too much for the size of the file"));
}

TEST(ColladaGeometry, OriginalVertices)
{
    const auto spBuffer = [] {
        CSGVertexFormat objFormat;
        objFormat.AddMemberN(CSGVertexFormat::MEMBER_POSITION, 0, 3);
        return CDeindexedVertexBuffer::Create(objFormat, 3, 5);
    }();
    const auto Get = [&](int32_t n) {
        const auto arr = spBuffer->GetDeindexedIndicesForOriginalIndex(n);
        return std::vector<int32_t>(arr.begin(), arr.end());
    };
    for (const auto& [nNew, nOriginal] : {std::pair(4, 0), {0, 2}, {1, 0}, {3, 2}})
    {
        EXPECT_TRUE(spBuffer->AddIndex(nNew, nOriginal));
    }
    EXPECT_EQ(Get(0), (std::vector<int32_t>{1, 4}));
    EXPECT_EQ(Get(1), (std::vector<int32_t>{}));
    EXPECT_EQ(Get(2), (std::vector<int32_t>{0, 3}));
    EXPECT_TRUE(spBuffer->AddIndex(2, 1)) << "after a look-up";
    EXPECT_EQ(Get(1), (std::vector<int32_t>{2}));
    EXPECT_FALSE(spBuffer->AddIndex(5, 0));
    EXPECT_FALSE(spBuffer->AddIndex(0, 3));
    EXPECT_TRUE(Get(3).empty());
}
