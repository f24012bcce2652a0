// The standard texture loader: image files from disk.
#pragma once

#include "qdscenegraph/texture/CSGTextureLoader.h"

// Loads PNG, JPEG, TGA, BMP and DDS. The kind of a file is known from its first bytes; only TGA, which has no
// signature, needs its extension or a header that makes sense.
//
// A texture has the size of the image, its top row first, and the values of the file, neither linearised nor
// multiplied by alpha: L8 for grey, R8G8B8 or, with any kind of transparency, R8G8B8A8; 16-bit channels are
// rounded to 8. Compressed DDS files keep their blocks and their levels; all others have one level. The
// pixels never change, and Reload reads the file again.
class CSGTexLdr_SOIL final : public CSGTextureLoader
{
  public:
    CSGTexturePtr ReadTexture(const CQDString& rFilename, CQDString& rReason) override;
    CSGTexturePtr ReadTextureFromMemory(std::span<const uint8_t> arrFile, const CQDString& rName,
                                        CQDString& rReason) override;
};
