#include "qdscenegraph/node/CSGNode.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/node/CSGData_RenderState.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

#include <new>

namespace
{

const SGStreamableRegistration<CSGNode> s_objRegistration(0x2B14FFFA087B3E28, 1, 1);

// Children of destroyed nodes wait here for their turn, so that destroying a deep tree does not recurse.
std::vector<CSGNode::CNodePtr> s_vecOrphans;
bool s_bReleasingOrphans = false;

void ReleaseOrphans()
{
    if (s_bReleasingOrphans)
    {
        return;
    }
    s_bReleasingOrphans = true;
    while (!s_vecOrphans.empty())
    {
        const CSGNode::CNodePtr spOrphan = std::move(s_vecOrphans.back());
        s_vecOrphans.pop_back();
    }
    s_vecOrphans.shrink_to_fit();
    s_bReleasingOrphans = false;
}

} // namespace

CSGNode::CSGNode() = default;

CSGNode::~CSGNode()
{
    if (HasParent())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Still had parent when being destroyed.");
    }
    m_objDataSet.NotifyNodeDestroyed(this);
    ReleaseChildren();
}

CSGNode::CNodePtr CSGNode::Create(const CQDCompactString& rGlobalName, const CQDCompactString& rLocalName)
{
    CNodePtr spNode = CSGMem::Construct<CSGNode>();
    if (spNode)
    {
        spNode->m_strGlobalName = rGlobalName;
        spNode->m_strLocalName = rLocalName;
    }
    return spNode;
}

void CSGNode::ReleaseChildren()
{
    for (int32_t n = 0; n < GetChildrenSize(); ++n)
    {
        if (CSGNode* pChild = GetChild(n))
        {
            pChild->ClearParent();
            s_vecOrphans.emplace_back(pChild);
        }
    }
    m_spSingleChild.reset();
    m_spChildSet.reset();
    m_uiFlags |= FLAG_SINGLE_CHILD;
    ReleaseOrphans();
}

int32_t CSGNode::StoreChild(CSGNode* pChild)
{
    if (IsSingleChildMode())
    {
        if (!m_spSingleChild)
        {
            m_spSingleChild = pChild;
            return 0;
        }
        std::unique_ptr<CChildSet> pChildSet(new (std::nothrow) CChildSet);
        QD_CHECK_CREATED(pChildSet, -1);
        const int32_t nSingleChildIndex = pChildSet->Add(m_spSingleChild);
        QD_CHECK(nSingleChildIndex == 0, -1);
        m_spSingleChild.reset();
        m_spChildSet = std::move(pChildSet);
        m_uiFlags &= ~FLAG_SINGLE_CHILD;
    }
    CChildSet* pChildSet = m_spChildSet.get();
    QD_CHECK_NOT_NULL(pChildSet, -1);
    const int32_t nChildIndex = pChildSet->Add(pChild);
    QD_CHECK(nChildIndex >= 0, -1);
    return nChildIndex;
}

bool CSGNode::AddChild(CSGNode* pChild)
{
    QD_CHECK_ARG(pChild, false);
    QD_CHECK(!pChild->HasParent(), false);
    // A node without children is above nothing: building a tree from the top never walks up.
    const bool bMayBeAbove = pChild == this || pChild->GetChildCount() > 0;
    QD_CHECK(!bMayBeAbove || (pChild != this && !IsAncestor(pChild)), false);
    const int32_t nChildIndex = StoreChild(pChild);
    return nChildIndex >= 0 && CompleteAddChild(pChild, nChildIndex);
}

bool CSGNode::CompleteAddChild(CSGNode* pChild, int32_t nChildIndex)
{
    QD_CHECK_CALL(pChild->SetParent(this, nChildIndex), false);
    QD_CHECK_CALL(m_objDataSet.NotifyChildAddedToNode(this, pChild), false);
    if ((m_uiFlags & FLAG_ATTACHED_TO_SCENE) != 0 && m_pScene != nullptr)
    {
        QD_CHECK_CALL(pChild->AttachToScene(m_pScene), false);
    }
    if (m_spEffectsData && !pChild->m_spEffectsData)
    {
        QD_CHECK_CALL(pChild->SetRenderEffectsData(m_spEffectsData), false);
    }
    return true;
}

