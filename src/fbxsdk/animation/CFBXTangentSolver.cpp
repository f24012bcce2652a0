#include "fbxsdk/animation/CFBXTangentSolver.h"

#include <algorithm>
#include <cmath>
#include <limits>

using Def = FbxAnimCurveDef;

namespace
{

double GetLineSlope(const CFBXAnimKey& a, const CFBXAnimKey& b)
{
    return (b.dValue - a.dValue) / FbxTime(b.nTime - a.nTime).GetSecondDouble();
}

bool IsCubic(const CFBXAnimKey& rKey)
{
    return FbxAnimCurve::GetInterpolation(rKey.uiFlags) == Def::eInterpolationCubic;
}

float ToFloat(double d)
{
    constexpr double MAX_FLOAT = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(d, -MAX_FLOAT, MAX_FLOAT));
}

// Behind a key that is not cubic.
float GetStretchSlope(const CFBXAnimKey& rKey, double dLineSlope)
{
    return FbxAnimCurve::GetInterpolation(rKey.uiFlags) == Def::eInterpolationLinear ? ToFloat(dLineSlope)
                                                                                     : 0.0f;
}

} // namespace

std::vector<FbxAnimCurveKey> CFBXTangentSolver::Solve(std::span<const CFBXAnimKey> arrKeys)
{
    std::vector<FbxAnimCurveKey> vecResults(arrKeys.size());
    for (size_t n = 0; n < arrKeys.size(); ++n)
    {
        const CFBXAnimKey& rKey = arrKeys[n];
        const CFBXAnimKey* pBefore = n > 0 ? &arrKeys[n - 1] : nullptr;
        FbxAnimCurveKey& rResult = vecResults[n];
        rResult.nTime = rKey.nTime;
        rResult.dValue = rKey.dValue;
        rResult.uiFlags = rKey.uiFlags;
        rResult.fRightWeight = rKey.fRightWeight;
        rResult.fLeftWeight = pBefore != nullptr ? pBefore->fNextLeftWeight : CFBXAnimKey::DEFAULT_WEIGHT;
        SetSlopes(rKey, pBefore, Look(arrKeys, n), rResult);
    }
    return vecResults;
}

CFBXTangentSolver::SSurroundings CFBXTangentSolver::Look(std::span<const CFBXAnimKey> arrKeys, size_t n)
{
    SSurroundings objAround;
    objAround.bLeft = n > 0;
    objAround.bRight = n + 1 < arrKeys.size();
    if (!objAround.bLeft && !objAround.bRight)
    {
        return objAround;
    }
    const size_t nLeft = objAround.bLeft ? n - 1 : n;
    const size_t nRight = objAround.bRight ? n + 1 : n;
    objAround.dAcrossSlope = GetLineSlope(arrKeys[nLeft], arrKeys[nRight]);
    objAround.dLeftSlope =
        objAround.bLeft ? GetLineSlope(arrKeys[nLeft], arrKeys[n]) : objAround.dAcrossSlope;
    objAround.dRightSlope =
        objAround.bRight ? GetLineSlope(arrKeys[n], arrKeys[nRight]) : objAround.dAcrossSlope;
    objAround.dLeftWeight = static_cast<double>(arrKeys[nLeft].fNextLeftWeight);
    objAround.dRightWeight = static_cast<double>(arrKeys[n].fRightWeight);
    return objAround;
}

