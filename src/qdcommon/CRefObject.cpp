#include "qdcommon/CRefObject.h"

#include "qdcommon/CLog.h"

CRefObject::~CRefObject() { m_nRefCount = DELETED_MARKER; }

int32_t CRefObject::AddRef() const
{
    if (m_nRefCount >= 0)
    {
        return ++m_nRefCount;
    }
    Log(QD_DEFAULT, LOG_ERROR, "Attempt to AddRef() deleted CRefObject at 0x%08llx", LogAddress(this));
    return -1;
}

int32_t CRefObject::Release() const
{
    const int32_t nCount = --m_nRefCount;
    if (nCount == 0)
    {
        m_nRefCount = DELETED_MARKER;
        delete this;
        return 0;
    }
    if (nCount < 0)
    {
        Log(QD_DEFAULT, LOG_ERROR, "Attempt to Release() deleted CRefObject at 0x%08llx", LogAddress(this));
    }
    return nCount;
}

void intrusive_ptr_add_ref(const CRefObject* pObject)
{
    if (pObject != nullptr)
    {
        pObject->AddRef();
    }
}

void intrusive_ptr_release(const CRefObject* pObject)
{
    if (pObject != nullptr)
    {
        pObject->Release();
    }
}
