#include "qdscenegraph/reference/CSGRefContext.h"

#include "qdscenegraph/material/CSGData_Material.h"
#include "qdscenegraph/node/CSGNode.h"

namespace
{

template <class T>
void AddName(CPointerMap<T*>& rMap, T* pObject)
{
    const CQDCompactString& rName = pObject->GetGlobalName();
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
        AddName(m_mapNodes, pNode);
        const auto* pData = pNode->FindData<CSGData_Material>();
        if (pData != nullptr && pData->GetMaterial() != nullptr)
        {
            AddName(m_mapMaterials, pData->GetMaterial());
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
