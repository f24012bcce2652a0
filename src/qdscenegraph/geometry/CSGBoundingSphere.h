// A sphere around geometry.
#pragma once

#include "qdcommon/CSGFloat3.h"

// Empty by default: the radius is -1.
struct CSGBoundingSphere
{
    CSGFloat3 m_objCenter;
    float m_fRadius = -1.0f;

    bool operator==(const CSGBoundingSphere&) const = default;

    bool IsEmpty() const { return m_fRadius < 0.0f; }
};
