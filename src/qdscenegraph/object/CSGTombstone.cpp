#include "qdscenegraph/object/CSGTombstone.h"

#include "qdcommon/CLogChecks.h"

#include <memory>

CEnableSGObjectWPtr::~CEnableSGObjectWPtr()
{
    if (m_pTombstone != nullptr)
    {
        m_pTombstone->ObjectDestroyed(m_pTombstone);
    }
}

CSGTombstone* CSGTombstone::GetOrCreateTombstone(CEnableSGObjectWPtr* pEnableObject, CSGObject* pObject)
{
    if (pEnableObject == nullptr || pObject == nullptr || pObject->GetRefCount() < 1)
    {
        return nullptr;
    }
    if (pEnableObject->m_pTombstone == nullptr)
    {
        pEnableObject->m_pTombstone = new (std::nothrow) CSGTombstone;
        QD_CHECK_NOT_NULL(pEnableObject->m_pTombstone, nullptr);
        pEnableObject->m_pTombstone->m_pObject = pObject;
        pEnableObject->m_pTombstone->m_nRefs = 1;
    }
    pEnableObject->m_pTombstone->AddHolder();
    return pEnableObject->m_pTombstone;
}

void CSGTombstone::WeakPointerDetached(CSGTombstone*& rpObjTombstone)
{
    QD_CHECK(this == rpObjTombstone, );
    rpObjTombstone = nullptr;
    RemoveHolder();
}

void CSGTombstone::ObjectDestroyed(CSGTombstone*& rpObjTombstone)
{
    QD_CHECK((this == rpObjTombstone) && (m_pObject != 0), );
    m_pObject = nullptr;
    rpObjTombstone = nullptr;
    RemoveHolder();
}

void CSGTombstone::RemoveHolder()
{
    if (--m_nRefs == 0)
    {
        const std::unique_ptr<CSGTombstone> spDeleted(this);
    }
}
