#include "qdsgloader_collada/CColladaEffectConverter.h"

#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/material/CSGParamTmpl.h"
#include "qdsgloader_collada/CColladaConverter.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <1.4/dom/domProfile_COMMON.h>

struct CColladaEffectConverter::CShading
{
    const char* szName = nullptr;
    const domCommon_color_or_texture_type* pEmission = nullptr;
    const domCommon_color_or_texture_type* pAmbient = nullptr;
    const domCommon_color_or_texture_type* pDiffuse = nullptr;
    const domCommon_color_or_texture_type* pSpecular = nullptr;
    const domCommon_float_or_param_type* pShininess = nullptr;
    const domCommon_transparent_type* pTransparent = nullptr;
    const domCommon_float_or_param_type* pTransparency = nullptr;

    // <constant>, <lambert>, <phong> and <blinn> have ever more children in common.
    template <class ELEMENT>
    CShading(const char* szElement, const ELEMENT& rElement)
        : szName(szElement),
          pEmission(rElement.getEmission()),
          pTransparent(rElement.getTransparent()),
          pTransparency(rElement.getTransparency())
    {
        if constexpr (requires { rElement.getDiffuse(); })
        {
            pAmbient = rElement.getAmbient();
            pDiffuse = rElement.getDiffuse();
        }
        if constexpr (requires { rElement.getSpecular(); })
        {
            pSpecular = rElement.getSpecular();
            pShininess = rElement.getShininess();
        }
    }
    CShading() = default;

    static CShading Find(const domProfile_COMMON::domTechnique& rTechnique)
    {
        if (const auto* pConstant = rTechnique.getConstant().cast())
        {
            return {"constant", *pConstant};
        }
        if (const auto* pLambert = rTechnique.getLambert().cast())
        {
            return {"lambert", *pLambert};
        }
        if (const auto* pPhong = rTechnique.getPhong().cast())
        {
            return {"phong", *pPhong};
        }
        if (const auto* pBlinn = rTechnique.getBlinn().cast())
        {
            return {"blinn", *pBlinn};
        }
        return {};
    }
};

namespace
{

daeElement* FindChild(daeElement& rElement, std::string_view strName)
{
    const daeElementRefArray arrChildren = rElement.getChildren();
    for (const daeElementRef& rspChild : AsSpan(arrChildren))
    {
        if (rspChild->getElementName() == strName)
        {
            return rspChild;
        }
    }
    return nullptr;
}

// The first <bump> with a <texture> among the extra data.
daeElement* FindBump(const domExtra_Array& rExtras)
{
    for (const auto& rspExtra : AsSpan(rExtras))
    {
        for (const auto& rspTechnique : AsSpan(rspExtra->getTechnique_array()))
        {
            daeElement* pBump = FindChild(*rspTechnique, "bump");
            if (pBump != nullptr && FindChild(*pBump, "texture") != nullptr)
            {
                return pBump;
            }
        }
    }
    return nullptr;
}

int32_t GetTransparentMode(domFx_opaque_enum eOpaque)
{
    switch (eOpaque)
    {
    case FX_OPAQUE_ENUM_RGB_ZERO:
        return CSGMaterial::TRANSPARENT_RGB_ZERO;
    case FX_OPAQUE_ENUM_A_ONE:
        return CSGMaterial::TRANSPARENT_A_ONE;
    default:
        Log(QD_COLLADA, LOG_ERROR, "Unknown opaque enum %d, defaulting to ALPHA_ONE", eOpaque);
        return CSGMaterial::TRANSPARENT_A_ONE;
    }
}

} // namespace

CColladaEffectConverter::CColladaEffectConverter(domEffect& rEffect, CColladaImages& rImages)
    : m_rEffect(rEffect),
      m_szID(GetIDText(rEffect)),
      m_rImages(rImages),
      m_objParams(rImages, nullptr)
{}