bool CSGNode::RemoveChild(CSGNode* pChild)
{
    QD_CHECK_ARG(pChild, false);
    const int32_t nChildIndex = pChild->m_nIndexInParent;
    if (pChild->m_pParent != this || nChildIndex < 0)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR,
            "Node wasn't a child of this node.  Node: 0x%08llX Parent: 0x%08llX this:0x%08llX.",
            LogAddress(pChild), LogAddress(pChild->m_pParent), LogAddress(this));
        return false;
    }
    QD_CHECK(GetChild(nChildIndex) == pChild, false);
    const CNodePtr spChild = pChild; // it may be held by this node alone
    if (IsSingleChildMode())
    {
        m_spSingleChild.reset();
    }
    else
    {
        m_spChildSet->Remove(nChildIndex);
    }
    QD_CHECK_CALL(pChild->ClearParent(), false);
    QD_CHECK_CALL(m_objDataSet.NotifyChildRemovedFromNode(this, pChild), false);
    if (pChild->m_pScene != nullptr)
    {
        QD_CHECK_CALL(pChild->DetachFromScene(pChild->m_pScene), false);
    }
    return true;
}

bool CSGNode::RemoveAllChildren()
{
    for (int32_t n = GetChildrenSize() - 1; n >= 0; --n)
    {
        if (CSGNode* pChild = GetChild(n))
        {
            QD_CHECK_CALL(RemoveChild(pChild), false);
        }
    }
    return true;
}

int32_t CSGNode::GetChildCount() const
{
    if (IsSingleChildMode())
    {
        return m_spSingleChild ? 1 : 0;
    }
    const CChildSet* pChildren = m_spChildSet.get();
    QD_CHECK_NOT_NULL(pChildren, 0);
    return pChildren->GetCount();
}

int32_t CSGNode::GetChildrenSize() const
{
    if (IsSingleChildMode())
    {
        return m_spSingleChild ? 1 : 0;
    }
    const CChildSet* pChildren = m_spChildSet.get();
    QD_CHECK_NOT_NULL(pChildren, 0);
    return pChildren->GetSize();
}

CSGNode* CSGNode::GetChild(int32_t nChildIndex) const
{
    if (IsSingleChildMode())
    {
        return nChildIndex == 0 ? m_spSingleChild.get() : nullptr;
    }
    return m_spChildSet->IsInUse(nChildIndex) ? (*m_spChildSet)[nChildIndex].get() : nullptr;
}

bool CSGNode::SetParent(CSGNode* pParent, int32_t nChildIndex)
{
    QD_CHECK_ARG(pParent, false);
    QD_CHECK(!HasParent(), false);
    QD_CHECK(nChildIndex >= 0, false);
    m_pParent = pParent;
    m_nIndexInParent = nChildIndex;
    QD_CHECK_CALL(m_objDataSet.NotifyNodeAddedToParent(this, pParent), false);
    return true;
}

bool CSGNode::ClearParent()
{
    QD_CHECK(HasParent(), false);
    CSGNode* pParent = m_pParent;
    m_pParent = nullptr;
    m_nIndexInParent = -1;
    QD_CHECK_CALL(m_objDataSet.NotifyNodeRemovedFromParent(this, pParent), false);
    return true;
}

bool CSGNode::IsAncestor(const CSGNode* pNode) const
{
    for (const CSGNode* pAbove = m_pParent; pAbove != nullptr; pAbove = pAbove->m_pParent)
    {
        if (pAbove == pNode)
        {
            return true;
        }
    }
    return false;
}

bool CSGNode::IsDescendant(const CSGNode* pNode) const
{
    QD_CHECK_ARG(pNode, false);
    return pNode->IsAncestor(this);
}

