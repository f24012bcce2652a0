#include "qdscenegraph/resource/CSGResourceSet.h"

#include "qdscenegraph/animation/CSGData_AnimStack.h"
#include "qdscenegraph/node/CSGCopyData.h"

#include <unordered_set>

namespace
{

CSGNode::CNodePtr CopyWithIgnores(CSGNode* pOriginal, const std::vector<const CSGNode*>& rIgnores)
{
    CSGCopyData objCopyData;
    for (const CSGNode* pIgnored : rIgnores)
    {
        objCopyData.Ignore(pIgnored);
    }
    return pOriginal->Copy(&objCopyData);
}

} // namespace

boost::intrusive_ptr<CSGResourceSet> CSGResourceSet::Create() { return CSGMem::Construct<CSGResourceSet>(); }

bool CSGResourceSet::AddTopLevelNode(CSGStreamable* pNode)
{
    QD_CHECK_NOT_NULL(pNode, false);
    m_vecTopLevelNodes.emplace_back(pNode);
    return true;
}

CSGStreamable* CSGResourceSet::GetTopLevelNode(int32_t nIndex) const
{
    return nIndex >= 0 && nIndex < GetNumTopLevelNodes()
               ? m_vecTopLevelNodes[static_cast<size_t>(nIndex)].get()
               : nullptr;
}

CSGNode* CSGResourceSet::GetFirstNode() const
{
    if (m_vecTopLevelNodes.empty())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Empty resource set.");
        return nullptr;
    }
    CSGStreamable* pFirstNode = m_vecTopLevelNodes.front().get();
    QD_CHECK_NOT_NULL(pFirstNode, nullptr);
    auto* pOriginal = SGStreamableCast<CSGNode>(pFirstNode);
    QD_CHECK_NOT_NULL(pOriginal, nullptr);
    return pOriginal;
}

CSGResourceSet::CNodePtr CSGResourceSet::GetSceneGraph() const { return GetSceneGraphWithIgnores({}); }

CSGResourceSet::CNodePtr CSGResourceSet::GetSceneGraphWithIgnores(
    const std::vector<const CSGNode*>& rIgnores) const
{
    CSGNode* pOriginal = GetFirstNode();
    QD_CHECK_NOT_NULL(pOriginal, nullptr);
    CNodePtr spCopy = CopyWithIgnores(pOriginal, rIgnores);
    if (!spCopy)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Failed to copy scene graph");
    }
    return spCopy;
}

CSGNode* CSGResourceSet::GetNode(const CQDCompactString& rName) const
{
    const CSGNode* pOriginal = GetFirstNode();
    QD_CHECK_NOT_NULL(pOriginal, nullptr);
    CSGNode* pNode = pOriginal->FindNodeByGlobalName(rName);
    if (pNode == nullptr)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Couldn't find descendant with name '%s'", rName);
    }
    return pNode;
}

CSGResourceSet::CNodePtr CSGResourceSet::GetNodeWithIgnores(const CQDCompactString& rName,
                                                            const std::vector<const CSGNode*>& rIgnores) const
{
    CSGNode* pNode = GetNode(rName);
    if (pNode == nullptr)
    {
        return nullptr;
    }
    CNodePtr spCopy = CopyWithIgnores(pNode, rIgnores);
    if (!spCopy)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Failed to copy node '%s'", rName);
    }
    return spCopy;
}

bool CSGResourceSet::RenameNode(const CQDCompactString& rOldName, const CQDCompactString& rNewName)
{
    for (const auto& spTopLevelNode : m_vecTopLevelNodes)
    {
        const auto* pRoot = SGStreamableCast<CSGNode>(spTopLevelNode.get());
        CSGNode* pNode = pRoot != nullptr ? pRoot->FindNodeByGlobalName(rOldName) : nullptr;
        if (pNode != nullptr)
        {
            pNode->SetGlobalName(rNewName);
            if (pNode->GetLocalName() == rOldName)
            {
                pNode->SetLocalName(rNewName);
            }
            RenameNodeInAnimations(rOldName, rNewName);
            return true;
        }
    }
    Log(QD_SCENEGRAPH, LOG_ERROR, "Couldn't find descendant with name '%s'", rOldName);
    return false;
}

void CSGResourceSet::RenameNodeInAnimations(const CQDCompactString& rOldName,
                                            const CQDCompactString& rNewName) const
{
    // A layer may stand in several stacks, and an animation in several layers.
    std::unordered_set<CSGAnimation*> setAnimations;
    std::unordered_set<CSGAnimLayer*> setLayers;
    for (const auto& spTopLevelNode : m_vecTopLevelNodes)
    {
        if (auto* pAnimation = SGStreamableCast<CSGAnimation>(spTopLevelNode.get()))
        {
            setAnimations.insert(pAnimation);
        }
        const auto* pRoot = SGStreamableCast<CSGNode>(spTopLevelNode.get());
        for (const CSGNode* pNode = pRoot; pNode != nullptr; pNode = pNode->GetNextInTree(pRoot))
        {
            const auto* pAnimStack = pNode->FindData<CSGData_AnimStack>();
            for (int32_t n = 0; pAnimStack != nullptr && n < pAnimStack->GetNumLayers(); ++n)
            {
                setLayers.insert(pAnimStack->GetLayer(n));
            }
        }
    }
    for (CSGAnimLayer* pLayer : setLayers)
    {
        pLayer->RenameInMask(rOldName, rNewName);
        setAnimations.insert(pLayer->GetAnimation());
    }
    for (CSGAnimation* pAnimation : setAnimations)
    {
        pAnimation->RenameNode(rOldName, rNewName);
    }
}

bool CSGResourceSet::RenameAnimation(const CQDCompactString& rOldName, const CQDCompactString& rNewName)
{
    if (rOldName == rNewName)
    {
        Log(QD_SCENEGRAPH, LOG_WARNING, "Ignoring attempt to rename '%s' to '%s' (same name)", rOldName,
            rNewName);
        return true;
    }
    CSGAnimation* pAnimation = FindAnimation(rOldName);
    if (pAnimation == nullptr)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Didn't find animation named '%s'", rOldName);
        return false;
    }
    if (FindAnimation(rNewName) != nullptr)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Animation with name '%s' already exists.", rNewName);
        return false;
    }
    pAnimation->SetName(rNewName);
    return true;
}

CSGAnimation* CSGResourceSet::FindAnimation(const CQDCompactString& rName) const
{
    for (const auto& spTopLevelNode : m_vecTopLevelNodes)
    {
        auto* pAnimation = SGStreamableCast<CSGAnimation>(spTopLevelNode.get());
        if (pAnimation != nullptr && pAnimation->GetName() == rName)
        {
            return pAnimation;
        }
    }
    return nullptr;
}

bool CSGResourceSet::GetAnimations(std::vector<CSGAnimation*>& rvecAnimations) const
{
    for (const auto& spTopLevelNode : m_vecTopLevelNodes)
    {
        if (auto* pAnimation = SGStreamableCast<CSGAnimation>(spTopLevelNode.get()))
        {
            rvecAnimations.push_back(pAnimation);
        }
    }
    return true;
}

void CSGResourceSet::ClearAnimations()
{
    std::erase_if(m_vecTopLevelNodes, [](const auto& spTopLevelNode) {
        return SGStreamableCast<CSGAnimation>(spTopLevelNode.get()) != nullptr;
    });
}
