// The file's scene is brought into the form that is converted: meshes of triangles.
#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLogChecks.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"
#include "qdsgloader_fbx/CSGLoaderFBXImpl.h"

#include <algorithm>
#include <set>
#include <utility>

namespace
{

constexpr int32_t TRIANGLE_SIZE = 3;

bool HasNormalMap(const FbxNode& rNode)
{
    for (int n = 0; n < rNode.GetMaterialCount(); ++n)
    {
        if (rNode.GetMaterial(n)->HasNormalMap())
        {
            return true;
        }
    }
    return false;
}

} // namespace

void CSGLoaderFBXImpl::PreprocessFBXHierarchy()
{
    FbxGeometryConverter objConverter(m_pFBXManager.get());
    std::set<std::pair<const FbxMesh*, bool>> setMeshes;
    std::set<FbxNodeAttribute::EType> setUnexpectedTypes;
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
            {
                // Many nodes may have it: once is enough, and once for all that want tangents.
                auto& rMesh = static_cast<FbxMesh&>(*rNode.GetNodeAttributeByIndex(n));
                if (setMeshes.emplace(&rMesh, HasNormalMap(rNode)).second)
                {
                    PreprocessFBXMesh(rNode, rMesh, objConverter, false);
                }
                break;
            }
            case FbxNodeAttribute::eNull:
            case FbxNodeAttribute::eSkeleton:
            case FbxNodeAttribute::eCamera:
            case FbxNodeAttribute::eLight:
                break;
            default:
            {
                // Rigs have hundreds of markers: one of them will do.
                const int nLevel = setUnexpectedTypes.insert(eType).second ? LOG_WARNING : LOG_DETAIL;
                Log(QD_FBX, nLevel, "Unexpected attribute type '%d'", static_cast<int>(eType));
                Log(QD_FBX, nLevel, "It is at node '%s', which stays without it", rNode.GetName());
                break;
            }
            }
        }
        for (int n = 0; n < rNode.GetMaterialCount(); ++n)
        {
            PreprocessFBXMaterial(*rNode.GetMaterial(n));
        }
    }
}

bool CSGLoaderFBXImpl::PreprocessFBXMesh(FbxNode& rNode, FbxMesh& rMesh, FbxGeometryConverter& rConverter,
                                         bool bTriangulated)
{
    const auto GenerateTangents = [pMesh = &rMesh] {
        const int32_t nLayer = 0;
        QD_ASSERT(pMesh->GenerateTangentsData(nLayer), );
        const int32_t nTangentCount = pMesh->GetElementTangentCount();
        QD_ASSERT(nTangentCount > 0, );
        Log(QD_FBX, LOG_INFO, "Generated tangent data to support NormalMap");
    };
    if (!bTriangulated && HasNormalMap(rNode) && rMesh.GetElementTangentCount() == 0)
    {
        GenerateTangents(); // without them the mesh is still worth to be seen
    }
    int32_t nOtherSize = TRIANGLE_SIZE; // of the first polygon that is no triangle
    int32_t nInvalidSize = TRIANGLE_SIZE;
    for (int32_t n = 0; n < rMesh.GetPolygonCount(); ++n)
    {
        const int32_t nPolygonSize = rMesh.GetPolygonSize(n);
        nOtherSize = nOtherSize == TRIANGLE_SIZE ? nPolygonSize : nOtherSize;
        nInvalidSize = nInvalidSize == TRIANGLE_SIZE ? std::min(nPolygonSize, TRIANGLE_SIZE) : nInvalidSize;
    }
    if (nInvalidSize < TRIANGLE_SIZE)
    {
        Log(QD_FBX, LOG_WARNING, "Invalid polygon size %d", nInvalidSize);
    }
    if (nOtherSize != TRIANGLE_SIZE && bTriangulated)
    {
        Log(QD_FBX, LOG_ERROR, "Found polygon size %d but mesh should have already been triangulated.",
            nOtherSize);
        return false;
    }
    if (nOtherSize != TRIANGLE_SIZE)
    {
        Log(QD_FBX, LOG_INFO, "Found polygon size %d. Triangulating and recursing.", nOtherSize);
        return rConverter.TriangulateInPlace(&rNode) && PreprocessFBXMesh(rNode, rMesh, rConverter, true);
    }
    return true;
}
