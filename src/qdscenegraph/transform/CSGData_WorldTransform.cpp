#include "qdscenegraph/transform/CSGData_WorldTransform.h"

#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"

#include <boost/container/small_vector.hpp>

[[gnu::init_priority(CSGDataTypeInfo::ORDER_WORLD_TRANSFORM)]] CSGDataTypeInfo CSGData_WorldTransform::
    ms_objDataTypeInfo(CSGData_WorldTransform::SG_TYPE_NAME);

CSGData_WorldTransform* CSGData_WorldTransform::GetOrCreateFromNode(CSGNode* pNode)
{
    QD_CHECK_ARG(pNode, nullptr);
    if (auto* pData = pNode->FindData<CSGData_WorldTransform>())
    {
        return pData;
    }
    const boost::intrusive_ptr<CSGData_WorldTransform> spNewData =
        CSGMem::Construct<CSGData_WorldTransform>();
    QD_CHECK_CREATED(spNewData, nullptr);
    QD_CHECK_CALL(pNode->AddData(spNewData.get()), nullptr);
    return spNewData.get();
}

void CSGData_WorldTransform::MarkTreeDirty(CSGNode* pRoot)
{
    for (CSGNode* pNode = pRoot; pNode != nullptr;)
    {
        auto* pData = pNode->FindData<CSGData_WorldTransform>();
        const bool bWasValid = pData != nullptr && !pData->m_bDirty;
        if (bWasValid)
        {
            pData->m_bDirty = true;
        }
        pNode = bWasValid ? pNode->GetNextInTree(pRoot) : pNode->GetNextBeyondTree(pRoot);
    }
}

const CTransform3& CSGData_WorldTransform::GetTransform() const
{
    if (m_bDirty && m_pNode != nullptr)
    {
        Update();
    }
    return m_objTransform;
}

void CSGData_WorldTransform::Update() const
{
    // Up to the first valid one, then down again, so that every node on the way is computed once and stays
    // valid.
    boost::container::small_vector<const CSGData_WorldTransform*, 16> vecDirty;
    CTransform3 objAbove;
    for (CSGNode* pNode = m_pNode; pNode != nullptr; pNode = pNode->GetParent())
    {
        const CSGData_WorldTransform* pData = GetOrCreateFromNode(pNode);
        QD_CHECK_NOT_NULL(pData, );
        if (!pData->m_bDirty)
        {
            objAbove = pData->m_objTransform;
            break;
        }
        vecDirty.push_back(pData);
    }
    for (auto it = vecDirty.rbegin(); it != vecDirty.rend(); ++it)
    {
        const CSGData_WorldTransform* pData = *it;
        if (const auto* pLocal = pData->m_pNode->FindData<CSGData_LocalTransform>())
        {
            objAbove = objAbove * pLocal->GetTransform();
        }
        pData->m_objTransform = objAbove;
        pData->m_bDirty = false;
    }
}

bool CSGData_WorldTransform::NotifyAddedToNode(CSGNode* pNode)
{
    QD_CHECK(m_pNode == 0, false);
    m_pNode = pNode;
    return true;
}

bool CSGData_WorldTransform::NotifyRemovedFromNode(CSGNode* pNode)
{
    // Nothing valid may stay below a node without a world transform.
    for (int32_t n = 0; n < pNode->GetChildrenSize() && !m_bDirty; ++n)
    {
        if (CSGNode* pChild = pNode->GetChild(n))
        {
            MarkTreeDirty(pChild);
        }
    }
    return NotifyNodeDestroyed(pNode);
}

bool CSGData_WorldTransform::NotifyNodeDestroyed(CSGNode*)
{
    m_pNode = nullptr;
    m_objTransform = CTransform3();
    m_bDirty = true;
    return true;
}

bool CSGData_WorldTransform::NotifyNodeAddedToParent(CSGNode* pNode, CSGNode*)
{
    MarkTreeDirty(pNode);
    return true;
}

bool CSGData_WorldTransform::NotifyNodeRemovedFromParent(CSGNode* pNode, CSGNode*)
{
    MarkTreeDirty(pNode);
    return true;
}

bool CSGData_WorldTransform::NotifyDataAddedToNode(CSGNode* pNode, CSGData* pAddedData)
{
    if (pAddedData->GetDataTypeInfo() == &CSGData_LocalTransform::ms_objDataTypeInfo)
    {
        MarkTreeDirty(pNode);
    }
    return true;
}

bool CSGData_WorldTransform::NotifyDataRemovedFromNode(CSGNode* pNode, CSGData* pRemovedData)
{
    return NotifyDataAddedToNode(pNode, pRemovedData);
}

bool CSGData_WorldTransform::ReadFromStream(CStream*, CSGStreamableLoadState*)
{
    Log(QD_SCENEGRAPH, LOG_WARNING, "Implement me!");
    return false;
}

bool CSGData_WorldTransform::WriteToStream(CStream*, CSGStreamableSaveState*)
{
    Log(QD_SCENEGRAPH, LOG_WARNING, "Implement me!");
    return false;
}

void CSGData_WorldTransform::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGData_WorldTransform: 0x%08llX - %s", rIndent, LogAddress(this),
        m_bDirty ? "out of date" : "valid");
}

void CSGData_WorldTransform::OutputTransformDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%s    World:", rIndent);
    CSGTransform::OutputRows(rIndent + "      ", GetTransform());
}
