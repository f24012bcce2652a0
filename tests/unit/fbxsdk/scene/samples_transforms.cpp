// The transforms of real files, animated ones and those of bones, against what the tools that wrote them
// exported beside them.
#include "fbxsdk/fbxsdk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace
{

const std::filesystem::path FOLDER = QDSG_SAMPLES_DIR "/fbx/ufbx__ufbx/data";

// The places of an .obj file, in file order, whatever object they belong to.
std::vector<FbxDouble3> ReadObj(const std::filesystem::path& rPath)
{
    std::vector<FbxDouble3> vecPoints;
    std::ifstream objFile(rPath);
    for (std::string strLine; std::getline(objFile, strLine);)
    {
        FbxDouble3 objPoint;
        if (strLine.starts_with("v ") &&
            std::istringstream(strLine.substr(2)) >> objPoint[0] >> objPoint[1] >> objPoint[2])
        {
            vecPoints.push_back(objPoint);
        }
    }
    return vecPoints;
}

// Of a point of the first to the nearest of the second.
double GreatestDistance(const std::vector<FbxDouble3>& rFrom, const std::vector<FbxDouble3>& rTo)
{
    double dGreatest = 0;
    for (const FbxDouble3& rPoint : rFrom)
    {
        double dNearest = HUGE_VAL;
        for (const FbxDouble3& rOther : rTo)
        {
            const FbxDouble3 d = rPoint - rOther;
            dNearest = std::min(dNearest, std::hypot(d[0], d[1], d[2]));
        }
        dGreatest = std::max(dGreatest, dNearest);
    }
    return dGreatest;
}

// A mesh's points in the world: where its bones have them, else where its node has them.
void AddPoints(const FbxMesh& rMesh, const FbxAnimLayer* pLayer, FbxTime objTime,
               std::vector<FbxDouble3>& rPoints)
{
    const std::span<const double> arrPoints = rMesh.GetControlPoints();
    const auto GetPoint = [&](size_t n) {
        return FbxDouble3{arrPoints[3 * n], arrPoints[3 * n + 1], arrPoints[3 * n + 2]};
    };
    const size_t nFirst = rPoints.size();
    rPoints.resize(nFirst + arrPoints.size() / 3);
    const std::vector<FbxSkin*> vecSkins = rMesh.GetSrcObjects<FbxSkin>();
    if (vecSkins.empty())
    {
        const FbxAMatrix objMatrix = rMesh.GetNode()->EvaluateGlobalTransform(pLayer, objTime) *
                                     rMesh.GetNode()->GetGeometricTransform();
        for (size_t n = 0; n < arrPoints.size() / 3; ++n)
        {
            rPoints[nFirst + n] = objMatrix.MultT(GetPoint(n));
        }
        return;
    }
    for (const FbxCluster* pCluster : vecSkins[0]->GetClusters())
    {
        const FbxAMatrix objMatrix =
            pCluster->GetLink()->EvaluateGlobalTransform(pLayer, objTime) * *pCluster->GetTransformMatrix();
        for (size_t n = 0; n < pCluster->GetControlPointIndices().size(); ++n)
        {
            const auto nPoint = static_cast<size_t>(pCluster->GetControlPointIndices()[n]);
            FbxDouble3& rPoint = rPoints.at(nFirst + nPoint);
            rPoint = rPoint + objMatrix.MultT(GetPoint(nPoint)) * pCluster->GetControlPointWeights()[n];
        }
    }
}

// At a frame of the first animation; below 0 at rest.
void ExpectPointsOfObj(const std::string& rFbx, const std::string& rObj, int nFrame)
{
    SCOPED_TRACE(rFbx + " " + rObj);
    const std::vector<FbxDouble3> vecExpected = ReadObj(FOLDER / rObj);
    ASSERT_FALSE(vecExpected.empty());
    const std::unique_ptr<FbxManager> spManager = FbxManager::Create();
    FbxScene* pScene = FbxScene::Create(spManager.get(), "scene");
    const std::unique_ptr<FbxImporter> spImporter = FbxImporter::Create(spManager.get());
    ASSERT_TRUE(spImporter->Initialize(FOLDER / rFbx, FbxIOSettings::Create(spManager.get(), IOSROOT).get()));
    ASSERT_TRUE(spImporter->Import(pScene));

    const FbxAnimLayer* pLayer =
        nFrame < 0 ? nullptr : pScene->GetObjects<FbxAnimStack>().at(0)->GetLayers().at(0);
    const FbxTime objTime = FbxTime::FromSeconds(nFrame / pScene->GetGlobalSettings().GetFrameRate());
    std::vector<FbxDouble3> vecActual;
    for (const FbxMesh* pMesh : pScene->GetObjects<FbxMesh>())
    {
        AddPoints(*pMesh, pLayer, objTime, vecActual);
    }
    EXPECT_EQ(vecActual.size(), vecExpected.size());
    EXPECT_LT(GreatestDistance(vecActual, vecExpected), 2e-6);
    EXPECT_LT(GreatestDistance(vecExpected, vecActual), 2e-6);
}

TEST(SampleTransforms, PointsAreWhereTheToolHasThem)
{
    if (!std::filesystem::exists(FOLDER))
    {
        GTEST_SKIP() << "the samples are not there";
    }
    const struct
    {
        const char* m_szScene;
        std::vector<const char*> m_vecVersions;
        std::vector<int> m_vecFrames;
    } CASES[] = {
        {"max_geometry_transform_types", {"6100_ascii", "6100_binary", "7700_binary"}, {-1}},
        {"maya_pivot_offset", {"6100_ascii", "6100_binary", "7700_ascii", "7700_binary"}, {8, 12}},
        {"maya_split_pivot", {"6100_ascii", "6100_binary", "7700_ascii", "7700_binary"}, {6, 12}},
        // Bones that scale themselves unevenly and inherit as RrSs.
        {"motionbuilder_sausage_rrss", {"7700_ascii", "7700_binary"}, {-1, 12, 24, 36, 48}},
    };
    for (const auto& rCase : CASES)
    {
        for (const std::string strVersion : rCase.m_vecVersions)
        {
            for (const int nFrame : rCase.m_vecFrames)
            {
                const std::string strScene = rCase.m_szScene;
                ExpectPointsOfObj(strScene + "_" + strVersion + ".fbx",
                                  strScene + (nFrame < 0 ? "" : "_" + std::to_string(nFrame)) + ".obj",
                                  nFrame);
            }
        }
    }
}

} // namespace
