#include "qdscenegraph/node/CSGDataSet.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/node/CSGCopyData.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

#include <utility>

CSGDataSet::~CSGDataSet() { RemoveAll(); }

uint32_t CSGDataSet::GetArraySize(uint32_t uiState)
{
    switch (uiState & ARRAY_STATE_MASK)
    {
    case ARRAY_STATE_0:
        return 1;
    case ARRAY_STATE_1:
        return 4;
    case ARRAY_STATE_2:
        return 8;
    case ARRAY_STATE_3:
        return 16;
    case ARRAY_STATE_4:
        return 32;
    default:
        return 0;
    }
}

void CSGDataSet::RemoveAll()
{
    m_spInlineData.reset();
    if (m_arrData != nullptr)
    {
        CDataPtr* arrData = std::exchange(m_arrData, nullptr);
        CSGMem::FreeArray(arrData, GetArraySize());
    }
    m_uiState = ARRAY_STATE_0;
}

bool CSGDataSet::ChangeArrayState(uint32_t uiNewArrayState)
{
    if ((uiNewArrayState & ~ARRAY_STATE_MASK) != 0)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "0x%08X is an invalid array state.  It has bits outside of mask 0x%08X",
            uiNewArrayState, ARRAY_STATE_MASK);
        return false;
    }
    const uint32_t uiArraySize = GetArraySize(uiNewArrayState);
    QD_CHECK(uiArraySize > 1, false);
    CDataPtr* arrData = CSGMem::AllocArray<CDataPtr>(uiArraySize);
    QD_CHECK_NOT_NULL(arrData, false);
    uint32_t uiUsed = 0;
    CDataPtr* arrOldData = GetArray();
    for (uint32_t n = 0; n < GetArraySize(); ++n)
    {
        if (arrOldData[n])
        {
            if (uiUsed == uiArraySize)
            {
                CSGMem::FreeArray(arrData, uiArraySize);
                return false;
            }
            arrData[uiUsed++] = arrOldData[n];
        }
    }
    const uint32_t uiKinds = m_uiState & ~ARRAY_STATE_MASK;
    RemoveAll();
    m_arrData = arrData;
    m_uiState = uiNewArrayState | uiKinds;
    return true;
}

bool CSGDataSet::Upgrade()
{
    const uint32_t uiArrayState = m_uiState & ARRAY_STATE_MASK;
    if (uiArrayState >= ARRAY_STATE_4)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Can't upgrade data set array of capacity %d and state 0x%08X",
            static_cast<int>(GetArraySize()), uiArrayState);
        return false;
    }
    const uint32_t uiNewArrayState = uiArrayState + ARRAY_STATE_1;
    QD_CHECK_CALL(ChangeArrayState(uiNewArrayState), false);
    return true;
}

bool CSGDataSet::AcceptsKind(const CSGDataTypeInfo* pTypeInfo) const
{
    QD_CHECK_NOT_NULL(pTypeInfo, false);
    if (HasData(pTypeInfo) && !pTypeInfo->AllowsMultiple())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Already had data of type 0x%08X %s in 0x%08llX, flags=0x%08X",
            pTypeInfo->GetTypeID(), pTypeInfo->GetName(), LogAddress(this), m_uiState);
        return false;
    }
    return true;
}

bool CSGDataSet::AddData(CSGData* pData)
{
    QD_CHECK_ARG(pData, false);
    const CSGDataTypeInfo* pTypeInfo = pData->GetDataTypeInfo();
    if (!AcceptsKind(pTypeInfo))
    {
        return false;
    }
    for (;;)
    {
        CDataPtr* arrData = GetArray();
        QD_CHECK_NOT_NULL(arrData, false);
        const uint32_t uiArraySize = GetArraySize();
        QD_CHECK(uiArraySize > 0, false);
        for (uint32_t n = 0; n < uiArraySize; ++n)
        {
            if (!arrData[n])
            {
                arrData[n] = pData;
                m_uiState |= pTypeInfo->GetTypeID();
                return true;
            }
        }
        if (!Upgrade())
        {
            return false;
        }
    }
}

bool CSGDataSet::RemoveData(CSGData* pData)
{
    QD_CHECK_ARG(pData, false);
    const CSGDataTypeInfo* pTypeInfo = pData->GetDataTypeInfo();
    QD_CHECK_NOT_NULL(pTypeInfo, false);
    CDataPtr spRemoved;
    bool bKindRemains = false;
    uint32_t uiRemaining = 0;
    CDataPtr* arrData = GetArray();
    for (uint32_t n = 0; n < GetArraySize(); ++n)
    {
        if (arrData[n] == pData && !spRemoved)
        {
            spRemoved.swap(arrData[n]);
        }
        else if (arrData[n])
        {
            ++uiRemaining;
            bKindRemains = bKindRemains || arrData[n]->GetDataTypeInfo() == pTypeInfo;
        }
    }
    if (!spRemoved)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Couldn't find data 0x%08llX of type %s in array.", LogAddress(pData),
            pTypeInfo->GetName());
        return false;
    }
    if (!bKindRemains)
    {
        m_uiState &= ~pTypeInfo->GetTypeID();
    }
    if (uiRemaining <= GetArraySize(ARRAY_STATE_1) && GetArraySize() > GetArraySize(ARRAY_STATE_1))
    {
        QD_CHECK_CALL(ChangeArrayState(ARRAY_STATE_1), false);
    }
    return true;
}

CSGData* CSGDataSet::FindData(const CSGDataTypeInfo* pTypeInfo) const
{
    if (HasData(pTypeInfo))
    {
        const CDataPtr* arrData = GetArray();
        for (uint32_t n = 0; n < GetArraySize(); ++n)
        {
            if (arrData[n] && arrData[n]->GetDataTypeInfo() == pTypeInfo)
            {
                return arrData[n].get();
            }
        }
    }
    return nullptr;
}

