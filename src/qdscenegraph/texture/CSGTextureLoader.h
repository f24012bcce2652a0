// What loads textures from image files on behalf of a scene loader.
#pragma once

#include "qdscenegraph/texture/CSGTexture.h"

#include <span>

class CSGTextureLoader : public CRefObject
{
  public:
    // The loader of image files (CSGTexLdr_SOIL).
    static boost::intrusive_ptr<CSGTextureLoader> CreateStandardLoader();

    // The texture of an image file. Where the file is missing or damaged the result is
    // CSGTex_2D::GetTextureFailedToLoad(), so that a scene still loads; one line at the error level names the
    // file and the reason. Null only when no texture can be made at all.
    CSGTexturePtr LoadTexture(const CQDString& rFilename);
    // The same, but null when the file cannot be loaded.
    CSGTexturePtr TryLoadTexture(const CQDString& rFilename);
    // The same for a file that is held in memory; the name stands for it in the log.
    CSGTexturePtr TryLoadTextureFromMemory(std::span<const uint8_t> arrFile, const CQDString& rName);

    // Makes the texture, or gives the reason in a few words ("no such file") and null; logs nothing.
    virtual CSGTexturePtr ReadTexture(const CQDString& rFilename, CQDString& rReason) = 0;
    virtual CSGTexturePtr ReadTextureFromMemory(std::span<const uint8_t> arrFile, const CQDString& rName,
                                                CQDString& rReason) = 0;
    // The formats that textures may have (PixelFormatBit).
    virtual uint32_t GetSupportedFormatBits() const { return ALL_PIXEL_FORMATS; }
};
