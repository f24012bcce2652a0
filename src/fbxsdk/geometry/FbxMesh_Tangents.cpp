// Tangents for normal maps: along the first texture coordinate, weighed by the angles of the corners that
// share one, as Mikkelsen ("Simulation of Wrinkled Surfaces Revisited", 2008) and the baking tools that
// follow him do.
#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/geometry/FbxMesh.h"
#include "qdcommon/CLog.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

namespace
{

using CVector = std::array<double, 3>;

CVector operator+(const CVector& a, const CVector& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }
CVector operator-(const CVector& a, const CVector& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
CVector operator*(const CVector& a, double d) { return {a[0] * d, a[1] * d, a[2] * d}; }
double Dot(const CVector& a, const CVector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

CVector Cross(const CVector& a, const CVector& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// Zero stays zero.
CVector Normalize(const CVector& a)
{
    const double dLength = std::sqrt(Dot(a, a));
    return dLength > 0 ? a * (1 / dLength) : a;
}

// Some direction across another one.
CVector GetPerpendicular(const CVector& a)
{
    const CVector arrAxis = std::abs(a[0]) < 0.6 ? CVector{1, 0, 0} : CVector{0, 1, 0};
    return Normalize(arrAxis - a * Dot(arrAxis, a));
}

// What is not a number has no place in an order: it becomes zero.
template <size_t COUNT>
void CopyNumbers(std::array<double, COUNT>& rNumbers, const float* pFrom)
{
    for (size_t n = 0; n < COUNT; ++n)
    {
        rNumbers[n] = std::isnan(pFrom[n]) ? 0 : static_cast<double>(pFrom[n]);
    }
}

// What counts of a corner of a polygon.
struct CCorner
{
    int32_t m_nControlPoint;
    CVector m_arrNormal;
    std::array<double, 2> m_arrUV;
    CVector m_arrTangent; // along u, in the plane of the normal; as long as the corner's angle in radians
    bool m_bMirrored;

    bool ShareTangent(const CCorner& rOther) const
    {
        return m_nControlPoint == rOther.m_nControlPoint && m_bMirrored == rOther.m_bMirrored &&
               m_arrUV == rOther.m_arrUV && m_arrNormal == rOther.m_arrNormal;
    }
};

} // namespace

bool FbxMesh::GenerateTangentsData(int32_t nUVLayer)
{
    const FbxLayerElement* pUVs = GetElementUV(nUVLayer);
    const FbxLayerElement* pNormals = GetElementNormal();
    if (pUVs == nullptr || pNormals == nullptr || m_vecPolygonVertices.empty())
    {
        Log(FBXSDK, LOG_ERROR, "Mesh '%s' has no normals or no texture coordinate set %d to make tangents of",
            GetName(), nUVLayer);
        return false;
    }

    const auto GetCorner = [&](int32_t nPolygon, int32_t nCorner) {
        const int32_t nPoint = m_vecPolygonVertices[static_cast<size_t>(nCorner)];
        CCorner objCorner{nPoint, {}, {}, {}, false};
        CopyNumbers(objCorner.m_arrUV, pUVs->GetValue(pUVs->GetIndex(nPolygon, nCorner, nPoint)));
        CopyNumbers(objCorner.m_arrNormal, pNormals->GetValue(pNormals->GetIndex(nPolygon, nCorner, nPoint)));
        return objCorner;
    };
    const auto GetPosition = [&](const CCorner& rCorner) {
        const double* p = m_vecControlPoints.data() + static_cast<size_t>(rCorner.m_nControlPoint) * 3;
        return CVector{p[0], p[1], p[2]};
    };
    std::vector<CCorner> vecCorners;
    vecCorners.reserve(m_vecPolygonVertices.size());
    for (int32_t nPolygon = 0; nPolygon < GetPolygonCount(); ++nPolygon)
    {
        const int32_t nBegin = GetPolygonStart(nPolygon);
        const int32_t nEnd = GetPolygonStart(nPolygon + 1);
        for (int32_t n = nBegin; n < nEnd; ++n)
        {
            CCorner objCorner = GetCorner(nPolygon, n);
            const CCorner objNext = GetCorner(nPolygon, n + 1 < nEnd ? n + 1 : nBegin);
            const CCorner objPrevious = GetCorner(nPolygon, n > nBegin ? n - 1 : nEnd - 1);
            const CVector arrSide1 = GetPosition(objNext) - GetPosition(objCorner);
            const CVector arrSide2 = GetPosition(objPrevious) - GetPosition(objCorner);
            const double dU1 = objNext.m_arrUV[0] - objCorner.m_arrUV[0];
            const double dV1 = objNext.m_arrUV[1] - objCorner.m_arrUV[1];
            const double dU2 = objPrevious.m_arrUV[0] - objCorner.m_arrUV[0];
            const double dV2 = objPrevious.m_arrUV[1] - objCorner.m_arrUV[1];

            // The change of place along u: sides = tangent * du + bitangent * dv, solved for the tangent.
            const double dArea = dU1 * dV2 - dU2 * dV1;
            const CVector arrAlongU = (arrSide1 * dV2 - arrSide2 * dV1) * (dArea < 0 ? -1 : 1);
            const CVector& rNormal = objCorner.m_arrNormal;
            const CVector arrTangent = Normalize(arrAlongU - rNormal * Dot(rNormal, arrAlongU));
            const double dCosine = Dot(Normalize(arrSide1), Normalize(arrSide2));
            objCorner.m_arrTangent = arrTangent * std::acos(std::clamp(dCosine, -1.0, 1.0));
            objCorner.m_bMirrored = dArea * Dot(Cross(arrSide1, arrSide2), rNormal) < 0;
            vecCorners.push_back(objCorner);
        }
    }

    // Those that share a tangent side by side: first by control points, of which each has a few corners only.
    std::vector<size_t> vecEnds(static_cast<size_t>(GetControlPointsCount()) + 1); // of each point's corners
    for (const CCorner& rCorner : vecCorners)
    {
        ++vecEnds[static_cast<size_t>(rCorner.m_nControlPoint) + 1];
    }
    std::partial_sum(vecEnds.begin(), vecEnds.end(), vecEnds.begin());
    std::vector<int32_t> vecOrder(vecCorners.size());
    for (size_t n = 0; n < vecCorners.size(); ++n)
    {
        vecOrder[vecEnds[static_cast<size_t>(vecCorners[n].m_nControlPoint)]++] = static_cast<int32_t>(n);
    }
    const auto Get = [&](int32_t n) -> const CCorner& { return vecCorners[static_cast<size_t>(n)]; };
    for (size_t n = 0; n + 1 < vecEnds.size(); ++n)
    {
        const auto itBegin = vecOrder.begin() + static_cast<std::ptrdiff_t>(n > 0 ? vecEnds[n - 1] : 0);
        const auto itEnd = vecOrder.begin() + static_cast<std::ptrdiff_t>(vecEnds[n]);
        std::sort(itBegin, itEnd, [&](int32_t a, int32_t b) {
            const CCorner& rA = Get(a);
            const CCorner& rB = Get(b);
            return std::tie(rA.m_bMirrored, rA.m_arrUV, rA.m_arrNormal, a) <
                   std::tie(rB.m_bMirrored, rB.m_arrUV, rB.m_arrNormal, b);
        });
    }
    std::vector<float> vecTangents;
    std::vector<int32_t> vecIndices(vecCorners.size());
    for (size_t uiBegin = 0; uiBegin < vecOrder.size();)
    {
        const CCorner& rFirst = Get(vecOrder[uiBegin]);
        const int32_t nTangent = static_cast<int32_t>(vecTangents.size() / 4);
        CVector arrSum{};
        size_t uiEnd = uiBegin;
        for (; uiEnd < vecOrder.size() && Get(vecOrder[uiEnd]).ShareTangent(rFirst); ++uiEnd)
        {
            arrSum = arrSum + Get(vecOrder[uiEnd]).m_arrTangent;
            vecIndices[static_cast<size_t>(vecOrder[uiEnd])] = nTangent;
        }
        const CVector arrTangent =
            Dot(arrSum, arrSum) > 0 ? Normalize(arrSum) : GetPerpendicular(rFirst.m_arrNormal);
        for (const double d : arrTangent)
        {
            vecTangents.push_back(static_cast<float>(d));
        }
        vecTangents.push_back(rFirst.m_bMirrored ? -1.0f : 1.0f);
        uiBegin = uiEnd;
    }
    std::optional<FbxLayerElement> objElement =
        FbxLayerElement::Create(FbxLayerElement::eTangent, pUVs->GetName(), FbxLayerElement::eByPolygonVertex,
                                std::move(vecTangents), std::move(vecIndices), GetCounts(), GetName());
    m_arrElements[FbxLayerElement::eTangent].assign(1, std::move(*objElement));
    return true;
}
