#include "qdsgloader_collada/CColladaNewParams.h"

#include "qdcommon/CLog.h"
#include "qdscenegraph/material/CSGParamTmpl.h"
#include "qdsgloader_collada/CColladaConverter.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaImages.h"
#include "qdsgloader_collada/CColladaSurfaceConverter.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include <1.4/dom/domProfile_COMMON.h>

namespace
{

template <class T>
T MakeFloats(std::span<const double> arrValues)
{
    const auto Get = [&](size_t n) { return static_cast<float>(arrValues[n]); };
    if constexpr (sizeof(T) == sizeof(CSGFloat2))
    {
        return {Get(0), Get(1)};
    }
    else if constexpr (sizeof(T) == sizeof(CSGFloat3))
    {
        return {Get(0), Get(1), Get(2)};
    }
    else
    {
        return {Get(0), Get(1), Get(2), Get(3)};
    }
}

// Wrap modes and filters that a document does not give are the default ones.
CSGSamplerParams ConvertSamplerParams(const domFx_sampler2D_common& rSampler)
{
    CSGSamplerParams objParams;
    CSGSamplerParams::EFilter eIgnored = CSGSamplerParams::FILTER_NONE;
    if (const auto* pWrap = rSampler.getWrap_s().cast())
    {
        CColladaConverter::GetSamplerWrap(pWrap->getValue(), objParams.m_eWrapS);
    }
    if (const auto* pWrap = rSampler.getWrap_t().cast())
    {
        CColladaConverter::GetSamplerWrap(pWrap->getValue(), objParams.m_eWrapT);
    }
    if (const auto* pFilter = rSampler.getMinfilter().cast())
    {
        CColladaConverter::ConvertSamplerFilter(pFilter->getValue(), objParams.m_eMinFilter,
                                                objParams.m_eMipFilter);
    }
    if (const auto* pFilter = rSampler.getMagfilter().cast())
    {
        CColladaConverter::ConvertSamplerFilter(pFilter->getValue(), objParams.m_eMagFilter, eIgnored);
    }
    // A minification filter without mip-maps may have them from here.
    const auto* pMipFilter = rSampler.getMipfilter().cast();
    if (pMipFilter != nullptr &&
        (rSampler.getMinfilter() == nullptr || objParams.m_eMipFilter == CSGSamplerParams::FILTER_NONE))
    {
        CColladaConverter::ConvertSamplerFilter(pMipFilter->getValue(), objParams.m_eMipFilter, eIgnored);
    }
    if (auto* pColor = rSampler.getBorder_color().cast())
    {
        CSGFloat4 vColor;
        if (CColladaConverter::GetColor(AsSpan(pColor->getValue()), vColor))
        {
            objParams.m_objBorderColor = {vColor.x, vColor.y, vColor.z, vColor.w};
        }
    }
    if (const auto* pLevel = rSampler.getMipmap_maxlevel().cast())
    {
        objParams.m_nMaxMipMapLevel = pLevel->getValue();
    }
    if (const auto* pBias = rSampler.getMipmap_bias().cast())
    {
        objParams.m_fMipMapBias = static_cast<float>(pBias->getValue());
    }
    return objParams;
}

} // namespace

CColladaNewParams::CColladaNewParams(CColladaImages& rImages, const CColladaNewParams* pAround)
    : m_rImages(rImages),
      m_spParamSet(CSGParamSet::Create())
{
    if (m_spParamSet && pAround != nullptr)
    {
        m_spParamSet->SetBaseParams(pAround->m_spParamSet);
    }
}

void CColladaNewParams::AddNewParamsFXCommon(const domEffect& rEffect)
{
    for (const ERound eRound : {ERound::Values, ERound::Samplers})
    {
        for (const auto& rspNewParam : AsSpan(rEffect.getNewparam_array()))
        {
            AddNewParamFXCommon(*rspNewParam, eRound);
        }
    }
}

void CColladaNewParams::AddNewParamsProfileCommon(const domProfile_COMMON& rProfile)
{
    for (const ERound eRound : {ERound::Values, ERound::Samplers})
    {
        for (const auto& rspNewParam : AsSpan(rProfile.getNewparam_array()))
        {
            AddNewParamProfileCommon(*rspNewParam, eRound);
        }
        if (const domProfile_COMMON::domTechnique* pTechnique = rProfile.getTechnique())
        {
            for (const auto& rspNewParam : AsSpan(pTechnique->getNewparam_array()))
            {
                AddNewParamProfileCommon(*rspNewParam, eRound);
            }
        }
    }
}

void CColladaNewParams::AddNewParamFXCommon(const domFx_newparam_common& rNewParam, ERound eRound)
{
    if (const domFx_basic_type_common* pKind = rNewParam.getFx_basic_type_common())
    {
        AddNewParam(Text(rNewParam.getSid()), *pKind, eRound);
    }
}

void CColladaNewParams::AddNewParamProfileCommon(const domCommon_newparam_type& rNewParam, ERound eRound)
{
    AddNewParam(Text(rNewParam.getSid()), rNewParam, eRound);
}

template <class KIND>
void CColladaNewParams::AddNewParam(const char* szName, const KIND& rKind, ERound eRound)
{
    if (eRound == ERound::Samplers)
    {
        if (domFx_sampler2D_common* pSampler = rKind.getSampler2D())
        {
            AddParam<CSGSamplerPtr>(szName, LoadSampler2D(*pSampler));
        }
        return;
    }
    if (const auto* pFloat = rKind.getFloat().cast())
    {
        AddParam<float>(szName, static_cast<float>(pFloat->getValue()));
    }
    AddFloats<CSGFloat2>(szName, rKind.getFloat2().cast());
    AddFloats<CSGFloat3>(szName, rKind.getFloat3().cast());
    AddFloats<CSGFloat4>(szName, rKind.getFloat4().cast());
    if (domFx_surface_common* pSurface = rKind.getSurface())
    {
        AddParam<CSGSurfacePtr>(szName, CColladaSurfaceConverter::LoadSurface(*pSurface, m_rImages));
    }
}

