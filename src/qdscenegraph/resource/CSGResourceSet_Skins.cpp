// Extraction of skeletons, and of skinned meshes with the part of the skeleton that they follow.

#include "qdscenegraph/animation/CSGAnimation.h"
#include "qdscenegraph/geometry/CSGData_GeomBounds.h"
#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdscenegraph/material/CSGData_Effect.h"
#include "qdscenegraph/material/CSGData_Material.h"
#include "qdscenegraph/node/CSGCopyData.h"
#include "qdscenegraph/resource/CSGResourceSet.h"
#include "qdscenegraph/skin/CSGData_SkinBindingSet.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGXFrm_List.h"
#include "qdscenegraph/transform/CSGXFrm_Transform3.h"

#include <unordered_set>

namespace
{

using CNodePtr = CSGNode::CNodePtr;
using CNodeSet = std::unordered_set<const CSGNode*>;

// A node of a part, and the skins that its copy gets: without the joints that no vertex follows.
struct CSkinnedNode
{
    CSGNode* m_pNode;
    std::vector<boost::intrusive_ptr<CSGSkinBinding>> m_vecBindings;
};

void AddWithAncestors(CNodeSet& rSet, const CSGNode* pNode)
{
    while (pNode != nullptr && rSet.insert(pNode).second)
    {
        pNode = pNode->GetParent();
    }
}

// Calls the function with the node of every joint that is bound.
template <class FUNCTION>
void ForEachJointNode(const CSGSkinBinding& rBinding, FUNCTION&& fnEach)
{
    for (int32_t nJoint = 0; nJoint < rBinding.GetNumJoints(); ++nJoint)
    {
        if (const CNodePtr spNode = rBinding.GetJointNode(nJoint))
        {
            fnEach(spNode.get());
        }
    }
}

// Calls the function with every node of a tree that has skins, and with them.
template <class FUNCTION>
bool ForEachSkinnedNode(CSGNode* pRoot, FUNCTION&& fnEach)
{
    for (CSGNode* pNode = pRoot; pNode != nullptr; pNode = pNode->GetNextInTree(pRoot))
    {
        auto* pSkins = pNode->FindData<CSGData_SkinBindingSet>();
        if (pSkins != nullptr && !fnEach(pNode, pSkins))
        {
            return false;
        }
    }
    return true;
}

// What is drawn at a node stays out of its copy.
void IgnoreLooks(const CSGNode& rNode, CSGCopyData& rCopyData)
{
    const auto fnIgnore = [&](const CSGData* pData) {
        if (pData != nullptr)
        {
            rCopyData.Ignore(pData);
        }
    };
    fnIgnore(rNode.FindData<CSGData_Geometry>());
    fnIgnore(rNode.FindData<CSGData_GeomBounds>());
    fnIgnore(rNode.FindData<CSGData_SkinBindingSet>());
    fnIgnore(rNode.FindData<CSGData_Material>());
    fnIgnore(rNode.FindData<CSGData_Effect>());
}

// A copy of a node with everything below it that stands below the root's copy as the original stands below
// the root.
CNodePtr CopyToRoot(CSGNode* pNode, const CSGNode* pRoot, CSGCopyData& rCopyData)
{
    CNodePtr spCopy = pNode->Copy(&rCopyData);
    QD_CHECK_CREATED(spCopy, nullptr);
    CTransform3 objAbove;
    for (const CSGNode* pParent = pNode != pRoot ? pNode->GetParent() : nullptr;
         pParent != nullptr && pParent != pRoot; pParent = pParent->GetParent())
    {
        if (const auto* pLocal = pParent->FindData<CSGData_LocalTransform>())
        {
            objAbove = pLocal->GetTransform() * objAbove;
        }
    }
    if (objAbove.IsIdentity())
    {
        return spCopy;
    }
    const CSGTransform::CTransformPtr spAbove = CSGXFrm_Transform3::Create(objAbove);
    QD_CHECK_CREATED(spAbove, nullptr);
    auto* pLocal = spCopy->FindData<CSGData_LocalTransform>();
    if (pLocal == nullptr)
    {
        const auto spLocal = CSGData_LocalTransform::Create(spAbove);
        QD_CHECK_CALL(spCopy->AddData(spLocal.get()), nullptr);
        return spCopy;
    }
    // Animations find the node's own transform in the list.
    const CSGTransform::CTransformPtr arrTransforms[] = {spAbove, pLocal->GetTransformObject()};
    const auto spBoth = CSGXFrm_List::Create(arrTransforms);
    QD_CHECK_CALL(pLocal->SetTransformObject(spBoth.get()), nullptr);
    return spCopy;
}

// Every joint of the skins in a tree with all nodes above them, and what hangs below them without geometry:
// where things are attached, and the ends of chains. Leaves all others and what is drawn out of the copy.
// False when there is no joint.
bool SelectSkeleton(CSGNode* pRoot, CSGCopyData& rCopyData)
{
    CNodeSet setJoints;
    CNodeSet setSkinned; // and what is above
    ForEachSkinnedNode(pRoot, [&](const CSGNode* pNode, const CSGData_SkinBindingSet* pSkins) {
        AddWithAncestors(setSkinned, pNode);
        for (int32_t n = 0; n < pSkins->GetNumBindings(); ++n)
        {
            ForEachJointNode(*pSkins->GetBinding(n),
                             [&](const CSGNode* pJoint) { setJoints.insert(pJoint); });
        }
        return true;
    });
    CNodeSet setKept;
    for (const CSGNode* pJoint : setJoints)
    {
        AddWithAncestors(setKept, pJoint);
    }
    CNodeSet& rBones = setJoints; // grows by what hangs below
    for (CSGNode* pNode = pRoot; pNode != nullptr;)
    {
        if (pNode != pRoot && rBones.contains(pNode->GetParent()) &&
            (setKept.contains(pNode) ||
             (!setSkinned.contains(pNode) && pNode->FindData<CSGData_Geometry>() == nullptr)))
        {
            rBones.insert(pNode);
        }
        else if (!setKept.contains(pNode))
        {
            rCopyData.Ignore(pNode);
            pNode = pNode->GetNextBeyondTree(pRoot);
            continue;
        }
        IgnoreLooks(*pNode, rCopyData);
        pNode = pNode->GetNextInTree(pRoot);
    }
    return !rCopyData.IsIgnored(pRoot);
}

// Takes one named part out of a scene.
class CSkinnedPart
{
  public:
    CSkinnedPart(CSGNode* pRoot, CSGNode* pNode) : m_pRoot(pRoot), m_pNode(pNode) {}

