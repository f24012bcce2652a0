#include "qdscenegraph/light/CSGLight_Point.h"

#include "qdscenegraph/material/CSGLightState.h"
#include "qdscenegraph/streaming/CSGFloatRecord.h"

const CSGTypeInfo<CSGLight> CSGLight_Point::ms_objTypeInfo(CSGLight_Point::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGLight_Point> s_objRegistration(0xF6B7EE18B673DA6B, 1, 1);
}

boost::intrusive_ptr<CSGLight_Point> CSGLight_Point::Create(const CQDCompactString& rName,
                                                            const CColor& rColor,
                                                            const CSGLightAttenuation& rAttenuation)
{
    boost::intrusive_ptr<CSGLight_Point> spLight = Create(rName, rColor);
    if (spLight)
    {
        spLight->m_objAttenuation = rAttenuation;
    }
    return spLight;
}

void CSGLight_Point::SetupLightState(CSGLightState& rState, const CTransform3& rWorld) const
{
    CSGLight::SetupLightState(rState, rWorld);
    m_objAttenuation.SetupLightState(rState, rWorld.m_objTranslation);
}

bool CSGLight_Point::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_CALL(CSGLight::ReadFromStream(pStream, pLoadState), false);
    return ReadFloats(pStream, m_objAttenuation);
}

bool CSGLight_Point::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGLight::WriteToStream(pStream, pSaveState), false);
    return WriteFloats(pStream, m_objAttenuation);
}

void CSGLight_Point::OutputDebugInfo(const CQDString& rIndent) const
{
    CSGLight::OutputDebugInfo(rIndent);
    m_objAttenuation.OutputDebugInfo(rIndent + "    ");
}
