#include "fbxsdk/geometry/FbxGeometryConverter.h"

#include "fbxsdk/geometry/FbxMesh.h"
#include "fbxsdk/geometry/FbxNurbs.h"
#include "fbxsdk/geometry/FbxNurbsSurface.h"
#include "fbxsdk/scene/FbxNode.h"
#include "fbxsdk/scene/FbxScene.h"
#include "qdcommon/CLogChecks.h"

bool FbxGeometryConverter::TriangulateInPlace(FbxNode* pNode)
{
    QD_CHECK_ARG(pNode, false);
    for (int n = 0; n < pNode->GetNodeAttributeCount(); ++n)
    {
        if (FbxMesh* pMesh = dynamic_cast<FbxMesh*>(pNode->GetNodeAttributeByIndex(n)))
        {
            pMesh->Triangulate(m_objTriangulator);
        }
        else if (const FbxNurbs* pNurbs = dynamic_cast<const FbxNurbs*>(pNode->GetNodeAttributeByIndex(n)))
        {
            QD_CHECK_CALL(pNode->SetNodeAttribute(n, GetMesh(*pNurbs)), false);
        }
    }
    return true;
}

bool FbxGeometryConverter::ConvertNurbsSurfaceToNurbsInPlace(FbxNode* pNode)
{
    QD_CHECK_ARG(pNode, false);
    for (int n = 0; n < pNode->GetNodeAttributeCount(); ++n)
    {
        if (const auto* pSurface = dynamic_cast<const FbxNurbsSurface*>(pNode->GetNodeAttributeByIndex(n)))
        {
            QD_CHECK_CALL(pNode->SetNodeAttribute(n, GetNurbs(*pSurface)), false);
        }
    }
    return true;
}

FbxMesh* FbxGeometryConverter::GetMesh(const FbxNurbs& rNurbs)
{
    FbxGeometry*& rpMesh = m_mapConverted[&rNurbs];
    if (rpMesh == nullptr)
    {
        std::unique_ptr<FbxMesh> spMesh =
            FbxMesh::Create(rNurbs, rNurbs.GetPatch().Tessellate(m_nGridPointsLeft));
        spMesh->Triangulate(m_objTriangulator);
        rpMesh = rNurbs.GetScene()->AddObject(std::move(spMesh));
    }
    return static_cast<FbxMesh*>(rpMesh);
}

FbxNurbs* FbxGeometryConverter::GetNurbs(const FbxNurbsSurface& rSurface)
{
    FbxGeometry*& rpNurbs = m_mapConverted[&rSurface];
    if (rpNurbs == nullptr)
    {
        rpNurbs = rSurface.GetScene()->AddObject(FbxNurbs::Create(rSurface));
    }
    return static_cast<FbxNurbs*>(rpNurbs);
}
