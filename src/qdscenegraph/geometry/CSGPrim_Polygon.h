// One polygon of a primitive list.
#pragma once

#include "qdscenegraph/geometry/CSGBulkArray.h"
#include "qdscenegraph/geometry/CSGPrimitive.h"

class CSGPrim_Polygon final : public CSGPrimitive
{
  public:
    static CSGTypeInfo<CSGPrimitive> ms_objTypeInfo;

    // Null (reported) for less than 3 indices, and for negative ones.
    static boost::intrusive_ptr<CSGPrimitive> Create(std::span<const int32_t> arrIndices);

    const CSGTypeInfo<CSGPrimitive>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    std::span<const int32_t> GetIndices() const override { return m_vecIndices; }
    size_t GetObjectSize() const override { return sizeof(CSGPrim_Polygon); }

  private:
    CSGBulkArray<int32_t> m_vecIndices;
};
