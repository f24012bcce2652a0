// JPEG files (libjpeg-turbo: baseline and progressive, grey, YCbCr, RGB, CMYK and YCCK).
#pragma once

#include "qdscenegraph/texture/CImage.h"

class CImageReader_JPEG
{
  public:
    static bool Read(std::span<const uint8_t> arrFile, CImage& rImage, CQDString& rReason);
};
