// Materials of nodes.
#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLogChecks.h"
#include "qdsgloader_fbx/CFBXMaterials.h"
#include "qdsgloader_fbx/CSGLoaderFBXImpl.h"

void CSGLoaderFBXImpl::PreprocessFBXMaterial(const FbxSurfaceMaterial& rMaterial)
{
    if (!m_spMaterials)
    {
        m_spMaterials = std::make_unique<CFBXMaterials>(m_spTextureLoader, m_spTexturePool, m_strFilename);
    }
    m_spMaterials->PreprocessFBXMaterial(rMaterial);
}

bool CSGLoaderFBXImpl::CreateMaterialData(CSGNode& rNode, const FbxSurfaceMaterial& rMaterial,
                                          const FbxMesh& rMesh, const CFBXExtraAttributes& rAttributes)
{
    // Without its material the node is still worth to be seen.
    const auto spData =
        m_spMaterials ? m_spMaterials->CreateMaterialData(rMaterial, rMesh, rAttributes) : nullptr;
    if (spData)
    {
        QD_CHECK_CALL(rNode.AddData(spData.get()), false);
    }
    return true;
}
