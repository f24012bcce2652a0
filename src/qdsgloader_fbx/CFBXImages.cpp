#include "qdsgloader_fbx/CFBXImages.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CFileName.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/material/CSGSurf_Texture.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdscenegraph/texture/CSGTexturePool.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

namespace
{

const CQDString& GetStoredName(const FbxFileTexture& rTexture)
{
    return rTexture.GetFileName().empty() ? rTexture.GetRelativeFileName() : rTexture.GetFileName();
}

// Tools name textures by what they do ("base_color_texture"), many alike; media have the names of images.
const CQDString& GetImageName(const FbxFileTexture& rTexture)
{
    const FbxVideo* pMedia = rTexture.GetMedia();
    return pMedia != nullptr && !pMedia->GetName().empty() ? pMedia->GetName() : rTexture.GetName();
}

CSGSamplerParams::EWrap GetWrap(FbxTexture::EWrapMode eMode)
{
    return eMode == FbxTexture::eClamp ? CSGSamplerParams::WRAP_CLAMP : CSGSamplerParams::WRAP_REPEAT;
}

} // namespace

CFBXImages::CFBXImages(const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader,
                       const boost::intrusive_ptr<CSGTexturePool>& spTexturePool,
                       const CQDString& rStrFBXFilename)
    : m_objTextures(spTextureLoader, spTexturePool, QD_FBX),
      m_objFolder(std::filesystem::path(rStrFBXFilename).parent_path()),
      m_objMediaFolder(std::filesystem::path(rStrFBXFilename).replace_extension(".fbm"))
{}

CFBXImages::~CFBXImages() = default;

bool CFBXImages::HasImage(const FbxFileTexture& rTexture)
{
    return !GetStoredName(rTexture).empty() ||
           (rTexture.GetMedia() != nullptr && !rTexture.GetMedia()->GetContent().empty());
}

CSGSamplerPtr CFBXImages::GetOrCreateSampler(const FbxFileTexture& rTexture)
{
    const CSGSurfacePtr spSurface = GetOrLoadImage(GetImageName(rTexture), rTexture);
    if (!spSurface)
    {
        return nullptr;
    }
    const CSGSamplerParams::EWrap eWrapS = GetWrap(rTexture.GetWrapModeU());
    const CSGSamplerParams::EWrap eWrapT = GetWrap(rTexture.GetWrapModeV());
    CSGSamplerPtr& rspSampler = m_mapSamplers[{spSurface.get(), {eWrapS, eWrapT}}];
    if (!rspSampler)
    {
        rspSampler = CSGSampler::Create(spSurface);
        QD_CHECK_CREATED(rspSampler, nullptr);
        CSGSamplerParams objParams;
        objParams.m_eWrapS = eWrapS;
        objParams.m_eWrapT = eWrapT;
        rspSampler->SetParams(objParams);
    }
    return rspSampler;
}

CSGSurfacePtr CFBXImages::GetOrLoadImage(const CQDString& rStrImageName, const FbxFileTexture& rTexture)
{
    const auto [it, bNew] = m_mapImages.try_emplace(rStrImageName);
    CImage& rImage = it->second;
    if (bNew)
    {
        rImage.pTexture = &rTexture;
        if (const CSGTexturePtr spTexture = LoadImage(rStrImageName, rTexture))
        {
            rImage.spSurface = CSGSurf_Texture::Create(spTexture);
        }
    }
    else if (rImage.pTexture->GetFileName() != rTexture.GetFileName())
    {
        Log(QD_FBX, LOG_WARNING, "Image '%s' encountered with different filenames.", rStrImageName);
        Log(QD_FBX, LOG_WARNING, "Cached: '%s'", rImage.pTexture->GetFileName());
        Log(QD_FBX, LOG_WARNING, "Second: '%s'", rTexture.GetFileName());
    }
    return rImage.spSurface;
}

CSGTexturePtr CFBXImages::LoadImage(const CQDString& rStrImageName, const FbxFileTexture& rTexture)
{
    const CQDString& rStored = GetStoredName(rTexture);
    if (const CSGTexturePtr spTexture =
            rStored.empty() ? nullptr : m_objTextures.LoadFromPool(CFileName::GetBaseName(rStored), rStored))
    {
        return spTexture;
    }
    const std::span<const uint8_t> arrContent = FindContent(rTexture);
    if (!arrContent.empty())
    {
        // Images of other names may be the same media.
        const auto [it, bNew] = m_mapEmbedded.try_emplace(arrContent.data());
        if (bNew)
        {
            Log(QD_FBX, LOG_INFO, "Loading embedded content for image '%s'", rStrImageName);
            it->second = m_objTextures.LoadFromMemory(arrContent, rStored.empty() ? rStrImageName : rStored);
        }
        if (it->second)
        {
            return it->second;
        }
    }
    const CQDString strFile = rStored.empty() ? CQDString() : FindFile(rStrImageName, rTexture);
    return strFile.empty() ? CSGTex_2D::GetTextureFailedToLoad() : m_objTextures.LoadFile(strFile);
}

std::span<const uint8_t> CFBXImages::FindContent(const FbxFileTexture& rTexture)
{
    if (rTexture.GetMedia() != nullptr && !rTexture.GetMedia()->GetContent().empty())
    {
        return rTexture.GetMedia()->GetContent();
    }
    // Of several media with one file, tools embed it in one.
    if (!m_mapContents)
    {
        m_mapContents.emplace();
        for (const FbxVideo* pVideo : rTexture.GetScene()->GetObjects<FbxVideo>())
        {
            if (!pVideo->GetContent().empty())
            {
                m_mapContents->try_emplace(pVideo->GetFileName(), pVideo);
            }
        }
    }
    const auto it = m_mapContents->find(rTexture.GetFileName());
    return it != m_mapContents->end() ? it->second->GetContent() : std::span<const uint8_t>();
}

CQDString CFBXImages::FindFile(const CQDString& rStrImageName, const FbxFileTexture& rTexture) const
{
    const CQDString& rStored = GetStoredName(rTexture);
    for (const CQDString& rName : {rStored, CFileName::MakeSlashes(rStored)})
    {
        const CQDString strFile = (m_objFolder / rName).string();
        if (CFileName::IsFile(strFile))
        {
            Log(QD_FBX, LOG_INFO, "Loading '%s' for image '%s'", strFile, rStrImageName);
            return strFile;
        }
    }
    const CQDString& rRelative = rTexture.GetRelativeFileName();
    const CQDString strBelow = (m_objFolder / CFileName::MakeSlashes(rRelative)).string();
    if (!rRelative.empty() && CFileName::IsFile(strBelow))
    {
        Log(QD_FBX, LOG_INFO, "Loading '%s' instead of nonexistent '%s'", strBelow, rStored);
        return strBelow;
    }
    const CQDString strBaseName = CFileName::GetBaseName(rStored);
    const CQDString strBeside = (m_objFolder / strBaseName).string();
    if (CFileName::IsFile(strBeside))
    {
        Log(QD_FBX, LOG_WARNING, "Loading '%s' instead of '%s' (found in same directory as fbx)", strBeside,
            rStored);
        return strBeside;
    }
    const CQDString strUnpacked = (m_objMediaFolder / strBaseName).string();
    if (CFileName::IsFile(strUnpacked))
    {
        Log(QD_FBX, LOG_WARNING, "Loading '%s' instead of nonexistent '%s'", strUnpacked, rStored);
        return strUnpacked;
    }
    Log(QD_FBX, LOG_ERROR, "Did not find '%s' or '%s'", rStored, strBeside);
    return {};
}
