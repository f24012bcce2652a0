#include "qdscenegraph/light/CSGLight_Spot.h"

#include "qdscenegraph/material/CSGLightState.h"
#include "qdscenegraph/streaming/CSGFloatRecord.h"

#include <algorithm>

const CSGTypeInfo<CSGLight> CSGLight_Spot::ms_objTypeInfo(CSGLight_Spot::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGLight_Spot> s_objRegistration(0x90FD358B3176B653, 1, 1);
}

boost::intrusive_ptr<CSGLight_Spot> CSGLight_Spot::Create(const CQDCompactString& rName, const CColor& rColor,
                                                          const CSGLightAttenuation& rAttenuation,
                                                          const CCone& rCone)
{
    boost::intrusive_ptr<CSGLight_Spot> spLight = Create(rName, rColor);
    if (spLight)
    {
        spLight->m_objAttenuation = rAttenuation;
        spLight->m_objCone = rCone;
    }
    return spLight;
}

void CSGLight_Spot::SetupLightState(CSGLightState& rState, const CTransform3& rWorld) const
{
    CSGLight::SetupLightState(rState, rWorld);
    m_objAttenuation.SetupLightState(rState, rWorld.m_objTranslation);
    rState.m_fSpotExponent = m_objCone.m_fFalloffExponent;
    rState.m_vSpotDirection = GetDirection(rWorld);
    rState.m_fSpotCutOff = std::clamp(m_objCone.m_fFalloffAngle * 0.5f, 0.0f, 180.0f);
}

bool CSGLight_Spot::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_CALL(CSGLight::ReadFromStream(pStream, pLoadState), false);
    return ReadFloats(pStream, m_objAttenuation) && ReadFloats(pStream, m_objCone);
}

bool CSGLight_Spot::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGLight::WriteToStream(pStream, pSaveState), false);
    return WriteFloats(pStream, m_objAttenuation) && WriteFloats(pStream, m_objCone);
}

void CSGLight_Spot::OutputDebugInfo(const CQDString& rIndent) const
{
    CSGLight::OutputDebugInfo(rIndent);
    m_objAttenuation.OutputDebugInfo(rIndent + "    ");
    Log(QD_SCENEGRAPH, LOG_INFO, "%s    Falloff angle: %.3f - Falloff exponent: %.3f", rIndent,
        m_objCone.m_fFalloffAngle, m_objCone.m_fFalloffExponent);
}