CColladaEffectWithTexturesPtr CColladaEffectConverter::LoadEffect()
{
    m_spResult = new CColladaEffectWithTextures;
    m_objParams.AddNewParamsFXCommon(m_rEffect);
    for (const auto& rspProfile : AsSpan(m_rEffect.getFx_profile_abstract_array()))
    {
        if (rspProfile->typeID() != domProfile_COMMON::ID())
        {
            Log(QD_COLLADA, LOG_WARNING,
                "Ignoring profile element of unsupported type <%s> in <effect id=\"%s\">",
                rspProfile->getElementName(), m_szID);
        }
        else if (m_spResult->GetMaterial() != nullptr)
        {
            Log(QD_COLLADA, LOG_WARNING, "Ignoring a second <profile_COMMON> in <effect id=\"%s\">", m_szID);
        }
        else if (!LoadProfileCommon(static_cast<domProfile_COMMON&>(*rspProfile)))
        {
            return nullptr;
        }
    }
    if (m_spResult->GetMaterial() == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Had no <profile_COMMON> in <effect id=\"%s\">", m_szID);
        return nullptr;
    }
    return m_spResult;
}

bool CColladaEffectConverter::LoadProfileCommon(domProfile_COMMON& rProfile)
{
    CColladaNewParams objParams(m_rImages, &m_objParams);
    objParams.AddNewParamsProfileCommon(rProfile);
    return m_spResult->SetEffect(CSGEffect::Create(objParams.GetParamSet(), m_szID)) &&
           LoadProfileCommonTechnique(rProfile, objParams);
}

bool CColladaEffectConverter::LoadProfileCommonTechnique(domProfile_COMMON& rProfile,
                                                         const CColladaNewParams& rParams)
{
    const domProfile_COMMON::domTechnique* pTechnique = rProfile.getTechnique();
    const CShading objShading = pTechnique != nullptr ? CShading::Find(*pTechnique) : CShading();
    if (objShading.szName == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR,
            "Didn't know how to load <technique> in <profile_COMMON> in <effect id=\"%s\">", m_szID);
        return false;
    }
    m_szShading = objShading.szName;
    Log(QD_COLLADA, LOG_DETAIL, "Loading a <profile_COMMON><technique><%s> element.", m_szShading);
    const auto Load = [&](const auto* pElement, CSGMaterial::EParam eParam) {
        return LoadColorOrTexture(pElement, eParam, rParams);
    };
    const CSGParamPtr spEmission = Load(objShading.pEmission, CSGMaterial::PARAM_EMISSION);
    const CSGParamPtr spAmbient = Load(objShading.pAmbient, CSGMaterial::PARAM_AMBIENT);
    const CSGParamPtr spDiffuse = Load(objShading.pDiffuse, CSGMaterial::PARAM_DIFFUSE);
    const CSGParamPtr spSpecular = Load(objShading.pSpecular, CSGMaterial::PARAM_SPECULAR);
    const CSGParamPtr spShininess = LoadFloat(objShading.pShininess, CSGMaterial::PARAM_SHININESS, rParams);
    const CSGParamPtr spTransparent = LoadTransparent(objShading.pTransparent, rParams);
    const CSGParamPtr spTransparency =
        LoadFloat(objShading.pTransparency, CSGMaterial::PARAM_TRANSPARENCY, rParams);
    const CSGParamPtr spNormalMap = LoadNormalMap(rProfile, rParams);
    const CSGMaterialPtr spMaterial =
        CSGMaterial::Create(spEmission, spAmbient, spDiffuse, spSpecular, spNormalMap, spShininess,
                            spTransparent, spTransparency, m_szID, m_eTransparentMode, m_nMaterialFlags);
    if (!spMaterial)
    {
        return false;
    }
    // GetTexCoordSets knows the samplers by the parameters of this material.
    const CColladaEffectWithTexturesPtr& spEffectWithTextures = m_spResult;
    QD_ASSERT(spEffectWithTextures->SetMaterial(spMaterial), false);
    return true;
}

void CColladaEffectConverter::LogFailedSlot(CSGMaterial::EParam eParam) const
{
    Log(QD_COLLADA, LOG_ERROR,
        "Failed to load <%s> for <%s> in <technique> in <profile_COMMON> in <effect id=\"%s\">",
        CSGMaterial::GetParamName(eParam), m_szShading, m_szID);
}

