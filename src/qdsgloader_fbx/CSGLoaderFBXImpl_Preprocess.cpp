// The file's scene is brought into the form that is converted: meshes of triangles.
#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLogChecks.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"
#include "qdsgloader_fbx/CSGLoaderFBXImpl.h"

#include <algorithm>

namespace
{

constexpr int32_t TRIANGLE_SIZE = 3;

bool HasNormalMap(const FbxNode& rNode)
{
    for (int n = 0; n < rNode.GetMaterialCount(); ++n)
    {
        if (!rNode.GetMaterial(n)->GetSrcObjects<FbxTexture>(FbxSurfaceMaterial::sNormalMap).empty())
        {
            return true;
        }
    }
    return false;
}

bool GenerateTangents(FbxMesh* pMesh)
{
    const int32_t nLayer = 0;
    QD_ASSERT(pMesh->GenerateTangentsData(nLayer), false);
    const int32_t nTangentCount = pMesh->GetElementTangentCount();
    QD_ASSERT(nTangentCount > 0, false);
    Log(QD_FBX, LOG_INFO, "Generated tangent data to support NormalMap");
    return true;
}

// Old and careless exporters name materials that are not there; the surface is worth to be seen nonetheless.
void MoveMissingMaterials(const FbxNode& rNode, FbxMesh& rMesh)
{
    const int32_t nMissing = rMesh.MoveMissingMaterials(rNode.GetMaterialCount());
    if (nMissing > 0 && rNode.GetMaterialCount() > 0)
    {
        Log(QD_FBX, LOG_WARNING, "%d polygons of node '%s' have a material that is not there.", nMissing,
            rNode.GetName());
    }
}

} // namespace

void CSGLoaderFBXImpl::PreprocessFBXHierarchy()
{
    const FbxGeometryConverter objConverter(m_pFBXManager.get());
    for (FbxNode* pNode : m_vecHierarchy)
    {
        FbxNode& rNode = *pNode;
        for (int n = 0; n < rNode.GetNodeAttributeCount(); ++n)
        {
            const FbxNodeAttribute::EType eType = rNode.GetNodeAttributeByIndex(n)->GetAttributeType();
            switch (eType)
            {
            case FbxNodeAttribute::eNurbsSurface:
                Log(QD_FBX, LOG_INFO, "Converting nurbs surface to nurb for node '%s'", rNode.GetName());
                objConverter.ConvertNurbsSurfaceToNurbsInPlace(&rNode);
                [[fallthrough]];
            case FbxNodeAttribute::eNurbs:
                Log(QD_FBX, LOG_INFO, "Triangulating nurb for node '%s'", rNode.GetName());
                objConverter.TriangulateInPlace(&rNode);
                break;
            case FbxNodeAttribute::eMesh:
                PreprocessFBXMesh(rNode, static_cast<FbxMesh&>(*rNode.GetNodeAttributeByIndex(n)), false);
                MoveMissingMaterials(rNode, static_cast<FbxMesh&>(*rNode.GetNodeAttributeByIndex(n)));
                break;
            case FbxNodeAttribute::eNull:
            case FbxNodeAttribute::eSkeleton:
            case FbxNodeAttribute::eCamera:
            case FbxNodeAttribute::eLight:
                break;
            default:
                Log(QD_FBX, LOG_WARNING, "Unexpected attribute type '%d'", static_cast<int>(eType));
                break;
            }
        }
        for (int n = 0; n < rNode.GetMaterialCount(); ++n)
        {
            PreprocessFBXMaterial(*rNode.GetMaterial(n));
        }
    }
}

bool CSGLoaderFBXImpl::PreprocessFBXMesh(FbxNode& rNode, FbxMesh& rMesh, bool bTriangulated)
{
    if (HasNormalMap(rNode) && rMesh.GetElementTangentCount() == 0)
    {
        GenerateTangents(&rMesh); // without them the mesh is still worth to be seen
    }
    for (int32_t n = 0; n < rMesh.GetPolygonCount(); ++n)
    {
        const int32_t nPolygonSize = rMesh.GetPolygonSize(n);
        if (nPolygonSize == TRIANGLE_SIZE)
        {
            continue;
        }
        if (bTriangulated)
        {
            Log(QD_FBX, LOG_ERROR, "Found polygon size %d but mesh should have already been triangulated.",
                nPolygonSize);
            return false;
        }
        if (nPolygonSize < TRIANGLE_SIZE)
        {
            Log(QD_FBX, LOG_WARNING, "Invalid polygon size %d", nPolygonSize);
        }
        Log(QD_FBX, LOG_INFO, "Found polygon size %d. Triangulating and recursing.", nPolygonSize);
        return FbxGeometryConverter(m_pFBXManager.get()).TriangulateInPlace(&rNode) &&
               PreprocessFBXMesh(rNode, rMesh, true);
    }
    return true;
}
