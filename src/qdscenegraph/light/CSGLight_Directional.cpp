#include "qdscenegraph/light/CSGLight_Directional.h"

#include "qdscenegraph/material/CSGLightState.h"

const CSGTypeInfo<CSGLight> CSGLight_Directional::ms_objTypeInfo(CSGLight_Directional::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGLight_Directional> s_objRegistration(0x5ABA9516D1D2C5B9, 1, 1);
}

void CSGLight_Directional::SetupLightState(CSGLightState& rState, const CTransform3& rWorld) const
{
    CSGLight::SetupLightState(rState, rWorld);
    const CSGFloat3 vDirection = GetDirection(rWorld);
    rState.m_vPosition = {-vDirection.x, -vDirection.y, -vDirection.z, 0.0f};
}
