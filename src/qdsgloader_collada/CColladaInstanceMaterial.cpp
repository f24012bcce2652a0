#include "qdsgloader_collada/CColladaInstanceMaterial.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include <algorithm>

boost::intrusive_ptr<CColladaInstanceMaterial> CColladaInstanceMaterial::LoadInstanceMaterial(
    domInstance_material& rInstance, CColladaMaterials& rMaterials)
{
    boost::intrusive_ptr<CColladaInstanceMaterial> spInstance = new CColladaInstanceMaterial;
    spInstance->m_strSymbol = Text(rInstance.getSymbol());
    spInstance->m_strGlobalName = spInstance->m_strLocalName = spInstance->m_strSymbol;
    auto* pMaterial = CSGLoaderCollada::GetURIElement<domMaterial>(rInstance.getTarget());
    if (pMaterial != nullptr)
    {
        spInstance->m_strGlobalName =
            FirstText({pMaterial->getId(), pMaterial->getName(), rInstance.getSymbol()});
        spInstance->m_strLocalName =
            FirstText({pMaterial->getName(), pMaterial->getId(), rInstance.getSymbol()});
        spInstance->m_spData = rMaterials.GetMaterialData(*pMaterial, GetTexCoordSets(rInstance));
    }
    if (!spInstance->m_spData)
    {
        Log(QD_COLLADA, LOG_ERROR,
            "Failed to get <material> referenced by <instance_material> in <bind_material>");
    }
    return spInstance;
}

CColladaEffectWithTextures::CSetOfSemantic CColladaInstanceMaterial::GetTexCoordSets(
    const domInstance_material& rInstance)
{
    CColladaEffectWithTextures::CSetOfSemantic mapSets;
    int32_t nIndex = 0;
    for (const auto& rspInput : AsSpan(rInstance.getBind_vertex_input_array()))
    {
        const char* szInput = Text(rspInput->getInput_semantic());
        if (std::string_view(szInput) == "TEXCOORD")
        {
            mapSets.try_emplace(Text(rspInput->getSemantic()),
                                std::max(ToInt32(rspInput->getInput_set()), 0));
        }
        else
        {
            Log(QD_COLLADA, LOG_ERROR,
                "Got unsupported input_semantic \"%s\" in <bind_vertex_input> at index %d of "
                "<instance_material>",
                szInput, nIndex);
        }
        ++nIndex;
    }
    for (const auto& rspBind : AsSpan(rInstance.getBind_array()))
    {
        mapSets.try_emplace(Text(rspBind->getSemantic()), 0);
    }
    return mapSets;
}
