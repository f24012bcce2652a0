#include "qdscenegraph/material/CSGMaterial.h"

#include "qdscenegraph/material/CSGParamTmpl.h"

#include <algorithm>

namespace
{

struct CSlotInfo
{
    const char* m_szName;
    const char* m_szSamplerName;
    bool m_bFloat; // holds a float, else a colour
    float m_fDefault;
};

constexpr CSGFloat4 OPAQUE_BLACK{0.0f, 0.0f, 0.0f, 1.0f};

constexpr CSlotInfo SLOTS[CSGMaterial::PARAM_COUNT] = {
    {"emission", "emissionSampler", false, 0.0f},        {"ambient", "ambientSampler", false, 0.0f},
    {"diffuse", "diffuseSampler", false, 0.0f},          {"specular", "specularSampler", false, 0.0f},
    {"shininess", "shininessSampler", true, 0.0f},       {"transparent", "transparentSampler", false, 0.0f},
    {"transparency", "transparencySampler", true, 1.0f}, {"normalMap", "normalMapSampler", false, 0.0f},
};

bool IsSlot(CSGMaterial::EParam eParam) { return eParam >= 0 && eParam < CSGMaterial::PARAM_COUNT; }

CSGParamPtr CreateDefault(CSGMaterial::EParam eParam)
{
    const CSlotInfo& rSlot = SLOTS[eParam];
    if (rSlot.m_bFloat)
    {
        return CSGParamTmpl<float>::Create(rSlot.m_szName, rSlot.m_fDefault);
    }
    return CSGParamTmpl<CSGFloat4>::Create(rSlot.m_szName, OPAQUE_BLACK);
}

} // namespace

CSGMaterialPtr CSGMaterial::Create(const CSGParamPtr& spObjEmission, const CSGParamPtr& spObjAmbient,
                                   const CSGParamPtr& spObjDiffuse, const CSGParamPtr& spObjSpecular,
                                   const CSGParamPtr& spObjNormalMap, const CSGParamPtr& spObjShininess,
                                   const CSGParamPtr& spObjTransparent, const CSGParamPtr& spObjTransparency,
                                   const CQDCompactString& rGlobalName, int32_t eTransparentMode,
                                   int32_t nMaterialFlags)
{
    struct CArgument
    {
        EParam m_eParam;
        CSGParamPtr m_spParam;
        const char* m_szName;
        const char* m_szCall;
    };
    CArgument arrArguments[] = {
        {PARAM_EMISSION, spObjEmission, "spObjEmission",
         "spObjMaterial->SetParam(PARAM_EMISSION, spObjEmission)"},
        {PARAM_AMBIENT, spObjAmbient, "spObjAmbient", "spObjMaterial->SetParam(PARAM_AMBIENT, spObjAmbient)"},
        {PARAM_DIFFUSE, spObjDiffuse, "spObjDiffuse", "spObjMaterial->SetParam(PARAM_DIFFUSE, spObjDiffuse)"},
        {PARAM_SPECULAR, spObjSpecular, "spObjSpecular",
         "spObjMaterial->SetParam(PARAM_SPECULAR, spObjSpecular)"},
        {PARAM_NORMALMAP, spObjNormalMap, "spObjNormalMap",
         "spObjMaterial->SetParam(PARAM_NORMALMAP, spObjNormalMap)"},
        {PARAM_SHININESS, spObjShininess, "spObjShininess",
         "spObjMaterial->SetParam(PARAM_SHININESS, spObjShininess)"},
        {PARAM_TRANSPARENT, spObjTransparent, "spObjTransparent",
         "spObjMaterial->SetParam(PARAM_TRANSPARENT, spObjTransparent)"},
        {PARAM_TRANSPARENCY, spObjTransparency, "spObjTransparency",
         "spObjMaterial->SetParam(PARAM_TRANSPARENCY, spObjTransparency)"},
    };
    for (CArgument& rArgument : arrArguments)
    {
        if (!rArgument.m_spParam)
        {
            rArgument.m_spParam = CreateDefault(rArgument.m_eParam);
        }
        QD_CHECK_OR_RETURN(rArgument.m_spParam, "Creation of %s failed", rArgument.m_szName, nullptr);
    }
    CSGMaterialPtr spObjMaterial = CSGMem::Construct<CSGMaterial>();
    QD_CHECK_CREATED(spObjMaterial, nullptr);
    spObjMaterial->m_strGlobalName = rGlobalName;
    spObjMaterial->m_eTransparentMode = eTransparentMode;
    spObjMaterial->m_nMaterialFlags = nMaterialFlags;
    for (const CArgument& rArgument : arrArguments)
    {
        QD_CHECK_OR_RETURN(spObjMaterial->SetParam(rArgument.m_eParam, rArgument.m_spParam), "Call %s failed",
                           rArgument.m_szCall, nullptr);
    }
    return spObjMaterial;
}

