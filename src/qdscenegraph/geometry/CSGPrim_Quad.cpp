#include "qdscenegraph/geometry/CSGPrim_Quad.h"

#include <algorithm>

CSGTypeInfo<CSGPrimitive> CSGPrim_Quad::ms_objTypeInfo("CSGPrim_Quad");

boost::intrusive_ptr<CSGPrimitive> CSGPrim_Quad::Create(std::span<const int32_t> arrIndices)
{
    QD_CHECK_CALL(VerifyIndices(arrIndices, 4, 4), nullptr);
    boost::intrusive_ptr<CSGPrim_Quad> spPrimitive = CSGMem::Construct<CSGPrim_Quad>();
    QD_CHECK_CREATED(spPrimitive, nullptr);
    std::ranges::copy(arrIndices, spPrimitive->m_arrIndices.begin());
    return spPrimitive;
}
