#include "qdsgloader_fbx/CFBXCurveKeys.h"

#include "fbxsdk/fbxsdk.h"

#include <algorithm>
#include <cmath>

namespace
{

using CKeys = std::vector<CFBXCurveKey>;

double GetThird(double fNear, double fFar) { return fNear + (fFar - fNear) / 3; }

// The control points of the straight pieces, between the values that the keys have by now.
void StraightenPieces(CKeys& rvecKeys)
{
    for (size_t n = 0; n + 1 < rvecKeys.size(); ++n)
    {
        CFBXCurveKey& rKey = rvecKeys[n];
        CFBXCurveKey& rNext = rvecKeys[n + 1];
        if (rKey.m_ePiece != EFBXPiece::Cubic)
        {
            rKey.m_fOutTime = GetThird(rKey.m_fTime, rNext.m_fTime);
            rKey.m_fOutValue = GetThird(rKey.m_fBehind, rNext.m_fBefore);
            rNext.m_fInTime = GetThird(rNext.m_fTime, rKey.m_fTime);
            rNext.m_fInValue = GetThird(rNext.m_fBefore, rKey.m_fBehind);
        }
    }
}

// The curve as it is seen from behind: times change their sign.
void Reverse(CKeys& rvecKeys)
{
    std::ranges::reverse(rvecKeys);
    for (size_t n = 0; n < rvecKeys.size(); ++n)
    {
        CFBXCurveKey& rKey = rvecKeys[n];
        std::swap(rKey.m_fBefore, rKey.m_fBehind);
        std::swap(rKey.m_fInTime, rKey.m_fOutTime);
        std::swap(rKey.m_fInValue, rKey.m_fOutValue);
        rKey.m_fTime = 0 - rKey.m_fTime; // never -0
        rKey.m_fInTime = 0 - rKey.m_fInTime;
        rKey.m_fOutTime = 0 - rKey.m_fOutTime;
        rKey.m_ePiece = n + 1 < rvecKeys.size() ? rvecKeys[n + 1].m_ePiece : EFBXPiece::Hold;
    }
}

// Appends a curve in another place: its first key and the last one here become one, which has of either what
// lies on its side, and the value that is there already.
void Append(CKeys& rvecKeys, const CKeys& rvecMore, double fTimeOffset, double fValueOffset)
{
    const auto MoveTo = [&](CFBXCurveKey& rKey) {
        for (double* pfTime : {&rKey.m_fTime, &rKey.m_fInTime, &rKey.m_fOutTime})
        {
            *pfTime += fTimeOffset;
        }
        for (double* pfValue :
             {&rKey.m_fBefore, &rKey.m_fValue, &rKey.m_fBehind, &rKey.m_fInValue, &rKey.m_fOutValue})
        {
            *pfValue += fValueOffset;
        }
    };
    CFBXCurveKey objFirst = rvecMore.front();
    MoveTo(objFirst);
    CFBXCurveKey& rJoint = rvecKeys.back();
    rJoint.m_fBehind = objFirst.m_fBehind;
    rJoint.m_fOutTime = objFirst.m_fOutTime;
    rJoint.m_fOutValue = objFirst.m_fOutValue;
    rJoint.m_ePiece = objFirst.m_ePiece;
    for (size_t n = 1; n < rvecMore.size(); ++n)
    {
        rvecKeys.push_back(rvecMore[n]);
        MoveTo(rvecKeys.back());
    }
}

// How often the curve follows behind itself before the end.
double CountRepetitions(const CKeys& rvecCurve, int32_t nMaxRepetitions, double fEnd)
{
    const double fLast = rvecCurve.back().m_fTime;
    const double fPeriod = fLast - rvecCurve.front().m_fTime;
    if (!(fPeriod > 0) || !(fEnd > fLast))
    {
        return 0;
    }
    const double fRepetitions = std::ceil((fEnd - fLast) / fPeriod);
    return nMaxRepetitions < 0 ? fRepetitions : std::min<double>(fRepetitions, nMaxRepetitions);
}

// Makes keys of how the curve goes on behind its last key, up to the end and the value there. False when they
// are too many.
bool AppendExtrapolation(CKeys& rvecKeys, const CKeys& rvecCurve, const FbxAnimCurve::SExtrapolation& rHow,
                         double fEnd, double fEndValue, CFBXKeyBudget& rBudget)
{
    constexpr double NUMBERS = 2 * sizeof(CFBXCurveKey) / sizeof(float);

    if (rHow.eType == FbxAnimCurveDef::eConstant || !(fEnd > rvecKeys.back().m_fTime))
    {
        return true;
    }
    if (rHow.eType == FbxAnimCurveDef::eKeepSlope)
    {
        CFBXCurveKey objEnd;
        objEnd.m_fTime = fEnd;
        objEnd.m_fBefore = objEnd.m_fValue = objEnd.m_fBehind = fEndValue;
        rvecKeys.back().m_ePiece = EFBXPiece::Linear;
        rvecKeys.push_back(objEnd);
        return true;
    }
    const double fRepetitions = CountRepetitions(rvecCurve, rHow.nCount, fEnd);
    if (!rBudget.Take(fRepetitions * static_cast<double>(rvecCurve.size()) * NUMBERS))
    {
        return false;
    }
    CKeys vecMirrored = rvecCurve;
    Reverse(vecMirrored);
    const double fPeriod = rvecCurve.back().m_fTime - rvecCurve.front().m_fTime;
    const double fStep = rHow.eType == FbxAnimCurveDef::eRelativeRepetition
                             ? rvecCurve.back().m_fValue - rvecCurve.front().m_fValue
                             : 0;
    for (double n = 1; n <= fRepetitions; ++n)
    {
        const bool bMirrored = rHow.eType == FbxAnimCurveDef::eMirrorRepetition && std::fmod(n, 2) == 1;
        const CKeys& rvecCopy = bMirrored ? vecMirrored : rvecCurve;
        const double fBegin = rvecCurve.front().m_fTime + n * fPeriod;
        Append(rvecKeys, rvecCopy, fBegin - rvecCopy.front().m_fTime, n * fStep);
    }
    return true;
}

} // namespace

