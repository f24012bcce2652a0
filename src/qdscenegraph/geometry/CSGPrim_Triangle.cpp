#include "qdscenegraph/geometry/CSGPrim_Triangle.h"

#include <algorithm>

CSGTypeInfo<CSGPrimitive> CSGPrim_Triangle::ms_objTypeInfo("CSGPrim_Triangle");

boost::intrusive_ptr<CSGPrimitive> CSGPrim_Triangle::Create(std::span<const int32_t> arrIndices)
{
    QD_CHECK_CALL(VerifyIndices(arrIndices, 3, 3), nullptr);
    boost::intrusive_ptr<CSGPrim_Triangle> spPrimitive = CSGMem::Construct<CSGPrim_Triangle>();
    QD_CHECK_CREATED(spPrimitive, nullptr);
    std::ranges::copy(arrIndices, spPrimitive->m_arrIndices.begin());
    return spPrimitive;
}
