// Arrays of numbers that are read and written as one block.
#pragma once

#include "qdscenegraph/object/CSGMem.h"

#include <exception>
#include <limits>
#include <new>
#include <utility>
#include <vector>

// Memory from the scene-graph pool. New elements are left as they are: what is read over them next needs no
// zeros before.
template <class T>
class CSGBulkAllocator
{
  public:
    using value_type = T;

    CSGBulkAllocator() = default;
    template <class U>
    CSGBulkAllocator(const CSGBulkAllocator<U>&)
    {}

    T* allocate(size_t nCount)
    {
        void* pBlock = nCount <= std::numeric_limits<size_t>::max() / sizeof(T)
                           ? CSGMem::GetPool().Alloc(nCount * sizeof(T))
                           : nullptr;
        if (pBlock == nullptr)
        {
            throw std::bad_alloc();
        }
        return static_cast<T*>(pBlock);
    }
    void deallocate(T* pBlock, size_t nCount) { CSGMem::GetPool().Free(pBlock, nCount * sizeof(T)); }

    template <class U>
    void construct(U* pElement)
    {
        ::new (static_cast<void*>(pElement)) U;
    }
    template <class U, class... Args>
    void construct(U* pElement, Args&&... rArgs)
    {
        ::new (static_cast<void*>(pElement)) U(std::forward<Args>(rArgs)...);
    }

    bool operator==(const CSGBulkAllocator&) const { return true; }
};

template <class T>
using CSGBulkArray = std::vector<T, CSGBulkAllocator<T>>;

// False, with the array as it was, when there is no memory for so many elements.
template <class ARRAY>
bool TryResize(ARRAY& rArray, size_t nCount)
{
    try
    {
        rArray.resize(nCount);
        return true;
    }
    catch (const std::exception&)
    {
        return false;
    }
}
