#include "qdscenegraph/light/CSGLightAttenuation.h"

#include "qdscenegraph/material/CSGLightState.h"
#include "qdscenegraph/object/CSGMem.h"

void CSGLightAttenuation::SetupLightState(CSGLightState& rState, const CSGFloat3& rPosition) const
{
    rState.m_vPosition = {rPosition.x, rPosition.y, rPosition.z, 1.0f};
    rState.m_fConstantAttenuation = m_fConstant;
    rState.m_fLinearAttenuation = m_fLinear;
    rState.m_fQuadraticAttenuation = m_fQuadratic;
}

void CSGLightAttenuation::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sAttenuation: [%.3f %.3f %.3f]", rIndent, m_fConstant, m_fLinear,
        m_fQuadratic);
}
