// The root of every scene-graph class: reference counted, its memory from the scene-graph pool.
#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstddef>
#include <cstdint>

// Made by CSGMem::Construct with a count of 0, owned through boost::intrusive_ptr, destroyed when the count
// comes back to 0. Not thread safe.
class CSGObject
{
  public:
    static constexpr int32_t DELETED_MARKER = -1000;

    CSGObject(const CSGObject&) = delete;
    CSGObject& operator=(const CSGObject&) = delete;

    // The size of the concrete class: what the pool gets back.
    virtual size_t GetObjectSize() const = 0;

    // Returns the new count, or -1 (reported) on a destroyed object, whose count is left as it is.
    int32_t AddRef() const;
    // Returns the new count, 0 when this call destroyed the object, -1 (reported) when nobody owned it.
    int32_t Release() const;
    int32_t GetRefCount() const { return m_nRefCount; }

  protected:
    CSGObject() = default;
    // Does not free memory; that is CSGMem's.
    virtual ~CSGObject();

  private:
    friend class CSGMem;

    mutable int32_t m_nRefCount = 0;
};

void intrusive_ptr_add_ref(const CSGObject* pObject);
void intrusive_ptr_release(const CSGObject* pObject);
