#include "qdscenegraph/texture/CSGPixBuff_PVR.h"

namespace
{
const SGStreamableRegistration<CSGPixBuff_PVR> s_objRegistration(0xB6C3AFCE94A9A778, 1, 1);
}

bool CSGPixBuff_PVR::VerifyFormat(PixelFormat eFormat, int32_t nNumPixels) const
{
    if (!PixelFormatIsCompressed(eFormat))
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Unexpected eFormat %d", eFormat);
    }
    QD_CHECK(PixelFormatIsCompressed(eFormat), false);
    int32_t nMinPixels = 0; // a size in bytes at one byte for each pixel
    QD_CHECK_CALL(CalcLevelSize(eFormat, 1, 1, 0, 8, nMinPixels), false);
    if (nNumPixels < nMinPixels)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "nNumPixels must be at least %d for this format", nMinPixels);
        return false;
    }
    return true;
}
