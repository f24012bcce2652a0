// One light as shading sees it.
#pragma once

#include "qdcommon/CColor.h"
#include "qdcommon/CSGFloat3.h"
#include "qdcommon/CSGFloat4.h"

#include <type_traits>

// 18 floats, saved as they stand. What a light fills in, in the space it was set up for:
// intensity at distance d = m_fIntensity / (constant + linear * d + quadratic * d^2).
struct CSGLightState
{
    CColor m_objColor{1.0f, 1.0f, 1.0f, 1.0f};
    CSGFloat4 m_vPosition; // w is 1 for a place, 0 for the direction towards a light that is far away
    float m_fConstantAttenuation = 1.0f;
    float m_fLinearAttenuation = 0.0f;
    float m_fQuadraticAttenuation = 0.0f;
    float m_fSpotExponent = 0.0f;
    float m_fSpotRange = 0.0f; // how far the light reaches; 0 for no limit
    CSGFloat3 m_vSpotDirection{0.0f, 0.0f, -1.0f};
    float m_fSpotCutOff = 180.0f; // degrees between the direction and the edge of the cone; 180 for no cone
    float m_fIntensity = 1.0f;

    bool operator==(const CSGLightState&) const = default;
};
static_assert(sizeof(CSGLightState) == 72 && std::is_trivially_copyable_v<CSGLightState>);
