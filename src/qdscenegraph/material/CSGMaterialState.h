// The colours of a material as shading sees them.
#pragma once

#include "qdcommon/CSGFloat4.h"

#include <type_traits>

// 17 floats, saved as they stand; the colours are RGBA.
struct CSGMaterialState
{
    CSGFloat4 m_vEmission{0.0f, 0.0f, 0.0f, 1.0f};
    CSGFloat4 m_vAmbient{0.0f, 0.0f, 0.0f, 1.0f};
    CSGFloat4 m_vDiffuse{0.0f, 0.0f, 0.0f, 1.0f};
    CSGFloat4 m_vSpecular{0.0f, 0.0f, 0.0f, 1.0f};
    float m_fShininess = 0.0f;

    bool operator==(const CSGMaterialState&) const = default;
};
static_assert(sizeof(CSGMaterialState) == 68 && std::is_trivially_copyable_v<CSGMaterialState>);
