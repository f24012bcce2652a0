#include "qdscenegraph/texture/CSGTexturePoolReloadHandler.h"

#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureFileReloadHandler.h"
#include "qdscenegraph/texture/CSGTexturePool.h"

bool CSGTexturePoolReloadHandler::Reload(CSGTextureLoader* pTextureLoader, CSGTex_2D* pTexture)
{
    const auto spPool = CSGTexturePool::FindPool(m_strPoolName);
    QD_CHECK_NOT_NULL(spPool, false);
    const CSGTexturePtr spLoaded = spPool->TryLoadTexture(pTextureLoader, m_strTextureName);
    return spLoaded && CSGTextureFileReloadHandler::ReplacePixels(pTexture, spLoaded);
}
