#include "qdsgloader_collada/CColladaImages.h"

#include "qdcommon/CLog.h"
#include "qdscenegraph/material/CSGSurf_Texture.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureFromPool.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdscenegraph/texture/CSGTexturePool.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaImagePath.h"
#include "qdsgloader_collada/CDaeUri.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <system_error>

namespace
{

// Scenes are drawn with smaller levels; an image file rarely has them. What stands for a missing file is
// shared and stays as it is.
void AddMipMaps(CSGTexture& rTexture)
{
    auto* pTexture = SGStreamableCast<CSGTex_2D>(&rTexture);
    if (pTexture != nullptr && pTexture != CSGTex_2D::GetTextureFailedToLoad().get() &&
        pTexture->GetNumLevels() == 1 && !PixelFormatIsCompressed(pTexture->GetFormat()) &&
        !pTexture->ShouldAutoGenMipMapLevels())
    {
        pTexture->GenerateMipMaps();
    }
}

} // namespace

CColladaImages::CColladaImages(const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader,
                               const boost::intrusive_ptr<CSGTexturePool>& spTexturePool,
                               const CQDString& rStrDocument)
    : m_spTextureLoader(spTextureLoader),
      m_spTexturePool(spTexturePool),
      m_objFolder(std::filesystem::path(GetDaeFilePath(rStrDocument)).parent_path())
{}

CColladaImages::~CColladaImages() = default;

CSGSurfacePtr CColladaImages::GetSurface(domImage& rImage)
{
    const auto [it, bNew] = m_mapSurfaces.try_emplace(&rImage);
    if (bNew)
    {
        if (const CSGTexturePtr spTexture = LoadImage(rImage))
        {
            it->second = CSGSurf_Texture::Create(spTexture);
        }
    }
    return it->second;
}

CSGTexturePtr CColladaImages::LoadImage(const domImage& rImage)
{
    if (!m_spTextureLoader)
    {
        Log(QD_COLLADA, LOG_ERROR, "Had NULL image loader.");
        return nullptr;
    }
    if (rImage.getInit_from() != nullptr)
    {
        return LoadReference(rImage);
    }
    if (rImage.getData() != nullptr)
    {
        return LoadData(rImage);
    }
    Log(QD_COLLADA, LOG_ERROR, "<image> had neither a <data> nor an <init_from>");
    return nullptr;
}

CSGTexturePtr CColladaImages::LoadFromPool(const CQDString& rStrName, const CQDString& rStrFile) const
{
    const CQDString& rPoolName = m_spTexturePool->GetName();
    const CSGTextureFromPoolPtr spTexture = CSGTextureFromPool::Create(rPoolName, rStrName);
    CSGTexture* pShared =
        spTexture ? spTexture->GetOrLoadSharedTexture(m_spTextureLoader.get(), m_spTexturePool.get())
                  : nullptr;
    if (pShared == nullptr)
    {
        Log(QD_COLLADA, LOG_WARNING, "Failed to load texture '%s' from pool '%s'.  Trying actual file.",
            rStrName, rPoolName);
        return nullptr;
    }
    AddMipMaps(*pShared);
    Log(QD_COLLADA, LOG_INFO, "Substituting TexturePool '%s' texture '%s' for file '%s'", rPoolName, rStrName,
        rStrFile);
    return spTexture;
}

CSGTexturePtr CColladaImages::LoadData(const domImage& rImage) const
{
    const auto& rBytes = rImage.getData()->getValue();
    CSGTexturePtr spTexture = m_spTextureLoader->TryLoadTextureFromMemory(
        {reinterpret_cast<const uint8_t*>(rBytes.getRawData()), rBytes.getCount()},
        FirstText({rImage.getId(), rImage.getName()}));
    if (!spTexture)
    {
        return CSGTex_2D::GetTextureFailedToLoad();
    }
    AddMipMaps(*spTexture);
    return spTexture;
}

CSGTexturePtr CColladaImages::LoadReference(const domImage& rImage)
{
    const CQDString strReference = rImage.getInit_from()->getValue().originalStr();
    const CColladaImagePath objPath(strReference, m_objFolder);
    if (objPath.GetBaseName().empty())
    {
        Log(QD_COLLADA, LOG_ERROR, "<init_from> \"%s\" in <image id=\"%s\"> names no file", strReference,
            GetIDText(rImage));
        return CSGTex_2D::GetTextureFailedToLoad();
    }
    if (m_spTexturePool)
    {
        if (const CSGTexturePtr spTexture = LoadFromPool(objPath.GetBaseName(), strReference))
        {
            return spTexture;
        }
    }
    if (!objPath.IsLocal())
    {
        Log(QD_COLLADA, LOG_ERROR,
            "\"%s\" referenced by <init_from> in <image id=\"%s\"> is not a local file", strReference,
            GetIDText(rImage));
        return CSGTex_2D::GetTextureFailedToLoad();
    }
    const CSGTexturePtr spTexture = LoadTextureFile(objPath.FindFile());
    if (!spTexture)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to load texture from \"%s\" referenced by <init_from> in <image>",
            strReference);
    }
    return spTexture;
}

CSGTexturePtr CColladaImages::LoadTextureFile(const CQDString& rStrFile)
{
    // Images may spell the name of one file differently.
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
