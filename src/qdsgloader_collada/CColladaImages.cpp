#include "qdsgloader_collada/CColladaImages.h"

#include "daedom/CDaeUri.h"
#include "qdcommon/CLog.h"
#include "qdscenegraph/material/CSGSurf_Texture.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaImagePath.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

CColladaImages::CColladaImages(const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader,
                               const boost::intrusive_ptr<CSGTexturePool>& spTexturePool,
                               const CQDString& rStrDocument)
    : m_objTextures(spTextureLoader, spTexturePool, QD_COLLADA),
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
    if (!m_objTextures.HasLoader())
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

CSGTexturePtr CColladaImages::LoadData(const domImage& rImage) const
{
    const auto& rBytes = rImage.getData()->getValue();
    const CSGTexturePtr spTexture = m_objTextures.LoadFromMemory(
        {reinterpret_cast<const uint8_t*>(rBytes.getRawData()), rBytes.getCount()},
        FirstText({rImage.getId(), rImage.getName()}));
    return spTexture ? spTexture : CSGTex_2D::GetTextureFailedToLoad();
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
    if (const CSGTexturePtr spTexture = m_objTextures.LoadFromPool(objPath.GetBaseName(), strReference))
    {
        return spTexture;
    }
    if (!objPath.IsLocal())
    {
        Log(QD_COLLADA, LOG_ERROR,
            "\"%s\" referenced by <init_from> in <image id=\"%s\"> is not a local file", strReference,
            GetIDText(rImage));
        return CSGTex_2D::GetTextureFailedToLoad();
    }
    const CSGTexturePtr spTexture = m_objTextures.LoadFile(objPath.FindFile());
    if (!spTexture)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to load texture from \"%s\" referenced by <init_from> in <image>",
            strReference);
    }
    return spTexture;
}