template <class T, class ELEMENT>
void CColladaNewParams::AddFloats(const char* szName, const ELEMENT* pElement)
{
    if (pElement != nullptr &&
        CColladaConverter::CheckNumFloats(AsSpan(pElement->getValue()), sizeof(T) / sizeof(float)))
    {
        AddParam<T>(szName, MakeFloats<T>(AsSpan(pElement->getValue())));
    }
}

// A surface or sampler that failed is kept without its value: what names it is told from what names nothing.
template <class T>
void CColladaNewParams::AddParam(const char* szName, const T& rValue)
{
    if (m_spParamSet)
    {
        m_spParamSet->AddParam(CSGParamTmpl<T>::Create(szName, rValue));
    }
}

CSGParamPtr CColladaNewParams::FindParam(const char* szName, CSGParam::EType eType) const
{
    const CSGParamPtr spParam = m_spParamSet ? m_spParamSet->GetParam(szName) : nullptr;
    return spParam && spParam->GetType() == eType ? spParam : nullptr;
}

bool CColladaNewParams::FindFloat(const char* szName, float& rfValue) const
{
    const CSGParamPtr spParam = FindParam(szName, CSGParam::PARAM_TYPE_FLOAT);
    if (!spParam)
    {
        Log(QD_COLLADA, LOG_ERROR, "<param> referenced unknown <float> param %s", szName);
        return false;
    }
    rfValue = spParam->GetValueAs<float>();
    return true;
}

bool CColladaNewParams::FindColor(const char* szName, CSGFloat4& rColor) const
{
    if (const CSGParamPtr spParam = FindParam(szName, CSGParam::PARAM_TYPE_FLOAT4))
    {
        rColor = spParam->GetValueAs<CSGFloat4>();
        return true;
    }
    if (const CSGParamPtr spParam = FindParam(szName, CSGParam::PARAM_TYPE_FLOAT3))
    {
        const auto& rValue = spParam->GetValueAs<CSGFloat3>();
        rColor = {rValue.x, rValue.y, rValue.z, 1.0f};
        return true;
    }
    Log(QD_COLLADA, LOG_ERROR, "<param> referenced unknown <float3> or <float4> param %s", szName);
    return false;
}

CSGSurfacePtr CColladaNewParams::FindImageSurface(const char* szID, DAE& rDAE) const
{
    daeElement* pElement = CSGLoaderCollada::FindIDElement(rDAE, szID, domImage::ID());
    return pElement != nullptr && pElement->typeID() == domImage::ID()
               ? m_rImages.GetSurface(static_cast<domImage&>(*pElement))
               : nullptr;
}

CSGSurfacePtr CColladaNewParams::FindSurface(const char* szName, DAE& rDAE) const
{
    if (const CSGParamPtr spParam = FindParam(szName, CSGParam::PARAM_TYPE_SURFACE))
    {
        const CSGSurfacePtr& rspSurface = spParam->GetValueAs<CSGSurfacePtr>();
        if (!rspSurface)
        {
            Log(QD_COLLADA, LOG_ERROR, "<source> for <sampler2D> referenced param %s whose <surface> failed",
                szName);
        }
        return rspSurface;
    }
    const CSGSurfacePtr spSurface = FindImageSurface(szName, rDAE);
    if (!spSurface)
    {
        if (m_spParamSet && m_spParamSet->GetParam(szName))
        {
            Log(QD_COLLADA, LOG_ERROR, "<source> for <sampler2D> referenced param %s that is no <surface>",
                szName);
        }
        else
        {
            Log(QD_COLLADA, LOG_ERROR, "<source> for <sampler2D> referenced unknown param %s", szName);
        }
    }
    return spSurface;
}

CSGSamplerPtr CColladaNewParams::FindSampler(const char* szName, DAE& rDAE) const
{
    if (const CSGParamPtr spParam = FindParam(szName, CSGParam::PARAM_TYPE_SAMPLER))
    {
        const CSGSamplerPtr& rspSampler = spParam->GetValueAs<CSGSamplerPtr>();
        if (!rspSampler)
        {
            Log(QD_COLLADA, LOG_ERROR, "<texture> referenced param %s whose <sampler2D> failed", szName);
        }
        return rspSampler;
    }
    const CSGSurfacePtr spSurface = FindImageSurface(szName, rDAE);
    if (!spSurface)
    {
        Log(QD_COLLADA, LOG_ERROR, "<texture> referenced unknown sampler %s", szName);
        return nullptr;
    }
    return CSGSampler::Create(spSurface);
}

CSGSamplerPtr CColladaNewParams::LoadSampler2D(domFx_sampler2D_common& rSampler) const
{
    const auto* pSource = rSampler.getSource().cast();
    if (pSource == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "<sampler2D> had NULL <source>");
        return nullptr;
    }
    const CSGSurfacePtr spSurface = FindSurface(Text(pSource->getValue()), *rSampler.getDAE());
    if (!spSurface)
    {
        return nullptr;
    }
    const CSGSamplerPtr spSampler = CSGSampler::Create(spSurface);
    if (spSampler)
    {
        spSampler->SetParams(ConvertSamplerParams(rSampler));
    }
    return spSampler;
}
