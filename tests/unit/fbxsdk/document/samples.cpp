// Real files: the encodings of one scene hold the same numbers.
#include "FBXTestDocument.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>

namespace
{

// Of all arrays that say what a mesh is.
std::string DescribeMeshes(const CFBXRecord& rRecord)
{
    std::string strText;
    const std::string_view strName = rRecord.GetName();
    if (strName == "Vertices" || strName == "PolygonVertexIndex" || strName == "KnotVector")
    {
        std::vector<float> vecNumbers;
        EXPECT_TRUE(rRecord.ReadFloats(vecNumbers)) << rRecord.Describe();
        strText = std::string(strName) + ":";
        for (const float fNumber : vecNumbers)
        {
            strText += " " + DescribeNumber(std::abs(fNumber) < 1e-9f ? 0 : fNumber);
        }
    }
    for (const CFBXRecord& rChild : rRecord.GetChildren())
    {
        strText += DescribeMeshes(rChild);
    }
    return strText;
}

TEST(CFBXDocument, SamplesInSeveralEncodings)
{
    const std::filesystem::path objFolder = QDSG_SAMPLES_DIR "/fbx/ufbx__ufbx/data";
    if (!std::filesystem::is_directory(objFolder))
    {
        GTEST_SKIP() << "no samples";
    }
    // A scene saved in both encodings, or byte orders: NAME_7400_ascii.fbx beside NAME_7400_binary.fbx.
    std::map<std::string, std::pair<std::string, std::string>> mapScenes; // the first's file, meshes
    int nCompared = 0;
    std::set<std::filesystem::path> setPaths;
    for (const auto& rEntry : std::filesystem::directory_iterator(objFolder))
    {
        setPaths.insert(rEntry.path());
    }
    for (const std::filesystem::path& rPath : setPaths)
    {
        std::string strScene = rPath.stem().string();
        if (rPath.extension() != ".fbx")
        {
            continue;
        }
        const size_t nOrder = strScene.find("_big_endian");
        strScene.resize(nOrder != std::string::npos ? nOrder : strScene.find_last_of('_'));
        CQDString strError;
        const auto spDocument = CFBXDocument::Load(rPath.string(), strError);
        ASSERT_TRUE(spDocument) << rPath << ": " << strError;
        const std::string strMeshes = DescribeMeshes(spDocument->GetRoot());
        const auto [itFirst, bFirst] =
            mapScenes.emplace(strScene, std::pair(rPath.stem().string(), strMeshes));
        EXPECT_EQ(strMeshes, itFirst->second.second)
            << rPath.stem() << " is not as " << itFirst->second.first;
        nCompared += bFirst ? 0 : 1;
    }
    EXPECT_GT(nCompared, 20);
}

} // namespace
