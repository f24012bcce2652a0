// Gives a texture of a pool its pixels anew from the folders of the pool.
#pragma once

#include "qdscenegraph/texture/CSGTextureReloadHandler.h"

// Knows its pool by name: the pool owns the texture, and the texture this handler.
class CSGTexturePoolReloadHandler final : public CSGTextureReloadHandler
{
  public:
    CSGTexturePoolReloadHandler(const CQDString& rPoolName, const CQDString& rTextureName)
        : m_strPoolName(rPoolName),
          m_strTextureName(rTextureName)
    {}

    bool Reload(CSGTextureLoader* pTextureLoader, CSGTex_2D* pTexture) override;
    // The name of the texture in its pool.
    const CQDString& GetFilename() const override { return m_strTextureName; }

  private:
    CQDString m_strPoolName;
    CQDString m_strTextureName;
};
