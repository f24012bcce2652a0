// BMP files of all header versions (palettes, packed pixels and bit fields; not run-length compressed).
#pragma once

#include "qdscenegraph/texture/CImage.h"

class CImageReader_BMP
{
  public:
    static bool Read(std::span<const uint8_t> arrFile, CImage& rImage, CQDString& rReason);
};
