// Points of the surface come of the basis functions of L. Piegl and W. Tiller, "The NURBS Book" (algorithm
// A2.2), which are the same for all points of a row or column of the grid.
#include "fbxsdk/geometry/CFBXNurbsPatch.h"

#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/document/CFBXRecord.h"
#include "fbxsdk/objects/CFBXObject.h"
#include "qdcommon/CLog.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr int32_t MAX_ORDER = 64;
constexpr int32_t MAX_STEP = 32;
constexpr size_t GRID_POINTS_PER_BYTE = 2; // of the points in the file

const CFBXRecord* FindOneOf(const CFBXRecord& rRecord, std::string_view strName, std::string_view strOther)
{
    const CFBXRecord* pChild = rRecord.FindChild(strName);
    return pChild != nullptr ? pChild : rRecord.FindChild(strOther);
}

} // namespace

// A line of the grid: where it crosses a direction.
struct CFBXNurbsPatch::CSample
{
    double m_dShare;  // of the way along the direction, 0 to 1
    int32_t m_nFirst; // of the points that have a say here; there are as many as the order
    std::vector<double> m_vecWeights;
    std::vector<double> m_vecSlopes; // how the weights change along the direction
};

std::optional<CFBXNurbsPatch> CFBXNurbsPatch::Read(const CFBXObject& rObject)
{
    if (rObject.pRecord == nullptr)
    {
        Log(FBXSDK, LOG_ERROR, "The file says nothing of surface '%s'", CQDString(rObject.strName));
        return std::nullopt;
    }
    const CFBXRecord& rRecord = *rObject.pRecord;
    CFBXNurbsPatch objPatch;
    objPatch.m_strDescription = rRecord.Describe();
    const CFBXRecord* pOrder = FindOneOf(rRecord, "NurbsSurfaceOrder", "NurbOrder");
    const CFBXRecord* pDimensions = rRecord.FindChild("Dimensions");
    const CFBXRecord* pStep = rRecord.FindChild("Step");
    const CFBXRecord* pPoints = rRecord.FindChild("Points");
    const std::array<const CFBXRecord*, 2> arrKnots{rRecord.FindChild("KnotVectorU"),
                                                    rRecord.FindChild("KnotVectorV")};
    if (pOrder == nullptr || pDimensions == nullptr || pPoints == nullptr ||
        !pPoints->ReadDoubles(objPatch.m_vecPoints))
    {
        Log(FBXSDK, LOG_ERROR, "Surface %s has no points", rRecord.Describe());
        return std::nullopt;
    }
    for (const CFBXValue& rValue : pPoints->GetValues())
    {
        objPatch.m_uiBytes += rValue.IsArray() ? rValue.GetBytes().size() : sizeof(double);
    }
    for (size_t n = 0; n < 2; ++n)
    {
        CDirection& rDirection = objPatch.m_arrDirections[n];
        const int64_t nCount = pDimensions->GetInt64(n);
        rDirection.m_nOrder =
            static_cast<int32_t>(std::clamp<int64_t>(pOrder->GetInt64(n), 0, MAX_ORDER + 1));
        rDirection.m_nStep =
            static_cast<int32_t>(std::clamp<int64_t>(pStep != nullptr ? pStep->GetInt64(n) : 1, 1, MAX_STEP));
        if (arrKnots[n] == nullptr || !arrKnots[n]->ReadDoubles(rDirection.m_vecKnots) || nCount < 1 ||
            nCount > static_cast<int64_t>(rDirection.m_vecKnots.size()) ||
            !rDirection.SetCount(static_cast<int32_t>(nCount)))
        {
            Log(FBXSDK, LOG_ERROR, "Surface %s: order %d, %lld points and %llu knots do not belong together",
                rRecord.Describe(), rDirection.m_nOrder, nCount, rDirection.m_vecKnots.size());
            return std::nullopt;
        }
    }
    const size_t uiNumbers = static_cast<size_t>(objPatch.m_arrDirections[0].m_nCount) *
                             static_cast<size_t>(objPatch.m_arrDirections[1].m_nCount) * 4;
    if (objPatch.m_vecPoints.size() < uiNumbers)
    {
        Log(FBXSDK, LOG_ERROR, "Surface %s has %llu of %llu numbers of its points", rRecord.Describe(),
            objPatch.m_vecPoints.size(), uiNumbers);
        return std::nullopt;
    }
    objPatch.m_vecPoints.resize(uiNumbers);
    objPatch.m_bFlipNormals = rRecord.GetChildInt64("FlipNormals") != 0;
    if (const CFBXRecord* pMaterial = rRecord.FindChild("LayerElementMaterial"))
    {
        const CFBXRecord* pMaterials = pMaterial->FindChild("Materials");
        if (pMaterials != nullptr && pMaterials->ReadInts(objPatch.m_vecMaterials))
        {
            objPatch.m_vecMaterials.resize(std::min<size_t>(objPatch.m_vecMaterials.size(), 1));
        }
    }
    return objPatch;
}

