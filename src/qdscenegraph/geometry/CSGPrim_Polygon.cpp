#include "qdscenegraph/geometry/CSGPrim_Polygon.h"

#include <algorithm>

CSGTypeInfo<CSGPrimitive> CSGPrim_Polygon::ms_objTypeInfo("CSGPrim_Polygon");

boost::intrusive_ptr<CSGPrimitive> CSGPrim_Polygon::Create(std::span<const int32_t> arrIndices)
{
    QD_CHECK_CALL(VerifyIndices(arrIndices, 3, std::numeric_limits<int32_t>::max()), nullptr);
    boost::intrusive_ptr<CSGPrim_Polygon> spPrimitive = CSGMem::Construct<CSGPrim_Polygon>();
    QD_CHECK_CREATED(spPrimitive, nullptr);
    QD_CHECK_CALL(TryResize(spPrimitive->m_vecIndices, arrIndices.size()), nullptr);
    std::ranges::copy(arrIndices, spPrimitive->m_vecIndices.begin());
    return spPrimitive;
}
