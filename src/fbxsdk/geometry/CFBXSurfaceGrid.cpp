#include "fbxsdk/geometry/CFBXSurfaceGrid.h"

#include <algorithm>
#include <cmath>

namespace
{

using CVector = std::array<double, 3>;

// Shares of the surface's extent below which points are the same.
constexpr double SAME_POINT = 1e-6;

CVector operator+(const CVector& a, const CVector& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }
CVector operator-(const CVector& a, const CVector& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
double Dot(const CVector& a, const CVector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

CVector Cross(const CVector& a, const CVector& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

} // namespace

CFBXSurfaceGrid::CFBXSurfaceGrid(size_t uiColumns, size_t uiRows) : m_uiColumns(uiColumns), m_uiRows(uiRows)
{
    m_vecPlaces.reserve(uiColumns * uiRows);
}

double CFBXSurfaceGrid::GetExtent() const
{
    CVector arrMin = m_vecPlaces[0].m_arrPoint;
    CVector arrMax = arrMin;
    for (const CPlace& rPlace : m_vecPlaces)
    {
        for (size_t n = 0; n < 3; ++n)
        {
            arrMin[n] = std::min(arrMin[n], rPlace.m_arrPoint[n]);
            arrMax[n] = std::max(arrMax[n], rPlace.m_arrPoint[n]);
        }
    }
    const CVector arrSize = arrMax - arrMin;
    return std::max({arrSize[0], arrSize[1], arrSize[2]});
}

std::vector<size_t> CFBXSurfaceGrid::FindSamePoints() const
{
    // A row or column: every so many places from a first one.
    struct CLine
    {
        size_t m_uiFirst;
        size_t m_uiStep;
        size_t m_uiCount;
    };
    const CLine arrRows[2] = {{0, 1, m_uiColumns}, {GetIndex(0, m_uiRows - 1), 1, m_uiColumns}};
    const CLine arrColumns[2] = {{0, m_uiColumns, m_uiRows}, {m_uiColumns - 1, m_uiColumns, m_uiRows}};
    const double dNear = GetExtent() * SAME_POINT;
    const auto Meet = [&](const CLine& rA, const CLine& rB) {
        for (size_t n = 0; n < rA.m_uiCount; ++n)
        {
            const CVector arrWay = m_vecPlaces[rA.m_uiFirst + n * rA.m_uiStep].m_arrPoint -
                                   m_vecPlaces[rB.m_uiFirst + n * rB.m_uiStep].m_arrPoint;
            if (!(Dot(arrWay, arrWay) <= dNear * dNear))
            {
                return false;
            }
        }
        return true;
    };
    const auto IsPole = [&](const CLine& rLine) {
        return Meet(rLine, {rLine.m_uiFirst, 0, rLine.m_uiCount});
    };

    std::vector<size_t> vecSame(m_vecPlaces.size());
    for (size_t n = 0; n < vecSame.size(); ++n)
    {
        vecSame[n] = n;
    }
    const auto Join = [&](const CLine& rLine, const CLine& rWith) {
        for (size_t n = 0; n < rLine.m_uiCount; ++n)
        {
            vecSame[rLine.m_uiFirst + n * rLine.m_uiStep] = vecSame[rWith.m_uiFirst + n * rWith.m_uiStep];
        }
    };
    for (const CLine* pLines : {arrRows, arrColumns})
    {
        for (size_t n = 0; n < 2; ++n)
        {
            if (IsPole(pLines[n]))
            {
                Join(pLines[n], {pLines[n].m_uiFirst, 0, pLines[n].m_uiCount});
            }
        }
    }
    for (const CLine* pLines : {arrRows, arrColumns})
    {
        if (Meet(pLines[0], pLines[1]))
        {
            Join(pLines[1], pLines[0]);
        }
    }
    // What has been joined to one that was joined later; those joined to come before.
    for (size_t& rSame : vecSame)
    {
        rSame = vecSame[rSame];
    }
    return vecSame;
}

std::vector<float> CFBXSurfaceGrid::GetNormals(const std::vector<size_t>& rSamePoints, bool bFlip) const
{
    // Of the polygons around a point.
    std::vector<CVector> vecAround(m_vecPlaces.size());
    for (size_t uiRow = 0; uiRow + 1 < m_uiRows; ++uiRow)
    {
        for (size_t uiColumn = 0; uiColumn + 1 < m_uiColumns; ++uiColumn)
        {
            const size_t uiFirst = GetIndex(uiColumn, uiRow);
            const size_t uiAbove = uiFirst + m_uiColumns;
            const CVector arrNormal =
                Cross(m_vecPlaces[uiAbove + 1].m_arrPoint - m_vecPlaces[uiFirst].m_arrPoint,
                      m_vecPlaces[uiAbove].m_arrPoint - m_vecPlaces[uiFirst + 1].m_arrPoint);
            for (const size_t uiPlace : {uiFirst, uiFirst + 1, uiAbove, uiAbove + 1})
            {
                CVector& rAround = vecAround[rSamePoints[uiPlace]];
                rAround = rAround + arrNormal;
            }
        }
    }

    std::vector<CVector> vecExact;
    vecExact.reserve(m_vecPlaces.size());
    double dLongest = 0; // squared
    for (const CPlace& rPlace : m_vecPlaces)
    {
        vecExact.push_back(Cross(rPlace.m_arrAlongU, rPlace.m_arrAlongV));
        dLongest = std::max(dLongest, Dot(vecExact.back(), vecExact.back()));
    }

    std::vector<float> vecNormals;
    vecNormals.reserve(m_vecPlaces.size() * 3);
    for (size_t n = 0; n < m_vecPlaces.size(); ++n)
    {
        // At poles the derivatives leave nothing but rounding errors.
        const CVector& rNormal =
            Dot(vecExact[n], vecExact[n]) > dLongest * 1e-18 ? vecExact[n] : vecAround[rSamePoints[n]];
        const double dLength = std::sqrt(Dot(rNormal, rNormal));
        const double dScale = dLength > 0 ? (bFlip ? -1 : 1) / dLength : 0;
        for (const double d : rNormal)
        {
            vecNormals.push_back(static_cast<float>(d * dScale));
        }
    }
    return vecNormals;
}

FbxMesh::CParts CFBXSurfaceGrid::MakeMesh(bool bFlip) const
{
    FbxMesh::CParts objParts;
    const std::vector<size_t> vecSame = FindSamePoints();
    std::vector<int32_t> vecPoints(vecSame.size()); // where a place's own point is
    std::vector<float> vecUVs;
    vecUVs.reserve(vecSame.size() * 2);
    for (size_t n = 0; n < vecSame.size(); ++n)
    {
        const CPlace& rPlace = m_vecPlaces[n];
        for (const double d : rPlace.m_arrUV)
        {
            vecUVs.push_back(static_cast<float>(d));
        }
        if (vecSame[n] == n)
        {
            vecPoints[n] = static_cast<int32_t>(objParts.m_vecControlPoints.size() / 3);
            objParts.m_vecControlPoints.insert(objParts.m_vecControlPoints.end(), rPlace.m_arrPoint.begin(),
                                               rPlace.m_arrPoint.end());
        }
    }

    std::vector<int32_t> vecPlaces; // of each corner
    objParts.m_vecPolygonStarts.push_back(0);
    for (size_t uiRow = 0; uiRow + 1 < m_uiRows; ++uiRow)
    {
        for (size_t uiColumn = 0; uiColumn + 1 < m_uiColumns; ++uiColumn)
        {
            std::array<size_t, 4> arrCorners{GetIndex(uiColumn, uiRow), GetIndex(uiColumn + 1, uiRow),
                                             GetIndex(uiColumn + 1, uiRow + 1),
                                             GetIndex(uiColumn, uiRow + 1)};
            if (bFlip)
            {
                std::swap(arrCorners[1], arrCorners[3]);
            }
            const size_t uiStart = vecPlaces.size();
            for (size_t n = 0; n < 4; ++n)
            {
                if (vecSame[arrCorners[n]] != vecSame[arrCorners[(n + 1) % 4]])
                {
                    vecPlaces.push_back(static_cast<int32_t>(arrCorners[n]));
                }
            }
            if (vecPlaces.size() < uiStart + 3)
            {
                vecPlaces.resize(uiStart);
                continue;
            }
            objParts.m_vecPolygonStarts.push_back(static_cast<int32_t>(vecPlaces.size()));
        }
    }
    objParts.m_vecPolygonVertices.reserve(vecPlaces.size());
    for (const int32_t nPlace : vecPlaces)
    {
        objParts.m_vecPolygonVertices.push_back(vecPoints[vecSame[static_cast<size_t>(nPlace)]]);
    }

    const FbxLayerElement::CCounts objCounts{objParts.m_vecControlPoints.size() / 3, vecPlaces.size(),
                                             objParts.m_vecPolygonStarts.size() - 1};
    const auto AddElement = [&](FbxLayerElement::EType eType, std::vector<float>&& vecValues) {
        if (std::optional<FbxLayerElement> objElement = FbxLayerElement::Create(
                eType, CQDString(), FbxLayerElement::eByPolygonVertex, std::move(vecValues),
                std::vector<int32_t>(vecPlaces), objCounts, "of a surface"))
        {
            objParts.m_vecElements.push_back(std::move(*objElement));
        }
    };
    AddElement(FbxLayerElement::eNormal, GetNormals(vecSame, bFlip));
    AddElement(FbxLayerElement::eUV, std::move(vecUVs));
    return objParts;
}
