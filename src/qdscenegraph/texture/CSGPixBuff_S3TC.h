// Pixel buffers with a class for each S3TC format, as older files have them.
#pragma once

#include "qdscenegraph/texture/CSGPixBuffName.h"
#include "qdscenegraph/texture/CSGPixBuff_Compressed.h"

// Read and saved again as they are; new buffers of these formats are CSGPixBuff_PVR.
template <PixelFormat FORMAT>
class CSGPixBuff_S3TC final
    : public SGStreamableDerivedInterface<CSGPixBuff_S3TC<FORMAT>, CSGPixBuff_Compressed>
{
  public:
    static constexpr const char* SG_TYPE_NAME = PIX_BUFF_NAME<FORMAT>.data();

  protected:
    bool VerifyFormat(PixelFormat eFormat, int32_t nNumPixels) const override
    {
        QD_CHECK(eFormat == FORMAT, false);
        if (nNumPixels % 16 != 0)
        {
            Log(QD_SCENEGRAPH, LOG_ERROR,
                "Size must be multiple of 16 for this format (Dimensions must be multiples of 4)");
            return false;
        }
        return true;
    }
};

using CSGPixBuff_RGB_S3TC_DXT1 = CSGPixBuff_S3TC<PIXEL_FORMAT_RGB_S3TC_DXT1>;
using CSGPixBuff_RGBA_S3TC_DXT1 = CSGPixBuff_S3TC<PIXEL_FORMAT_RGBA_S3TC_DXT1>;
using CSGPixBuff_RGBA_S3TC_DXT3 = CSGPixBuff_S3TC<PIXEL_FORMAT_RGBA_S3TC_DXT3>;
using CSGPixBuff_RGBA_S3TC_DXT5 = CSGPixBuff_S3TC<PIXEL_FORMAT_RGBA_S3TC_DXT5>;