CSGMaterialPtr CSGMaterial::CreateCopy() const
{
    CSGMaterialPtr spCopy = CSGMem::Construct<CSGMaterial>();
    if (spCopy)
    {
        spCopy->m_strGlobalName = m_strGlobalName;
        spCopy->m_arrParams = m_arrParams;
        spCopy->m_arrTexCoordSets = m_arrTexCoordSets;
        spCopy->m_eTransparentMode = m_eTransparentMode;
        spCopy->m_nMaterialFlags = m_nMaterialFlags;
    }
    return spCopy;
}

CSGParam* CSGMaterial::GetParam(EParam eParam) const
{
    return IsSlot(eParam) ? m_arrParams[static_cast<size_t>(eParam)].get() : nullptr;
}

bool CSGMaterial::HasType(EParam eParam, CSGParam::EType eType) const
{
    const CSGParam* pParam = GetParam(eParam);
    return pParam != nullptr && pParam->GetType() == eType;
}

bool CSGMaterial::SetParam(EParam eParam, const CSGParamPtr& spObjParam)
{
    QD_CHECK_ARG(spObjParam, false);
    switch (eParam)
    {
    case PARAM_EMISSION:
    case PARAM_AMBIENT:
    case PARAM_DIFFUSE:
    case PARAM_SPECULAR:
    case PARAM_NORMALMAP:
        QD_CHECK(spObjParam->GetType() == CSGParam::PARAM_TYPE_FLOAT4 ||
                     spObjParam->GetType() == CSGParam::PARAM_TYPE_SAMPLER,
                 false);
        break;
    case PARAM_TRANSPARENT:
        QD_CHECK(spObjParam->GetType() == CSGParam::PARAM_TYPE_FLOAT4, false);
        break;
    case PARAM_SHININESS:
    case PARAM_TRANSPARENCY:
        QD_CHECK(spObjParam->GetType() == CSGParam::PARAM_TYPE_FLOAT, false);
        break;
    default:
        Log(QD_SCENEGRAPH, LOG_WARNING, "Unexpected param %d (%s), can't validate its type.", eParam,
            GetParamName(eParam));
        return false; // there is no such slot
    }
    m_arrParams[static_cast<size_t>(eParam)] = spObjParam;
    return true;
}

float CSGMaterial::GetFloatValue(EParam eParam) const
{
    return HasFloatValue(eParam) ? GetParam(eParam)->GetValueAs<float>() : 0.0f;
}

CSGFloat4 CSGMaterial::GetColorValue(EParam eParam) const
{
    return HasColorValue(eParam) ? GetParam(eParam)->GetValueAs<CSGFloat4>() : OPAQUE_BLACK;
}

CSGSampler* CSGMaterial::GetSampler(EParam eParam) const
{
    return HasSamplerValue(eParam) ? GetParam(eParam)->GetValueAs<CSGSamplerPtr>().get() : nullptr;
}

bool CSGMaterial::SetFloatValue(EParam eParam, float fValue)
{
    if (HasFloatValue(eParam))
    {
        CSGParam* spObjParam = GetParam(eParam);
        QD_CHECK_CALL(spObjParam->SetValueAs<float>(fValue), false);
        return true;
    }
    QD_CHECK_CALL(SetParam(eParam, CSGParamTmpl<float>::Create(GetParamName(eParam), fValue)), false);
    return true;
}

bool CSGMaterial::SetColorValue(EParam eParam, const CSGFloat4& objFloat4)
{
    if (HasColorValue(eParam))
    {
        CSGParam* spObjParam = GetParam(eParam);
        QD_CHECK_CALL(spObjParam->SetValueAs<CSGFloat4>(objFloat4), false);
        return true;
    }
    QD_CHECK_CALL(SetParam(eParam, CSGParamTmpl<CSGFloat4>::Create(GetParamName(eParam), objFloat4)), false);
    return true;
}

bool CSGMaterial::SetSamplerValue(EParam eParam, const CSGSamplerPtr& spObjSampler, int32_t nTexCoordSet)
{
    QD_CHECK_ARG(spObjSampler, false);
    QD_CHECK(nTexCoordSet >= 0, false);
    if (HasSamplerValue(eParam))
    {
        CSGParam* spObjParam = GetParam(eParam);
        QD_CHECK_CALL(spObjParam->SetValueAs<CSGSamplerPtr>(spObjSampler), false);
    }
    else
    {
        QD_CHECK_CALL(
            SetParam(eParam, CSGParamTmpl<CSGSamplerPtr>::Create(GetParamName(eParam), spObjSampler)), false);
    }
    return SetTexCoordSet(eParam, nTexCoordSet);
}

