#include "qdsgloader_collada/CColladaSkeletons.h"

#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/node/CSGCopyData.h"
#include "qdscenegraph/skin/CSGData_SkinBindingSet.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaSceneIndex.h"
#include "qdsgloader_collada/CColladaSkinSet.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

namespace
{

// Of one scene graph. Every instance of a skin has its own list of joints: short documents could ask for more
// than any memory holds.
constexpr size_t MAX_JOINTS = 1 << 22;
constexpr size_t JOINTS_PER_BINDING = 16; // what a skin binding takes up besides its joints
constexpr size_t MAX_COPIED_NODES = 1000000;

// Whether every joint with a name has a node then.
bool BindJoints(CSGSkinBinding& rBinding, std::span<CSGNode* const> arrRoots,
                const CColladaSceneIndex& rIndex)
{
    bool bComplete = true;
    for (int32_t nJoint = 0; nJoint < rBinding.GetNumJoints(); ++nJoint)
    {
        const CQDCompactString& rName = rBinding.GetSkin()->GetJoint(nJoint)->GetLocalName();
        CSGNode* pNode = nullptr;
        for (size_t n = 0; n < arrRoots.size() && pNode == nullptr; ++n)
        {
            pNode = rIndex.FindLocalName(*arrRoots[n], rName);
        }
        rBinding.SetJointNode(nJoint, rName.empty() ? nullptr : pNode);
        bComplete = bComplete && (rName.empty() || pNode != nullptr);
    }
    return bComplete;
}

} // namespace

bool CColladaSkeletons::AddSkins(const CColladaSkinSet& rSkins, domInstance_controller& rInstance,
                                 CSGNode& rNode)
{
    CInstance objInstance{&rInstance, {}};
    int nIndex = 0;
    for (const auto& rspSkeleton : AsSpan(rInstance.getSkeleton_array()))
    {
        if (auto* pSkeleton = CSGLoaderCollada::GetURIElement<domNode>(rspSkeleton->getValue()))
        {
            objInstance.vecSkeletons.push_back(pSkeleton);
        }
        else
        {
            Log(QD_COLLADA, LOG_ERROR,
                "Couldn't find node referred to by <skeleton> %d in <instance_controller id=\"%s\">", nIndex,
                FirstText({rInstance.getSid(), rInstance.getName()}));
        }
        ++nIndex;
    }
    std::vector<CSGNode*> vecSkinned;
    if (!rSkins.BindToSkeletons(rNode, vecSkinned))
    {
        return false;
    }
    for (const CSGNode* pNode : vecSkinned)
    {
        if (!TakeFromBudget(*pNode, objInstance.vecSkeletons.size()))
        {
            return false;
        }
        m_mapSkinned.emplace(pNode, CSkinned{m_vecInstances.size(), {}});
    }
    m_vecInstances.push_back(std::move(objInstance));
    return true;
}

bool CColladaSkeletons::TakeFromBudget(const CSGNode& rNode, size_t nSkeletons)
{
    m_nNumJoints += nSkeletons;
    const auto* pBindings = rNode.FindData<CSGData_SkinBindingSet>();
    for (int32_t n = 0; n < pBindings->GetNumBindings(); ++n)
    {
        m_nNumJoints += JOINTS_PER_BINDING + static_cast<size_t>(pBindings->GetBinding(n)->GetNumJoints());
    }
    if (m_nNumJoints > MAX_JOINTS)
    {
        Log(QD_COLLADA, LOG_ERROR, "The skins of all nodes have more than %d joints",
            static_cast<int>(MAX_JOINTS));
    }
    return m_nNumJoints <= MAX_JOINTS;
}

CSGNode* CColladaSkeletons::GetSkeleton(const CSkinned& rSkinned, size_t nSkeleton) const
{
    CSGNode* pCopy = rSkinned.vecCopies.empty() ? nullptr : rSkinned.vecCopies[nSkeleton];
    return pCopy != nullptr ? pCopy
                            : m_fnGetNode(*m_vecInstances[rSkinned.nInstance].vecSkeletons[nSkeleton]);
}

bool CColladaSkeletons::AddCopies(const CSGNode& rOriginal, const CSGCopyData& rCopyData)
{
    if (m_mapSkinned.empty())
    {
        return true;
    }
    for (const CSGNode* pNode = &rOriginal; pNode != nullptr; pNode = pNode->GetNextInTree(&rOriginal))
    {
        const auto it = m_mapSkinned.find(pNode);
        const CSGNode* pCopy = it != m_mapSkinned.end() ? rCopyData.FindCopy(pNode) : nullptr;
        if (pCopy == nullptr)
        {
            continue;
        }
        CSkinned objSkinned = it->second;
        const size_t nSkeletons = m_vecInstances[objSkinned.nInstance].vecSkeletons.size();
        if (!TakeFromBudget(*pCopy, nSkeletons))
        {
            return false;
        }
        objSkinned.vecCopies.resize(nSkeletons);
        for (size_t n = 0; n < nSkeletons; ++n)
        {
            const CSGNode* pSkeleton = GetSkeleton(objSkinned, n);
            if (CSGNode* pSkeletonCopy = pSkeleton != nullptr ? rCopyData.FindCopy(pSkeleton) : nullptr)
            {
                objSkinned.vecCopies[n] = pSkeletonCopy;
            }
        }
        m_mapSkinned.emplace(pCopy, std::move(objSkinned));
    }
    return true;
}

