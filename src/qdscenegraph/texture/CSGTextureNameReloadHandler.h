// Keeps the name of a texture whose image was not a file of its own.
#pragma once

#include "qdscenegraph/texture/CSGTextureReloadHandler.h"

class CSGTextureNameReloadHandler final : public CSGTextureReloadHandler
{
  public:
    explicit CSGTextureNameReloadHandler(const CQDString& rName) : m_strName(rName) {}

    // Always false (reported): there is nothing to load from.
    bool Reload(CSGTextureLoader* pTextureLoader, CSGTex_2D* pTexture) override;
    const CQDString& GetFilename() const override { return m_strName; }

  private:
    CQDString m_strName;
};
