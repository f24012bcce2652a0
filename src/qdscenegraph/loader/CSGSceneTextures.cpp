#include "qdscenegraph/loader/CSGSceneTextures.h"

#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureFromPool.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdscenegraph/texture/CSGTexturePool.h"

#include <filesystem>
#include <system_error>

namespace
{

// An image file rarely has smaller levels. What stands for a missing file is shared and stays as it is.
bool AddMipMaps(CSGTexture& rTexture)
{
    auto* pTex2D = SGStreamableCast<CSGTex_2D>(&rTexture);
    if (pTex2D != nullptr && pTex2D != CSGTex_2D::GetTextureFailedToLoad().get() &&
        pTex2D->GetNumLevels() == 1 && !PixelFormatIsCompressed(pTex2D->GetFormat()) &&
        !pTex2D->ShouldAutoGenMipMapLevels())
    {
        QD_ASSERT(pTex2D->GenerateMipMaps(), false);
    }
    return true;
}

} // namespace

CSGSceneTextures::CSGSceneTextures(const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader,
                                   const boost::intrusive_ptr<CSGTexturePool>& spTexturePool,
                                   const CLogSource& rLogSource)
    : m_spTextureLoader(spTextureLoader),
      m_spTexturePool(spTexturePool),
      m_rLogSource(rLogSource)
{}

CSGSceneTextures::~CSGSceneTextures() = default;

CSGTexturePtr CSGSceneTextures::LoadFromPool(const CQDString& rStrName, const CQDString& rStrFile) const
{
    if (!m_spTexturePool)
    {
        return nullptr;
    }
    const CQDString& rPoolName = m_spTexturePool->GetName();
    const CSGTextureFromPoolPtr spTexture = CSGTextureFromPool::Create(rPoolName, rStrName);
    CSGTexture* pShared =
        spTexture ? spTexture->GetOrLoadSharedTexture(m_spTextureLoader.get(), m_spTexturePool.get())
                  : nullptr;
    if (pShared == nullptr)
    {
        Log(m_rLogSource, LOG_WARNING, "Failed to load texture '%s' from pool '%s'.  Trying actual file.",
            rStrName, rPoolName);
        return nullptr;
    }
    AddMipMaps(*pShared);
    Log(m_rLogSource, LOG_INFO, "Substituting TexturePool '%s' texture '%s' for file '%s'", rPoolName,
        rStrName, rStrFile);
    return spTexture;
}

CSGTexturePtr CSGSceneTextures::LoadFromMemory(std::span<const uint8_t> arrFile,
                                               const CQDString& rStrName) const
{
    const CSGTexturePtr spTexture = m_spTextureLoader->TryLoadTextureFromMemory(arrFile, rStrName);
    if (spTexture)
    {
        AddMipMaps(*spTexture);
    }
    return spTexture;
}

CSGTexturePtr CSGSceneTextures::LoadFile(const CQDString& rStrFile)
{
    // The name of one file may be spelled differently.
    std::error_code objError;
    const std::filesystem::path objFile = std::filesystem::weakly_canonical(rStrFile, objError);
    const auto [it, bNew] = m_mapFiles.try_emplace(objError ? rStrFile : objFile.string());
    if (bNew)
    {
        it->second = m_spTextureLoader->LoadTexture(rStrFile);
        if (it->second)
        {
            AddMipMaps(*it->second);
        }
    }
    return it->second;
}
