// Meshes of real files where their authors' own programs have put them: each polygon of the .obj file beside
// a sample is there, with its normals and texture coordinates.
#include "fbxsdk/fbxsdk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace
{

using CCorner = std::array<FbxDouble3, 3>; // place, texture coordinate, normal
using CPolygon = std::vector<CCorner>;

std::vector<CPolygon> ReadObj(const std::string& rFilename)
{
    CPolygon vecValues;       // v, vt and vn as they come
    size_t arrCounts[3] = {}; // of each
    std::vector<CPolygon> vecPolygons;
    std::ifstream objFile(rFilename);
    for (std::string strLine; std::getline(objFile, strLine);)
    {
        std::istringstream objLine(strLine);
        std::string strWord;
        objLine >> strWord;
        if (strWord == "v" || strWord == "vt" || strWord == "vn")
        {
            const size_t uiKind = strWord == "v" ? 0 : strWord == "vt" ? 1 : 2;
            vecValues.resize(std::max(vecValues.size(), arrCounts[uiKind] + 1));
            FbxDouble3& rValue = vecValues[arrCounts[uiKind]++][uiKind];
            objLine >> rValue[0] >> rValue[1] >> rValue[2];
        }
        else if (strWord == "f")
        {
            vecPolygons.emplace_back();
            while (objLine >> strWord)
            {
                std::istringstream objWord(strWord);
                vecPolygons.back().emplace_back();
                for (size_t n = 0; std::getline(objWord, strWord, '/'); ++n)
                {
                    vecPolygons.back().back()[n] =
                        strWord.empty() ? FbxDouble3{} : vecValues.at(std::stoul(strWord) - 1)[n];
                }
            }
        }
    }
    return vecPolygons;
}

void AddPolygons(const FbxNode& rNode, const FbxMesh& rMesh, std::vector<CPolygon>& rPolygons)
{
    const FbxAMatrix objWorld = rNode.EvaluateGlobalTransform() * rNode.GetGeometricTransform();
    const FbxAMatrix objInverse = objWorld.Inverse();
    for (int32_t nPolygon = 0; nPolygon < rMesh.GetPolygonCount(); ++nPolygon)
    {
        rPolygons.emplace_back();
        for (int32_t n = rMesh.GetPolygonStart(nPolygon); n < rMesh.GetPolygonStart(nPolygon + 1); ++n)
        {
            const int32_t nPoint = rMesh.GetPolygonVertices()[static_cast<size_t>(n)];
            const auto Get = [&](const FbxLayerElement* pElement, size_t n3) {
                const double* p = pElement == nullptr
                                      ? nullptr
                                      : pElement->GetValue(pElement->GetIndex(nPolygon, n, nPoint));
                return p == nullptr ? FbxDouble3{} : FbxDouble3{p[0], p[1], n3 == 3 ? p[2] : 0};
            };
            const double* pPoint = rMesh.GetControlPoints().data() + 3 * nPoint;
            const FbxDouble3 arrNormal = Get(rMesh.GetElementNormal(), 3);
            FbxDouble3 arrTurned{}; // by the inverse transposed
            for (size_t i = 0; i < 9; ++i)
            {
                arrTurned[i / 3] += objInverse.Get(i / 3, i % 3) * arrNormal[i % 3];
            }
            const double dLength = std::hypot(arrTurned[0], arrTurned[1], arrTurned[2]);
            rPolygons.back().push_back({objWorld.MultT({pPoint[0], pPoint[1], pPoint[2]}),
                                        Get(rMesh.GetElementUV(), 2), arrTurned * (1 / dLength)});
        }
    }
}

// Whether the corners agree, from any one of them on.
bool IsSame(CPolygon a, const CPolygon& b, const std::array<double, 3>& rTolerances)
{
    const auto IsSameCorner = [&](const CCorner& rA, const CCorner& rB) {
        for (size_t n = 0; n < 9; ++n)
        {
            if (std::abs(rA[n / 3][n % 3] - rB[n / 3][n % 3]) > rTolerances[n / 3])
            {
                return false;
            }
        }
        return true;
    };
    for (size_t n = 0; a.size() == b.size() && n < a.size(); ++n)
    {
        if (std::ranges::equal(a, b, IsSameCorner))
        {
            return true;
        }
        std::ranges::rotate(a, a.begin() + 1);
    }
    return false;
}

TEST(Samples, PolygonsOfObjFiles)
{
    const std::string strFolder = QDSG_SAMPLES_DIR "/fbx/ufbx__ufbx/data/";
    if (!std::filesystem::exists(strFolder))
    {
        GTEST_SKIP() << "no samples";
    }
    // Some .obj files say that their normals or texture coordinates are not those of the scene.
    const struct
    {
        const char* m_szName;
        std::vector<const char*> m_vecVersions;
        bool m_bUVs;
        bool m_bNormals;
    } CASES[] = {
        {"max2009_blob", {"5800_ascii", "5800_binary", "6100_ascii", "6100_binary"}, true, false},
        {"max7_cube", {"5000_binary"}, false, true},
        {"max7_cube_normals", {"5000_binary"}, false, true},
        {"maya_cube_big_endian", {"6100_binary", "7100_binary", "7400_binary", "7500_binary"}, true, true},
        {"maya_pivot_offset", {"6100_ascii", "6100_binary", "7700_ascii", "7700_binary"}, true, true},
        {"maya_split_pivot", {"6100_ascii", "6100_binary", "7700_ascii", "7700_binary"}, true, true},
        {"motionbuilder_pivot", {"7700_ascii"}, true, true},
        {"zbrush_cut_sphere", {"7500_ascii"}, true, false},
        {"zbrush_d20", {"6100_ascii", "6100_binary", "7500_ascii", "7500_binary"}, true, false},
    };
    for (const auto& rCase : CASES)
    {
        const std::vector<CPolygon> vecExpected = ReadObj(strFolder + rCase.m_szName + ".obj");
        for (const char* szVersion : rCase.m_vecVersions)
        {
            const std::string strName = std::string(rCase.m_szName) + "_" + szVersion + ".fbx";
            SCOPED_TRACE(strName);
            const std::unique_ptr<FbxManager> spManager = FbxManager::Create();
            const std::unique_ptr<FbxImporter> spImporter = FbxImporter::Create(spManager.get());
            const auto spSettings = FbxIOSettings::Create(spManager.get(), IOSROOT);
            FbxScene* pScene = FbxScene::Create(spManager.get(), "scene");
            ASSERT_TRUE(spImporter->Initialize(strFolder + strName, spSettings.get()));
            ASSERT_TRUE(spImporter->Import(pScene));
            std::vector<CPolygon> vecPolygons;
            for (const FbxNode* pNode : pScene->GetObjects<FbxNode>())
            {
                for (int n = 0; n < pNode->GetNodeAttributeCount(); ++n)
                {
                    if (const auto* pMesh = dynamic_cast<const FbxMesh*>(pNode->GetNodeAttributeByIndex(n)))
                    {
                        AddPolygons(*pNode, *pMesh, vecPolygons);
                    }
                }
            }
            EXPECT_EQ(vecPolygons.size(), vecExpected.size());
            for (const CPolygon& rExpected : vecExpected)
            {
                const auto it = std::ranges::find_if(vecPolygons, [&](const CPolygon& rPolygon) {
                    return IsSame(rPolygon, rExpected,
                                  {1e-4, rCase.m_bUVs ? 1e-4 : 1e9, rCase.m_bNormals ? 1e-5 : 1e9});
                });
                ASSERT_NE(it, vecPolygons.end()) << "no polygon at " << rExpected[0][0][0];
                vecPolygons.erase(it);
            }
        }
    }
}

} // namespace