void CFBXTangentSolver::SetSlopes(const CFBXAnimKey& rKey, const CFBXAnimKey* pBefore,
                                  const SSurroundings& rAround, FbxAnimCurveKey& rResult)
{
    // A TCB key has nothing to say of the next one's left side.
    const bool bToldLeft = pBefore != nullptr && (pBefore->uiFlags & Def::eTangentTCB) == 0;
    if ((rKey.uiFlags & Def::eTangentTCB) != 0)
    {
        SetTCBSlopes(rKey, rAround, rResult);
    }
    else if ((rKey.uiFlags & Def::eTangentAuto) != 0)
    {
        // The bias in front of the key is kept with the key before, the other way round.
        const float fLeftBias = bToldLeft ? -pBefore->fNextLeft : 0.0f;
        rResult.fRightSlope = ToFloat(GetAutoSlope(rKey.uiFlags, rAround, static_cast<double>(rKey.fRight)));
        rResult.fLeftSlope = ToFloat(GetAutoSlope(rKey.uiFlags, rAround, static_cast<double>(fLeftBias)));
    }
    else
    {
        rResult.fRightSlope = rKey.fRight;
        rResult.fLeftSlope = bToldLeft ? pBefore->fNextLeft : rKey.fRight;
    }

    // Straight and constant stretches take no notice of tangents.
    if (!IsCubic(rKey))
    {
        rResult.fRightSlope = GetStretchSlope(rKey, rAround.dRightSlope);
    }
    if (pBefore != nullptr && !IsCubic(*pBefore))
    {
        rResult.fLeftSlope = GetStretchSlope(*pBefore, rAround.dLeftSlope);
    }
}

// Kochanek and Bartels, "Interpolating Splines with Local Tension, Continuity, and Bias Control", 1984, with
// slopes for differences. At an end the only line counts twice.
void CFBXTangentSolver::SetTCBSlopes(const CFBXAnimKey& rKey, const SSurroundings& rAround,
                                     FbxAnimCurveKey& rResult)
{
    const double dTension = static_cast<double>(rKey.fRight);
    const double dContinuity = static_cast<double>(rKey.fNextLeft);
    const double dBias = static_cast<double>(rKey.fTCBBias);
    const double dScale = (1 - dTension) / (rAround.bLeft && rAround.bRight ? 2 : 1);
    const double dFromLeft = rAround.bLeft ? dScale * (1 + dBias) * rAround.dLeftSlope : 0;
    const double dFromRight = rAround.bRight ? dScale * (1 - dBias) * rAround.dRightSlope : 0;
    rResult.fLeftSlope = ToFloat(dFromLeft * (1 - dContinuity) + dFromRight * (1 + dContinuity));
    rResult.fRightSlope = ToFloat(dFromLeft * (1 + dContinuity) + dFromRight * (1 - dContinuity));
}

double CFBXTangentSolver::GetAutoSlope(uint32_t uiFlags, const SSurroundings& rAround, double dBias)
{
    if ((uiFlags & Def::eTangentGenericClampProgressive) != 0)
    {
        return GetClampedSlope(rAround);
    }
    if ((uiFlags & Def::eTangentGenericClamp) != 0 && (rAround.dLeftSlope == 0 || rAround.dRightSlope == 0))
    {
        return 0;
    }
    const double dSlope = (uiFlags & Def::eTangentGenericTimeIndependent) != 0
                              ? rAround.dAcrossSlope
                              : (rAround.dLeftSlope + rAround.dRightSlope) / 2;
    // A bias is in percent of the way to the line on its side; what is beyond 500 of them adds to the slope.
    constexpr double MAX_RELATIVE_BIAS = 5;
    constexpr double SLOPE_OF_SQUARED_BIAS = 40;
    const double dPart = std::abs(dBias) / 100;
    const double dBeyond = std::max(0.0, dPart - MAX_RELATIVE_BIAS);
    const double dSide = dBias > 0 ? rAround.dRightSlope : rAround.dLeftSlope;
    return dSlope + dPart * (dSide - dSlope) +
           std::copysign(SLOPE_OF_SQUARED_BIAS * dBeyond * dBeyond, dBias);
}

// The slope from neighbour to neighbour, as far as the inner points of the stretches do not leave the range
// of the values of their keys.
double CFBXTangentSolver::GetClampedSlope(const SSurroundings& rAround)
{
    if (!rAround.bLeft || !rAround.bRight || rAround.dLeftSlope * rAround.dRightSlope <= 0)
    {
        return 0;
    }
    double dSize = std::abs(rAround.dAcrossSlope);
    if (rAround.dLeftWeight > 0)
    {
        dSize = std::min(dSize, std::abs(rAround.dLeftSlope) / rAround.dLeftWeight);
    }
    if (rAround.dRightWeight > 0)
    {
        dSize = std::min(dSize, std::abs(rAround.dRightSlope) / rAround.dRightWeight);
    }
    return std::copysign(dSize, rAround.dAcrossSlope);
}
