// Saving and loading of nodes.

#include "qdcommon/CStream.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

#include <new>

bool CSGNode::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    for (CSGNode* pNode = this; pNode != nullptr;)
    {
        if (pSaveState->HasObject(pNode))
        {
            pNode = pNode->GetNextBeyondTree(this);
            continue;
        }
        QD_CHECK_CALL(pNode->CSGStreamable::PreWrite(pSaveState), false);
        QD_CHECK_CALL(pNode->m_objDataSet.PreWrite(pSaveState), false);
        pNode = pNode->GetNextInTree(this);
    }
    return true;
}

bool CSGNode::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    pStream->WriteString(m_strGlobalName);
    pStream->WriteString(m_strLocalName);
    QD_CHECK_CALL(m_objDataSet.WriteToStream(this, pStream, pSaveState), false);
    const int32_t nCount = GetChildrenSize();
    pStream->WriteInt32(nCount);
    for (int32_t nChildIndex = 0; nChildIndex < nCount; ++nChildIndex)
    {
        if (const CSGNode* pChild = GetChild(nChildIndex))
        {
            QD_CHECK_OR_RETURN(pSaveState->WriteChildID(pStream, pChild), "Call %s failed",
                               "pSaveState->WriteChildID(pStream,pChild)", false);
        }
    }
    return true;
}

bool CSGNode::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    pStream->ReadString(m_strGlobalName);
    pStream->ReadString(m_strLocalName);
    QD_CHECK_CALL(m_objDataSet.ReadFromStream(this, pStream, pLoadState), false);
    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nCount = pStream->ReadInt32();
    QD_CHECK(pStream->CanRead(nCount, sizeof(int32_t)), false);
    QD_CHECK_CALL(ReserveChildren(nCount), false);
    for (int32_t nChildIndex = 0; nChildIndex < nCount; ++nChildIndex)
    {
        QD_CHECK_OR_RETURN(pLoadState->ReadChildID(pStream, this, nChildIndex), "Call %s failed",
                           "pLoadState->ReadChildID(pStream,this,nChildIndex)", false);
    }
    return true;
}

bool CSGNode::ReserveChildren(int32_t nCount)
{
    if (nCount > 1)
    {
        std::unique_ptr<CChildSet> pChildSet(new (std::nothrow) CChildSet);
        QD_CHECK_CREATED(pChildSet, false);
        QD_CHECK_CALL(pChildSet->Reserve(nCount), false);
        m_spChildSet = std::move(pChildSet);
        m_uiFlags &= ~FLAG_SINGLE_CHILD;
    }
    return true;
}

bool CSGNode::SetLoadedChild(int32_t nChildIndex, CSGNode* pChild)
{
    QD_CHECK(!pChild->HasParent(), false);
    QD_CHECK(GetChild(nChildIndex) == 0, false);
    if (IsSingleChildMode())
    {
        QD_CHECK(nChildIndex == 0, false);
        m_spSingleChild = pChild;
    }
    else
    {
        QD_CHECK(nChildIndex < m_spChildSet->GetSize(), false);
        m_spChildSet->Set(nChildIndex, pChild);
    }
    return CompleteAddChild(pChild, nChildIndex);
}

bool CSGNode::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    QD_CHECK_ARG(pChild, false);
    if (nCookie >= 0)
    {
        if (auto* pNode = SGStreamableCast<CSGNode>(pChild))
        {
            return SetLoadedChild(nCookie, pNode);
        }
    }
    else if (auto* pData = SGStreamableCast<CSGData>(pChild))
    {
        QD_CHECK_CALL(m_objDataSet.SetLoadedData(nCookie, pData), false);
        QD_CHECK_CALL(pData->NotifyAddedToNode(this), false);
        QD_CHECK_CALL(m_objDataSet.NotifyDataAddedToNode(this, pData), false);
        return true;
    }
    Log(QD_SCENEGRAPH, LOG_ERROR, "Unexpected (CSGStreamable*)0x%08llx type %s", LogAddress(pChild),
        pChild->GetSGStreamableType()->GetName());
    return false;
}

bool CSGNode::PostRead(CSGStreamableLoadState*)
{
    if (m_spChildSet)
    {
        m_spChildSet->FreeUnset();
    }
    return true;
}

void CSGNode::DropLinks()
{
    m_objDataSet.NotifyNodeDestroyed(this);
    m_objDataSet.RemoveAll();
    ReleaseChildren();
}
