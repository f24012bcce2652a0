// One triangle of a primitive list.
#pragma once

#include "qdscenegraph/geometry/CSGPrimitive.h"

#include <array>

class CSGPrim_Triangle final : public CSGPrimitive
{
  public:
    static CSGTypeInfo<CSGPrimitive> ms_objTypeInfo;

    // Null (reported) for other than 3 indices, and for negative ones.
    static boost::intrusive_ptr<CSGPrimitive> Create(std::span<const int32_t> arrIndices);

    const CSGTypeInfo<CSGPrimitive>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    std::span<const int32_t> GetIndices() const override { return m_arrIndices; }
    size_t GetObjectSize() const override { return sizeof(CSGPrim_Triangle); }

  private:
    std::array<int32_t, 3> m_arrIndices;
};
