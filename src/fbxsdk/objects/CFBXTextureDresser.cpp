// Textures of models become textures of materials.
#include "fbxsdk/objects/CFBXTextureDresser.h"

#include "fbxsdk/objects/FBXTextureLayers.h"

#include <algorithm>

CFBXTextureDresser::SModel& CFBXTextureDresser::GetModel(int64_t nModel, const CFBXObject* pGeometry)
{
    const auto [it, bNew] = m_mapModels.emplace(nModel, m_vecModels.size());
    if (bNew)
    {
        m_vecModels.push_back({nModel, pGeometry, {}, {}});
    }
    return m_vecModels[it->second];
}

void CFBXTextureDresser::AddTexture(int64_t nModel, const CFBXObject* pGeometry, const CFBXObject& rTexture)
{
    GetModel(nModel, pGeometry).vecTextures.push_back(&rTexture);
}

void CFBXTextureDresser::AddMaterial(int64_t nModel, const CFBXObject* pGeometry, const CFBXObject& rMaterial)
{
    GetModel(nModel, pGeometry).vecMaterials.push_back(&rMaterial);
}

void CFBXTextureDresser::Connect()
{
    // A material that one model wears with textures and another one without keeps its name with them.
    std::ranges::stable_partition(m_vecModels,
                                  [](const SModel& rModel) { return !rModel.vecTextures.empty(); });
    for (const SModel& rModel : m_vecModels)
    {
        const std::vector<Layers> vecLayers = ReadLayers(rModel);
        for (size_t uiMaterial = 0; uiMaterial < rModel.vecMaterials.size(); ++uiMaterial)
        {
            const CFBXObject& rMaterial = *rModel.vecMaterials[uiMaterial];
            const int64_t nMaterial =
                rModel.pGeometry != nullptr ? Dress(rMaterial, vecLayers[uiMaterial]) : rMaterial.nId;
            m_rTable.AddConnection({nMaterial, rModel.nId});
        }
    }
}

// For each of the model's materials.
std::vector<CFBXTextureDresser::Layers> CFBXTextureDresser::ReadLayers(const SModel& rModel) const
{
    std::vector<Layers> vecLayers(rModel.vecMaterials.size());
    if (!rModel.vecTextures.empty() && rModel.pGeometry != nullptr)
    {
        for (const SFBXTextureUse& rUse :
             ReadFBXTextureLayers(*rModel.pGeometry->pRecord, vecLayers.size(), rModel.vecTextures.size()))
        {
            vecLayers[rUse.uiMaterial].push_back({rUse.strProperty, rModel.vecTextures[rUse.uiTexture]->nId});
        }
    }
    return vecLayers;
}

int64_t CFBXTextureDresser::Dress(const CFBXObject& rMaterial, const Layers& rLayers)
{
    std::map<Layers, int64_t>& rDressed = m_mapDressed[rMaterial.nId];
    const auto [it, bNew] = rDressed.emplace(rLayers, rMaterial.nId);
    if (!bNew)
    {
        return it->second;
    }
    if (rDressed.size() > 1)
    {
        // Materials are told apart by name further on.
        CFBXObject objCopy;
        objCopy.strClass = rMaterial.strClass;
        objCopy.strKind = rMaterial.strKind;
        objCopy.strName =
            m_rTable.KeepText(CQDString(rMaterial.strName) + "_" + std::to_string(rDressed.size()));
        objCopy.pRecord = rMaterial.pRecord;
        objCopy.objProperties.SetTemplate(&rMaterial.objProperties);
        it->second = m_rTable.AddUnnumberedObject(objCopy).nId;
    }
    for (const SLayer& rLayer : rLayers)
    {
        m_rTable.AddConnection({rLayer.nTexture, it->second, EFBXConnection::OP, {}, rLayer.strProperty});
    }
    return it->second;
}
