#include "qdscenegraph/object/CSGObject.h"

#include "qdscenegraph/object/CSGMem.h"

CSGObject::~CSGObject() { m_nRefCount = DELETED_MARKER; }

int32_t CSGObject::AddRef() const
{
    if (m_nRefCount >= 0)
    {
        return ++m_nRefCount;
    }
    Log(QD_SCENEGRAPH, LOG_ERROR, "Called when ref count was invalid value %d at 0x%08llx", m_nRefCount,
        LogAddress(this));
    return -1;
}

int32_t CSGObject::Release() const
{
    if (m_nRefCount <= 0)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Called when ref count was invalid value %d at 0x%08llx", m_nRefCount,
            LogAddress(this));
        return -1;
    }
    if (--m_nRefCount > 0)
    {
        return m_nRefCount;
    }
    m_nRefCount = DELETED_MARKER;
    CSGMem::Destroy(const_cast<CSGObject*>(this));
    return 0;
}

void intrusive_ptr_add_ref(const CSGObject* pObject)
{
    if (pObject != nullptr)
    {
        pObject->AddRef();
    }
}

void intrusive_ptr_release(const CSGObject* pObject)
{
    if (pObject != nullptr)
    {
        pObject->Release();
    }
}
