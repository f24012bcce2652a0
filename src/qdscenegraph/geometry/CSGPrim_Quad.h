// One quadrilateral of a primitive list.
#pragma once

#include "qdscenegraph/geometry/CSGPrimitive.h"

#include <array>

class CSGPrim_Quad final : public CSGPrimitive
{
  public:
    static CSGTypeInfo<CSGPrimitive> ms_objTypeInfo;

    // Null (reported) for other than 4 indices, and for negative ones.
    static boost::intrusive_ptr<CSGPrimitive> Create(std::span<const int32_t> arrIndices);

    const CSGTypeInfo<CSGPrimitive>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    std::span<const int32_t> GetIndices() const override { return m_arrIndices; }
    size_t GetObjectSize() const override { return sizeof(CSGPrim_Quad); }

  private:
    std::array<int32_t, 4> m_arrIndices;
};
