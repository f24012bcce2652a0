#include "qdscenegraph/skin/CSGSkinBounds.h"

#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdscenegraph/skin/CSGData_SkinBindingSet.h"
#include "qdscenegraph/transform/CSGData_WorldTransform.h"

#include <algorithm>
#include <unordered_set>

namespace
{

using CVertexBufferPtr = boost::intrusive_ptr<CSGVertexBuffer>;

// The positions of one geometry in the pose; null when it has none and when memory fails.
CVertexBufferPtr CreatePosedVertices(const CSGSkinBinding& rBinding, std::span<const CTransform3> arrPalette)
{
    CSGVertexFormat objFormat;
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_POSITION, 0, 3);
    const CVertexBufferPtr spPosed =
        CSGVertexBuffer::Create(objFormat, rBinding.GetGeomBinding()->GetVertexBuffer()->GetNumVertices());
    return spPosed && rBinding.SkinPositions(arrPalette, spPosed->EditData()) ? spPosed : nullptr;
}

// The vertex buffers, each once, that no binding of the set deforms.
std::vector<CSGVertexBuffer*> GetRigidVertices(const CSGGeomList& rGeomList,
                                               const CSGData_SkinBindingSet& rSet)
{
    std::unordered_set<const CSGGeomBinding*> setSkinned;
    for (int32_t n = 0; n < rSet.GetNumBindings(); ++n)
    {
        setSkinned.insert(rSet.GetBinding(n)->GetGeomBinding());
    }
    std::vector<CSGVertexBuffer*> vecRigid;
    std::unordered_set<const CSGVertexBuffer*> setSeen;
    for (int32_t n = 0; n < rGeomList.GetNumBindings(); ++n)
    {
        const CSGGeomBinding* pBinding = rGeomList.GetBinding(n);
        if (!setSkinned.contains(pBinding) && setSeen.insert(pBinding->GetVertexBuffer()).second)
        {
            vecRigid.push_back(pBinding->GetVertexBuffer());
        }
    }
    return vecRigid;
}

} // namespace

const CSGBounds* CSGSkinBounds::Get(CSGNode* pNode, const CSGData_SkinBindingSet& rSet)
{
    const auto* pGeometry = pNode->FindData<CSGData_Geometry>();
    const CSGGeomList* pGeomList = pGeometry != nullptr ? pGeometry->GetGeomList() : nullptr;
    if (pGeomList == nullptr || rSet.GetNumBindings() == 0)
    {
        return nullptr;
    }
    const auto* pWorld = CSGData_WorldTransform::GetOrCreateFromNode(pNode);
    CTransform3 objToNode;
    if (pWorld == nullptr || !pWorld->GetTransform().Inverse(objToNode))
    {
        return nullptr;
    }
    CSource objSource{pGeometry->GetEditStamp().Get(), pGeomList->GetNewestStamp(), {}};
    for (int32_t n = 0; n < rSet.GetNumBindings(); ++n)
    {
        CPalette& rPalette = objSource.m_vecPalettes.emplace_back();
        QD_CHECK_CALL(rSet.GetBinding(n)->ComputePalette(rPalette), nullptr);
        for (CTransform3& rTransform : rPalette)
        {
            rTransform = objToNode * rTransform;
        }
    }
    if (m_objMadeFrom != objSource)
    {
        m_objBounds = Compute(*pGeomList, rSet, objSource.m_vecPalettes);
        m_objMadeFrom = std::move(objSource);
    }
    return &m_objBounds;
}

CSGBounds CSGSkinBounds::Compute(const CSGGeomList& rGeomList, const CSGData_SkinBindingSet& rSet,
                                 const std::vector<CPalette>& rPalettes)
{
    // Only one part is posed at a time, so that the memory does not add up over geometry that many bindings
    // share.
    const std::vector<CSGVertexBuffer*> vecRigid = GetRigidVertices(rGeomList, rSet);
    const size_t nParts = rPalettes.size() + vecRigid.size();
    const auto GetPart = [&](size_t nPart) -> CVertexBufferPtr {
        return nPart < rPalettes.size()
                   ? CreatePosedVertices(*rSet.GetBinding(static_cast<int32_t>(nPart)), rPalettes[nPart])
                   : vecRigid[nPart - rPalettes.size()];
    };
    CSGBounds objBounds;
    for (size_t nPart = 0; nPart < nParts; ++nPart)
    {
        const CVertexBufferPtr spPart = GetPart(nPart);
        const CSGBounds objPart = spPart ? spPart->GetBounds() : CSGBounds();
        if (nParts == 1)
        {
            return objPart;
        }
        objBounds.m_objBox.Add(objPart.m_objBox);
    }
    CSGBoundingSphere& rSphere = objBounds.m_objSphere;
    rSphere.m_objCenter = objBounds.m_objBox.IsEmpty() ? CSGFloat3() : objBounds.m_objBox.GetCenter();
    for (size_t nPart = 0; nPart < nParts && !objBounds.m_objBox.IsEmpty(); ++nPart)
    {
        const CVertexBufferPtr spPart = GetPart(nPart);
        rSphere.m_fRadius =
            std::max(rSphere.m_fRadius, spPart ? spPart->GetRadiusAround(rSphere.m_objCenter) : -1.0f);
    }
    return objBounds;
}
