// What corners of meshes get, in every form in which files say it, and after triangulation.
#include "support/CLogCapture.h"
#include "support/FBXTestScene.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

// A quadrilateral (0 1 2 3), a triangle (2 1 4) and what else the text says.
CFBXTestScene MakeMesh(const std::string& rMore)
{
    return CFBXTestScene(Object("Geometry", 7, "g", "Mesh",
                                "Vertices: *15 { a: 0,0,0, 1,0,0, 1,1,0, 0,1,0, 2,1,0 }\n"
                                "PolygonVertexIndex: *7 { a: 0,1,2,-4,2,1,-5 }\n" +
                                    rMore + "\n"));
}

// The first number of the element's value for each corner.
std::vector<double> GetValues(const FbxMesh& rMesh, FbxLayerElement::EType eType)
{
    std::vector<double> vecValues;
    const FbxLayerElement* pElement = rMesh.GetElement(eType, 0);
    for (int32_t nPolygon = 0; pElement != nullptr && nPolygon < rMesh.GetPolygonCount(); ++nPolygon)
    {
        for (int32_t n = rMesh.GetPolygonStart(nPolygon); n < rMesh.GetPolygonStart(nPolygon + 1); ++n)
        {
            const int32_t nPoint = rMesh.GetPolygonVertices()[static_cast<size_t>(n)];
            vecValues.push_back(
                static_cast<double>(*pElement->GetValue(pElement->GetIndex(nPolygon, n, nPoint))));
        }
    }
    return vecValues;
}

TEST(FbxMesh, LayerElements)
{
    constexpr const char* CORNER = "ByPolygonVertex";
    constexpr const char* DIRECT = "Direct";
    constexpr const char* INDEXED = "IndexToDirect";
    const struct
    {
        const char* m_szMapping;
        const char* m_szReference;
        const char* m_szValues; // u of each; v is 9
        const char* m_szIndices;
        std::vector<double> m_vecExpected;
        const char* m_szLine; // part of it; empty: none
    } CASES[] = {
        {CORNER, DIRECT, "1,9,2,9,3,9,4,9,5,9,6,9,7,9", "", {1, 2, 3, 4, 5, 6, 7}, ""},
        {CORNER, INDEXED, "1,9,2,9", "1,0,0,1,1,1,0", {2, 1, 1, 2, 2, 2, 1}, ""},
        {CORNER, "Index", "1,9,2,9", "1,0,0,1,1,1,0", {2, 1, 1, 2, 2, 2, 1}, ""},
        {CORNER, DIRECT, "1,9,2,9,3,9,4,9", "", {1, 2, 3, 4, 0, 0, 0}, "no values for 3 of 7"},
        {CORNER, DIRECT, "1,9,2,9,3,9", "", {}, "3 values for 7"},
        {CORNER, INDEXED, "1,9,2,9", "1,-1,0,2,1,1,0", {2, 0, 1, 0, 2, 2, 1}, "no values for 2 of 7"},
        {CORNER, INDEXED, "1,9,2,9", "1,0,0,1", {2, 1, 1, 2, 0, 0, 0}, "no values for 3 of 7"},
        {"ByVertice", DIRECT, "1,9,2,9,3,9,4,9,5,9", "", {1, 2, 3, 4, 3, 2, 5}, ""},
        {"ByVertex", INDEXED, "1,9,2,9", "0,1,0,1,0", {1, 2, 1, 2, 1, 2, 1}, ""},
        {"ByControlPoint", INDEXED, "1,9,2,9,3,9,4,9,5,9", "", {1, 2, 3, 4, 3, 2, 5}, ""},
        {"ByPolygon", DIRECT, "1,9,2,9", "", {1, 1, 1, 1, 2, 2, 2}, ""},
        {"ByPolygon", INDEXED, "1,9,2,9", "1,0", {2, 2, 2, 2, 1, 1, 1}, ""},
        {"AllSame", DIRECT, "5,9", "", {5, 5, 5, 5, 5, 5, 5}, ""},
        {"AllSame", INDEXED, "1,9,2,9", "1", {2, 2, 2, 2, 2, 2, 2}, ""},
        {"ByEdge", DIRECT, "1,9,2,9", "", {}, "gives no corner a value"},
        {"ByChance", DIRECT, "1,9,2,9", "", {}, "gives no corner a value"},
        {CORNER, DIRECT, "", "", {}, ""},
    };
    for (const auto& rCase : CASES)
    {
        SCOPED_TRACE(std::string(rCase.m_szMapping) + " " + rCase.m_szReference + " " + rCase.m_szLine);
        CLogCapture objLog;
        const auto MakeList = [](const std::string& rName, const std::string& rNumbers) {
            return rNumbers.empty() ? rNumbers : rName + ": " + rNumbers + "\n";
        };
        const CFBXTestScene objScene =
            MakeMesh("LayerElementUV: 0 {\nMappingInformationType: \"" + std::string(rCase.m_szMapping) +
                     "\"\nReferenceInformationType: \"" + rCase.m_szReference + "\"\n" +
                     MakeList("UV", rCase.m_szValues) + MakeList("UVIndex", rCase.m_szIndices) + "}\n");
        FbxMesh* pMesh = objScene.Find<FbxMesh>("g");
        ASSERT_NE(pMesh, nullptr);
        std::vector<double> vecExpected = rCase.m_vecExpected;
        EXPECT_EQ(GetValues(*pMesh, FbxLayerElement::eUV), vecExpected);
        EXPECT_EQ(objLog.GetLines().size(), *rCase.m_szLine != '\0' ? 1u : 0u);
        EXPECT_TRUE(objLog.Contains(rCase.m_szLine) || objLog.GetLines().empty());

        // The square is split from its first corner to its third.
        pMesh->Triangulate();
        if (!vecExpected.empty())
        {
            const std::vector<double>& e = rCase.m_vecExpected;
            vecExpected = {e[0], e[1], e[2], e[0], e[2], e[3], e[4], e[5], e[6]};
        }
        EXPECT_EQ(GetValues(*pMesh, FbxLayerElement::eUV), vecExpected);
    }
}