CSGNode* CSGNode::GetNextInTree(const CSGNode* pRoot) const
{
    for (int32_t n = 0; n < GetChildrenSize(); ++n)
    {
        if (CSGNode* pChild = GetChild(n))
        {
            return pChild;
        }
    }
    return GetNextBeyondTree(pRoot);
}

CSGNode* CSGNode::GetNextBeyondTree(const CSGNode* pRoot) const
{
    for (const CSGNode* pNode = this; pNode != pRoot && pNode->m_pParent != nullptr; pNode = pNode->m_pParent)
    {
        const CSGNode* pParent = pNode->m_pParent;
        for (int32_t n = pNode->m_nIndexInParent + 1; n < pParent->GetChildrenSize(); ++n)
        {
            if (CSGNode* pSibling = pParent->GetChild(n))
            {
                return pSibling;
            }
        }
    }
    return nullptr;
}

bool CSGNode::AddData(CSGData* pData)
{
    QD_CHECK_ARG(pData, false);
    QD_CHECK_CALL(m_objDataSet.AddData(pData), false);
    if (!pData->NotifyAddedToNode(this))
    {
        QD_CHECK_FAILED("Call %s failed", "pData->NotifyAddedToNode(this)");
        m_objDataSet.RemoveData(pData);
        return false;
    }
    QD_CHECK_CALL(m_objDataSet.NotifyDataAddedToNode(this, pData), false);
    if (CSGScene* pScene = m_pScene)
    {
        QD_CHECK_CALL(pData->AttachScene(pScene, this), false);
        QD_CHECK_CALL(pData->PopulateRenderLists(pScene, this), false);
    }
    return true;
}

bool CSGNode::RemoveData(CSGData* pData)
{
    QD_CHECK_ARG(pData, false);
    const boost::intrusive_ptr<CSGData> spData = pData; // it may be held by this node alone
    QD_CHECK_CALL(m_objDataSet.RemoveData(pData), false);
    QD_CHECK_CALL(pData->NotifyRemovedFromNode(this), false);
    QD_CHECK_CALL(m_objDataSet.NotifyDataRemovedFromNode(this, pData), false);
    return true;
}

bool CSGNode::RemoveDataFromAllDescendants(const CSGDataTypeInfo* pTypeInfo)
{
    std::vector<CSGNode*> vecNodes;
    FindDescendantsWithData(pTypeInfo, vecNodes);
    for (CSGNode* pNode : vecNodes)
    {
        while (CSGData* pData = pNode->m_objDataSet.FindData(pTypeInfo))
        {
            QD_CHECK_CALL(pNode->RemoveData(pData), false);
        }
    }
    return true;
}

CSGNode* CSGNode::FindDescendantWithData(const CSGDataTypeInfo* pTypeInfo) const
{
    QD_CHECK_ARG(pTypeInfo, nullptr);
    CSGNode* pNode = GetNextInTree(this);
    while (pNode != nullptr && !pNode->m_objDataSet.HasData(pTypeInfo))
    {
        pNode = pNode->GetNextInTree(this);
    }
    return pNode;
}

void CSGNode::FindDescendantsWithData(const CSGDataTypeInfo* pTypeInfo, std::vector<CSGNode*>& rResult) const
{
    QD_CHECK_ARG(pTypeInfo, );
    for (CSGNode* pNode = GetNextInTree(this); pNode != nullptr; pNode = pNode->GetNextInTree(this))
    {
        if (pNode->m_objDataSet.HasData(pTypeInfo))
        {
            rResult.push_back(pNode);
        }
    }
}

CSGNode* CSGNode::FindNodeByGlobalName(const CQDCompactString& rName) const
{
    auto* pNode = const_cast<CSGNode*>(this);
    while (pNode != nullptr && pNode->m_strGlobalName != rName)
    {
        pNode = pNode->GetNextInTree(this);
    }
    return pNode;
}

CSGNode* CSGNode::FindNodeByLocalName(const CQDCompactString& rName) const
{
    auto* pNode = const_cast<CSGNode*>(this);
    while (pNode != nullptr && pNode->m_strLocalName != rName)
    {
        pNode = pNode->GetNextInTree(this);
    }
    return pNode;
}

