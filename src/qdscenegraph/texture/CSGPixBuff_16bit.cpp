#include "qdscenegraph/texture/CSGPixBuff_16bit.h"

namespace
{
const SGStreamableRegistration<CSGPixBuff_16bit> s_objRegistration(0xAA40443921AF8E4E, 1, 1);
}

bool CSGPixBuff_16bit::GetColor(int32_t, CColor&) const
{
    Log(QD_SCENEGRAPH, LOG_ERROR, "GetColor not implemented for this format.");
    return false;
}

bool CSGPixBuff_16bit::SetColor(int32_t, const CColor&)
{
    Log(QD_SCENEGRAPH, LOG_ERROR, "SetColor not implemented for this format.");
    return false;
}

bool CSGPixBuff_16bit::VerifyFormat(PixelFormat eFormat, int32_t) const
{
    QD_CHECK(PixelFormatIs16bit(eFormat), false);
    return true;
}
