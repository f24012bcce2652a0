#include "qdscenegraph/texture/CSGTextureFileReloadHandler.h"

#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"

bool CSGTextureFileReloadHandler::Reload(CSGTextureLoader* pTextureLoader, CSGTex_2D* pTexture)
{
    QD_CHECK_ARG(pTextureLoader, false);
    const CSGTexturePtr spLoaded = pTextureLoader->TryLoadTexture(m_strFilename);
    return spLoaded && ReplacePixels(pTexture, spLoaded);
}

bool CSGTextureFileReloadHandler::ReplacePixels(CSGTex_2D* pTexture, const CSGTexturePtr& spLoaded)
{
    QD_CHECK_ARG(pTexture, false);
    QD_CHECK_ARG(spLoaded, false);
    QD_CHECK(spLoaded->InstanceOf(&CSGTex_2D::ms_objTypeInfo), false);
    const auto* pLoaded = static_cast<const CSGTex_2D*>(spLoaded.get());
    const bool bMipMaps = pTexture->GetNumLevels() > 1 && pLoaded->GetNumLevels() == 1;
    return pTexture->SetPixels(pLoaded->GetWidth(), pLoaded->GetHeight(), pLoaded->GetNumLevels(),
                               pLoaded->GetBuffer()) &&
           (!bMipMaps || pTexture->GenerateMipMaps());
}
