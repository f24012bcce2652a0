#include "qdsgloader_collada/CColladaNodeConverter.h"

#include "qdcommon/CLog.h"
#include "qdscenegraph/node/CSGCopyData.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaLocalTransform.h"
#include "qdsgloader_collada/CColladaNodeExtra.h"
#include "qdsgloader_collada/CColladaNodeGeometry.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

namespace
{

// Of one scene graph: a few lines of a document, each instancing the line before it several times, would fill
// the memory.
constexpr int64_t MAX_COPIED_NODES = 1000000;

} // namespace

CQDCompactString CColladaNodeConverter::GetGlobalName(const domNode& rNode)
{
    return FirstText({rNode.getId(), rNode.getName()});
}

CQDCompactString CColladaNodeConverter::GetLocalName(const domNode& rNode)
{
    return FirstText({rNode.getSid(), rNode.getName(), rNode.getId()});
}

CColladaNodeConverter::CNodePtr CColladaNodeConverter::ConvertNode(domNode& rNode)
{
    CEntry& rEntry = m_mapNodes[&rNode];
    if (rEntry.eState == EState::New)
    {
        Push(rNode, rEntry, -1);
        while (!m_vecStack.empty())
        {
            if (!Step())
            {
                LogFailure();
                m_vecStack.clear();
            }
        }
    }
    return rEntry.eState == EState::Done ? rEntry.spNode : nullptr;
}

CSGNode* CColladaNodeConverter::FindNode(domNode& rNode) const
{
    const auto it = m_mapNodes.find(&rNode);
    return it != m_mapNodes.end() ? it->second.spNode.get() : nullptr;
}

void CColladaNodeConverter::Push(domNode& rNode, CEntry& rEntry, int32_t nIndexInParent)
{
    rEntry.eState = EState::Active;
    m_vecStack.push_back({&rNode, &rEntry, nIndexInParent});
}

bool CColladaNodeConverter::Step()
{
    CFrame& rFrame = m_vecStack.back();
    if (!rFrame.pEntry->spNode)
    {
        return Begin(rFrame);
    }
    if (rFrame.nNextInstance < rFrame.pNode->getInstance_node_array().getCount())
    {
        return StepInstance(rFrame);
    }
    if (rFrame.nNextChild < rFrame.pNode->getNode_array().getCount())
    {
        return StepChild(rFrame);
    }
    return End(rFrame);
}

bool CColladaNodeConverter::Begin(const CFrame& rFrame)
{
    domNode& rNode = *rFrame.pNode;
    const CNodePtr spNode = CSGNode::Create(GetGlobalName(rNode), GetLocalName(rNode));
    if (!spNode)
    {
        return false;
    }
    rFrame.pEntry->spNode = spNode;
    Log(QD_COLLADA, LOG_DETAIL, "Created node for <node id=\"%s\">", GetIDText(rNode));
    if (!CColladaLocalTransform::Load(rNode, *spNode) || !m_objCameras.AddToNode(rNode, *spNode) ||
        !CColladaNodeGeometry(m_rLoader, m_objSkeletons, m_objIgnored).Load(rNode, *spNode) ||
        !m_objLights.AddToNode(rNode, *spNode))
    {
        return false;
    }
    // What the node instances may have given it children.
    for (const CSGNode* pNode = spNode->GetNextInTree(spNode.get()); pNode != nullptr;
         pNode = pNode->GetNextInTree(spNode.get()))
    {
        ++rFrame.pEntry->nTreeSize;
    }
    return true;
}

