// What all pixel buffers of compressed formats have in common: pixels that cannot be touched one by one.
#pragma once

#include "qdscenegraph/texture/CSGPixelBuffer.h"

// In files the class does not show.
class CSGPixBuff_Compressed : public CSGPixelBuffer
{
  public:
    bool GetColor(int32_t nPixel, CColor& rObjColor) const override;
    bool SetColor(int32_t nPixel, const CColor& rObjColor) override;
};
