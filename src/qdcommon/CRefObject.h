// The base of service objects that live on the ordinary heap: loaders, texture loaders, pools, file readers
// and writers.
#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>

// A plain intrusive reference count. It starts at 0; the first boost::intrusive_ptr that takes the object
// raises it to 1, and the object deletes itself when the count comes back to 0. Not thread safe.
class CRefObject
{
  public:
    // The count of a destroyed object: a later use of a dangling pointer is reported instead of corrupting
    // memory.
    static constexpr int32_t DELETED_MARKER = -1000;

    CRefObject() = default;
    CRefObject(const CRefObject&) = delete;
    CRefObject& operator=(const CRefObject&) = delete;
    virtual ~CRefObject();

    // Returns the new count, or -1 (reported) on a deleted object, whose count is left as it is.
    int32_t AddRef() const;
    // Returns the decremented count: 0 when this call destroyed the object, negative (reported) when there
    // was nothing to release. The count is lowered first and looked at afterwards.
    int32_t Release() const;

  private:
    mutable int32_t m_nRefCount = 0;
};

void intrusive_ptr_add_ref(const CRefObject* pObject);
void intrusive_ptr_release(const CRefObject* pObject);
