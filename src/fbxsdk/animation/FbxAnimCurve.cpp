#include "fbxsdk/animation/FbxAnimCurve.h"

#include "fbxsdk/animation/CFBXAnimCurveReader.h"
#include "fbxsdk/animation/CFBXTangentSolver.h"

#include <algorithm>
#include <cmath>

using Def = FbxAnimCurveDef;

namespace
{

// Inner points that are a third of the way make time run evenly along a Bezier curve.
bool IsThird(float fWeight) { return fWeight == CFBXAnimKey::DEFAULT_WEIGHT; }

double Bezier(double d0, double d1, double d2, double d3, double dParameter)
{
    const double dRest = 1 - dParameter;
    return dRest * dRest * (dRest * d0 + 3 * dParameter * d1) +
           dParameter * dParameter * (3 * dRest * d2 + dParameter * d3);
}

// Where on a curve of times 0, d1, d2, 1 a time is; d1 and d2 from 0 to 1, so that time never runs backwards.
// Newton's method, kept within bounds that close in.
double FindParameter(double d1, double d2, double dTime)
{
    constexpr int MAX_STEPS = 64;
    constexpr double PRECISION = 1e-14;
    double dLow = 0;
    double dHigh = 1;
    double dParameter = dTime;
    for (int n = 0; n < MAX_STEPS; ++n)
    {
        const double dRest = 1 - dParameter;
        const double dError = Bezier(0, d1, d2, 1, dParameter) - dTime;
        if (std::abs(dError) < PRECISION)
        {
            break;
        }
        (dError > 0 ? dHigh : dLow) = dParameter;
        const double dSpeed = 3 * (dRest * dRest * d1 + 2 * dRest * dParameter * (d2 - d1) +
                                   dParameter * dParameter * (1 - d2));
        const double dNext = dParameter - dError / dSpeed;
        dParameter = dNext > dLow && dNext < dHigh ? dNext : (dLow + dHigh) / 2;
    }
    return dParameter;
}

// dPart: 0 at a, 1 at b.
double EvaluateBetween(const FbxAnimCurveKey& a, const FbxAnimCurveKey& b, double dPart)
{
    switch (FbxAnimCurve::GetInterpolation(a.uiFlags))
    {
    case Def::eInterpolationConstant:
        return (a.uiFlags & Def::eConstantNext) != 0 ? b.dValue : a.dValue;
    case Def::eInterpolationLinear:
        return a.dValue + (b.dValue - a.dValue) * dPart;
    default:
        break;
    }
    const double dSeconds = FbxTime(b.nTime - a.nTime).GetSecondDouble();
    const double dOut = static_cast<double>(a.fRightWeight);
    const double dIn = static_cast<double>(b.fLeftWeight);
    const double dParameter =
        IsThird(a.fRightWeight) && IsThird(b.fLeftWeight) ? dPart : FindParameter(dOut, 1 - dIn, dPart);
    return Bezier(a.dValue, a.dValue + static_cast<double>(a.fRightSlope) * dOut * dSeconds,
                  b.dValue - static_cast<double>(b.fLeftSlope) * dIn * dSeconds, b.dValue, dParameter);
}

} // namespace

std::unique_ptr<FbxAnimCurve> FbxAnimCurve::Create(const CFBXObjectTable& rTable, const CFBXObject& rObject)
{
    CFBXAnimCurveReader objReader(rTable, rObject);
    if (!objReader.Read())
    {
        return nullptr;
    }
    std::unique_ptr<FbxAnimCurve> spCurve(new FbxAnimCurve(&rObject));
    spCurve->m_vecKeys = CFBXTangentSolver::Solve(objReader.GetKeys());
    spCurve->m_dDefault = objReader.GetDefault();
    spCurve->m_objPre = objReader.GetPreExtrapolation();
    spCurve->m_objPost = objReader.GetPostExtrapolation();
    return spCurve;
}

Def::EInterpolationType FbxAnimCurve::GetInterpolation(uint32_t uiFlags)
{
    if ((uiFlags & Def::eInterpolationConstant) != 0)
    {
        return Def::eInterpolationConstant;
    }
    return (uiFlags & Def::eInterpolationLinear) != 0 ? Def::eInterpolationLinear : Def::eInterpolationCubic;
}

Def::EConstantMode FbxAnimCurve::KeyGetConstantMode(int n) const
{
    return KeyGetInterpolation(n) == Def::eInterpolationConstant &&
                   (GetKey(n).uiFlags & Def::eConstantNext) != 0
               ? Def::eConstantNext
               : Def::eConstantStandard;
}

