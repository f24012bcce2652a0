// Surfaces against exact ones: a cylinder and a cone.
#include "fbxsdk/geometry/FbxNurbsSurface.h"
#include "support/CLogCapture.h"
#include "support/FBXTestScene.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

// A node "n" that carries a surface of the text.
CFBXTestScene MakeSurface(const std::string& rText)
{
    return CFBXTestScene(Object("Model", 1, "n", "NurbsSurface") +
                             Object("Geometry", 2, "g", "NurbsSurface", rText + "\n"),
                         Connect({"1,0", "2,1"}));
}

// The mesh that the converter puts in the surface's place.
FbxMesh* Convert(const CFBXTestScene& rScene)
{
    FbxNode* pNode = rScene.FindNode("n");
    FbxGeometryConverter objConverter(nullptr);
    EXPECT_TRUE(objConverter.ConvertNurbsSurfaceToNurbsInPlace(pNode));
    EXPECT_EQ(pNode->GetNodeAttributeByIndex(0)->GetAttributeType(), FbxNodeAttribute::eNurbs);
    EXPECT_TRUE(objConverter.TriangulateInPlace(pNode));
    return dynamic_cast<FbxMesh*>(pNode->GetNodeAttributeByIndex(0));
}

// Each corner's place, normal and texture coordinates; and that triangles go around to the left of normals.
template <class CHECK>
void ForEachCorner(const FbxMesh& rMesh, CHECK&& Check)
{
    const FbxLayerElement& rNormals = *rMesh.GetElementNormal();
    const FbxLayerElement& rUVs = *rMesh.GetElementUV();
    for (int32_t nPolygon = 0; nPolygon < rMesh.GetPolygonCount(); ++nPolygon)
    {
        const double* arrPoints[3];
        const float* pNormal = nullptr;
        for (size_t n = 0; n < 3; ++n)
        {
            const int32_t nCorner = rMesh.GetPolygonStart(nPolygon) + static_cast<int32_t>(n);
            const int32_t nPoint = rMesh.GetPolygonVertices()[static_cast<size_t>(nCorner)];
            arrPoints[n] = rMesh.GetControlPoints().data() + 3 * nPoint;
            pNormal = rNormals.GetValue(rNormals.GetIndex(nPolygon, nCorner, nPoint));
            Check(arrPoints[n], pNormal, rUVs.GetValue(rUVs.GetIndex(nPolygon, nCorner, nPoint)));
        }
        double dSide = 0;
        for (size_t n = 0; n < 3; ++n)
        {
            const size_t i = (n + 1) % 3;
            const size_t j = (n + 2) % 3;
            dSide += pNormal[n] * ((arrPoints[1][i] - arrPoints[0][i]) * (arrPoints[2][j] - arrPoints[0][j]) -
                                   (arrPoints[1][j] - arrPoints[0][j]) * (arrPoints[2][i] - arrPoints[0][i]));
        }
        EXPECT_GT(dSide, 0);
    }
}

// A quarter of a circle along u, up the z axis along v; the weights make it exact.
const std::string CYLINDER = "NurbsSurfaceOrder: 3,2\nDimensions: 3,2\nStep: 8,3\nForm: \"Open\",\"Open\"\n"
                             "Points: 1,0,0,1, 1,1,0,0.70710678118654752, 0,1,0,1,"
                             " 1,0,6,1, 1,1,6,0.70710678118654752, 0,1,6,1\n"
                             "KnotVectorU: 0,0,0,1,1,1\nKnotVectorV: 2,2,5,5\n";

TEST(FbxNurbsSurface, QuarterOfACylinder)
{
    for (const double dSide : {1.0, -1.0})
    {
        const CFBXTestScene objScene = MakeSurface(CYLINDER + (dSide < 0 ? "FlipNormals: 1\n" : ""));
        const FbxMesh* pMesh = Convert(objScene);
        ASSERT_NE(pMesh, nullptr);
        EXPECT_EQ(pMesh->GetName(), "g");
        EXPECT_EQ(pMesh->GetControlPointsCount(), 9 * 4);
        EXPECT_EQ(pMesh->GetPolygonCount(), 8 * 3 * 2);
        ForEachCorner(*pMesh, [&](const double* pPoint, const float* pNormal, const float* pUV) {
            EXPECT_NEAR(std::hypot(pPoint[0], pPoint[1]), 1, 1e-12);
            EXPECT_NEAR(pNormal[0], dSide * pPoint[0], 1e-7);
            EXPECT_NEAR(pNormal[1], dSide * pPoint[1], 1e-7);
            EXPECT_NEAR(pUV[1], pPoint[2] / 6, 1e-7);
            EXPECT_EQ(pUV[0] == 0, pPoint[1] < 1e-12);
        });
    }
}

