#include "qdscenegraph/transform/CSGTransformLink.h"

void CSGTransformLink::Set(CSGTransform* pTransform)
{
    const CSGTransform::CTransformPtr spFormer = m_spTransform; // the new one may be held by it alone
    m_spTransform = pTransform;
    if (pTransform != nullptr)
    {
        m_objLink.Connect(pTransform);
    }
    else
    {
        m_objLink.Disconnect();
    }
    m_objLink.GetDependent()->MarkDirty();
}

void CSGTransformLink::Drop()
{
    m_objLink.Disconnect();
    m_spTransform.reset();
}

bool CSGTransformLink::SetLoaded(CSGStreamable* pObject)
{
    QD_CHECK_ARG(pObject, false);
    auto* pTransform = SGStreamableCast<CSGTransform>(pObject);
    if (pTransform == nullptr)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Unexpected (CSGStreamable*)0x%08llx type %s", LogAddress(pObject),
            pObject->GetSGStreamableType()->GetName());
        return false;
    }
    QD_CHECK(m_spTransform == 0, false);
    Set(pTransform);
    return true;
}
