// The base of the single primitives of a primitive list.
#pragma once

#include "qdscenegraph/object/CSGTypeInfo.h"

#include <span>

// A primitive does not change once it is made.
class CSGPrimitive : public CSGObject
{
  public:
    // The record of the concrete kind: T::ms_objTypeInfo.
    virtual const CSGTypeInfo<CSGPrimitive>* GetTypeInfo() const = 0;
    // Numbers of vertices, in the order of the corners; none is negative.
    virtual std::span<const int32_t> GetIndices() const = 0;

    int32_t GetNumIndices() const { return static_cast<int32_t>(GetIndices().size()); }
    // -1 for a corner that is not there.
    int32_t GetIndex(int32_t nCorner) const
    {
        return nCorner >= 0 && nCorner < GetNumIndices() ? GetIndices()[static_cast<size_t>(nCorner)] : -1;
    }
    int32_t GetMaxIndex() const;

  protected:
    // Whether indices may make up a primitive of so many corners or more; reported where not.
    static bool VerifyIndices(std::span<const int32_t> arrIndices, size_t nMinCorners, size_t nMaxCorners);
};
