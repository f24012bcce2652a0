// An attachment for tests: a number that is saved, and a count of what it was told.
#pragma once

#include "qdcommon/CStream.h"
#include "qdscenegraph/node/CSGNode.h"

template <int KIND>
class CTestData : public CSGDataInterface<CTestData<KIND>>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CTestData";
    static inline CSGDataTypeInfo ms_objDataTypeInfo{("CTestData" + std::to_string(KIND)).c_str(), KIND == 0};

    static boost::intrusive_ptr<CTestData> Create(
        int32_t nValue, const CSGDataCopyBehavior& rBehavior = CSGDCBhvr_Copy::ms_objInstance)
    {
        boost::intrusive_ptr<CTestData> spData = CSGMem::Construct<CTestData>();
        spData->m_nValue = nValue;
        spData->m_pBehavior = &rBehavior;
        return spData;
    }

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return *m_pBehavior; }
    boost::intrusive_ptr<CSGData> CreateCopy(CSGCopyData*) const override
    {
        return Create(m_nValue, *m_pBehavior);
    }
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState*) override
    {
        m_nValue = pStream->ReadInt32();
        return true;
    }
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState*) override
    {
        pStream->WriteInt32(m_nValue);
        return true;
    }
    void OutputDebugInfo(const CQDString&) const override {}
    bool NotifyChildAddedToNode(CSGNode*, CSGNode*) override { return !m_bRefuseChildren; }
    bool NotifyNodeAddedToParent(CSGNode*, CSGNode*) override
    {
        ++m_nAddedToParent;
        return true;
    }

    int32_t m_nValue = 0;
    const CSGDataCopyBehavior* m_pBehavior = &CSGDCBhvr_Copy::ms_objInstance;
    bool m_bRefuseChildren = false;
    int m_nAddedToParent = 0;
};

using CNodePtr = CSGNode::CNodePtr;

inline CNodePtr MakeNode(const std::string& rName, CSGNode* pParent = nullptr)
{
    CNodePtr spNode = CSGNode::Create(rName, "local " + rName);
    if (pParent != nullptr && !pParent->AddChild(spNode.get()))
    {
        return nullptr;
    }
    return spNode;
}

// The global names of a tree in document order: "a(b,c(d))".
inline std::string Describe(const CSGNode* pNode)
{
    std::string strText = pNode->GetGlobalName().c_str();
    std::string strChildren;
    for (int32_t n = 0; n < pNode->GetChildrenSize(); ++n)
    {
        if (const CSGNode* pChild = pNode->GetChild(n))
        {
            strChildren += (strChildren.empty() ? "" : ",") + Describe(pChild);
        }
    }
    return strChildren.empty() ? strText : strText + "(" + strChildren + ")";
}
