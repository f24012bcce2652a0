#include "qdscenegraph/reference/CSGRefContext.h"

#include "qdscenegraph/material/CSGData_Material.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/reference/CSGTransformWalk.h"
#include "qdscenegraph/transform/CSGTransform.h"

namespace
{

template <class T>
void AddName(CPointerMap<T*>& rMap, T* pObject, const CQDCompactString& rName)
{
    if (!rName.empty())
    {
        rMap.Add(rName.c_str(), pObject);
    }
}

} // namespace

void CSGRefContext::BuildIndex()
{
    if (m_bIndexed)
    {
        return;
    }
    for (CSGNode* pNode = m_pRoot; pNode != nullptr; pNode = pNode->GetNextInTree(m_pRoot))
    {
        AddName(m_mapNodes, pNode, pNode->GetGlobalName());
        const auto* pData = pNode->FindData<CSGData_Material>();
        if (pData != nullptr && pData->GetMaterial() != nullptr)
        {
            AddName(m_mapMaterials, pData->GetMaterial(), pData->GetMaterial()->GetGlobalName());
        }
    }
    m_bIndexed = true;
}

CSGNode* CSGRefContext::FindNode(const CQDCompactString& rGlobalName)
{
    BuildIndex();
    return m_mapNodes.Find(rGlobalName.c_str(), nullptr);
}

CSGMaterial* CSGRefContext::FindMaterial(const CQDCompactString& rGlobalName)
{
    BuildIndex();
    return m_mapMaterials.Find(rGlobalName.c_str(), nullptr);
}

CSGTransform* CSGRefContext::FindTransform(CSGTransform* pRoot, const CQDCompactString& rName)
{
    // So many are sooner searched than entered in a table. Nodes of real scenes have fewer.
    constexpr int FEW = 24;

    const auto it = m_mapTransforms.find(pRoot);
    if (it != m_mapTransforms.end())
    {
        return it->second.Find(rName.c_str(), nullptr);
    }
    CSGTransformWalk objSearch(pRoot);
    for (int n = 0; n < FEW; ++n)
    {
        CSGTransform* pTransform = objSearch.Next();
        if (pTransform == nullptr || pTransform->GetName() == rName)
        {
            return pTransform;
        }
    }
    CPointerMap<CSGTransform*>& rNames = m_mapTransforms[pRoot];
    CSGTransformWalk objWalk(pRoot);
    while (CSGTransform* pTransform = objWalk.Next())
    {
        AddName(rNames, pTransform, pTransform->GetName());
    }
    return rNames.Find(rName.c_str(), nullptr);
}
