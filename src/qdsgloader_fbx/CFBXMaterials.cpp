#include "qdsgloader_fbx/CFBXMaterials.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLogChecks.h"
#include "qdsgloader_fbx/CFBXExtraAttributes.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <bit>

namespace
{

using EParam = CSGMaterial::EParam;

// The number of a mesh's texture coordinates; -1 for a slot that reads none.
int32_t FindTexCoordSet(const CFBXMaterialConverter::CResult& rMaterial, EParam eParam, const FbxMesh& rMesh)
{
    if (!rMaterial.spMaterial->HasSamplerValue(eParam))
    {
        return -1;
    }
    const std::string_view strName = rMaterial.arrUVSets[static_cast<size_t>(eParam)];
    const int32_t nSet = rMesh.FindElementUV(strName);
    if (nSet < 0 && !strName.empty() && strName != "default")
    {
        Log(QD_FBX, LOG_DETAIL,
            "Material '%s' asks for texture coordinates '%s', which mesh '%s' does not have",
            rMaterial.spMaterial->GetGlobalName(), CQDString(strName), rMesh.GetName());
    }
    return std::max(nSet, 0);
}

} // namespace

void CFBXMaterials::PreprocessFBXMaterial(const FbxSurfaceMaterial& rMaterial)
{
    const auto [it, bNew] = m_mapMaterials.try_emplace(&rMaterial);
    if (!bNew)
    {
        Log(QD_FBX, LOG_DETAIL, "Material '%s' already in cache.", rMaterial.GetName());
        return;
    }
    it->second = CFBXMaterialConverter(rMaterial, m_objImages).PreprocessFBXMaterial();
}

boost::intrusive_ptr<CSGData_Material> CFBXMaterials::CreateMaterialData(
    const FbxSurfaceMaterial& rMaterial, const FbxMesh& rMesh, const CFBXExtraAttributes& rAttributes)
{
    const auto it = m_mapMaterials.find(&rMaterial);
    if (it == m_mapMaterials.end() || !it->second.spMaterial)
    {
        Log(QD_FBX, LOG_ERROR, "Didn't find material '%s'", rMaterial.GetName());
        return nullptr;
    }
    CTexCoordSets arrSets;
    for (int32_t nParam = 0; nParam < CSGMaterial::PARAM_COUNT; ++nParam)
    {
        arrSets[static_cast<size_t>(nParam)] =
            FindTexCoordSet(it->second, static_cast<EParam>(nParam), rMesh);
    }
    const std::optional<bool> bAlphaBlend = rAttributes.GetAlphaBlend();
    const std::optional<float> fMipMapBias = rAttributes.GetMipMapBias();
    const auto uiMipMapBias =
        fMipMapBias ? std::optional(std::bit_cast<uint32_t>(*fMipMapBias)) : std::nullopt;
    boost::intrusive_ptr<CSGData_Material>& rspData =
        m_mapData[{it->second.spMaterial.get(), arrSets, bAlphaBlend, uiMipMapBias}];
    if (rspData)
    {
        return rspData;
    }
    const CSGMaterialPtr spMaterial = it->second.spMaterial->CreateCopy();
    QD_CHECK_CREATED(spMaterial, nullptr);
    for (int32_t nParam = 0; nParam < CSGMaterial::PARAM_COUNT; ++nParam)
    {
        spMaterial->SetTexCoordSet(static_cast<EParam>(nParam), arrSets[static_cast<size_t>(nParam)]);
    }
    if (bAlphaBlend)
    {
        const int32_t nOthers = spMaterial->GetMaterialFlags() & ~CSGMaterial::FLAG_ALPHA_BLEND;
        spMaterial->SetMaterialFlags(nOthers | (*bAlphaBlend ? CSGMaterial::FLAG_ALPHA_BLEND : 0));
    }
    if (fMipMapBias)
    {
        spMaterial->SetMipMapBias(*fMipMapBias);
    }
    rspData = CSGData_Material::Create(spMaterial.get());
    return rspData;
}