TEST(FbxNurbsSurface, SeamsAndPoles)
{
    // A cone: 4 points around that come again, closed by knots alone; its tip is a row of one place.
    const std::string strAround = "NurbsSurfaceOrder: 4,2\nDimensions: 4,2\nStep: 2,2\n"
                                  "KnotVectorU: -3,-2,-1,0,1,2,3,4,5,6,7\nKnotVectorV: 0,0,1,1\n";
    const CFBXTestScene objScene = MakeSurface(
        strAround + "Points: 3,0,0,1, 0,3,0,1, -3,0,0,1, 0,-3,0,1, 0,0,1,1, 0,0,1,1, 0,0,1,1, 0,0,1,1\n");
    const FbxMesh* pMesh = Convert(objScene);
    ASSERT_NE(pMesh, nullptr);
    EXPECT_EQ(pMesh->GetControlPointsCount(), 8 + 8 + 1);
    EXPECT_EQ(pMesh->GetPolygonCount(), 16 + 8);
    bool bSeam = false;
    ForEachCorner(*pMesh, [&](const double* pPoint, const float* pNormal, const float* pUV) {
        // Uniform cubic: the points count 1/6, 2/3, 1/6 at a knot, and 1/48, 23/48, 23/48, 1/48 halfway.
        const double dRadius = std::hypot(pPoint[0], pPoint[1]) / (1 - pPoint[2] + 1e-300);
        EXPECT_TRUE(pPoint[2] > 1 - 1e-12 || std::abs(dRadius - 2) < 1e-12 ||
                    std::abs(dRadius - std::sqrt(2) * 3 * 22 / 48) < 1e-12);
        EXPECT_NEAR(std::hypot(pNormal[0], pNormal[1], pNormal[2]), 1, 1e-7);
        if (pPoint[2] > 1 - 1e-12)
        {
            EXPECT_NEAR(pNormal[2], 1, 1e-7);
        }
        bSeam = bSeam || pUV[0] == 1;
    });
    EXPECT_TRUE(bSeam); // has texture coordinates of its own on either side
}

TEST(FbxNurbsSurface, RefusesWhatDoesNotBelongTogether)
{
    const struct
    {
        const char* m_szWhat;
        const char* m_szBy;
        const char* m_szLine;
    } CASES[] = {
        {"Dimensions: 3,2", "Dimensions: 3,3", "order 2, 3 points and 4 knots do not belong together"},
        {"Dimensions: 3,2", "Dimensions: -3,2", "order 3, -3 points and 6 knots do not belong together"},
        {"Dimensions: 3,2", "Dimensions: 4000000000,2", "do not belong together"},
        {"Order: 3,2", "Order: 3,1", "order 1, 2 points and 4 knots do not belong together"},
        {"Order: 3,2", "Order: 7,2", "do not belong together"},
        {"0,0,0,1,1,1", "0,0,0,0,0,0", "do not belong together"},
        {"0,0,0,1,1,1", "0,0,2,1,1,1", "do not belong together"},
        {"0,0,0,1,1,1", "0,0,0,1,1", "do not belong together"},
        {", 0,1,6,1", "", "has 20 of 24 numbers of its points"},
        {"Points:", "Spots:", "has no points"},
    };
    for (const auto& rCase : CASES)
    {
        SCOPED_TRACE(rCase.m_szBy);
        std::string strText = CYLINDER;
        strText.replace(strText.find(rCase.m_szWhat), std::string_view(rCase.m_szWhat).size(), rCase.m_szBy);
        CLogCapture objLog;
        EXPECT_EQ(MakeSurface(strText).Find<FbxNurbsSurface>("g"), nullptr);
        EXPECT_TRUE(objLog.Contains(rCase.m_szLine));
    }
}

} // namespace