bool CSGNode::AttachToScene(CSGScene* pScene)
{
    QD_CHECK_ARG(pScene, false);
    return PropagateAttachToScene(pScene);
}

bool CSGNode::DetachFromScene(CSGScene* pScene)
{
    QD_CHECK_ARG(pScene, false);
    QD_CHECK(m_pScene == pScene, false);
    return PropagateDetachFromScene(pScene);
}

bool CSGNode::PropagateAttachToScene(CSGScene* pScene)
{
    for (CSGNode* pNode = this; pNode != nullptr; pNode = pNode->GetNextInTree(this))
    {
        pNode->m_pScene = pScene;
        pNode->m_uiFlags |= FLAG_ATTACHED_TO_SCENE;
        bool bSuccess = true;
        pNode->m_objDataSet.ForEach([&](CSGData* pData) {
            bSuccess =
                bSuccess && pData->AttachScene(pScene, pNode) && pData->PopulateRenderLists(pScene, pNode);
        });
        QD_CHECK(bSuccess, false);
    }
    return true;
}

bool CSGNode::PropagateDetachFromScene(CSGScene* pScene)
{
    QD_CHECK_ARG(pScene, false);
    for (CSGNode* pNode = this; pNode != nullptr; pNode = pNode->GetNextInTree(this))
    {
        pNode->m_pScene = nullptr;
        pNode->m_uiFlags &= ~FLAG_ATTACHED_TO_SCENE;
    }
    return true;
}

bool CSGNode::SetVisible(bool bVisible)
{
    if (bVisible == IsVisible())
    {
        return true;
    }
    const boost::intrusive_ptr<CSGData_RenderState> spRenderState =
        CSGData_RenderState::GetOrCreateFromNode(this);
    QD_CHECK_NOT_NULL(spRenderState, false);
    spRenderState->SetFlag(CSGData_RenderState::FLAG_INVISIBLE, !bVisible);
    return true;
}

bool CSGNode::IsVisible() const
{
    const auto* pRenderState = FindData<CSGData_RenderState>();
    return pRenderState == nullptr || !pRenderState->HasFlag(CSGData_RenderState::FLAG_INVISIBLE);
}

void CSGNode::SetPickBehavior(EPickBehavior ePickBehavior)
{
    m_uiFlags = (m_uiFlags & ~FLAG_PICK_IGNORE) | (ePickBehavior == PICK_IGNORE ? FLAG_PICK_IGNORE : 0);
}

CSGNode::EPickBehavior CSGNode::GetPickBehavior() const
{
    return (m_uiFlags & FLAG_PICK_IGNORE) != 0 ? PICK_IGNORE : PICK_NORMAL;
}

bool CSGNode::SetRenderEffectsData(const boost::intrusive_ptr<CSGData>& spParentEffectsData)
{
    QD_CHECK_ARG(spParentEffectsData, false);
    const boost::intrusive_ptr<CSGData> spReplaced = m_spEffectsData;
    for (CSGNode* pNode = this; pNode != nullptr;)
    {
        // A node with effects of its own hands those on instead.
        const bool bTakes = pNode == this || pNode->m_spEffectsData == spReplaced;
        if (bTakes)
        {
            pNode->m_spEffectsData = spParentEffectsData;
        }
        pNode = bTakes ? pNode->GetNextInTree(this) : pNode->GetNextBeyondTree(this);
    }
    return true;
}

bool CSGNode::ClearRenderEffectsData()
{
    const boost::intrusive_ptr<CSGData> spCleared = m_spEffectsData;
    const boost::intrusive_ptr<CSGData> spInherited = HasParent() ? m_pParent->m_spEffectsData : nullptr;
    for (CSGNode* pNode = this; pNode != nullptr;)
    {
        const bool bHas = pNode->m_spEffectsData == spCleared;
        if (bHas)
        {
            pNode->m_spEffectsData = spInherited;
        }
        pNode = bHas ? pNode->GetNextInTree(this) : pNode->GetNextBeyondTree(this);
    }
    return true;
}
