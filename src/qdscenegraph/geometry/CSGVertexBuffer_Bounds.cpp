// The bounds of the positions of a vertex buffer.

#include "qdscenegraph/geometry/CSGVertexBuffer.h"

#include <cmath>

// Calls the function with each finite position.
template <class FUNCTION>
void CSGVertexBuffer::ForEachPosition(FUNCTION&& fnEach) const
{
    const CSGVertexFormat::CMember* pMember = m_objFormat.FindLowestMember(CSGVertexFormat::MEMBER_POSITION);
    if (pMember == nullptr)
    {
        return;
    }
    const int32_t nFloats = pMember->m_nFloats;
    for (int32_t nVertex = 0; nVertex < m_nVertices; ++nVertex)
    {
        const float* pData = &m_vecData[GetFloatIndex(nVertex, pMember->m_nOffset)];
        const CSGFloat3 objPosition{pData[0], nFloats > 1 ? pData[1] : 0.0f, nFloats > 2 ? pData[2] : 0.0f};
        if (std::isfinite(objPosition.x) && std::isfinite(objPosition.y) && std::isfinite(objPosition.z))
        {
            fnEach(objPosition);
        }
    }
}

const CSGBounds& CSGVertexBuffer::GetBounds() const
{
    if (m_uiBoundsStamp != m_objEditStamp.Get())
    {
        m_objBounds = CSGBounds();
        CSGBoundingBox objBox;
        ForEachPosition([&objBox](const CSGFloat3& rPosition) { objBox.Add(rPosition); });
        if (!objBox.IsEmpty())
        {
            const CSGFloat3 objCenter = objBox.GetCenter();
            m_objBounds = {objBox, {objCenter, GetRadiusAround(objCenter)}};
        }
        m_uiBoundsStamp = m_objEditStamp.Get();
    }
    return m_objBounds;
}

float CSGVertexBuffer::GetRadiusAround(const CSGFloat3& rCenter) const
{
    double fLargest = -1.0; // squared
    ForEachPosition([&](const CSGFloat3& rPosition) {
        const double fX = static_cast<double>(rPosition.x) - rCenter.x;
        const double fY = static_cast<double>(rPosition.y) - rCenter.y;
        const double fZ = static_cast<double>(rPosition.z) - rCenter.z;
        fLargest = std::max(fLargest, fX * fX + fY * fY + fZ * fZ);
    });
    if (fLargest < 0.0)
    {
        return -1.0f;
    }
    // Difference, squares, sums and root in floats come out too large by less than four rounding errors of
    // half an epsilon.
    using CLimits = std::numeric_limits<float>;
    const double fRadius = std::sqrt(fLargest) * (1.0 + 2.0 * CLimits::epsilon());
    if (fRadius > CLimits::max())
    {
        return CLimits::infinity();
    }
    const auto fRounded = static_cast<float>(fRadius);
    return fRounded < fRadius ? std::nextafter(fRounded, CLimits::infinity()) : fRounded;
}
