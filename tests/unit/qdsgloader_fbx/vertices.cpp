// Which corners of a mesh become one vertex.
#include "qdsgloader_fbx/CFBXVertexSet.h"
#include "support/FBXTestScene.h"

#include <gtest/gtest.h>

namespace
{

// Many triangles on the same three points: more vertices of a point than are linked to each other.
TEST(CFBXVertexSet, CornersThatAgreeInTheirFloatsAreOneVertex)
{
    constexpr int32_t NORMALS = 40;
    std::string strCorners;
    std::string strNormals;
    for (int32_t n = 0; n < 2 * NORMALS; ++n)
    {
        strCorners += n > 0 ? ",0,1,-3" : "0,1,-3";
        strNormals += (n > 0 ? "," : "") + std::to_string(n % NORMALS) + ",0,1";
    }
    const CFBXTestScene objScene(Object("Geometry", 7, "g", "Mesh",
                                        Array("Vertices", "0,0,0,1,0,0,0,1,0.5") +
                                            Array("PolygonVertexIndex", strCorners) +
                                            "LayerElementNormal: 0 {\nMappingInformationType: \"ByPolygon\"\n"
                                            "ReferenceInformationType: \"Direct\"\n" +
                                            Array("Normals", strNormals) + "}\n"));
    const FbxMesh* pMesh = objScene.Find<FbxMesh>("g");
    ASSERT_NE(pMesh, nullptr);

    CFBXVertexSet objSet(*pMesh, {pMesh->GetElementNormal()});
    for (int nTime = 0; nTime < 2; ++nTime)
    {
        for (int32_t n = 0; n < 6 * NORMALS; ++n)
        {
            ASSERT_EQ(objSet.Insert(n), n % (3 * NORMALS)) << n;
        }
        ASSERT_EQ(objSet.GetCorners().size(), 3u * NORMALS);
        float arrVertex[6];
        EXPECT_EQ(objSet.CopyFloats(objSet.GetCorners().back(), arrVertex), std::end(arrVertex));
        EXPECT_EQ(std::vector<float>(std::begin(arrVertex), std::end(arrVertex)),
                  (std::vector<float>{0, 1, 0.5f, NORMALS - 1, 0, 1}));
        objSet.Clear();
    }
}

} // namespace
