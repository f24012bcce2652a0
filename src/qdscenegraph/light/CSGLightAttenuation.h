// How a light that shines from one place loses strength with distance.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdcommon/CSGFloat3.h"

struct CSGLightState;

// At distance d the light is divided by constant + linear * d + quadratic * d * d. By default it does not
// become weaker.
struct CSGLightAttenuation
{
    float m_fConstant = 1.0f;
    float m_fLinear = 0.0f;
    float m_fQuadratic = 0.0f;

    bool operator==(const CSGLightAttenuation&) const = default;

    // Sets the place of the light and its attenuation.
    void SetupLightState(CSGLightState& rState, const CSGFloat3& rPosition) const;
    // One line at level 7 behind the indent.
    void OutputDebugInfo(const CQDString& rIndent) const;
};
