// TGA files (grey, colours of 16, 24 and 32 bits, palettes; plain and run-length compressed).
#pragma once

#include "qdscenegraph/texture/CImage.h"

class CImageReader_TGA
{
  public:
    // TGA has no signature: whether the first bytes could be such a header.
    static bool IsPlausible(std::span<const uint8_t> arrFile);
    static bool Read(std::span<const uint8_t> arrFile, CImage& rImage, CQDString& rReason);
};