TEST(FbxMesh, MaterialsAndTheirPolygons)
{
    const struct
    {
        const char* m_szText;
        std::vector<int32_t> m_vecExpected; // material of each triangle
    } CASES[] = {
        {"", {0, 0, 0}},
        {"MappingInformationType: \"ByPolygon\"\nMaterials: 3,1", {3, 3, 1}},
        {"MappingInformationType: \"ByPolygon\"\nMaterials: 3,-1,5", {3, 3, -1}},
        {"MappingInformationType: \"ByPolygon\"\nMaterials: 2", {2, 2, 2}},
        {"MappingInformationType: \"AllSame\"\nMaterials: 4,1", {4, 4, 4}},
    };
    for (const auto& rCase : CASES)
    {
        SCOPED_TRACE(rCase.m_szText);
        const CFBXTestScene objScene =
            MakeMesh("LayerElementMaterial: 0 {\n" + std::string(rCase.m_szText) + "\n}\n");
        FbxMesh* pMesh = objScene.Find<FbxMesh>("g");
        ASSERT_NE(pMesh, nullptr);
        pMesh->Triangulate();
        std::vector<int32_t> vecMaterials;
        for (int32_t n = 0; n < pMesh->GetPolygonCount(); ++n)
        {
            vecMaterials.push_back(pMesh->GetMaterialIndex(n));
        }
        EXPECT_EQ(vecMaterials, rCase.m_vecExpected);
    }
}

