// Files made to keep the loader busy, to fill the memory or to lead it in circles: each costs the element
// that is wrong, and nothing else.
#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdsgloader_fbx/CFBXTestGraph.h"
#include "support/FBXTestFile.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{

using namespace std::string_literals;

// The global names of all nodes, each before those below it.
std::string GetNames(const CFBXTestGraph& rGraph)
{
    std::string strNames;
    for (CSGNode* p = rGraph.m_spRoot.get(); p != nullptr; p = p->GetNextInTree(rGraph.m_spRoot.get()))
    {
        strNames += (strNames.empty() ? "" : " ") + std::string(p->GetGlobalName().GetView());
    }
    return strNames;
}

std::string Repeat(int nCount, const std::string& rText)
{
    std::string strResult;
    for (int n = 0; n < nCount; ++n)
    {
        std::string strText = rText;
        for (size_t i = 0; (i = strText.find('@')) != std::string::npos;)
        {
            strText.replace(i, 1, std::to_string(n));
        }
        strResult += strText;
    }
    return strResult;
}

const std::string TRIANGLE = Array("Vertices", "0,0,0,1,0,0,0,1,0") + Array("PolygonVertexIndex", "0,1,-3");

// One object of each class, and connections from each to each, to itself and to properties.
const std::string ONE_OF_EACH =
    Object("Model", 1, "A", "Mesh") + Object("Geometry", 2, "mesh", "Mesh", TRIANGLE) +
    Object("Material", 3, "red") + Object("Texture", 4, "t") + Object("LayeredTexture", 5, "l") +
    Object("Video", 6, "v", "Clip") + Object("Deformer", 7, "s", "Skin") +
    Object("Deformer", 8, "c", "Cluster", Array("Indexes", "0,1,2") + Array("Weights", "1,1,1")) +
    Object("AnimationStack", 9, "walk") + Object("AnimationLayer", 10, "l") +
    Object("AnimationCurveNode", 11, "T") +
    Object("AnimationCurve", 12, "", "", Array("KeyTime", "0,46186158000") + Array("KeyValueFloat", "0,1")) +
    Object("Pose", 13, "p", "BindPose") + Object("NodeAttribute", 14, "lamp", "Light") +
    Object("Deformer", 15, "b", "BlendShape") + Object("LayeredTexture", 16, "l2");

std::string ConnectEachWithEach(int nCount)
{
    CValues vecEnds{"1,0"};
    for (int i = 1; i <= nCount; ++i)
    {
        for (int j = 1; j <= nCount; ++j)
        {
            for (const char* szProperty : {"", ",DiffuseColor", ",Lcl Translation", ",d|X"})
            {
                vecEnds.push_back(std::to_string(i) + "," + std::to_string(j) + szProperty);
            }
        }
    }
    return Connect(vecEnds);
}