double CFBXKeyRange::CountFrames() const
{
    // A frame that is nearer to the end than that is the end.
    constexpr double SAME_FRAME = 1e-4;

    return std::max(0.0, std::ceil((m_fEnd - m_fBegin) * m_fFramesPerSecond - SAME_FRAME)) + 1;
}

double CFBXKeyRange::GetFrameTime(size_t nFrame) const
{
    return std::min(m_fEnd, m_fBegin + static_cast<double>(nFrame) / m_fFramesPerSecond);
}

bool CFBXKeyBudget::Take(double fNumbers)
{
    const bool bEnough = fNumbers <= m_fLeft;
    m_fLeft -= bEnough ? fNumbers : 0;
    return bEnough;
}

bool CFBXKeyBudget::TakeKeysOf(const FbxAnimCurve& rCurve)
{
    const double fNumbers = NUMBERS_PER_KEY * rCurve.KeyGetCount();
    if (m_setCurves.insert(&rCurve).second)
    {
        m_fLeft += fNumbers;
        return true;
    }
    return Take(fNumbers);
}

CFBXCurveKeys::CFBXCurveKeys(const FbxAnimCurve& rCurve, const CFBXKeyRange& rRange, CFBXKeyBudget& rBudget)
    : m_fConstant(rCurve.Evaluate(FbxTime()))
{
    const auto& rPre = rCurve.GetPreExtrapolation();
    const auto& rPost = rCurve.GetPostExtrapolation();
    const bool bSlopes =
        rPre.eType == FbxAnimCurveDef::eKeepSlope || rPost.eType == FbxAnimCurveDef::eKeepSlope;
    AddCurve(rCurve);
    if (!bSlopes)
    {
        MakeConstantIfSame();
    }
    if (m_vecKeys.empty())
    {
        return;
    }
    if (rRange.m_fFramesPerSecond > 0)
    {
        m_bCut = !(rRange.CountFrames() <= CFBXKeyRange::MAX_FRAMES) || !rBudget.Take(rRange.CountFrames());
        if (!m_bCut)
        {
            AddFrames(rCurve, rRange);
        }
    }
    if (m_bCut || !(rRange.m_fFramesPerSecond > 0))
    {
        AddExtrapolations(rCurve, rRange, rBudget);
    }
    MakeConstantIfSame();
}