bool CFBXNurbsPatch::CDirection::SetCount(int32_t nCount)
{
    m_nCount = nCount;
    // An open row has order more knots than points, a closed one has the same again for each point that
    // comes back at its end.
    const int64_t nRepeated = static_cast<int64_t>(m_vecKnots.size()) - m_nOrder - nCount;
    if (m_nOrder < 2 || m_nOrder > MAX_ORDER || nRepeated < 0 || nRepeated >= m_nOrder ||
        nCount + nRepeated < m_nOrder)
    {
        return false;
    }
    const auto IsNumber = [](double d) { return std::isfinite(d); };
    return std::all_of(m_vecKnots.begin(), m_vecKnots.end(), IsNumber) &&
           std::is_sorted(m_vecKnots.begin(), m_vecKnots.end()) && GetBegin() < GetEnd();
}

size_t CFBXNurbsPatch::CDirection::CountSamples(int32_t nStep) const
{
    size_t uiStretches = 0;
    for (size_t n = static_cast<size_t>(m_nOrder); n + static_cast<size_t>(m_nOrder) <= m_vecKnots.size();
         ++n)
    {
        uiStretches += m_vecKnots[n - 1] < m_vecKnots[n] ? 1 : 0;
    }
    return uiStretches * static_cast<size_t>(nStep) + 1;
}

std::vector<CFBXNurbsPatch::CSample> CFBXNurbsPatch::GetSamples(const CDirection& rDirection, int32_t nStep)
{
    const std::vector<double>& rKnots = rDirection.m_vecKnots;
    const int32_t nOrder = rDirection.m_nOrder;
    const size_t uiOrder = static_cast<size_t>(nOrder);
    std::vector<CSample> vecSamples;
    const auto AddSample = [&](size_t uiSpan, double dKnot) {
        CSample objSample{(dKnot - rDirection.GetBegin()) / (rDirection.GetEnd() - rDirection.GetBegin()),
                          static_cast<int32_t>(uiSpan) - nOrder + 1, std::vector<double>(uiOrder),
                          std::vector<double>(uiOrder)};
        std::vector<double>& rWeights = objSample.m_vecWeights;
        rWeights[0] = 1;
        for (size_t uiDegree = 1; uiDegree < uiOrder; ++uiDegree)
        {
            const std::vector<double> vecLower(rWeights.begin(),
                                               rWeights.begin() + static_cast<std::ptrdiff_t>(uiDegree));
            double dCarry = 0;
            double dSlopeCarry = 0;
            for (size_t n = 0; n < uiDegree; ++n)
            {
                const double dRight = rKnots[uiSpan + n + 1];
                const double dLeft = rKnots[uiSpan + n + 1 - uiDegree];
                const double dPart = vecLower[n] / (dRight - dLeft);
                rWeights[n] = dCarry + (dRight - dKnot) * dPart;
                dCarry = (dKnot - dLeft) * dPart;
                // Those of the highest degree are what remains.
                objSample.m_vecSlopes[n] = static_cast<double>(uiDegree) * (dSlopeCarry - dPart);
                dSlopeCarry = dPart;
            }
            rWeights[uiDegree] = dCarry;
            objSample.m_vecSlopes[uiDegree] = static_cast<double>(uiDegree) * dSlopeCarry;
        }
        vecSamples.push_back(std::move(objSample));
    };

    size_t uiLastSpan = 0;
    for (size_t uiSpan = uiOrder - 1; uiSpan + uiOrder < rKnots.size(); ++uiSpan)
    {
        const double dWidth = rKnots[uiSpan + 1] - rKnots[uiSpan];
        for (int32_t n = 0; dWidth > 0 && n < nStep; ++n)
        {
            AddSample(uiSpan, rKnots[uiSpan] + dWidth * n / nStep);
            uiLastSpan = uiSpan;
        }
    }
    AddSample(uiLastSpan, rDirection.GetEnd());
    return vecSamples;
}

size_t CFBXNurbsPatch::CountPoints(const std::array<int32_t, 2>& rSteps) const
{
    constexpr size_t USUAL_ORDERS = 4 * 4;
    const size_t uiOrders = static_cast<size_t>(m_arrDirections[0].m_nOrder * m_arrDirections[1].m_nOrder);
    return m_arrDirections[0].CountSamples(rSteps[0]) * m_arrDirections[1].CountSamples(rSteps[1]) *
           ((uiOrders + USUAL_ORDERS - 1) / USUAL_ORDERS);
}