TEST(FBXHostile, WhatIsWrongCostsItsElementAlone)
{
    const struct
    {
        const char* szName;
        std::string strObjects;
        std::string strConnections;
        std::string strNodes;
        std::string strComplaint; // one of the lines; empty: there is none
    } CASES[] = {
        {"models in a circle",
         Object("Model", 1, "A") + Object("Model", 2, "B") + Object("Model", 3, "C") +
             Object("Model", 4, "D"),
         Connect({"1,2", "2,1", "3,2", "3,3", "4,0"}), "RootNode D A B C",
         "4 Node 'A' is below itself; taking it as a child of the root"},
        {"all in circles", ONE_OF_EACH, ConnectEachWithEach(16), "RootNode A A/red A/lamp",
         "4 Ignoring layered textures for property 'DiffuseColor')"},
        {"an id twice", Object("Model", 1, "A") + Object("Model", 1, "B"), Connect({"1,0", "1,0"}),
         "RootNode A", "4 Ignoring the Model 'B': its id 1 is that of another object."},
        {"a name of many bytes", Object("Model", 1, std::string(5000, 'x')), Connect({"1,0"}),
         "RootNode " + std::string(1024, 'x'),
         "4 The name of a Model has 5000 bytes, and is cut to '" + std::string(1024, 'x') + "'"},
        {"many attributes",
         Object("Model", 1, "A", "Mesh") +
             Repeat(40, "Geometry: 10@, \"Geometry::g\", \"Mesh\" {\n" + TRIANGLE + "}\n"),
         Connect({"1,0"}) + Repeat(40, Connect({"10@,1"})), "RootNode A" + Repeat(32, " A/default"),
         "4 Node 'A' has 40 attributes: only the first 32 are taken"},
        {"many layers",
         Object("Model", 1, "A", "Mesh") +
             Object("Geometry", 2, "g", "Mesh",
                    TRIANGLE + Repeat(30, "LayerElementUV: @ {\nMappingInformationType: \"AllSame\"\n"
                                          "UV: *2 { a: 0,0 }\n}\n")),
         Connect({"1,0", "2,1"}), "RootNode A A/default",
         "4 Mesh 'Geometry' at line 8 has more than 24 layer elements of a kind: the rest is left out"},
        {"a surface that would be very fine",
         Object("Model", 1, "A", "Mesh") +
             Repeat(20, "Geometry: 10@, \"Geometry::g\", \"Nurbs\" {\nNurbOrder: 2,2\nDimensions: 18,18\n"
                        "Step: 999999999,999999999\nForm: \"Open\", \"Open\"\n" +
                            Array("Points", "0" + Repeat(1295, ",@")) +
                            Array("KnotVectorU", "0" + Repeat(18, ",@") + ",18") +
                            Array("KnotVectorV", "0" + Repeat(18, ",@") + ",18") + "}\n"),
         Connect({"1,0"}) + Repeat(20, Connect({"10@,1"})), "RootNode A" + Repeat(20, " A/default"),
         "4 Surface 'Geometry' at line 17 is made coarser: steps of 32 and 32 give too many points"},
        {"a polygon without surface",
         Object("Model", 1, "A", "Mesh") +
             Object("Geometry", 2, "g", "Mesh",
                    Array("Vertices", "0,0,0") +
                        Array("PolygonVertexIndex", "0" + Repeat(60000, ",0") + ",-1")),
         Connect({"1,0", "2,1"}), "RootNode A A/default", ""},
    };
    for (const auto& rCase : CASES)
    {
        SCOPED_TRACE(rCase.szName);
        const CFBXTestGraph objGraph(rCase.strObjects, rCase.strConnections);
        EXPECT_EQ(GetNames(objGraph), rCase.strNodes);
        if (rCase.strComplaint.empty())
        {
            EXPECT_EQ(objGraph.GetComplaints(), std::vector<std::string>());
        }
        else
        {
            EXPECT_TRUE(objGraph.m_objLog.HasLine(rCase.strComplaint))
                << testing::PrintToString(objGraph.GetComplaints());
        }
        std::vector<CSGAnimation*> vecAnimations;
        EXPECT_TRUE(objGraph.m_spLoader->LoadAnimations(vecAnimations));
    }
}

// A triangle on a node, packed.
std::string MakeBinaryFile(const std::vector<double>& rVertices)
{
    CFBXTestFile objFile(7400, false, true);
    objFile.Open("Objects");
    objFile.Add("Model", int64_t{1}, "A\0\1Model"s, "Mesh"s);
    objFile.Open("Geometry", int64_t{2}, "g\0\1Geometry"s, "Mesh"s);
    objFile.Add("Vertices", rVertices);
    objFile.Add("PolygonVertexIndex", std::vector<int32_t>{0, 1, -3});
    objFile.Close().Close().Open("Connections");
    objFile.Add("C", "OO"s, int64_t{1}, int64_t{0});
    objFile.Add("C", "OO"s, int64_t{2}, int64_t{1}).Close();
    const std::vector<uint8_t> vecBytes = objFile.Finish();
    return {vecBytes.begin(), vecBytes.end()};
}

TEST(FBXHostile, RecordsAndArraysThatLie)
{
    const std::vector<double> vecVertices{0, 0, 0, 1, 0, 0, 0, 1, 0};
    constexpr int END = -13; // of a record's name: how far the record says that it goes
    constexpr int COUNT = 9; // of "Vertices" and the type: the numbers, then the packing, then the bytes
    const struct
    {
        const char* szPlace;
        int nOffset;
        uint32_t uiValue;
        std::string strComplaint;
        std::string strNodes;
    } CASES[] = {
        {"Verticesd", COUNT, 9, "", "RootNode A A/default"},
        {"Verticesd", COUNT, 8, "is damaged: it has more than its 8 numbers.", "RootNode A"},
        {"Verticesd", COUNT, 10, "is damaged: it has 9 numbers instead of 10.", "RootNode A"},
        {"Verticesd", COUNT, 0xFFFFFFFF, " packed bytes cannot hold 4294967295 numbers.", "RootNode A"},
        {"Verticesd", COUNT + 8, 0xFFFFFFF0, "an array says that it has 4294967280 bytes, but only ", ""},
        {"Objects", END, 30, "record 'Objects' says that it ends at byte 30, which is before its values", ""},
        {"Vertices", END, 30, "record 'Vertices' says that it ends at byte 30, which is before its", ""},
        {"Vertices", END, 0x7FFFFFFF, "at byte 2147483647, which is after what it is in", ""},
    };
    for (const auto& rCase : CASES)
    {
        SCOPED_TRACE(rCase.strComplaint);
        std::string strBytes = MakeBinaryFile(vecVertices);
        const size_t nPlace = strBytes.find(rCase.szPlace) + static_cast<size_t>(rCase.nOffset);
        std::memcpy(strBytes.data() + nPlace, &rCase.uiValue, sizeof(rCase.uiValue));
        const CFBXTestGraph objGraph(CTempFile("lie.fbx", strBytes).GetName());
        EXPECT_EQ(GetNames(objGraph), rCase.strNodes);
        EXPECT_TRUE(objGraph.m_objLog.Contains(rCase.strComplaint))
            << testing::PrintToString(objGraph.GetComplaints());
    }

    // True, but more than any real file packs into so few bytes.
    const CFBXTestGraph objBomb(CTempFile("bomb.fbx", MakeBinaryFile(std::vector<double>(600000))).GetName());
    EXPECT_EQ(GetNames(objBomb), "RootNode A");
    EXPECT_TRUE(objBomb.m_objLog.Contains("unpack to more than a file of its size has"));

    CFBXTestFile objDeep(7500);
    for (int n = 0; n < 1000; ++n)
    {
        objDeep.Open("Objects");
    }
    for (int n = 0; n < 1000; ++n)
    {
        objDeep.Close();
    }
    const std::vector<uint8_t> vecDeep = objDeep.Finish();
    const CFBXTestGraph objGraph(CTempFile("deep.fbx", {vecDeep.begin(), vecDeep.end()}).GetName());
    EXPECT_EQ(objGraph.m_spRoot, nullptr);
    EXPECT_TRUE(objGraph.m_objLog.Contains("records are nested too deep or too many"));
}

