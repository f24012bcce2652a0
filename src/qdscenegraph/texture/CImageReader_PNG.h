// PNG files (libpng: all colour types, depths and interlacing).
#pragma once

#include "qdscenegraph/texture/CImage.h"

class CImageReader_PNG
{
  public:
    static bool Read(std::span<const uint8_t> arrFile, CImage& rImage, CQDString& rReason);
};
