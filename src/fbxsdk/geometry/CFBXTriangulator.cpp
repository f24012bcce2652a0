// Ears are cut off a ring of corners in the manner of D. Eberly, "Triangulation by Ear Clipping". What may
// lie in an ear are corners that are not convex; they wait in a grid over the polygon's extent, so that an
// ear looks at those around it only.
#include "fbxsdk/geometry/CFBXTriangulator.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

using CPoint = std::array<double, 2>;
using CVector = std::array<double, 3>;

// How far from the plain meaning of an ear the search has come, because the ring has no better one.
enum ELevel : int
{
    LEVEL_STRICT, // no other corner inside or on the border
    LEVEL_LOOSE,  // none inside; the two sides of a slit to a hole lie on each other
    LEVEL_CONVEX, // the ring crosses itself
    LEVEL_ANYTHING
};

// Shares of the polygon's extent, squared, below which a corner is straight.
constexpr double FLAT = 1e-12;

CVector GetPoint(std::span<const double> arrPoints, int32_t n)
{
    const double* p = arrPoints.data() + static_cast<size_t>(n) * 3;
    return {p[0], p[1], p[2]};
}

CVector Subtract(const CVector& a, const CVector& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

double Dot(const CVector& a, const CVector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

CVector Cross(const CVector& a, const CVector& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// Twice the area; positive when they go around to the left.
double GetArea(const CPoint& a, const CPoint& b, const CPoint& c)
{
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

void Append(std::vector<int32_t>& rCorners, int32_t nFirst, int32_t a, int32_t b, int32_t c)
{
    rCorners.insert(rCorners.end(), {nFirst + a, nFirst + b, nFirst + c});
}

// Whether to split between the first corner and the third.
bool SplitsAtFirst(const CVector& p0, const CVector& p1, const CVector& p2, const CVector& p3)
{
    const CVector arrSides[4] = {Subtract(p1, p0), Subtract(p2, p1), Subtract(p3, p2), Subtract(p0, p3)};
    const CVector arrDiagonals[2] = {Subtract(p2, p0), Subtract(p3, p1)};
    const CVector arrNormal = Cross(arrDiagonals[0], arrDiagonals[1]);
    const double dFlat = 1e-9 * Dot(arrNormal, arrNormal);
    for (size_t n = 0; n < 4; ++n)
    {
        // A corner that points inwards, or is straight, has to be an end of the diagonal.
        if (Dot(Cross(arrSides[(n + 3) % 4], arrSides[n]), arrNormal) <= dFlat)
        {
            return n % 2 == 0;
        }
    }
    return Dot(arrDiagonals[0], arrDiagonals[0]) <= Dot(arrDiagonals[1], arrDiagonals[1]);
}

} // namespace

void CFBXTriangulator::Triangulate(std::span<const double> arrPoints, std::span<const int32_t> arrPolygon,
                                   int32_t nFirst, std::vector<int32_t>& rCorners)
{
    switch (arrPolygon.size())
    {
    case 0:
    case 1:
    case 2:
        return;
    case 3:
        Append(rCorners, nFirst, 0, 1, 2);
        return;
    case 4:
        if (SplitsAtFirst(GetPoint(arrPoints, arrPolygon[0]), GetPoint(arrPoints, arrPolygon[1]),
                          GetPoint(arrPoints, arrPolygon[2]), GetPoint(arrPoints, arrPolygon[3])))
        {
            Append(rCorners, nFirst, 0, 1, 2);
            Append(rCorners, nFirst, 0, 2, 3);
        }
        else
        {
            Append(rCorners, nFirst, 1, 2, 3);
            Append(rCorners, nFirst, 1, 3, 0);
        }
        return;
    default:
        Project(arrPoints, arrPolygon);
        LayOutGrid();
        CutEars(nFirst, rCorners);
    }
}

void CFBXTriangulator::Project(std::span<const double> arrPoints, std::span<const int32_t> arrPolygon)
{
    const CVector arrOrigin = GetPoint(arrPoints, arrPolygon[0]);
    CVector arrNormal{};
    CVector arrThis = Subtract(GetPoint(arrPoints, arrPolygon[1]), arrOrigin);
    for (const int32_t nPoint : arrPolygon.subspan(2))
    {
        const CVector arrNext = Subtract(GetPoint(arrPoints, nPoint), arrOrigin);
        const CVector arrCross = Cross(arrThis, arrNext);
        for (size_t n = 0; n < 3; ++n)
        {
            arrNormal[n] += arrCross[n];
        }
        arrThis = arrNext;
    }

    // Looking along the axis that is nearest to the normal keeps inside and outside; two axes change places
    // where that is needed to look at the front.
    size_t uiAxis = std::abs(arrNormal[1]) > std::abs(arrNormal[0]) ? 1 : 0;
    uiAxis = std::abs(arrNormal[2]) > std::abs(arrNormal[uiAxis]) ? 2 : uiAxis;
    size_t uiRight = (uiAxis + 1) % 3;
    size_t uiUp = (uiAxis + 2) % 3;
    if (arrNormal[uiAxis] < 0)
    {
        std::swap(uiRight, uiUp);
    }
    m_vecPoints.clear();
    for (const int32_t nPoint : arrPolygon)
    {
        const CVector arrPoint = Subtract(GetPoint(arrPoints, nPoint), arrOrigin);
        m_vecPoints.push_back({arrPoint[uiRight], arrPoint[uiUp]});
    }

    const int32_t nCount = static_cast<int32_t>(arrPolygon.size());
    m_vecPrevious.resize(arrPolygon.size());
    m_vecNext.resize(arrPolygon.size());
    for (int32_t n = 0; n < nCount; ++n)
    {
        m_vecPrevious[static_cast<size_t>(n)] = n > 0 ? n - 1 : nCount - 1;
        m_vecNext[static_cast<size_t>(n)] = n + 1 < nCount ? n + 1 : 0;
    }
}

void CFBXTriangulator::LayOutGrid()
{
    m_arrMin = m_arrCellsPerUnit = m_vecPoints[0];
    CPoint arrMax = m_vecPoints[0];
    for (const CPoint& rPoint : m_vecPoints)
    {
        for (size_t n = 0; n < 2; ++n)
        {
            m_arrMin[n] = std::min(m_arrMin[n], rPoint[n]);
            arrMax[n] = std::max(arrMax[n], rPoint[n]);
        }
    }
    m_dFlat = FLAT * (arrMax[0] - m_arrMin[0]) * (arrMax[1] - m_arrMin[1]);

    m_vecReflex.clear();
    for (int32_t n = 0; n < static_cast<int32_t>(m_vecPoints.size()); ++n)
    {
        if (!IsConvex(n))
        {
            m_vecReflex.push_back(n);
        }
    }
    m_nCells = static_cast<int32_t>(std::sqrt(static_cast<double>(m_vecReflex.size() / 2))) + 1;
    for (size_t n = 0; n < 2; ++n)
    {
        m_arrCellsPerUnit[n] = m_nCells / (arrMax[n] - m_arrMin[n]);
    }

    // By counting: how many are in each cell, where they begin, and then each to its place.
    m_vecCellEnds.assign(static_cast<size_t>(m_nCells) * static_cast<size_t>(m_nCells) + 1, 0);
    for (const int32_t nCorner : m_vecReflex)
    {
        ++m_vecCellEnds[GetCell(nCorner) + 1];
    }
    for (size_t n = 1; n < m_vecCellEnds.size(); ++n)
    {
        m_vecCellEnds[n] += m_vecCellEnds[n - 1];
    }
    m_vecCellCorners.resize(m_vecReflex.size());
    for (const int32_t nCorner : m_vecReflex)
    {
        m_vecCellCorners[static_cast<size_t>(m_vecCellEnds[GetCell(nCorner)]++)] = nCorner;
    }
}

int32_t CFBXTriangulator::GetCellAlong(size_t uiAxis, double dValue) const
{
    // Not a number, and polygons without extent: the first one.
    const double dCell = (dValue - m_arrMin[uiAxis]) * m_arrCellsPerUnit[uiAxis];
    return dCell > 0 ? static_cast<int32_t>(std::min(dCell, m_nCells - 1.0)) : 0;
}

size_t CFBXTriangulator::GetCell(int32_t nCorner) const
{
    const CPoint& rPoint = m_vecPoints[static_cast<size_t>(nCorner)];
    return static_cast<size_t>(GetCellAlong(1, rPoint[1])) * static_cast<size_t>(m_nCells) +
           static_cast<size_t>(GetCellAlong(0, rPoint[0]));
}

bool CFBXTriangulator::IsConvex(int32_t nCorner) const
{
    const size_t uiCorner = static_cast<size_t>(nCorner);
    return GetArea(m_vecPoints[static_cast<size_t>(m_vecPrevious[uiCorner])], m_vecPoints[uiCorner],
                   m_vecPoints[static_cast<size_t>(m_vecNext[uiCorner])]) > m_dFlat;
}

void CFBXTriangulator::CutEars(int32_t nFirst, std::vector<int32_t>& rCorners)
{
    // Enough for what real polygons need, too little to keep anybody waiting.
    const auto nCorners = static_cast<int64_t>(m_vecPoints.size());
    m_nPatienceLeft += 64 * nCorners;
    const int64_t nPatience = std::min(65536 + 1024 * nCorners, m_nPatienceLeft);
    m_nPatience = nPatience;
    size_t uiLeft = m_vecPoints.size();
    int32_t nCorner = 0;
    int32_t nLast = 0; // where the search went through the whole ring
    int nLevel = LEVEL_STRICT;
    for (; uiLeft > 3;)
    {
        const int32_t nPrevious = m_vecPrevious[static_cast<size_t>(nCorner)];
        const int32_t nNext = m_vecNext[static_cast<size_t>(nCorner)];
        if (IsEar(nCorner, m_nPatience > 0 ? nLevel : LEVEL_ANYTHING))
        {
            Append(rCorners, nFirst, nPrevious, nCorner, nNext);
            m_vecNext[static_cast<size_t>(nPrevious)] = nNext;
            m_vecPrevious[static_cast<size_t>(nNext)] = nPrevious;
            m_vecNext[static_cast<size_t>(nCorner)] = GONE;
            --uiLeft;
            // Two corners on: triangles side by side are better shaped than a fan.
            nCorner = nLast = m_vecNext[static_cast<size_t>(nNext)];
            nLevel = LEVEL_STRICT;
            continue;
        }
        nCorner = nNext;
        nLevel += nCorner == nLast ? 1 : 0;
        // No corner is convex: there is no surface to be got right.
        m_nPatience /= nCorner == nLast && nLevel == LEVEL_ANYTHING ? 4 : 1;
    }
    m_nPatienceLeft -= nPatience - std::max<int64_t>(m_nPatience, 0);
    Append(rCorners, nFirst, m_vecPrevious[static_cast<size_t>(nCorner)], nCorner,
           m_vecNext[static_cast<size_t>(nCorner)]);
}

bool CFBXTriangulator::IsEar(int32_t nCorner, int nLevel)
{
    --m_nPatience;
    if (nLevel >= LEVEL_CONVEX)
    {
        return nLevel >= LEVEL_ANYTHING || IsConvex(nCorner);
    }
    return IsConvex(nCorner) && !HoldsCorner(nCorner, nLevel == LEVEL_STRICT);
}

bool CFBXTriangulator::HoldsCorner(int32_t nCorner, bool bBorder)
{
    const int32_t nPrevious = m_vecPrevious[static_cast<size_t>(nCorner)];
    const int32_t nNext = m_vecNext[static_cast<size_t>(nCorner)];
    const CPoint& a = m_vecPoints[static_cast<size_t>(nPrevious)];
    const CPoint& b = m_vecPoints[static_cast<size_t>(nCorner)];
    const CPoint& c = m_vecPoints[static_cast<size_t>(nNext)];
    const auto IsInside = [&](const CPoint& p) {
        const double dLeast = std::min({GetArea(a, b, p), GetArea(b, c, p), GetArea(c, a, p)});
        return bBorder ? dLeast >= 0 : dLeast > m_dFlat;
    };

    const int32_t nLeft = GetCellAlong(0, std::min({a[0], b[0], c[0]}));
    const int32_t nRight = GetCellAlong(0, std::max({a[0], b[0], c[0]}));
    const int32_t nBottom = GetCellAlong(1, std::min({a[1], b[1], c[1]}));
    const int32_t nTop = GetCellAlong(1, std::max({a[1], b[1], c[1]}));
    for (int32_t nRow = nBottom; nRow <= nTop; ++nRow)
    {
        // Those of cells beside each other stand in one row.
        const size_t uiRow = static_cast<size_t>(nRow) * static_cast<size_t>(m_nCells);
        const size_t uiFirst = uiRow + static_cast<size_t>(nLeft);
        const int32_t nBegin = uiFirst > 0 ? m_vecCellEnds[uiFirst - 1] : 0;
        const int32_t nEnd = m_vecCellEnds[uiRow + static_cast<size_t>(nRight)];
        m_nPatience -= nEnd - nBegin + 1;
        for (int32_t n = nBegin; n < nEnd; ++n)
        {
            const int32_t nOther = m_vecCellCorners[static_cast<size_t>(n)];
            if (m_vecNext[static_cast<size_t>(nOther)] != GONE && nOther != nPrevious && nOther != nNext &&
                IsInside(m_vecPoints[static_cast<size_t>(nOther)]) && !IsConvex(nOther))
            {
                return true;
            }
        }
    }
    return false;
}