TEST(FBXHostile, NodesWithOneMeshShareItsGeometry)
{
    // Polygons with the materials 0, 1 and 5. B has one material fewer, so that its pieces are others.
    const CFBXTestGraph objGraph(
        Object("Model", 1, "A", "Mesh") + Object("Model", 2, "B", "Mesh") + Object("Model", 3, "C", "Mesh") +
            Object("Material", 4, "red") + Object("Material", 5, "blue") +
            Object("Geometry", 6, "g", "Mesh",
                   Array("Vertices", "0,0,0,1,0,0,0,1,0") +
                       Array("PolygonVertexIndex", "0,1,-3,0,1,-3,0,1,-3") +
                       "LayerElementMaterial: 0 {\nMappingInformationType: \"ByPolygon\"\n" +
                       Array("Materials", "0,1,5") + "}\n"),
        Connect({"1,0", "2,0", "3,0", "6,1", "6,2", "6,3", "4,1", "5,1", "4,2", "5,3", "4,3"}));
    EXPECT_EQ(GetNames(objGraph),
              "RootNode A A/red A/blue A/default B B/red B/default C C/blue C/red C/default");
    const auto Get = [&](const char* szNode) {
        return objGraph.Find(szNode)->FindData<CSGData_Geometry>()->GetGeomList()->GetBinding(0);
    };
    EXPECT_EQ(Get("A/red"), Get("C/blue"));
    EXPECT_EQ(Get("A/default"), Get("C/default"));
    EXPECT_NE(Get("A/default"), Get("B/default"));
}

TEST(FBXHostile, KeysThatTheFileDoesNotHaveAreLimited)
{
    // One curve of many keys on many nodes, and a curve that goes on for a hundred years.
    constexpr int KEYS = 30000;
    const CTempFile objFile(
        "curves.fbx",
        MakeFBXFile(Object("AnimationStack", 1, "long", "",
                           Properties({"LocalStart 0", "LocalStop " + std::to_string(INT64_MAX / 4)})) +
                        Object("AnimationLayer", 2, "l") + Object("AnimationCurveNode", 3, "T") +
                        Object("AnimationCurve", 4, "", "",
                               Array("KeyTime", "0" + Repeat(KEYS - 1, ",1@00000")) +
                                   Array("KeyValueFloat", "0" + Repeat(KEYS - 1, ",@")) +
                                   "Post-Extrapolation: {\nType: \"R\"\nRepetition: 2147483648\n}\n") +
                        Repeat(40, "Model: 10@, \"Model::n@\", \"Null\" {\n}\n"),
                    Connect({"2,1", "3,2", "4,3,d|X"}) +
                        Repeat(40, Connect({"10@,0", "3,10@,Lcl Translation"}))));
    for (const int nFlags : {0, int{CFBXTestGraph::RESAMPLE}})
    {
        const CFBXTestGraph objGraph(objFile.GetName(), nFlags);
        const auto spAnimation = objGraph.m_spLoader->LoadDefaultAnimation();
        ASSERT_NE(spAnimation, nullptr);
        EXPECT_GT(spAnimation->GetNumChannels(), 20);
        EXPECT_LT(spAnimation->GetNumChannels(), 40);
        EXPECT_TRUE(objGraph.m_objLog.Contains("A curve of node 'n0' has its own keys alone: "));
        EXPECT_TRUE(objGraph.m_objLog.HasLine(
            "1 A curve of node 'n39' is left out: it drives too many nodes, with 30000 keys each."));
    }
}

} // namespace
