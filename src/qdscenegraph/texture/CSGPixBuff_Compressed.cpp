#include "qdscenegraph/texture/CSGPixBuff_Compressed.h"

bool CSGPixBuff_Compressed::GetColor(int32_t, CColor&) const
{
    Log(QD_SCENEGRAPH, LOG_ERROR, "GetColor not implemented for this format.");
    return false;
}

bool CSGPixBuff_Compressed::SetColor(int32_t, const CColor&)
{
    Log(QD_SCENEGRAPH, LOG_ERROR, "SetColor not supported for this format.");
    return false;
}