TEST(FbxMesh, PolygonsThatAreLeftOut)
{
    const struct
    {
        const char* m_szPolygons;
        const char* m_szMore;
        std::vector<double> m_vecExpected; // u of each corner
    } CASES[] = {
        {"0,1,-3,2,1,-1", "", {1, 2, 3, 4, 5, 6}},
        {"0,1,-3,2,1,0", "", {1, 2, 3, 4, 5, 6}},     // the last one is not ended
        {"0,1,-3,2,3,-1", "", {1, 2, 3}},             // no such point
        {"0,-2147483648,0,2,1,-1", "", {3, 4, 5, 6}}, // none either
        {"0,1,-3,2,1,-1", "LayerElementHole: 0 { Hole: 1,0 }", {4, 5, 6}},
    };
    for (const auto& rCase : CASES)
    {
        SCOPED_TRACE(rCase.m_szPolygons);
        const CFBXTestScene objScene(
            Object("Geometry", 7, "g", "Mesh",
                   "Vertices: 0,0,0, 1,0,0, 1,1,0\nPolygonVertexIndex: " + std::string(rCase.m_szPolygons) +
                       "\n" + rCase.m_szMore +
                       "\nLayerElementUV: 0 {\nMappingInformationType: \"ByPolygonVertex\"\n"
                       "ReferenceInformationType: \"Direct\"\nUV: 1,0,2,0,3,0,4,0,5,0,6,0\n}\n"));
        const FbxMesh* pMesh = objScene.Find<FbxMesh>("g");
        ASSERT_NE(pMesh, nullptr);
        EXPECT_EQ(GetValues(*pMesh, FbxLayerElement::eUV), rCase.m_vecExpected);
    }
}

TEST(FbxMesh, Tangents)
{
    const double dHalf = std::sqrt(0.5);
    const double dLength = std::hypot(2 + dHalf, dHalf);
    const struct
    {
        const char* m_szUVs;               // of the control points 0 to 4
        std::vector<double> m_vecExpected; // tangents of the control points 0 and 1
    } CASES[] = {
        {"0,0, 1,0, 1,1, 0,1, 2,1", {1, 0, 0, 1, 1, 0, 0, 1}},
        {"1,0, 0,0, 0,1, 1,1, -1,1", {-1, 0, 0, -1, -1, 0, 0, -1}}, // mirrored
        {"0,1, 0,0, 1,0, 1,1, 1,-1", {0, 1, 0, 1, 0, 1, 0, 1}},     // turned
        {"0,0, 1,-1, 2,0, 1,1, 3,-1", {dHalf, dHalf, 0, 1, dHalf, dHalf, 0, 1}},
        // At the second point 90 degrees of the quadrilateral along x, 45 of the triangle between x and y.
        {"0,0, 1,0, 1,1, 0,1, 2,0", {1, 0, 0, 1, (2 + dHalf) / dLength, dHalf / dLength, 0, 1}},
    };
    for (const auto& rCase : CASES)
    {
        SCOPED_TRACE(rCase.m_szUVs);
        const CFBXTestScene objScene =
            MakeMesh("LayerElementNormal: 0 {\nMappingInformationType: \"AllSame\"\n"
                     "ReferenceInformationType: \"Direct\"\nNormals: 0,0,1\n}\n"
                     "LayerElementUV: 0 {\nMappingInformationType: \"ByVertice\"\n"
                     "ReferenceInformationType: \"Direct\"\nUV: " +
                     std::string(rCase.m_szUVs) + "\n}\n");
        FbxMesh* pMesh = objScene.Find<FbxMesh>("g");
        ASSERT_NE(pMesh, nullptr);
        EXPECT_FALSE(pMesh->GenerateTangentsData(1));
        ASSERT_TRUE(pMesh->GenerateTangentsData(0));
        const FbxLayerElement* pTangents = pMesh->GetElementTangent();
        ASSERT_NE(pTangents, nullptr);
        for (size_t n = 0; n < 8; ++n)
        {
            const int32_t nCorner = static_cast<int32_t>(n / 4);
            EXPECT_NEAR(pTangents->GetValue(pTangents->GetIndex(0, nCorner, nCorner))[n % 4],
                        rCase.m_vecExpected[n], 1e-7)
                << n;
        }
    }
}

} // namespace
