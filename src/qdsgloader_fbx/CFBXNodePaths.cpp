#include "qdsgloader_fbx/CFBXNodePaths.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/reference/CSGRefKind.h"
#include "qdsgloader_fbx/CFBXLocalTransform.h"

#include <algorithm>

namespace
{

bool MayBeAnimated(const FbxNode& rNode)
{
    return !rNode.GetSrcObjects<FbxAnimCurveNode>().empty() || CFBXLocalTransform::HasInheritTransform(rNode);
}

} // namespace

CFBXNodePaths::CFBXNodePaths(std::span<FbxNode* const> arrHierarchy)
{
    m_mapNodes.reserve(arrHierarchy.size());
    m_mapPlaces.reserve(arrHierarchy.size());
    for (size_t n = 0; n < arrHierarchy.size(); ++n)
    {
        m_mapNodes[arrHierarchy[n]].nPlace = n;
        GiveName(*arrHierarchy[n], arrHierarchy[n]->GetName());
    }
    for (const FbxNode* pNode : arrHierarchy)
    {
        FindWay(*pNode);
        if (m_mapNodes.at(pNode).nSteps == 0 && MayBeAnimated(*pNode))
        {
            GiveName(*pNode, MakeUniqueName(pNode->GetName()));
            FindWay(*pNode);
        }
    }
}

void CFBXNodePaths::GiveName(const FbxNode& rFBXNode, CQDString strName)
{
    CNode& rNode = m_mapNodes.at(&rFBXNode);
    rNode.strName = std::move(strName);
    m_mapPlaces[rNode.strName].push_back(rNode.nPlace);
}

CQDString CFBXNodePaths::MakeUniqueName(const CQDString& rName)
{
    int& rNumber = m_mapNumbers[rName];
    CQDString strName;
    do
    {
        strName = rName + "_" + std::to_string(++rNumber);
    } while (m_mapPlaces.contains(strName));
    return strName;
}

bool CFBXNodePaths::IsFirst(const CNode& rNode, size_t nFrom) const
{
    return *std::ranges::lower_bound(m_mapPlaces.at(rNode.strName), nFrom) == rNode.nPlace;
}

void CFBXNodePaths::FindWay(const FbxNode& rFBXNode)
{
    // So far up a node is looked for that the way can go over; and so many references a path can hold, with
    // those behind the node.
    constexpr int MAX_STEPS = CSGRefPath::MAX_REFS - 4;

    CNode& rNode = m_mapNodes.at(&rFBXNode);
    if (rNode.strName.empty())
    {
        return; // nothing is found by the empty name
    }
    if (IsFirst(rNode, 0))
    {
        rNode.nSteps = 1;
        return;
    }
    const FbxNode* pFrom = rFBXNode.GetParent();
    for (int n = 0; n < MAX_STEPS && pFrom != nullptr; ++n, pFrom = pFrom->GetParent())
    {
        const CNode& rFrom = m_mapNodes.at(pFrom);
        if (!IsFirst(rNode, rFrom.nPlace + 1))
        {
            return; // nor is it seen from further up
        }
        const int nSteps = rFrom.nSteps + 1;
        if (rFrom.nSteps > 0 && nSteps <= MAX_STEPS && (rNode.nSteps == 0 || nSteps < rNode.nSteps))
        {
            rNode.nSteps = nSteps;
            rNode.pFrom = pFrom;
        }
    }
}

CSGRefPathPtr CFBXNodePaths::CreatePath(const FbxNode& rNode) const
{
    std::vector<CSGRefPtr> vecRefs; // the last one first
    for (const FbxNode* pNode = &rNode; pNode != nullptr;)
    {
        const CNode& rWay = m_mapNodes.at(pNode);
        QD_CHECK(rWay.nSteps > 0, nullptr);
        const CQDCompactString strName(rWay.strName);
        // The search for a global name begins with the node that it starts from.
        if (rWay.pFrom != nullptr && m_mapNodes.at(rWay.pFrom).strName == rWay.strName)
        {
            vecRefs.push_back(CSGATFRef_ChildNodeByLocalName::Create(strName));
        }
        else
        {
            vecRefs.push_back(CSGRef_DescendantNodeByGlobalName::Create(strName));
        }
        pNode = rWay.pFrom;
    }
    CSGRefPathPtr spPath = CSGRefPath::Create();
    QD_CHECK_CREATED(spPath, nullptr);
    for (size_t n = vecRefs.size(); n-- > 0;)
    {
        QD_CHECK_CALL(spPath->AddRef(vecRefs[n]), nullptr);
    }
    return spPath;
}