void CFBXCurveKeys::AddExtrapolations(const FbxAnimCurve& rCurve, const CFBXKeyRange& rRange,
                                      CFBXKeyBudget& rBudget)
{
    const auto& rPre = rCurve.GetPreExtrapolation();
    const auto& rPost = rCurve.GetPostExtrapolation();
    if (rPre.eType == FbxAnimCurveDef::eConstant && rPost.eType == FbxAnimCurveDef::eConstant)
    {
        return; // nearly all curves
    }
    CKeys vecCurve = m_vecKeys;
    const double fEndValue = rCurve.Evaluate(FbxTime::FromSeconds(rRange.m_fEnd));
    m_bCut |= !AppendExtrapolation(m_vecKeys, vecCurve, rPost, rRange.m_fEnd, fEndValue, rBudget);
    Reverse(m_vecKeys);
    Reverse(vecCurve);
    const double fBeginValue = rCurve.Evaluate(FbxTime::FromSeconds(rRange.m_fBegin));
    m_bCut |= !AppendExtrapolation(m_vecKeys, vecCurve, rPre, -rRange.m_fBegin, fBeginValue, rBudget);
    Reverse(m_vecKeys);
    StraightenPieces(m_vecKeys);
}

void CFBXCurveKeys::AddCurve(const FbxAnimCurve& rCurve)
{
    const int nCount = rCurve.KeyGetCount();
    m_vecKeys.resize(static_cast<size_t>(nCount));
    for (int n = 0; n < nCount; ++n)
    {
        CFBXCurveKey& rKey = m_vecKeys[static_cast<size_t>(n)];
        rKey.m_fTime = rCurve.KeyGetTime(n).GetSecondDouble();
        rKey.m_fValue = rCurve.KeyGetValue(n);
        rKey.m_fBehind = rKey.m_fValue;
        if (n == 0)
        {
            rKey.m_fBefore = rKey.m_fValue;
        }
        if (n + 1 == nCount)
        {
            continue;
        }
        const FbxAnimCurveSegment objSegment = rCurve.GetSegment(n);
        CFBXCurveKey& rNext = m_vecKeys[static_cast<size_t>(n) + 1];
        rNext.m_fBefore = objSegment.dValue1;
        switch (objSegment.eInterpolation)
        {
        case FbxAnimCurveDef::eInterpolationConstant:
            rKey.m_ePiece = EFBXPiece::Hold;
            rKey.m_fBehind = objSegment.bConstantNext ? objSegment.dValue1 : rKey.m_fValue;
            rNext.m_fBefore = rKey.m_fBehind;
            break;
        case FbxAnimCurveDef::eInterpolationLinear:
            rKey.m_ePiece = EFBXPiece::Linear;
            break;
        case FbxAnimCurveDef::eInterpolationCubic:
            rKey.m_ePiece = EFBXPiece::Cubic;
            rKey.m_fOutTime = objSegment.dOutTime;
            rKey.m_fOutValue = objSegment.dOutValue;
            rNext.m_fInTime = objSegment.dInTime;
            rNext.m_fInValue = objSegment.dInValue;
            break;
        }
    }
    StraightenPieces(m_vecKeys);
}

void CFBXCurveKeys::AddFrames(const FbxAnimCurve& rCurve, const CFBXKeyRange& rRange)
{
    m_vecKeys.assign(static_cast<size_t>(rRange.CountFrames()), {});
    int nLast = 0;
    for (size_t n = 0; n < m_vecKeys.size(); ++n)
    {
        CFBXCurveKey& rKey = m_vecKeys[n];
        rKey.m_fTime = rRange.GetFrameTime(n);
        rKey.m_fValue = rCurve.Evaluate(FbxTime::FromSeconds(rKey.m_fTime), &nLast);
        rKey.m_fBefore = rKey.m_fBehind = rKey.m_fValue;
        rKey.m_ePiece = EFBXPiece::Linear;
    }
    StraightenPieces(m_vecKeys);
}

void CFBXCurveKeys::MakeConstantIfSame()
{
    if (m_vecKeys.empty())
    {
        return;
    }
    const double fValue = m_vecKeys.front().m_fValue;
    for (size_t n = 0; n < m_vecKeys.size(); ++n)
    {
        const CFBXCurveKey& rKey = m_vecKeys[n];
        const bool bSame = rKey.m_fBefore == fValue && rKey.m_fValue == fValue && rKey.m_fBehind == fValue &&
                           (n == 0 || rKey.m_fInValue == fValue) &&
                           (n + 1 == m_vecKeys.size() || rKey.m_fOutValue == fValue);
        if (!bSame)
        {
            return;
        }
    }
    m_fConstant = fValue;
    m_vecKeys.clear();
}

bool CFBXCurveKeys::SharesTimes(const CFBXCurveKeys& rOther) const
{
    return std::ranges::equal(m_vecKeys, rOther.m_vecKeys, {}, &CFBXCurveKey::m_fTime,
                              &CFBXCurveKey::m_fTime);
}