template <class ELEMENT>
CSGParamPtr CColladaEffectConverter::LoadColorOrTexture(const ELEMENT* pElement, CSGMaterial::EParam eParam,
                                                        const CColladaNewParams& rParams)
{
    if (pElement == nullptr)
    {
        return nullptr;
    }
    const char* szName = CSGMaterial::GetParamName(eParam);
    CSGFloat4 vColor;
    bool bColor = false;
    if (auto* pColor = pElement->getColor().cast())
    {
        bColor = CColladaConverter::GetColor(AsSpan(pColor->getValue()), vColor);
    }
    else if (const auto* pParam = pElement->getParam().cast())
    {
        bColor = rParams.FindColor(Text(pParam->getRef()), vColor);
    }
    else if (const auto* pTexture = pElement->getTexture().cast())
    {
        const CSGParamPtr spParam =
            LoadTexture(Text(pTexture->getTexture()), Text(pTexture->getTexcoord()), eParam, rParams);
        if (spParam)
        {
            return spParam;
        }
    }
    if (!bColor)
    {
        LogFailedSlot(eParam);
        return nullptr;
    }
    return CSGParamTmpl<CSGFloat4>::Create(szName, vColor);
}

CSGParamPtr CColladaEffectConverter::LoadTexture(const char* szSampler, const char* szTexCoord,
                                                 CSGMaterial::EParam eParam, const CColladaNewParams& rParams)
{
    const CSGSamplerPtr spSampler = rParams.FindSampler(szSampler, *m_rEffect.getDAE());
    if (!spSampler)
    {
        return nullptr;
    }
    const CSGParamPtr spParam =
        CSGParamTmpl<CSGSamplerPtr>::Create(CSGMaterial::GetParamName(eParam), spSampler);
    return spParam && m_spResult->AddSamplerParam(szTexCoord, spParam) ? spParam : nullptr;
}

CSGParamPtr CColladaEffectConverter::LoadTransparent(const domCommon_transparent_type* pElement,
                                                     const CColladaNewParams& rParams)
{
    if (pElement == nullptr)
    {
        return nullptr;
    }
    m_eTransparentMode = GetTransparentMode(pElement->getOpaque());
    if (pElement->getTexture() != nullptr)
    {
        // The slot takes no texture. Exporters name the one with the colours, whose alpha then does it.
        Log(QD_COLLADA, LOG_WARNING, "Ignoring <texture> in <transparent> in <effect id=\"%s\">", m_szID);
        m_nMaterialFlags |= CSGMaterial::FLAG_ALPHA_BLEND;
        return nullptr;
    }
    return LoadColorOrTexture(pElement, CSGMaterial::PARAM_TRANSPARENT, rParams);
}

CSGParamPtr CColladaEffectConverter::LoadFloat(const domCommon_float_or_param_type* pElement,
                                               CSGMaterial::EParam eParam, const CColladaNewParams& rParams)
{
    if (pElement == nullptr)
    {
        return nullptr;
    }
    const char* szName = CSGMaterial::GetParamName(eParam);
    if (const auto* pFloat = pElement->getFloat().cast())
    {
        return CSGParamTmpl<float>::Create(szName, static_cast<float>(pFloat->getValue()));
    }
    if (const auto* pParam = pElement->getParam().cast())
    {
        float fValue = 0.0f;
        if (rParams.FindFloat(Text(pParam->getRef()), fValue))
        {
            return CSGParamTmpl<float>::Create(szName, fValue);
        }
        LogFailedSlot(eParam);
        return nullptr;
    }
    // A texture, which COLLADA does not allow here.
    Log(QD_COLLADA, LOG_WARNING, "Ignoring <%s> without a number in <effect id=\"%s\">", szName, m_szID);
    return nullptr;
}

CSGParamPtr CColladaEffectConverter::LoadNormalMap(domProfile_COMMON& rProfile,
                                                   const CColladaNewParams& rParams)
{
    daeElement* pBump = FindBump(rProfile.getTechnique()->getExtra_array());
    if (pBump == nullptr)
    {
        pBump = FindBump(rProfile.getExtra_array());
    }
    if (pBump == nullptr)
    {
        pBump = FindBump(m_rEffect.getExtra_array());
    }
    if (pBump == nullptr)
    {
        return nullptr;
    }
    if (pBump->getAttribute("bumptype") != "NORMALMAP")
    {
        Log(QD_COLLADA, LOG_WARNING,
            "Ignoring <bump> that is not of the type \"NORMALMAP\" in <effect id=\"%s\">", m_szID);
        return nullptr;
    }
    daeElement& rTexture = *FindChild(*pBump, "texture");
    CSGParamPtr spParam =
        LoadTexture(rTexture.getAttribute("texture").c_str(), rTexture.getAttribute("texcoord").c_str(),
                    CSGMaterial::PARAM_NORMALMAP, rParams);
    if (!spParam)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to load <bump> in <effect id=\"%s\">", m_szID);
    }
    return spParam;
}