bool CColladaNodeConverter::StepInstance(CFrame& rFrame)
{
    const domInstance_node& rInstance = *rFrame.pNode->getInstance_node_array()[rFrame.nNextInstance];
    const char* szURL = rInstance.getUrl().originalStr().c_str();
    const char* szID = GetIDText(*rFrame.pNode);
    auto* pTarget = CSGLoaderCollada::GetURIElement<domNode>(rInstance.getUrl());
    if (pTarget == nullptr)
    {
        Log(QD_COLLADA, LOG_WARNING, "Ignoring <instance_node url=\"%s\"> in <node id=\"%s\">", szURL, szID);
        ++rFrame.nNextInstance;
        return true;
    }
    CEntry& rTarget = m_mapNodes[pTarget];
    if (rTarget.eState == EState::Active)
    {
        Log(QD_COLLADA, LOG_ERROR,
            "<node id=\"%s\"> instances itself through <instance_node url=\"%s\"> in <node id=\"%s\">",
            GetIDText(*pTarget), szURL, szID);
        return false;
    }
    if (rTarget.eState == EState::New)
    {
        Push(*pTarget, rTarget, -1);
        return true;
    }
    ++rFrame.nNextInstance;
    m_nNumCopiedNodes += rTarget.nTreeSize;
    if (m_nNumCopiedNodes > MAX_COPIED_NODES)
    {
        Log(QD_COLLADA, LOG_ERROR, "The <instance_node> elements come to more than %d nodes",
            static_cast<int>(MAX_COPIED_NODES));
        return false;
    }
    CSGCopyData objCopyData;
    const CNodePtr spCopy = rTarget.spNode->Copy(&objCopyData);
    if (!spCopy)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to copy node for <instance_node id=\"%s\">", GetIDText(rInstance));
        return false;
    }
    return m_objSkeletons.AddCopies(*rTarget.spNode, objCopyData) &&
           AddChild(*rFrame.pEntry, spCopy.get(), rTarget.nTreeSize);
}

bool CColladaNodeConverter::StepChild(CFrame& rFrame)
{
    const size_t nIndex = rFrame.nNextChild++;
    domNode& rChild = *rFrame.pNode->getNode_array()[nIndex];
    CEntry& rEntry = m_mapNodes[&rChild];
    if (rEntry.eState == EState::New)
    {
        Push(rChild, rEntry, static_cast<int32_t>(nIndex));
        return true;
    }
    if (rEntry.eState == EState::Active)
    {
        Log(QD_COLLADA, LOG_ERROR, "<node id=\"%s\"> instances itself through a node around it",
            GetIDText(rChild));
        return false;
    }
    // An instance was there first.
    return AddChild(*rFrame.pEntry, rEntry.spNode.get(), rEntry.nTreeSize);
}

bool CColladaNodeConverter::End(const CFrame& rFrame)
{
    CEntry& rEntry = *rFrame.pEntry;
    if (!CColladaNodeExtra::Load(*rFrame.pNode, *rEntry.spNode))
    {
        return false;
    }
    // A node comes to its parent when it is complete, and the parent has none yet: AddChild's check for a
    // circle of nodes, which walks up, has nowhere to go.
    if (rFrame.nIndexInParent >= 0 &&
        !AddChild(*m_vecStack[m_vecStack.size() - 2].pEntry, rEntry.spNode.get(), rEntry.nTreeSize))
    {
        return false;
    }
    rEntry.eState = EState::Done;
    m_vecStack.pop_back();
    return true;
}

bool CColladaNodeConverter::AddChild(CEntry& rParent, CSGNode* pChild, int64_t nTreeSize)
{
    if (!rParent.spNode->AddChild(pChild))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to add node named %s as child of node %s", pChild->GetGlobalName(),
            rParent.spNode->GetGlobalName());
        return false;
    }
    rParent.nTreeSize += nTreeSize;
    return true;
}

void CColladaNodeConverter::LogFailure() const
{
    for (size_t n = m_vecStack.size(); n-- > 1;)
    {
        const CFrame& rFrame = m_vecStack[n];
        const domNode& rAbove = *m_vecStack[n - 1].pNode;
        if (rFrame.nIndexInParent >= 0)
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to read node at index %d named %s, child of %s.",
                rFrame.nIndexInParent, GetGlobalName(*rFrame.pNode), GetGlobalName(rAbove));
        }
        else
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to read <node id=\"%s\"> that <node id=\"%s\"> instances",
                GetIDText(*rFrame.pNode), GetIDText(rAbove));
        }
    }
}
