// Copying of subgraphs.

#include "qdscenegraph/node/CSGCopyData.h"
#include "qdscenegraph/node/CSGNode.h"

CSGNode::CNodePtr CSGNode::Copy()
{
    CSGCopyData objCopyData;
    return Copy(&objCopyData);
}

CSGNode::CNodePtr CSGNode::Copy(CSGCopyData* pCopyData)
{
    QD_CHECK_ARG(pCopyData, nullptr);
    CNodePtr spCopy = CopyStructure(pCopyData);
    QD_CHECK_CREATED(spCopy, nullptr);
    QD_CHECK_CALL(CopyData(pCopyData), nullptr);
    return spCopy;
}

CSGNode::CNodePtr CSGNode::CopyStructure(CSGCopyData* pCopyData)
{
    QD_CHECK_ARG(pCopyData, nullptr);
    CNodePtr spRootCopy;
    for (CSGNode* pNode = this; pNode != nullptr;)
    {
        if (pCopyData->IsIgnored(pNode))
        {
            pNode = pNode->GetNextBeyondTree(this);
            continue;
        }
        const CNodePtr spCopy = Create(pNode->m_strGlobalName, pNode->m_strLocalName);
        QD_CHECK_CREATED(spCopy, nullptr);
        spCopy->SetPickBehavior(pNode->GetPickBehavior());
        pCopyData->AddCopy(pNode, spCopy.get());
        if (pNode == this)
        {
            spRootCopy = spCopy;
        }
        else
        {
            CSGNode* pParentCopy = pCopyData->FindCopy(pNode->m_pParent);
            QD_CHECK_CALL(pParentCopy->AddChild(spCopy.get()), nullptr);
        }
        pNode = pNode->GetNextInTree(this);
    }
    return spRootCopy;
}

bool CSGNode::CopyData(CSGCopyData* pCopyData)
{
    QD_CHECK_ARG(pCopyData, false);
    std::vector<CSGNode*> vecCopies;
    for (CSGNode* pNode = this; pNode != nullptr;)
    {
        CSGNode* pCopy = pCopyData->FindCopy(pNode);
        if (pCopy != nullptr)
        {
            QD_CHECK_CALL(pNode->CopyLocalData(pCopyData, pCopy), false);
            vecCopies.push_back(pCopy);
        }
        pNode = pCopy != nullptr ? pNode->GetNextInTree(this) : pNode->GetNextBeyondTree(this);
    }
    for (const CSGNode* pCopy : vecCopies)
    {
        bool bSuccess = true;
        pCopy->m_objDataSet.ForEach([&](CSGData* pData) {
            // A shared attachment is the original's own.
            if (&pData->GetCopyBehavior() != &CSGDCBhvr_Share::ms_objInstance)
            {
                bSuccess = pData->PostCopy(pCopyData) && bSuccess;
            }
        });
        QD_CHECK(bSuccess, false);
    }
    return true;
}

bool CSGNode::CopyLocalData(CSGCopyData* pCopyData, CSGNode* pCopy)
{
    QD_CHECK_ARG(pCopyData, false);
    QD_CHECK_ARG(pCopy, false);
    std::vector<CSGDataSet::CDataPtr> vecCopiedData;
    QD_CHECK_CALL(m_objDataSet.CopyData(pCopyData, vecCopiedData), false);
    for (const CSGDataSet::CDataPtr& spData : vecCopiedData)
    {
        QD_CHECK_CALL(pCopy->AddData(spData.get()), false);
    }
    return true;
}

CSGNode::CNodePtr CSGNode::CopyAncestors(CSGCopyData* pCopyData)
{
    QD_CHECK_ARG(pCopyData, nullptr);
    CNodePtr spBelow = pCopyData->FindCopy(this);
    CNodePtr spTop;
    for (CSGNode* pNode = m_pParent; pNode != nullptr; pNode = pNode->m_pParent)
    {
        spTop = Create(pNode->m_strGlobalName, pNode->m_strLocalName);
        QD_CHECK_CREATED(spTop, nullptr);
        pCopyData->AddCopy(pNode, spTop.get());
        QD_CHECK_CALL(pNode->CopyLocalData(pCopyData, spTop.get()), nullptr);
        if (spBelow)
        {
            QD_CHECK_CALL(spTop->AddChild(spBelow.get()), nullptr);
        }
        spBelow = spTop;
    }
    return spTop;
}
