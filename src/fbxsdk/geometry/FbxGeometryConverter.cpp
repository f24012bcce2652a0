#include "fbxsdk/geometry/FbxGeometryConverter.h"

#include "fbxsdk/geometry/FbxMesh.h"
#include "fbxsdk/geometry/FbxNurbs.h"
#include "fbxsdk/geometry/FbxNurbsSurface.h"
#include "fbxsdk/scene/FbxNode.h"
#include "fbxsdk/scene/FbxScene.h"
#include "qdcommon/CLogChecks.h"

bool FbxGeometryConverter::TriangulateInPlace(FbxNode* pNode) const
{
    QD_CHECK_ARG(pNode, false);
    for (int n = 0; n < pNode->GetNodeAttributeCount(); ++n)
    {
        if (FbxMesh* pMesh = dynamic_cast<FbxMesh*>(pNode->GetNodeAttributeByIndex(n)))
        {
            pMesh->Triangulate();
        }
        else if (const FbxNurbs* pNurbs = dynamic_cast<const FbxNurbs*>(pNode->GetNodeAttributeByIndex(n)))
        {
            std::unique_ptr<FbxMesh> spMesh = FbxMesh::Create(*pNurbs, pNurbs->GetPatch().Tessellate());
            spMesh->Triangulate();
            QD_CHECK_CALL(pNode->SetNodeAttribute(n, pNode->GetScene()->AddObject(std::move(spMesh))), false);
        }
    }
    return true;
}

bool FbxGeometryConverter::ConvertNurbsSurfaceToNurbsInPlace(FbxNode* pNode) const
{
    QD_CHECK_ARG(pNode, false);
    for (int n = 0; n < pNode->GetNodeAttributeCount(); ++n)
    {
        if (const auto* pSurface = dynamic_cast<const FbxNurbsSurface*>(pNode->GetNodeAttributeByIndex(n)))
        {
            FbxNurbs* pNurbs = pNode->GetScene()->AddObject(FbxNurbs::Create(*pSurface));
            QD_CHECK_CALL(pNode->SetNodeAttribute(n, pNurbs), false);
        }
    }
    return true;
}
