// Memory of scene-graph objects: all of it from the pool named "SG".
#pragma once

#include "qdcommon/CLogChecks.h"
#include "qdcommon/CMemPool.h"
#include "qdscenegraph/object/CSGObject.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

// The log source of the scene-graph library.
extern CLogSource QD_SCENEGRAPH;

class CSGMem
{
  public:
    static CMemPool& GetPool();

    // Constructs a T in the pool; null (reported) when the pool is exhausted.
    template <class T, class... Args>
    static T* Construct(Args&&... rArgs)
    {
        static_assert(std::is_base_of_v<CSGObject, T>);
        void* pObject = GetPool().Alloc(sizeof(T));
        QD_CHECK_CREATED(pObject, nullptr);
        return ::new (pObject) T(std::forward<Args>(rArgs)...);
    }

    // Runs the destructor and gives the memory back.
    static void Destroy(CSGObject* pObject);

    // `nCount` value-initialised elements, or null (reported).
    template <class T>
    static T* AllocArray(size_t nCount)
    {
        void* arrElts = GetPool().Alloc(nCount * sizeof(T));
        QD_CHECK_CREATED(arrElts, nullptr);
        std::uninitialized_value_construct_n(static_cast<T*>(arrElts), nCount);
        return static_cast<T*>(arrElts);
    }
    template <class T>
    static T** AllocPointerArray(size_t nCount)
    {
        return AllocArray<T*>(nCount);
    }
    template <class T>
    static void FreeArray(T* arrElts, size_t nCount)
    {
        if (arrElts != nullptr)
        {
            std::destroy_n(arrElts, nCount);
            GetPool().Free(arrElts, nCount * sizeof(T));
        }
    }
};
