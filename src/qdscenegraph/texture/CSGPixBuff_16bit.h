// Pixel buffers with two bytes for each pixel.
#pragma once

#include "qdscenegraph/texture/CSGPixelBuffer.h"

// Made for renderers that take such pixels as they are; their colours are not read or written.
class CSGPixBuff_16bit final : public SGStreamableDerivedInterface<CSGPixBuff_16bit, CSGPixelBuffer>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGPixBuff_16bit";

    bool GetColor(int32_t nPixel, CColor& rObjColor) const override;
    bool SetColor(int32_t nPixel, const CColor& rObjColor) override;

  protected:
    bool VerifyFormat(PixelFormat eFormat, int32_t nNumPixels) const override;
};
