#include "qdsgloader_collada/CColladaMaterials.h"

#include "daedom/CDaeNumber.h"
#include "qdcommon/CInt.h"
#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaEffectConverter.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include <cmath>

namespace
{

using EParam = CSGMaterial::EParam;

// What a material says in its extra data.
struct CExtra
{
    float fMipMapBias = 0.0f;
    bool bAlphaBlend = false;
};

void LoadExtraElement(daeElement& rElement, CExtra& rExtra)
{
    const std::string_view strName = Text(rElement.getElementName());

    if (strName == "Vantor_MipMapBias")
    {
        double fBias = 0.0;
        if (!ParseDaeReal(TrimDaeSpace(rElement.getCharData()), fBias) || !std::isfinite(fBias))
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to load Vantor_MipMapBias element.");
            return;
        }
        rExtra.fMipMapBias = static_cast<float>(fBias);
    }
    else if (strName == "Vantor_AlphaBlend")
    {
        int nValue = 0;
        if (!CInt::FromString(rElement.getCharData(), nValue))
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to load Vantor_AlphaBlend element.");
            return;
        }
        rExtra.bAlphaBlend = nValue != 0;
    }
}

CExtra LoadExtra(const domMaterial& rMaterial)
{
    CExtra objExtra;
    for (const auto& rspExtra : AsSpan(rMaterial.getExtra_array()))
    {
        for (const auto& rspTechnique : AsSpan(rspExtra->getTechnique_array()))
        {
            for (const daeElementRef& rspElement : AsSpan(rspTechnique->getContents()))
            {
                LoadExtraElement(*rspElement, objExtra);
            }
        }
    }
    return objExtra;
}

void LogIgnored(const daeArray& rElements, const char* szElement, const domMaterial& rMaterial)
{
    if (rElements.getCount() > 0)
    {
        Log(QD_COLLADA, LOG_WARNING, "Ignoring %d <%s> elements in <instance_effect> in <material id=\"%s\">",
            CountOf(rElements), szElement, GetIDText(rMaterial));
    }
}

} // namespace

CQDCompactString CColladaMaterials::GetGlobalName(const domMaterial& rMaterial)
{
    return FirstText({rMaterial.getId(), rMaterial.getName()});
}

CColladaEffectWithTexturesPtr CColladaMaterials::LoadEffect(domEffect& rEffect)
{
    const auto [it, bNew] = m_mapEffects.try_emplace(&rEffect);
    if (bNew)
    {
        it->second = CColladaEffectConverter(rEffect, m_objImages).LoadEffect();
    }
    return it->second;
}

const CColladaMaterials::CMaterial& CColladaMaterials::LoadMaterial(domMaterial& rMaterial)
{
    const auto [it, bNew] = m_mapMaterials.try_emplace(&rMaterial);
    if (bNew)
    {
        it->second = ConvertMaterial(rMaterial);
    }
    return it->second;
}

CColladaMaterials::CMaterial CColladaMaterials::ConvertMaterial(domMaterial& rMaterial)
{
    const domInstance_effect* pInstance = rMaterial.getInstance_effect();
    if (pInstance == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "<material  id=\"%s\"> had NULL <instance_effect>", GetIDText(rMaterial));
        return {};
    }
    LogIgnored(pInstance->getTechnique_hint_array(), "technique_hint", rMaterial);
    LogIgnored(pInstance->getSetparam_array(), "setparam", rMaterial);
    LogIgnored(pInstance->getExtra_array(), "extra", rMaterial);
    auto* pEffect = CSGLoaderCollada::GetURIElement<domEffect>(pInstance->getUrl());
    const CColladaEffectWithTexturesPtr spEffect = pEffect != nullptr ? LoadEffect(*pEffect) : nullptr;
    const CSGMaterialPtr spMaterial = spEffect ? spEffect->GetMaterial()->CreateCopy() : nullptr;
    if (!spMaterial)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to load <instance_effect url=\"%s\"> in <material id=\"%s\">",
            pInstance->getUrl().originalStr(), GetIDText(rMaterial));
        return {};
    }
    spMaterial->SetGlobalName(GetGlobalName(rMaterial));
    const CExtra objExtra = LoadExtra(rMaterial);
    if (objExtra.bAlphaBlend)
    {
        spMaterial->SetMaterialFlags(spMaterial->GetMaterialFlags() | CSGMaterial::FLAG_ALPHA_BLEND);
    }
    if (objExtra.fMipMapBias != 0.0f)
    {
        spMaterial->SetMipMapBias(objExtra.fMipMapBias);
    }
    return {spMaterial, spEffect};
}

boost::intrusive_ptr<CSGData_Material> CColladaMaterials::GetMaterialData(
    domMaterial& rMaterial, const CColladaEffectWithTextures::CSetOfSemantic& rSets)
{
    const CMaterial& rConverted = LoadMaterial(rMaterial);
    if (!rConverted.spMaterial)
    {
        return nullptr;
    }
    const auto arrSets = rConverted.spEffect->GetTexCoordSets(rSets);
    boost::intrusive_ptr<CSGData_Material>& rspData = m_mapData[{&rMaterial, arrSets}];
    if (!rspData)
    {
        if (const CSGMaterialPtr spMaterial = rConverted.spMaterial->CreateCopy())
        {
            for (int32_t nParam = 0; nParam < CSGMaterial::PARAM_COUNT; ++nParam)
            {
                spMaterial->SetTexCoordSet(static_cast<EParam>(nParam), arrSets[static_cast<size_t>(nParam)]);
            }
            rspData = CSGData_Material::Create(spMaterial.get());
        }
    }
    return rspData;
}

void CColladaMaterials::LoadLibraryMaterials(domCOLLADA& rRoot)
{
    for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_materials_array()))
    {
        for (const auto& rspMaterial : AsSpan(rspLibrary->getMaterial_array()))
        {
            LoadMaterial(*rspMaterial);
        }
    }
}

void CColladaMaterials::LoadLibraryEffects(domCOLLADA& rRoot)
{
    for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_effects_array()))
    {
        for (const auto& rspEffect : AsSpan(rspLibrary->getEffect_array()))
        {
            LoadEffect(*rspEffect);
        }
    }
}