    // The root of the new scene; null (reported) when the node is not skinned and on failure.
    CNodePtr Extract()
    {
        QD_CHECK_CALL(FindSkins(), nullptr);
        IgnoreAllButSkeleton();
        CNodePtr spRoot = m_pRoot->Copy(&m_objSkeletonCopy);
        QD_CHECK_CREATED(spRoot, nullptr);
        QD_CHECK_CALL(MoveSkinsTo(spRoot.get()), nullptr);
        QD_CHECK_CALL(BindSkins(), nullptr);
        return spRoot;
    }

  private:
    bool FindSkins()
    {
        AddWithAncestors(m_setSkeleton, m_pRoot);
        const auto fnAdd = [&](CSGNode* pNode, const CSGData_SkinBindingSet* pSkins) {
            AddWithAncestors(m_setSkinned, pNode);
            m_vecSkinned.push_back({pNode, {}});
            for (int32_t n = 0; n < pSkins->GetNumBindings(); ++n)
            {
                const auto spBinding = pSkins->GetBinding(n)->CreateWithoutUnusedJoints();
                QD_CHECK_CREATED(spBinding, false);
                ForEachJointNode(*spBinding,
                                 [&](const CSGNode* pJoint) { AddWithAncestors(m_setSkeleton, pJoint); });
                m_vecSkinned.back().m_vecBindings.push_back(spBinding);
            }
            return true;
        };
        if (!ForEachSkinnedNode(m_pNode, fnAdd))
        {
            return false;
        }
        if (m_vecSkinned.empty())
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Node '%s' has no skin, nor has any node below it.",
                m_pNode->GetGlobalName());
        }
        return !m_vecSkinned.empty();
    }

    // A mesh that has joints below it, or is one, belongs to the skeleton, too: it keeps its skin and stays.
    void IgnoreAllButSkeleton()
    {
        CNodeSet setMeshes;
        for (const CSkinnedNode& rSkinned : m_vecSkinned)
        {
            setMeshes.insert(rSkinned.m_pNode);
        }
        for (CSGNode* pNode = m_pRoot; pNode != nullptr;)
        {
            const bool bKept = m_setSkeleton.contains(pNode);
            if (!bKept)
            {
                m_objSkeletonCopy.Ignore(pNode);
            }
            else if (!setMeshes.contains(pNode))
            {
                IgnoreLooks(*pNode, m_objSkeletonCopy);
            }
            pNode = bKept ? pNode->GetNextInTree(m_pRoot) : pNode->GetNextBeyondTree(m_pRoot);
        }
    }

    bool MoveSkinsTo(CSGNode* pRootCopy)
    {
        for (CSGNode* pNode = m_pNode; pNode != nullptr;)
        {
            const bool bSkeleton = m_setSkeleton.contains(pNode);
            if (!bSkeleton && m_setSkinned.contains(pNode))
            {
                const CNodePtr spSkinNode = CopyToRoot(pNode, m_pRoot, m_objSkinCopy);
                QD_CHECK_CREATED(spSkinNode, false);
                QD_CHECK_CALL(pRootCopy->AddChild(spSkinNode.get()), false);
            }
            pNode = bSkeleton ? pNode->GetNextInTree(m_pNode) : pNode->GetNextBeyondTree(m_pNode);
        }
        return true;
    }

    bool BindSkins()
    {
        for (const CSkinnedNode& rSkinned : m_vecSkinned)
        {
            const CSGNode* pMoved = m_objSkinCopy.FindCopy(rSkinned.m_pNode);
            const CSGNode* pCopy = pMoved != nullptr ? pMoved : m_objSkeletonCopy.FindCopy(rSkinned.m_pNode);
            QD_CHECK_NOT_NULL(pCopy, false);
            auto* pSkins = pCopy->FindData<CSGData_SkinBindingSet>();
            QD_CHECK_NOT_NULL(pSkins, false);
            int32_t nBinding = 0;
            for (const auto& spBinding : rSkinned.m_vecBindings)
            {
                QD_CHECK_CALL(pSkins->ReplaceBinding(nBinding++, spBinding), false);
            }
            QD_CHECK_CALL(pSkins->PostCopy(&m_objSkeletonCopy), false);
        }
        return true;
    }

    CSGNode* m_pRoot;
    CSGNode* m_pNode;
    std::vector<CSkinnedNode> m_vecSkinned;
    CNodeSet m_setSkinned;  // the part's nodes with skins, and all above them
    CNodeSet m_setSkeleton; // the joints that they follow, and all above them
    CSGCopyData m_objSkeletonCopy;
    CSGCopyData m_objSkinCopy;
};

} // namespace

