// What nodes carry.
#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/geometry/CSGData_GeomBounds.h"
#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdsgloader_fbx/CFBXCameraConverter.h"
#include "qdsgloader_fbx/CFBXChildNode.h"
#include "qdsgloader_fbx/CFBXExtraAttributes.h"
#include "qdsgloader_fbx/CFBXGeometryCache.h"
#include "qdsgloader_fbx/CFBXLightConverter.h"
#include "qdsgloader_fbx/CFBXLocalTransform.h"
#include "qdsgloader_fbx/CFBXSkinBuilder.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"
#include "qdsgloader_fbx/CSGLoaderFBXImpl.h"

namespace
{

// What stands for the material's name where polygons have none.
constexpr const char* NO_MATERIAL_NAME = "default";

bool AddGeometry(CSGNode& rNode, const boost::intrusive_ptr<CSGGeomBinding>& spBinding)
{
    const auto spList = CSGGeomList::Create();
    if (!spList || !spList->AddBinding(spBinding))
    {
        return false;
    }
    const auto spGeometry = CSGData_Geometry::Create(spList);
    return spGeometry && rNode.AddData(spGeometry.get()) && CSGData_GeomBounds::GetOrCreateFromNode(&rNode);
}

} // namespace

bool CSGLoaderFBXImpl::ProcessFBXMeshes()
{
    CFBXGeometryCache objGeometryCache;
    CFBXSkinBuilder objSkinBuilder(m_mapNodes);
    std::unordered_map<const FbxNode*, CFBXExtraAttributes> mapAttributes;
    for (const FbxNode* pFBXNode : m_vecHierarchy)
    {
        CFBXExtraAttributes& rAttributes = mapAttributes[pFBXNode];
        if (pFBXNode->GetParent() != nullptr)
        {
            rAttributes = mapAttributes[pFBXNode->GetParent()];
        }
        rAttributes.CheckFBXObjectForExtraAttributes(*pFBXNode);
        CSGNode& rNode = *m_mapNodes.at(pFBXNode);
        QD_CHECK_CALL(rAttributes.ApplyToRenderState(rNode), false);
        for (int n = 0; n < pFBXNode->GetNodeAttributeCount(); ++n)
        {
            const FbxNodeAttribute* pAttribute = pFBXNode->GetNodeAttributeByIndex(n);
            if (const auto* pMesh = dynamic_cast<const FbxMesh*>(pAttribute))
            {
                QD_CHECK_CALL(
                    ProcessFBXMesh(rNode, *pFBXNode, *pMesh, rAttributes, objGeometryCache, objSkinBuilder),
                    false);
            }
            else if (const auto* pLight = dynamic_cast<const FbxLight*>(pAttribute))
            {
                QD_CHECK_CALL(CFBXLightConverter::AddToNode(rNode, *pFBXNode, *pLight), false);
            }
            else if (const auto* pCamera = dynamic_cast<const FbxCamera*>(pAttribute))
            {
                QD_CHECK_CALL(CFBXCameraConverter::AddToNode(rNode, *pFBXNode, *pCamera), false);
            }
        }
    }
    return true;
}

bool CSGLoaderFBXImpl::ProcessFBXMesh(CSGNode& rNode, const FbxNode& rFBXNode, const FbxMesh& rMesh,
                                      const CFBXExtraAttributes& rAttributes,
                                      CFBXGeometryCache& rGeometryCache, CFBXSkinBuilder& rSkinBuilder)
{
    const CFBXGeometryCache::CPieceList* pPieces = rGeometryCache.GetPieces(rFBXNode, rMesh);
    for (size_t n = 0; pPieces != nullptr && n < pPieces->size(); ++n)
    {
        const CFBXGeometryBuilder::CPiece& rPiece = (*pPieces)[n];
        const FbxSurfaceMaterial* pMaterial =
            n + 1 < pPieces->size() ? rFBXNode.GetMaterial(static_cast<int>(n)) : nullptr;
        if (!rPiece.m_spBinding)
        {
            continue;
        }
        CSGNode* pChild =
            CFBXChildNode::Add(rNode, pMaterial != nullptr ? pMaterial->GetName() : NO_MATERIAL_NAME,
                               CFBXLocalTransform::ToTransform3(rFBXNode.GetGeometricTransform()));
        QD_CHECK_CREATED(pChild, false);
        QD_CHECK_CALL(AddGeometry(*pChild, rPiece.m_spBinding), false);
        QD_CHECK_CALL(rSkinBuilder.AddSkin(*pChild, rFBXNode, rMesh, rPiece), false);
        QD_CHECK_CALL(rAttributes.ApplyToRenderState(*pChild), false);
        if (pMaterial != nullptr)
        {
            QD_CHECK_CALL(CreateMaterialData(*pChild, *pMaterial, rMesh, rAttributes), false);
        }
    }
    return true;
}
