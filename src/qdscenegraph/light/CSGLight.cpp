#include "qdscenegraph/light/CSGLight.h"

#include "qdscenegraph/material/CSGLightState.h"
#include "qdscenegraph/streaming/CSGFloatRecord.h"

#include <cmath>

namespace
{
const SGStreamableRegistration<CSGLight> s_objRegistration(0x50DF50C5DD6D7103, 1, 1);
}

void CSGLight::SetupLightState(CSGLightState& rState, const CTransform3&) const
{
    rState = CSGLightState();
    rState.m_objColor = m_objColor;
}

CSGFloat3 CSGLight::GetDirection(const CTransform3& rWorld)
{
    const CSGFloat3 vDirection = rWorld.TransformDir({0.0f, 0.0f, -1.0f});
    const double x = vDirection.x;
    const double y = vDirection.y;
    const double z = vDirection.z;
    const double fLength = std::sqrt(x * x + y * y + z * z);
    if (!(fLength > 0.0) || !std::isfinite(fLength))
    {
        return {0.0f, 0.0f, -1.0f};
    }
    return {static_cast<float>(x / fLength), static_cast<float>(y / fLength),
            static_cast<float>(z / fLength)};
}

bool CSGLight::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    pStream->ReadString(m_strName);
    CSGFloat3 vColor;
    if (!ReadFloats(pStream, vColor))
    {
        return false;
    }
    m_objColor = {vColor.x, vColor.y, vColor.z, 1.0f};
    return true;
}

bool CSGLight::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    pStream->WriteString(m_strName);
    return WriteFloats(pStream, CSGFloat3{m_objColor.r, m_objColor.g, m_objColor.b});
}

void CSGLight::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%s%s: 0x%08llX Name: '%s' - Color: [%.3f %.3f %.3f]", rIndent,
        GetTypeInfo()->GetName(), LogAddress(this), m_strName, m_objColor.r, m_objColor.g, m_objColor.b);
}
