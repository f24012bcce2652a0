// Weak pointers: an object that can be pointed at weakly is linked to a tombstone, and the weak pointers hold
// that.
#pragma once

#include "qdscenegraph/object/CSGObject.h"

#include <utility>

class CSGTombstone;

// The second base of classes that can be pointed at weakly.
class CEnableSGObjectWPtr
{
  public:
    virtual ~CEnableSGObjectWPtr();

  protected:
    CEnableSGObjectWPtr() = default;

  private:
    friend class CSGTombstone;

    CSGTombstone* m_pTombstone = nullptr; // null until the first weak pointer is made
};

// Lives from the first weak pointer until the object and the last weak pointer are gone, in either order.
class CSGTombstone
{
  public:
    // The object's tombstone with one more holder; null when the object is null or nobody owns it.
    static CSGTombstone* GetOrCreateTombstone(CEnableSGObjectWPtr* pEnableObject, CSGObject* pObject);
    // Drops a weak holder and clears its pointer.
    void WeakPointerDetached(CSGTombstone*& rpObjTombstone);
    // The object goes: every weak pointer yields null from now on.
    void ObjectDestroyed(CSGTombstone*& rpObjTombstone);

    CSGObject* GetObject() const { return m_pObject; }
    void AddHolder() { ++m_nRefs; }

  private:
    CSGTombstone() = default;
    // Deletes the tombstone with its last holder.
    void RemoveHolder();

    CSGObject* m_pObject = nullptr;
    int32_t m_nRefs = 0; // the object, while it lives, and each weak pointer
};

// Points at an object without owning it; yields null once the object is gone.
template <class T>
class CSGWeakPtr
{
  public:
    CSGWeakPtr() = default;
    explicit CSGWeakPtr(T* pObject) : m_pTombstone(CSGTombstone::GetOrCreateTombstone(pObject, pObject)) {}
    CSGWeakPtr(const CSGWeakPtr& rOther) : m_pTombstone(rOther.m_pTombstone)
    {
        if (m_pTombstone != nullptr)
        {
            m_pTombstone->AddHolder();
        }
    }
    CSGWeakPtr(CSGWeakPtr&& rOther) noexcept : m_pTombstone(std::exchange(rOther.m_pTombstone, nullptr)) {}
    CSGWeakPtr& operator=(CSGWeakPtr objOther) noexcept
    {
        std::swap(m_pTombstone, objOther.m_pTombstone);
        return *this;
    }
    ~CSGWeakPtr()
    {
        if (m_pTombstone != nullptr)
        {
            m_pTombstone->WeakPointerDetached(m_pTombstone);
        }
    }

    boost::intrusive_ptr<T> Lock() const
    {
        return m_pTombstone != nullptr ? static_cast<T*>(m_pTombstone->GetObject()) : nullptr;
    }

  private:
    CSGTombstone* m_pTombstone = nullptr;
};
