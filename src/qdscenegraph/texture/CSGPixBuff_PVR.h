// Pixel buffers of any compressed format.
#pragma once

#include "qdscenegraph/texture/CSGPixBuff_Compressed.h"

class CSGPixBuff_PVR final : public SGStreamableDerivedInterface<CSGPixBuff_PVR, CSGPixBuff_Compressed>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGPixBuff_PVR";

  protected:
    // At least as many pixels as the format's smallest block has.
    bool VerifyFormat(PixelFormat eFormat, int32_t nNumPixels) const override;
};