bool CSGMaterial::SetMipMapBias(float fBias)
{
    for (int32_t nParam = 0; nParam < PARAM_COUNT; ++nParam)
    {
        const auto eParam = static_cast<EParam>(nParam);
        const CSGSampler* pSampler = GetSampler(eParam);
        if (pSampler == nullptr)
        {
            continue;
        }
        // Other materials may share the sampler, and the parameter that holds it.
        const CSGSamplerPtr spSampler = CSGSampler::Create(pSampler->GetSurface());
        QD_CHECK_CREATED(spSampler, false);
        CSGSamplerParams objParams = pSampler->GetParams();
        objParams.m_fMipMapBias = fBias;
        spSampler->SetParams(objParams);
        QD_CHECK_CALL(SetParam(eParam, CSGParamTmpl<CSGSamplerPtr>::Create(GetParamName(eParam), spSampler)),
                      false);
    }
    return true;
}

bool CSGMaterial::GetSamplers(std::vector<CSGSamplerPtr>& rListOutput) const
{
    for (int32_t nParam = 0; nParam < PARAM_COUNT; ++nParam)
    {
        if (CSGSampler* pSampler = GetSampler(static_cast<EParam>(nParam)))
        {
            rListOutput.emplace_back(pSampler);
        }
    }
    return true;
}

int32_t CSGMaterial::GetTexCoordSet(EParam eParam) const
{
    return IsSlot(eParam) ? m_arrTexCoordSets[static_cast<size_t>(eParam)] : -1;
}

int32_t CSGMaterial::GetTexCoordSet(const CSGSamplerPtr& spObjSampler) const
{
    QD_CHECK_ARG(spObjSampler, -1);
    for (int32_t nParam = 0; nParam < PARAM_COUNT; ++nParam)
    {
        const auto eParam = static_cast<EParam>(nParam);
        if (GetSampler(eParam) == spObjSampler)
        {
            return GetTexCoordSet(eParam);
        }
    }
    return -1;
}

bool CSGMaterial::SetTexCoordSet(EParam eParam, int32_t nTexCoordSet)
{
    QD_CHECK(IsSlot(eParam), false);
    m_arrTexCoordSets[static_cast<size_t>(eParam)] = nTexCoordSet;
    return true;
}

float CSGMaterial::GetTotalTransparency() const
{
    const float f = HasFloatValue(PARAM_TRANSPARENCY) ? GetFloatValue(PARAM_TRANSPARENCY) : 1.0f;
    const CSGFloat4 c = GetColorValue(PARAM_TRANSPARENT);
    switch (m_eTransparentMode)
    {
    case TRANSPARENT_RGB_ZERO:
        return (1.0f - std::max({c.x, c.y, c.z})) * f;
    case TRANSPARENT_A_ONE:
        return c.w * f;
    default:
        Log(QD_SCENEGRAPH, LOG_ERROR, "Unrecognized Transparent mode %d", m_eTransparentMode);
        return 1.0f;
    }
}

CSGMaterialState CSGMaterial::GetMaterialState() const
{
    return {GetColorValue(PARAM_EMISSION), GetColorValue(PARAM_AMBIENT), GetColorValue(PARAM_DIFFUSE),
            GetColorValue(PARAM_SPECULAR), GetFloatValue(PARAM_SHININESS)};
}

const char* CSGMaterial::GetParamName(EParam eParam)
{
    return IsSlot(eParam) ? SLOTS[eParam].m_szName : "UNKNOWN";
}

const char* CSGMaterial::GetSamplerName(EParam eParam)
{
    return IsSlot(eParam) ? SLOTS[eParam].m_szSamplerName : "UNKNOWN";
}

void CSGMaterial::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGMaterial: 0x%08llX Transparent Mode: %d - Flags: 0x%X", rIndent,
        LogAddress(this), m_eTransparentMode, m_nMaterialFlags);
    Log(QD_SCENEGRAPH, LOG_INFO, "%s  Global Name: %s", rIndent, m_strGlobalName);
    for (int32_t nParam = 0; nParam < PARAM_COUNT; ++nParam)
    {
        const auto eParam = static_cast<EParam>(nParam);
        Log(QD_SCENEGRAPH, LOG_INFO, "%s  %s:", rIndent, GetParamName(eParam));
        if (const CSGParam* pParam = GetParam(eParam))
        {
            pParam->OutputDebugInfo(rIndent + "    ");
        }
    }
}
