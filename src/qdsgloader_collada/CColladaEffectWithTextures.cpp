#include "qdsgloader_collada/CColladaEffectWithTextures.h"

#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/material/CSGParamTmpl.h"

#include <algorithm>

bool CColladaEffectWithTextures::SetEffect(const CSGEffectPtr& spEffect)
{
    QD_ASSERT(m_spEffect == 0, false);
    m_spEffect = spEffect;
    return true;
}

bool CColladaEffectWithTextures::SetMaterial(const CSGMaterialPtr& spMaterial)
{
    QD_ASSERT(m_spMaterial == 0, false);
    m_spMaterial = spMaterial;
    return true;
}

bool CColladaEffectWithTextures::AddSamplerParam(const CQDString& rStrSemantic,
                                                 const CSGParamPtr& spSamplerParam)
{
    QD_ASSERT(spSamplerParam->GetType() == CSGParam::PARAM_TYPE_SAMPLER, false);
    QD_ASSERT(spSamplerParam->GetValueAs<CSGSamplerPtr>(), false);
    GetOrAddSamplerParamList(rStrSemantic).push_back(spSamplerParam);
    return true;
}

CColladaEffectWithTextures::CTexCoordSets CColladaEffectWithTextures::GetTexCoordSets(
    const CSetOfSemantic& rSets) const
{
    CTexCoordSets arrSets;
    arrSets.fill(-1);
    for (const auto& [strSemantic, vecParams] : m_mapSamplerParams)
    {
        const auto itSet = rSets.find(strSemantic);
        const int32_t nSet = itSet != rSets.end() ? itSet->second : 0;
        for (int32_t nParam = 0; nParam < CSGMaterial::PARAM_COUNT; ++nParam)
        {
            const CSGParam* pParam = m_spMaterial->GetParam(static_cast<CSGMaterial::EParam>(nParam));
            if (std::ranges::find(vecParams, pParam, &CSGParamPtr::get) != vecParams.end())
            {
                arrSets[static_cast<size_t>(nParam)] = nSet;
            }
        }
    }
    return arrSets;
}
