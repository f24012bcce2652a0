#include "qdsgloader_collada/CColladaSkinSet.h"

#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdscenegraph/skin/CSGData_SkinBindingSet.h"

bool CColladaSkinSet::AddSkin(const CSkinPtr& spSkin)
{
    QD_CHECK_ARG(spSkin, false);
    m_mapSkins.emplace(spSkin->GetDeindexedVertexBuffer().GetVertexBuffer(), spSkin);
    return true;
}

bool CColladaSkinSet::BindToSkeletons(CSGNode& rNode, std::vector<CSGNode*>& rvecSkinned) const
{
    if (!AddBindings(rNode, rvecSkinned))
    {
        return false;
    }
    for (int32_t n = 0; n < rNode.GetChildrenSize(); ++n)
    {
        CSGNode* pChild = rNode.GetChild(n);
        if (pChild != nullptr && !AddBindings(*pChild, rvecSkinned))
        {
            return false;
        }
    }
    return true;
}

bool CColladaSkinSet::AddBindings(CSGNode& rNode, std::vector<CSGNode*>& rvecSkinned) const
{
    const auto* pGeometry = rNode.FindData<CSGData_Geometry>();
    if (pGeometry == nullptr)
    {
        return true;
    }
    const auto spBindingSet = CSGData_SkinBindingSet::Create();
    QD_CHECK_CREATED(spBindingSet, false);
    const CSGGeomList& rGeomList = *pGeometry->GetGeomList();
    for (int32_t n = 0; n < rGeomList.GetNumBindings(); ++n)
    {
        CSGGeomBinding* pGeomBinding = rGeomList.GetBinding(n);
        const auto it = m_mapSkins.find(pGeomBinding->GetVertexBuffer());
        if (it != m_mapSkins.end() &&
            !spBindingSet->AddBinding(CSGSkinBinding::Create(it->second->GetSkin(), pGeomBinding)))
        {
            return false;
        }
    }
    if (spBindingSet->GetNumBindings() == 0)
    {
        return true;
    }
    QD_CHECK_CALL(rNode.AddData(spBindingSet.get()), false);
    rvecSkinned.push_back(&rNode);
    return true;
}
