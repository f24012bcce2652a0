// DDS files (S3TC blocks and pixels packed by masks, with their levels, also behind a DX10 header).
#pragma once

#include "qdscenegraph/texture/CImage.h"

class CImageReader_DDS
{
  public:
    static bool Read(std::span<const uint8_t> arrFile, CImage& rImage, CQDString& rReason);
};