void CColladaSkeletons::Bind(CSGNode& rScene)
{
    if (m_mapSkinned.empty())
    {
        return;
    }
    CColladaSceneIndex objIndex(rScene);
    if (AddMissingSkeletons(objIndex, rScene))
    {
        objIndex = CColladaSceneIndex(rScene);
    }
    for (CSGNode* pNode : objIndex.GetNodes())
    {
        if (const auto it = m_mapSkinned.find(pNode); it != m_mapSkinned.end())
        {
            BindNode(objIndex, *pNode, it->second);
        }
    }
}

CSGNode* CColladaSkeletons::FindInScene(const CColladaSceneIndex& rIndex, CSGNode* pSkeleton) const
{
    return pSkeleton == nullptr || rIndex.Contains(pSkeleton)
               ? pSkeleton
               : rIndex.FindGlobalName(pSkeleton->GetGlobalName());
}

bool CColladaSkeletons::AddMissingSkeletons(const CColladaSceneIndex& rIndex, CSGNode& rScene)
{
    bool bAdded = false;
    for (const CSGNode* pNode : rIndex.GetNodes())
    {
        const auto it = m_mapSkinned.find(pNode);
        if (it == m_mapSkinned.end())
        {
            continue;
        }
        const size_t nSkeletons = m_vecInstances[it->second.nInstance].vecSkeletons.size();
        for (size_t n = 0; n < nSkeletons; ++n)
        {
            CSGNode* pSkeleton = GetSkeleton(it->second, n);
            if (pSkeleton != nullptr && FindInScene(rIndex, pSkeleton) == nullptr)
            {
                bAdded |= AddCopyToScene(*pSkeleton, rScene);
            }
        }
    }
    return bAdded;
}

bool CColladaSkeletons::AddCopyToScene(CSGNode& rSkeleton, CSGNode& rScene)
{
    // The whole tree that it is in: what stands above the skeleton moves it too.
    CSGNode* pTop = &rSkeleton;
    while (m_setAdded.insert(pTop).second && pTop->GetParent() != nullptr)
    {
        pTop = pTop->GetParent();
    }
    if (pTop->GetParent() != nullptr)
    {
        return false; // a part of it was missed before
    }
    for (const CSGNode* pNode = pTop; pNode != nullptr; pNode = pNode->GetNextInTree(pTop))
    {
        ++m_nNumCopiedNodes;
    }
    QD_CHECK(m_nNumCopiedNodes <= MAX_COPIED_NODES, false);
    CSGCopyData objCopyData;
    const CSGNode::CNodePtr spCopy = pTop->Copy(&objCopyData);
    return spCopy && AddCopies(*pTop, objCopyData) && rScene.AddChild(spCopy.get());
}

void CColladaSkeletons::BindNode(const CColladaSceneIndex& rIndex, CSGNode& rNode, const CSkinned& rSkinned)
{
    CInstance& rInstance = m_vecInstances[rSkinned.nInstance];
    std::vector<CSGNode*> vecRoots;
    for (size_t n = 0; n < rInstance.vecSkeletons.size(); ++n)
    {
        if (CSGNode* pRoot = FindInScene(rIndex, GetSkeleton(rSkinned, n)))
        {
            vecRoots.push_back(pRoot);
        }
    }
    vecRoots.push_back(rIndex.GetNodes().front());
    auto* pBindings = rNode.FindData<CSGData_SkinBindingSet>();
    for (int32_t n = 0; n < pBindings->GetNumBindings(); ++n)
    {
        boost::intrusive_ptr<CSGSkinBinding> spBinding = pBindings->GetBinding(n);
        if (BindJoints(*spBinding, vecRoots, rIndex))
        {
            continue;
        }
        // Exporters list joints that nothing follows, and leave out their nodes.
        const auto spUsed = spBinding->CreateWithoutUnusedJoints();
        if (spUsed && BindJoints(*spUsed, vecRoots, rIndex))
        {
            pBindings->ReplaceBinding(n, spUsed);
            continue;
        }
        if (!rInstance.bReported)
        {
            rInstance.bReported = true;
            (spUsed ? spUsed : spBinding)->BindJoints({});
            Log(QD_COLLADA, LOG_WARNING,
                "Ignoring the skin of <instance_controller url=\"%s\"> in <node id=\"%s\">: its geometry is "
                "shown as it is",
                rInstance.pElement->getUrl().originalStr(),
                GetIDText(*rInstance.pElement->getParentElement()));
        }
        rNode.RemoveData(pBindings);
        return;
    }
}
