#include "qdsgloader_collada/CColladaPrimitiveLayout.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <algorithm>

bool CColladaPrimitiveLayout::AddParam(int32_t nStartOffset, int32_t nNumPrimitives)
{
    if (nStartOffset < 0)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in invalid start offset %d.", nStartOffset);
        return false;
    }
    if (nNumPrimitives < 1)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in invalid number of primitives %d.", nNumPrimitives);
        return false;
    }
    m_vecParams.push_back({nStartOffset, nNumPrimitives});
    m_nPrimitivesPerValue += nNumPrimitives;
    m_nExtent = std::max<int64_t>(m_nExtent, int64_t{nStartOffset} + nNumPrimitives);
    return true;
}
