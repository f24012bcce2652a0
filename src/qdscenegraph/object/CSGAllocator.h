// Element storage of the scene graph's list sets.
#pragma once

#include "qdcommon/CListSet.h"
#include "qdscenegraph/object/CSGMem.h"

// Storage for CListSet<T, CSGAllocator<T, MIN_CAPACITY>, MIN_CAPACITY>, from the scene-graph pool, every
// element empty.
template <class T, int32_t MIN_CAPACITY>
class CSGAllocator
{
  public:
    using CElt = typename CListSet<T, CSGAllocator, MIN_CAPACITY>::CElt;

    static CElt* AllocEltArray(int32_t nCount)
    {
        CElt* arrElts = CSGMem::AllocArray<CElt>(static_cast<size_t>(nCount));
        QD_CHECK_CREATED(arrElts, nullptr);
        return arrElts;
    }
    static void FreeEltArray(CElt* arrElts, int32_t nCount)
    {
        CSGMem::FreeArray(arrElts, static_cast<size_t>(nCount));
    }
};

template <class T, int32_t MIN_CAPACITY>
using CSGListSet = CListSet<T, CSGAllocator<T, MIN_CAPACITY>, MIN_CAPACITY>;