FbxAnimCurveSegment FbxAnimCurve::GetSegment(int n) const
{
    const FbxAnimCurveKey& a = GetKey(n);
    const FbxAnimCurveKey& b = GetKey(n + 1);
    FbxAnimCurveSegment objSegment;
    objSegment.eInterpolation = GetInterpolation(a.uiFlags);
    objSegment.bConstantNext = KeyGetConstantMode(n) == Def::eConstantNext;
    objSegment.dTime0 = FbxTime(a.nTime).GetSecondDouble();
    objSegment.dValue0 = a.dValue;
    objSegment.dTime1 = FbxTime(b.nTime).GetSecondDouble();
    objSegment.dValue1 = b.dValue;

    const bool bCubic = objSegment.eInterpolation == Def::eInterpolationCubic;
    const double dSeconds = FbxTime(b.nTime - a.nTime).GetSecondDouble();
    const double dOut = dSeconds * (bCubic ? static_cast<double>(a.fRightWeight) : 1.0 / 3);
    const double dIn = dSeconds * (bCubic ? static_cast<double>(b.fLeftWeight) : 1.0 / 3);
    const double dLine = (b.dValue - a.dValue) / dSeconds;
    objSegment.dOutTime = objSegment.dTime0 + dOut;
    objSegment.dOutValue = a.dValue + dOut * (bCubic ? static_cast<double>(a.fRightSlope) : dLine);
    objSegment.dInTime = objSegment.dTime1 - dIn;
    objSegment.dInValue = b.dValue - dIn * (bCubic ? static_cast<double>(b.fLeftSlope) : dLine);
    return objSegment;
}

double FbxAnimCurve::Evaluate(FbxTime objTime, int* pLast) const
{
    if (m_vecKeys.empty())
    {
        return m_dDefault;
    }
    const int64_t nTime =
        std::clamp(objTime.Get(), -CFBXAnimCurveReader::MAX_TIME, CFBXAnimCurveReader::MAX_TIME);
    if (m_vecKeys.size() == 1)
    {
        return m_vecKeys.front().dValue;
    }
    if (nTime < m_vecKeys.front().nTime)
    {
        return EvaluateOutside(nTime, m_objPre, pLast);
    }
    return nTime > m_vecKeys.back().nTime ? EvaluateOutside(nTime, m_objPost, pLast)
                                          : EvaluateWithinKeys(nTime, pLast);
}

double FbxAnimCurve::EvaluateWithinKeys(int64_t nTime, int* pLast) const
{
    if (nTime == m_vecKeys.back().nTime)
    {
        return m_vecKeys.back().dValue;
    }
    const size_t n = FindSegment(nTime, pLast);
    const FbxAnimCurveKey& a = m_vecKeys[n];
    const FbxAnimCurveKey& b = m_vecKeys[n + 1];
    return EvaluateBetween(a, b,
                           static_cast<double>(nTime - a.nTime) / static_cast<double>(b.nTime - a.nTime));
}

// The time lies from the first key to before the last.
size_t FbxAnimCurve::FindSegment(int64_t nTime, int* pLast) const
{
    if (pLast != nullptr)
    {
        const size_t nHint = static_cast<size_t>(std::clamp(*pLast, 0, KeyGetCount() - 2));
        for (size_t n = nHint; n < std::min(nHint + 2, m_vecKeys.size() - 1); ++n)
        {
            if (m_vecKeys[n].nTime <= nTime && nTime < m_vecKeys[n + 1].nTime)
            {
                *pLast = static_cast<int>(n);
                return n;
            }
        }
    }
    const auto itAfter = std::ranges::upper_bound(m_vecKeys, nTime, {}, &FbxAnimCurveKey::nTime);
    const size_t nFound = static_cast<size_t>(itAfter - m_vecKeys.begin()) - 1;
    if (pLast != nullptr)
    {
        *pLast = static_cast<int>(nFound);
    }
    return nFound;
}

double FbxAnimCurve::EvaluateOutside(int64_t nTime, const SExtrapolation& rExtrapolation, int* pLast) const
{
    const FbxAnimCurveKey& rFirst = m_vecKeys.front();
    const FbxAnimCurveKey& rLast = m_vecKeys.back();
    const bool bBefore = nTime < rFirst.nTime;
    const FbxAnimCurveKey& rNear = bBefore ? rFirst : rLast;
    if (rExtrapolation.eType == Def::eConstant || rExtrapolation.nCount == 0)
    {
        return rNear.dValue;
    }
    if (rExtrapolation.eType == Def::eKeepSlope)
    {
        const float fSlope = bBefore ? rFirst.fRightSlope : rLast.fLeftSlope;
        return rNear.dValue + static_cast<double>(fSlope) * FbxTime(nTime - rNear.nTime).GetSecondDouble();
    }

    // The curve's own span is repetition 0; how far the time is beyond it counts from its near end, outward.
    const int64_t nSpan = rLast.nTime - rFirst.nTime;
    const int64_t nDistance = bBefore ? rFirst.nTime - nTime : nTime - rLast.nTime;
    int64_t nRepetition = nDistance / nSpan + 1;
    int64_t nInto = nDistance % nSpan;
    if (rExtrapolation.nCount > 0 && nRepetition > rExtrapolation.nCount)
    {
        nRepetition = rExtrapolation.nCount;
        nInto = nSpan; // its far end
    }
    const bool bBackwards = rExtrapolation.eType == Def::eMirrorRepetition && nRepetition % 2 == 1;
    const double dValue =
        EvaluateWithinKeys(bBefore == bBackwards ? rFirst.nTime + nInto : rLast.nTime - nInto, pLast);
    if (rExtrapolation.eType != Def::eRelativeRepetition)
    {
        return dValue;
    }
    const double dRise = (rLast.dValue - rFirst.dValue) * static_cast<double>(nRepetition);
    return bBefore ? dValue - dRise : dValue + dRise;
}
