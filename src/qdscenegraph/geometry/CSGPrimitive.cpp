#include "qdscenegraph/geometry/CSGPrimitive.h"

#include <algorithm>

int32_t CSGPrimitive::GetMaxIndex() const { return std::ranges::max(GetIndices()); }

bool CSGPrimitive::VerifyIndices(std::span<const int32_t> arrIndices, size_t nMinCorners, size_t nMaxCorners)
{
    const size_t nCorners = arrIndices.size();
    QD_CHECK(nCorners >= nMinCorners && nCorners <= nMaxCorners, false);
    QD_CHECK_OR_RETURN(std::ranges::min(arrIndices) >= 0, "%s is false", "nIndex >= 0", false);
    return true;
}
