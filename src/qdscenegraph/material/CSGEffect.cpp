#include "qdscenegraph/material/CSGEffect.h"

CSGEffectPtr CSGEffect::Create(const CSGParamSetPtr& spParamSet, const CQDString& rName)
{
    QD_CHECK_ARG(spParamSet, nullptr);
    CSGEffectPtr spEffect = CSGMem::Construct<CSGEffect>();
    if (spEffect)
    {
        spEffect->m_spParamSet = spParamSet;
        spEffect->m_strName = rName;
    }
    return spEffect;
}

bool CSGEffect::AddPass(const CSGFXPassPtr& spPass)
{
    QD_CHECK_ARG(spPass, false);
    m_listPasses.push_back(spPass);
    return true;
}

void CSGEffect::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGEffect: 0x%08llX %s", rIndent, LogAddress(this), m_strName);
    Log(QD_SCENEGRAPH, LOG_INFO, "%s  Params:", rIndent);
    m_spParamSet->OutputDebugInfo(rIndent + "    ");
    Log(QD_SCENEGRAPH, LOG_INFO, "%s  Passes:", rIndent);
    for (const CSGFXPassPtr& spPass : m_listPasses)
    {
        spPass->OutputDebugInfo(rIndent + "    ");
    }
}