FbxMesh::CParts CFBXNurbsPatch::Tessellate(size_t& rnPointsLeft) const
{
    std::array<int32_t, 2> arrSteps{m_arrDirections[0].m_nStep, m_arrDirections[1].m_nStep};
    const size_t uiWorth = m_uiBytes * GRID_POINTS_PER_BYTE;
    const auto AreTooMany = [&] { return CountPoints(arrSteps) > uiWorth + rnPointsLeft; };
    if (AreTooMany())
    {
        Log(FBXSDK, LOG_WARNING, "Surface %s is made coarser: steps of %d and %d give too many points",
            m_strDescription, arrSteps[0], arrSteps[1]);
    }
    while (AreTooMany() && (arrSteps[0] > 1 || arrSteps[1] > 1))
    {
        arrSteps = {std::max(arrSteps[0] / 2, 1), std::max(arrSteps[1] / 2, 1)};
    }
    const size_t uiPoints = CountPoints(arrSteps);
    rnPointsLeft -= std::min(rnPointsLeft, uiPoints - std::min(uiPoints, uiWorth));
    const std::vector<CSample> vecColumns = GetSamples(m_arrDirections[0], arrSteps[0]);
    const std::vector<CSample> vecRows = GetSamples(m_arrDirections[1], arrSteps[1]);

    CFBXSurfaceGrid objGrid(vecColumns.size(), vecRows.size());
    for (const CSample& rRow : vecRows)
    {
        for (const CSample& rColumn : vecColumns)
        {
            CFBXSurfaceGrid::CPlace objPlace = GetPlace(rColumn, rRow);
            objPlace.m_arrUV = {rColumn.m_dShare, rRow.m_dShare};
            objGrid.AddPlace(objPlace);
        }
    }
    FbxMesh::CParts objParts = objGrid.MakeMesh(m_bFlipNormals);
    objParts.m_vecMaterials = m_vecMaterials;
    return objParts;
}

CFBXSurfaceGrid::CPlace CFBXNurbsPatch::GetPlace(const CSample& rColumn, const CSample& rRow) const
{
    // With the weight as a fourth coordinate that the others are multiplied with the surface is a plain one.
    std::array<double, 4> arrPoint{};
    std::array<double, 4> arrAlongU{};
    std::array<double, 4> arrAlongV{};
    const int32_t nWidth = m_arrDirections[0].m_nCount;
    const int32_t nHeight = m_arrDirections[1].m_nCount;
    for (size_t uiRow = 0; uiRow < rRow.m_vecWeights.size(); ++uiRow)
    {
        const size_t uiV = static_cast<size_t>((rRow.m_nFirst + static_cast<int32_t>(uiRow)) % nHeight);
        for (size_t uiColumn = 0; uiColumn < rColumn.m_vecWeights.size(); ++uiColumn)
        {
            const size_t uiU =
                static_cast<size_t>((rColumn.m_nFirst + static_cast<int32_t>(uiColumn)) % nWidth);
            const double* p = m_vecPoints.data() + (uiV * static_cast<size_t>(nWidth) + uiU) * 4;
            const double dPoint = rColumn.m_vecWeights[uiColumn] * rRow.m_vecWeights[uiRow];
            const double dAlongU = rColumn.m_vecSlopes[uiColumn] * rRow.m_vecWeights[uiRow];
            const double dAlongV = rColumn.m_vecWeights[uiColumn] * rRow.m_vecSlopes[uiRow];
            for (size_t n = 0; n < 4; ++n)
            {
                const double dValue = n < 3 ? p[n] * p[3] : p[3];
                arrPoint[n] += dPoint * dValue;
                arrAlongU[n] += dAlongU * dValue;
                arrAlongV[n] += dAlongV * dValue;
            }
        }
    }
    CFBXSurfaceGrid::CPlace objPlace{};
    const double dWeight = arrPoint[3] != 0 ? arrPoint[3] : 1;
    for (size_t n = 0; n < 3; ++n)
    {
        objPlace.m_arrPoint[n] = arrPoint[n] / dWeight;
        objPlace.m_arrAlongU[n] = (arrAlongU[n] - arrAlongU[3] * objPlace.m_arrPoint[n]) / dWeight;
        objPlace.m_arrAlongV[n] = (arrAlongV[n] - arrAlongV[3] * objPlace.m_arrPoint[n]) / dWeight;
    }
    return objPlace;
}