bool CSGDataSet::CopyData(CSGCopyData* pCopyData, std::vector<CDataPtr>& vecCopiedData) const
{
    bool bSuccess = true;
    ForEach([&](CSGData* pData) {
        CDataPtr spCopy;
        if (pCopyData->IsIgnored(pData))
        {
            return;
        }
        if (!pData->GetCopyBehavior().CopyData(pData, pCopyData, spCopy))
        {
            QD_CHECK_FAILED("Creation of %s failed", "spCopy");
            bSuccess = false;
        }
        else if (spCopy)
        {
            vecCopiedData.push_back(std::move(spCopy));
        }
    });
    return bSuccess;
}

bool CSGDataSet::ReadFromStream(CSGNode* pParent, CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    const int32_t nCount = pStream->ReadInt32();
    QD_CHECK(pStream->CanRead(nCount, sizeof(int32_t)), false);
    while (static_cast<uint32_t>(nCount) > GetArraySize())
    {
        if (!Upgrade())
        {
            return false;
        }
    }
    for (int32_t n = 0; n < nCount; ++n)
    {
        // Cookies from 0 on are the node's children.
        const int32_t nCookie = -1 - n;
        QD_CHECK_CALL(pLoadState->ReadChildID(pStream, pParent, nCookie), false);
    }
    return true;
}

bool CSGDataSet::SetLoadedData(int32_t nCookie, CSGData* pData)
{
    const int64_t nSlot = -1 - static_cast<int64_t>(nCookie);
    QD_CHECK(nSlot >= 0 && nSlot < static_cast<int64_t>(GetArraySize()), false);
    if (!AcceptsKind(pData->GetDataTypeInfo()))
    {
        return false;
    }
    CDataPtr& rspData = GetArray()[nSlot];
    QD_CHECK(rspData == 0, false);
    rspData = pData;
    m_uiState |= pData->GetDataTypeInfo()->GetTypeID();
    return true;
}

bool CSGDataSet::WriteToStream(const CSGNode*, CStream* pStream, CSGStreamableSaveState* pSaveState) const
{
    int32_t nCount = 0;
    ForEach([&](const CSGData* pData) { nCount += pData->GetCopyBehavior().IsKept() ? 1 : 0; });
    pStream->WriteInt32(nCount);
    bool bSuccess = true;
    ForEach([&](const CSGData* pData) {
        if (bSuccess && pData->GetCopyBehavior().IsKept() && !pSaveState->WriteChildID(pStream, pData))
        {
            QD_CHECK_FAILED("Call %s failed", "pSaveState->WriteChildID(pStream,pData)");
            bSuccess = false;
        }
    });
    return bSuccess;
}

bool CSGDataSet::PreWrite(CSGStreamableSaveState* pSaveState) const
{
    bool bSuccess = true;
    ForEach([&](CSGData* pData) {
        if (bSuccess && pData->GetCopyBehavior().IsKept() && !pData->PreWrite(pSaveState))
        {
            QD_CHECK_FAILED("Call %s failed", "pData->PreWrite(pSaveState)");
            bSuccess = false;
        }
    });
    return bSuccess;
}

CSGDataSet::CSnapshot CSGDataSet::GetSnapshot() const
{
    CSnapshot vecData;
    ForEach([&](CSGData* pData) { vecData.emplace_back(pData); });
    return vecData;
}

bool CSGDataSet::NotifyNodeDestroyed(CSGNode* pNode)
{
    for (const CDataPtr& pData : GetSnapshot())
    {
        QD_CHECK_CALL(pData->NotifyNodeDestroyed(pNode), false);
    }
    return true;
}

bool CSGDataSet::NotifyNodeAddedToParent(CSGNode* pNode, CSGNode* pParent)
{
    for (const CDataPtr& pData : GetSnapshot())
    {
        QD_CHECK_CALL(pData->NotifyNodeAddedToParent(pNode, pParent), false);
    }
    return true;
}

bool CSGDataSet::NotifyNodeRemovedFromParent(CSGNode* pNode, CSGNode* pParent)
{
    for (const CDataPtr& pData : GetSnapshot())
    {
        QD_CHECK_CALL(pData->NotifyNodeRemovedFromParent(pNode, pParent), false);
    }
    return true;
}

bool CSGDataSet::NotifyDataAddedToNode(CSGNode* pNode, CSGData* pAddedData)
{
    for (const CDataPtr& pData : GetSnapshot())
    {
        if (pData != pAddedData)
        {
            QD_CHECK_CALL(pData->NotifyDataAddedToNode(pNode, pAddedData), false);
        }
    }
    return true;
}

bool CSGDataSet::NotifyDataRemovedFromNode(CSGNode* pNode, CSGData* pRemovedData)
{
    for (const CDataPtr& pData : GetSnapshot())
    {
        if (pData != pRemovedData)
        {
            QD_CHECK_CALL(pData->NotifyDataRemovedFromNode(pNode, pRemovedData), false);
        }
    }
    return true;
}

bool CSGDataSet::NotifyChildAddedToNode(CSGNode* pNode, CSGNode* pAddedChild)
{
    for (const CDataPtr& pData : GetSnapshot())
    {
        QD_CHECK_CALL(pData->NotifyChildAddedToNode(pNode, pAddedChild), false);
    }
    return true;
}

bool CSGDataSet::NotifyChildRemovedFromNode(CSGNode* pNode, CSGNode* pRemovedChild)
{
    for (const CDataPtr& pData : GetSnapshot())
    {
        QD_CHECK_CALL(pData->NotifyChildRemovedFromNode(pNode, pRemovedChild), false);
    }
    return true;
}
