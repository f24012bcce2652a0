// Texture pools: where they look, what they share, and loading anew.
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdscenegraph/texture/CSGTexturePool.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"
#include "support/MakeImageFile.h"

#include <gtest/gtest.h>

namespace
{

std::filesystem::path FolderOf(const CTempFile& rFile)
{
    return std::filesystem::path(rFile.GetName()).parent_path();
}

TEST(TexturePool, SearchesItsPathsInOrderAndShares)
{
    const CTempFile objOne("a.png", MakePng(1, 1, 8, 0, "\1"));
    const CTempFile objTwo("a.png", MakePng(1, 1, 8, 0, "\2"));
    std::filesystem::create_directory(FolderOf(objTwo) / "walls");
    std::filesystem::copy(objTwo.GetName(), FolderOf(objTwo) / "walls" / "b.png");
    EXPECT_EQ(CSGTexturePool::FindPool("search"), nullptr);
    const auto spPool = CSGTexturePool::GetPool("search");
    EXPECT_EQ(CSGTexturePool::FindPool("search"), spPool);
    spPool->AddTexturePath(FolderOf(objOne));
    spPool->AddTexturePath(FolderOf(objTwo));

    const auto spLoader = CSGTextureLoader::CreateStandardLoader();
    EXPECT_EQ(spPool->GetTexture("a.png"), nullptr);
    const CSGTexturePtr spTexture = spPool->GetOrLoadTexture(spLoader.get(), "a.png");
    ASSERT_TRUE(spTexture);
    EXPECT_EQ(*spTexture->GetDataPtr(), 1) << "the first path wins";
    EXPECT_EQ(spTexture->GetSourceName(), "a.png");
    EXPECT_EQ(spPool->GetTexture("a.png"), spTexture);
    EXPECT_EQ(spPool->GetOrLoadTexture(spLoader.get(), "a.png"), spTexture);
    EXPECT_TRUE(spPool->GetOrLoadTexture(spLoader.get(), "walls/b.png"));

    CLogCapture objLog;
    EXPECT_FALSE(spPool->GetOrLoadTexture(spLoader.get(), "c.png"));
    const std::string strOutside = FolderOf(objTwo).filename().string() + "/a.png";
    for (const std::string& rName :
         {"../" + strOutside, "walls/../../" + strOutside, "..\\" + strOutside, objTwo.GetName(),
          std::string("C:a.png"), std::string("\\a.png"), std::string("walls/.."), std::string()})
    {
        EXPECT_FALSE(spPool->GetOrLoadTexture(spLoader.get(), rName)) << rName;
        EXPECT_EQ(objLog.GetLines().back(),
                  "1 Failed to load texture \"" + rName +
                      "\" of texture pool 'search': the name leads out of the pool");
    }
    EXPECT_EQ(
        objLog.GetLines().front(),
        "1 Failed to load texture \"c.png\" of texture pool 'search': no such file in any path of the pool");
    EXPECT_EQ(objLog.GetLines().size(), 9u);
}

TEST(TexturePool, ReloadTakesNewPixelsAndKeepsOldOnes)
{
    const CTempFile objFile("a.png", MakePng(1, 1, 8, 0, "\1"));
    const auto spLoader = CSGTextureLoader::CreateStandardLoader();
    const auto spPool = CSGTexturePool::GetPool("reload");
    spPool->AddTexturePath(FolderOf(objFile));
    const auto spPooled =
        boost::static_pointer_cast<CSGTex_2D>(spPool->GetOrLoadTexture(spLoader.get(), "a.png"));
    const auto spDirect = boost::static_pointer_cast<CSGTex_2D>(spLoader->LoadTexture(objFile.GetName()));
    EXPECT_EQ(spDirect->GetSourceName(), objFile.GetName());

    objFile.WriteBytes(MakePng(2, 2, 8, 0, "\3\5\7\t"));
    EXPECT_TRUE(spPool->Reload(spLoader.get()));
    EXPECT_TRUE(spDirect->Reload(spLoader.get()));
    for (const auto& rspTexture : {spPooled, spDirect})
    {
        EXPECT_EQ(rspTexture->GetLayout(), (CSGTextureLayout{2, 2, 1, PIXEL_FORMAT_L8}));
        EXPECT_EQ(rspTexture->GetDataPtr()[3], 9);
        EXPECT_TRUE(rspTexture->HasChanged());
        rspTexture->GenerateMipMaps();
        EXPECT_TRUE(rspTexture->Reload(spLoader.get()));
        EXPECT_EQ(rspTexture->GetNumLevels(), 2) << "levels that were made are made again";
    }
    objFile.WriteBytes("damaged");
    EXPECT_FALSE(spPool->Reload(spLoader.get()));
    EXPECT_FALSE(spDirect->Reload(spLoader.get()));
    EXPECT_EQ(spPooled->GetDataPtr()[3], 9);
    EXPECT_EQ(spDirect->GetDataPtr()[3], 9);
}

} // namespace
