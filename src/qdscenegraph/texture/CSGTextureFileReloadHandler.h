// Gives a texture its pixels anew from the image file it came from.
#pragma once

#include "qdscenegraph/texture/CSGTexture.h"
#include "qdscenegraph/texture/CSGTextureReloadHandler.h"

class CSGTextureFileReloadHandler final : public CSGTextureReloadHandler
{
  public:
    explicit CSGTextureFileReloadHandler(const CQDString& rFilename) : m_strFilename(rFilename) {}

    bool Reload(CSGTextureLoader* pTextureLoader, CSGTex_2D* pTexture) override;
    const CQDString& GetFilename() const override { return m_strFilename; }

    // Moves the pixels of a texture that was just loaded into another; smaller levels are made again where
    // there were some. False (reported) when there is nothing to take.
    static bool ReplacePixels(CSGTex_2D* pTexture, const CSGTexturePtr& spLoaded);

  private:
    CQDString m_strFilename;
};
