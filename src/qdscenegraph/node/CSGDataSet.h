// The attachments of a node.
#pragma once

#include "qdscenegraph/node/CSGData.h"

#include <boost/container/small_vector.hpp>
#include <vector>

// An array of slots that grows 1 -> 4 -> 8 -> 16 -> 32; the first one is held inline. The state word holds
// the kinds present (low 29 bits) and the size of the array (top 3 bits).
class CSGDataSet
{
  public:
    using CDataPtr = boost::intrusive_ptr<CSGData>;

    static constexpr uint32_t ARRAY_STATE_MASK = 0xE0000000;
    static constexpr uint32_t ARRAY_STATE_0 = 0x00000000; // 1, inline
    static constexpr uint32_t ARRAY_STATE_1 = 0x20000000; // 4
    static constexpr uint32_t ARRAY_STATE_2 = 0x40000000; // 8
    static constexpr uint32_t ARRAY_STATE_3 = 0x60000000; // 16
    static constexpr uint32_t ARRAY_STATE_4 = 0x80000000; // 32

    CSGDataSet() = default;
    CSGDataSet(const CSGDataSet&) = delete;
    CSGDataSet& operator=(const CSGDataSet&) = delete;
    ~CSGDataSet();

    // Puts the attachment into the first free slot. A second one of a kind that does not allow several is
    // refused.
    bool AddData(CSGData* pData);
    bool RemoveData(CSGData* pData);
    bool HasData(const CSGDataTypeInfo* pTypeInfo) const { return (m_uiState & pTypeInfo->GetTypeID()) != 0; }
    bool IsEmpty() const { return (m_uiState & ~ARRAY_STATE_MASK) == 0; }
    bool ChangeArrayState(uint32_t uiNewArrayState);

    // The first attachment of a kind, null when there is none.
    CSGData* FindData(const CSGDataTypeInfo* pTypeInfo) const;
    // Slots 0 to GetArraySize() - 1; a free slot is null.
    uint32_t GetArraySize() const { return GetArraySize(m_uiState); }
    CSGData* GetData(uint32_t uiIndex) const { return GetArray()[uiIndex].get(); }
    uint32_t GetState() const { return m_uiState; }
    void RemoveAll();

    // Appends what the attachments become in a copy, in slot order.
    bool CopyData(CSGCopyData* pCopyData, std::vector<CDataPtr>& vecCopiedData) const;

    // The count of attachments, then a child id each. While reading, every attachment keeps the slot it was
    // saved in: the node delivers it with SetLoadedData under the cookie that the set has asked for.
    bool ReadFromStream(CSGNode* pParent, CStream* pStream, CSGStreamableLoadState* pLoadState);
    bool WriteToStream(const CSGNode* pParent, CStream* pStream, CSGStreamableSaveState* pSaveState) const;
    bool PreWrite(CSGStreamableSaveState* pSaveState) const;
    bool SetLoadedData(int32_t nCookie, CSGData* pData);

    bool NotifyNodeDestroyed(CSGNode* pNode);
    bool NotifyNodeAddedToParent(CSGNode* pNode, CSGNode* pParent);
    bool NotifyNodeRemovedFromParent(CSGNode* pNode, CSGNode* pParent);
    // The added or removed attachment itself is not told.
    bool NotifyDataAddedToNode(CSGNode* pNode, CSGData* pAddedData);
    bool NotifyDataRemovedFromNode(CSGNode* pNode, CSGData* pRemovedData);
    bool NotifyChildAddedToNode(CSGNode* pNode, CSGNode* pAddedChild);
    bool NotifyChildRemovedFromNode(CSGNode* pNode, CSGNode* pRemovedChild);

    // Calls the function with every attachment, in slot order. It may add attachments.
    template <class FUNCTION>
    void ForEach(FUNCTION&& fnEach) const
    {
        if (!IsEmpty())
        {
            for (uint32_t n = 0; n < GetArraySize(); ++n)
            {
                if (CSGData* pData = GetData(n))
                {
                    fnEach(pData);
                }
            }
        }
    }

  private:
    // The attachments at present: what a notification does may change the set.
    using CSnapshot = boost::container::small_vector<CDataPtr, 8>;
    CSnapshot GetSnapshot() const;

    static uint32_t GetArraySize(uint32_t uiState);
    CDataPtr* GetArray() { return m_arrData != nullptr ? m_arrData : &m_spInlineData; }
    const CDataPtr* GetArray() const { return m_arrData != nullptr ? m_arrData : &m_spInlineData; }
    bool Upgrade();
    bool AcceptsKind(const CSGDataTypeInfo* pTypeInfo) const;

    uint32_t m_uiState = ARRAY_STATE_0;
    CDataPtr m_spInlineData;
    CDataPtr* m_arrData = nullptr; // null while the one slot is inline
};
