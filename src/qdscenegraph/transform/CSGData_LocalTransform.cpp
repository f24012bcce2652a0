#include "qdscenegraph/transform/CSGData_LocalTransform.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"
#include "qdscenegraph/transform/CSGData_WorldTransform.h"

[[gnu::init_priority(CSGDataTypeInfo::ORDER_LOCAL_TRANSFORM)]] CSGDataTypeInfo CSGData_LocalTransform::
    ms_objDataTypeInfo(CSGData_LocalTransform::SG_TYPE_NAME);

namespace
{

const SGStreamableRegistration<CSGData_LocalTransform> s_objRegistration(0x33CF02C927E0207D, 1, 1);

// What the one link of the record is for.
constexpr int32_t COOKIE_TRANSFORM = 0;

} // namespace

boost::intrusive_ptr<CSGData_LocalTransform> CSGData_LocalTransform::Create(
    const CSGTransform::CTransformPtr& spTransform)
{
    boost::intrusive_ptr<CSGData_LocalTransform> spData = CSGMem::Construct<CSGData_LocalTransform>();
    QD_CHECK_CREATED(spData, nullptr);
    return spData->SetTransformObject(spTransform.get()) ? spData : nullptr;
}

bool CSGData_LocalTransform::SetTransformObject(CSGTransform* pTransform)
{
    QD_CHECK_ARG(pTransform, false);
    m_objTransform.Set(pTransform);
    return true;
}

CTransform3 CSGData_LocalTransform::GetTransform() const
{
    const CSGTransform* pTransform = m_objTransform.Get();
    return pTransform != nullptr ? pTransform->GetTransform() : CTransform3();
}

void CSGData_LocalTransform::MarkDirty()
{
    if (m_pNode != nullptr)
    {
        CSGData_WorldTransform::MarkTreeDirty(m_pNode);
    }
}

boost::intrusive_ptr<CSGData> CSGData_LocalTransform::CreateCopy(CSGCopyData*) const
{
    const CSGTransform* pTransform = m_objTransform.Get();
    QD_CHECK_NOT_NULL(pTransform, nullptr);
    return Create(pTransform->Copy());
}

bool CSGData_LocalTransform::NotifyAddedToNode(CSGNode* pNode)
{
    QD_CHECK(m_pNode == 0, false);
    m_pNode = pNode;
    return true;
}

bool CSGData_LocalTransform::NotifyRemovedFromNode(CSGNode* pNode) { return NotifyNodeDestroyed(pNode); }

bool CSGData_LocalTransform::NotifyNodeDestroyed(CSGNode*)
{
    m_pNode = nullptr;
    return true;
}

bool CSGData_LocalTransform::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, COOKIE_TRANSFORM), false);
    return true;
}

bool CSGData_LocalTransform::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    QD_CHECK_CALL(pSaveState->WriteChildID(pStream, m_objTransform.Get()), false);
    return true;
}

bool CSGData_LocalTransform::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGData::PreWrite(pSaveState), false);
    CSGTransform* pTransform = m_objTransform.Get();
    QD_CHECK_NOT_NULL(pTransform, false);
    QD_CHECK_CALL(pTransform->PreWrite(pSaveState), false);
    return true;
}

bool CSGData_LocalTransform::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                                                CSGStreamableLoadState*)
{
    if (nCookie != COOKIE_TRANSFORM)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Bad cookie %d", nCookie);
        return false;
    }
    return m_objTransform.SetLoaded(pChild);
}

bool CSGData_LocalTransform::PostRead(CSGStreamableLoadState*)
{
    const CSGTransform* pTransform = m_objTransform.Get();
    QD_CHECK_NOT_NULL(pTransform, false);
    return true;
}

void CSGData_LocalTransform::DropLinks()
{
    m_pNode = nullptr;
    m_objTransform.Drop();
}

void CSGData_LocalTransform::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGData_LocalTransform: 0x%08llX", rIndent, LogAddress(this));
    if (const CSGTransform* pTransform = m_objTransform.Get())
    {
        pTransform->OutputDebugInfo(rIndent + "  ");
    }
}

void CSGData_LocalTransform::OutputTransformDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%s    Local:", rIndent);
    CSGTransform::OutputRows(rIndent + "      ", GetTransform());
}