CSGResourceSet::CNodePtr CSGResourceSet::GetSkeletonNode(CSGCopyData* pCopyData) const
{
    QD_CHECK_ARG(pCopyData, nullptr);
    CSGNode* pOriginal = GetFirstNode();
    QD_CHECK_NOT_NULL(pOriginal, nullptr);
    if (!SelectSkeleton(pOriginal, *pCopyData))
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "No skin below node '%s' is bound to a skeleton.",
            pOriginal->GetGlobalName());
        return nullptr;
    }
    return pOriginal->Copy(pCopyData);
}

CSGResourceSet::CNodePtr CSGResourceSet::GetNodeInSkinBinding(const CQDCompactString& rName,
                                                              CSGCopyData* pSkeletonCopy) const
{
    QD_CHECK_ARG(pSkeletonCopy, nullptr);
    CSGNode* pNode = GetNode(rName);
    if (pNode == nullptr)
    {
        return nullptr;
    }
    CSGCopyData objCopyData;
    CNodePtr spCopy = CopyToRoot(pNode, GetFirstNode(), objCopyData);
    QD_CHECK_CREATED(spCopy, nullptr);
    QD_CHECK_CALL(ForEachSkinnedNode(spCopy.get(),
                                     [&](CSGNode*, CSGData_SkinBindingSet* pSkins) {
                                         return pSkins->PostCopy(pSkeletonCopy);
                                     }),
                  nullptr);
    return spCopy;
}

boost::intrusive_ptr<CSGResourceSet> CSGResourceSet::GetSkinnedSubResourceSet(
    const CQDCompactString& rName) const
{
    std::vector<boost::intrusive_ptr<CSGResourceSet>> vecResourceSets;
    return GetSkinnedSubResourceSets({&rName, 1}, vecResourceSets) ? vecResourceSets.front() : nullptr;
}

bool CSGResourceSet::GetSkinnedSubResourceSets(
    std::span<const CQDCompactString> arrNames,
    std::vector<boost::intrusive_ptr<CSGResourceSet>>& rvecResourceSets) const
{
    CSGNode* pOriginal = GetFirstNode();
    QD_CHECK_NOT_NULL(pOriginal, false);
    std::vector<CSGAnimation*> vecAnimations;
    QD_CHECK_CALL(GetAnimations(vecAnimations), false);
    int nIndex = 0;
    for (const CQDCompactString& rName : arrNames)
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "-----GetFrankenResourceSet------ %d", nIndex++);
        CSGNode* pNode = GetNode(rName);
        const CNodePtr spRoot = pNode != nullptr ? CSkinnedPart(pOriginal, pNode).Extract() : nullptr;
        if (!spRoot)
        {
            return false;
        }
        const boost::intrusive_ptr<CSGResourceSet> spResourceSet = Create();
        QD_CHECK_CREATED(spResourceSet, false);
        spResourceSet->SetUpAxis(m_eUpAxis);
        QD_CHECK_CALL(spResourceSet->AddTopLevelNode(spRoot.get()), false);
        for (CSGAnimation* pAnimation : vecAnimations)
        {
            const CSGAnimation::CAnimationPtr spAnimation = pAnimation->GetForTree(spRoot.get());
            QD_CHECK_CALL(spResourceSet->AddTopLevelNode(spAnimation.get()), false);
        }
        rvecResourceSets.push_back(spResourceSet);
        Log(QD_SCENEGRAPH, LOG_INFO, " done?");
    }
    return true;
}
