// An axis-aligned box.
#pragma once

#include "qdcommon/CSGFloat3.h"

#include <algorithm>
#include <limits>

// Empty by default: every minimum is +infinity, every maximum -infinity.
struct CSGBoundingBox
{
    static constexpr float INFINITE = std::numeric_limits<float>::infinity();

    CSGFloat3 m_objMin{INFINITE, INFINITE, INFINITE};
    CSGFloat3 m_objMax{-INFINITE, -INFINITE, -INFINITE};

    bool operator==(const CSGBoundingBox&) const = default;

    bool IsEmpty() const
    {
        return !(m_objMin.x <= m_objMax.x && m_objMin.y <= m_objMax.y && m_objMin.z <= m_objMax.z);
    }
    // Halved before they are added: the sum of two large coordinates may not be a float any more.
    CSGFloat3 GetCenter() const { return m_objMin * 0.5f + m_objMax * 0.5f; }

    void Add(const CSGFloat3& rPoint)
    {
        m_objMin = {std::min(m_objMin.x, rPoint.x), std::min(m_objMin.y, rPoint.y),
                    std::min(m_objMin.z, rPoint.z)};
        m_objMax = {std::max(m_objMax.x, rPoint.x), std::max(m_objMax.y, rPoint.y),
                    std::max(m_objMax.z, rPoint.z)};
    }
    void Add(const CSGBoundingBox& rBox)
    {
        if (!rBox.IsEmpty())
        {
            Add(rBox.m_objMin);
            Add(rBox.m_objMax);
        }
    }
};
