#include "qdscenegraph/material/CSGFXPass.h"

#include <algorithm>

CSGFXPassPtr CSGFXPass::Create(const CSGParamSetPtr& spParamSet, const CQDString& rName, CSGSurface* pSurface)
{
    QD_CHECK_ARG(spParamSet, nullptr);
    CSGFXPassPtr spPass = CSGMem::Construct<CSGFXPass>();
    if (spPass)
    {
        spPass->m_spParamSet = spParamSet;
        spPass->m_strName = rName;
        spPass->m_spSurface = pSurface;
    }
    return spPass;
}

bool CSGFXPass::AddShader(const CSGShaderPtr& spShader)
{
    QD_CHECK_ARG(spShader, false);
    m_listShaders.push_back(spShader);
    return true;
}

bool CSGFXPass::RemoveShader(const CSGShaderPtr& spShader)
{
    QD_CHECK_ARG(spShader, false);
    const auto itShader = std::ranges::find(m_listShaders, spShader);
    QD_CHECK(itShader != m_listShaders.end(), false);
    m_listShaders.erase(itShader);
    return true;
}

void CSGFXPass::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGFXPass: 0x%08llX '%s'", rIndent, LogAddress(this), m_strName);
    Log(QD_SCENEGRAPH, LOG_INFO, "%s  Params:", rIndent);
    m_spParamSet->OutputDebugInfo(rIndent + "    ");
}
