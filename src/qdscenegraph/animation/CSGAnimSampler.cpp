#include "qdscenegraph/animation/CSGAnimSampler.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

const SGStreamableRegistration<CSGAnimSampler> s_objRegistration(0x005128FCD8199446, 1, 2);

// The parameter, 0 to 1, at which a cubic Bezier curve of time with the given control points reaches a time:
// halves the curve by de Casteljau's construction and goes on with the half that holds the time. Singles
// would not get near enough to the time to stop early.
double FindBezierParameter(double fTime, double fStart, double fOut, double fIn, double fEnd)
{
    constexpr double AT_END = 1e-20;
    constexpr double NEAR_ENOUGH = 1e-9;
    constexpr int MAX_HALVINGS = 100;

    if (fTime - fStart < AT_END)
    {
        return 0.0;
    }
    if (fEnd - fTime < AT_END)
    {
        return 1.0;
    }
    double fMiddle = 0.5;
    double fHalfWidth = 0.5;
    for (int nHalving = 0; nHalving < MAX_HALVINGS; ++nHalving)
    {
        const double fStartOut = (fStart + fOut) * 0.5;
        const double fOutIn = (fOut + fIn) * 0.5;
        const double fInEnd = (fIn + fEnd) * 0.5;
        const double fLeft = (fStartOut + fOutIn) * 0.5;
        const double fRight = (fOutIn + fInEnd) * 0.5;
        const double fReached = (fLeft + fRight) * 0.5;
        if (std::abs(fReached - fTime) < NEAR_ENOUGH)
        {
            break;
        }
        fHalfWidth *= 0.5;
        if (fReached < fTime)
        {
            fStart = fReached;
            fOut = fRight;
            fIn = fInEnd;
            fMiddle += fHalfWidth;
        }
        else
        {
            fOut = fStartOut;
            fIn = fLeft;
            fEnd = fReached;
            fMiddle -= fHalfWidth;
        }
    }
    return fMiddle;
}

// In singles, tangents that are long beside the values would drown them.
float EvaluateBezier(double fStart, double fOut, double fIn, double fEnd, double s)
{
    const double c1 = 3.0 * (fOut - fStart);
    const double c2 = 3.0 * (fIn - fOut);
    return static_cast<float>((((fEnd - fStart - c2) * s + (c2 - c1)) * s + c1) * s + fStart);
}

void InterpolateLinear(float u, const float* arrfPrev, const float* arrfNext, float* arrfResult,
                       int32_t nCount)
{
    for (int32_t n = 0; n < nCount; ++n)
    {
        arrfResult[n] = arrfNext[n] * u + arrfPrev[n] * (1.0f - u);
    }
}

// Spherical linear interpolation (Shoemake 1985): weights sin((1 - u) w) / sin(w) and sin(u w) / sin(w) for
// an angle w between the two.
void InterpolateQuaternion(float u, const float* arrfPrev, const float* arrfNext, float* arrfResult)
{
    // So near to each other that the weights are the linear ones, as exactly as a float tells.
    constexpr float SAME_DIRECTION = 1.0f - 1e-6f;

    float fCosine = arrfPrev[0] * arrfNext[0] + arrfPrev[1] * arrfNext[1] + arrfPrev[2] * arrfNext[2] +
                    arrfPrev[3] * arrfNext[3];
    // A quaternion and its negative are the same rotation: the nearer one is taken.
    const float fSign = fCosine < 0.0f ? -1.0f : 1.0f;
    fCosine *= fSign;
    float fPrevWeight = 1.0f - u;
    float fNextWeight = u;
    if (fCosine < SAME_DIRECTION)
    {
        const float fAngle = std::acos(fCosine);
        const float fSine = std::sin(fAngle);
        fPrevWeight = std::sin(fPrevWeight * fAngle) / fSine;
        fNextWeight = std::sin(fNextWeight * fAngle) / fSine;
    }
    for (int n = 0; n < 4; ++n)
    {
        arrfResult[n] = arrfPrev[n] * fPrevWeight + arrfNext[n] * fSign * fNextWeight;
    }
}

} // namespace

boost::intrusive_ptr<CSGAnimSampler> CSGAnimSampler::Create(int32_t nKeyCount, int32_t nOutputCount,
                                                            EInterpType eInterpType)
{
    boost::intrusive_ptr<CSGAnimSampler> spSampler = CSGMem::Construct<CSGAnimSampler>();
    QD_CHECK_CREATED(spSampler, nullptr);
    QD_CHECK_CALL(spSampler->InitKeyData(nKeyCount, nOutputCount, eInterpType), nullptr);
    std::ranges::fill(spSampler->m_arrfKeyData, 0.0f);
    return spSampler;
}

bool CSGAnimSampler::InitKeyData(int32_t nKeyCount, int32_t nOutputCount, EInterpType eInterpType)
{
    QD_CHECK_OR_RETURN(m_arrfKeyData.empty(), "%s is false", "m_arrfKeyData == 0", false);
    QD_CHECK(nKeyCount >= 0, false);
    QD_CHECK(nOutputCount >= 0, false);
    const int64_t nKeyStride = CalcKeyStride(nOutputCount, eInterpType);
    QD_CHECK(nKeyStride <= std::numeric_limits<int32_t>::max(), false);
    QD_CHECK_OR_RETURN(TryResize(m_arrfKeyData, static_cast<size_t>(nKeyCount * nKeyStride)),
                       "Creation of %s failed", "m_arrfKeyData", false);
    m_nKeyCount = nKeyCount;
    m_nOutputCount = nOutputCount;
    m_eInterpType = eInterpType;
    m_nKeyStride = static_cast<int32_t>(nKeyStride);
    return true;
}

bool CSGAnimSampler::SetKeyData(std::span<const float> arrfTimes, std::span<const float> arrfOutputValues,
                                std::span<const float> arrfInTangentValues,
                                std::span<const float> arrfOutTangentValues)
{
    const auto nKeys = static_cast<size_t>(m_nKeyCount);
    const auto nOutputs = static_cast<size_t>(m_nOutputCount);
    const size_t nTangentFloats = m_eInterpType == INTERP_BEZIER ? 2 * nOutputs : 0;
    QD_CHECK(arrfTimes.size() == nKeys, false);
    QD_CHECK(arrfOutputValues.size() == nKeys * nOutputs, false);
    QD_CHECK(nTangentFloats == 0 || arrfInTangentValues.size() == nKeys * nTangentFloats, false);
    QD_CHECK(nTangentFloats == 0 || arrfOutTangentValues.size() == nKeys * nTangentFloats, false);
    float* pfKey = m_arrfKeyData.data();
    for (size_t nKey = 0; nKey < nKeys; ++nKey)
    {
        *pfKey++ = arrfTimes[nKey];
        pfKey = std::copy_n(arrfOutputValues.data() + nKey * nOutputs, nOutputs, pfKey);
        pfKey = std::copy_n(arrfInTangentValues.data() + nKey * nTangentFloats, nTangentFloats, pfKey);
        pfKey = std::copy_n(arrfOutTangentValues.data() + nKey * nTangentFloats, nTangentFloats, pfKey);
    }
    return true;
}

const float* CSGAnimSampler::FindKeyPart(int32_t nKey, int32_t nOutput, EKeyPart ePart) const
{
    const float* pfKey = FindKey(nKey);
    QD_CHECK_NOT_NULL(pfKey, nullptr);
    QD_CHECK(nOutput >= 0, nullptr);
    QD_CHECK(nOutput < m_nOutputCount, nullptr);
    QD_CHECK(ePart == PART_VALUE || m_eInterpType == INTERP_BEZIER, nullptr);
    const auto nIndex = static_cast<size_t>(nOutput);
    switch (ePart)
    {
    case PART_VALUE:
        return pfKey + 1 + nIndex;
    case PART_IN_TANGENT_TIME:
        return pfKey + GetInTangentOffset() + 2 * nIndex;
    case PART_IN_TANGENT_VALUE:
        return pfKey + GetInTangentOffset() + 2 * nIndex + 1;
    case PART_OUT_TANGENT_TIME:
        return pfKey + GetOutTangentOffset() + 2 * nIndex;
    case PART_OUT_TANGENT_VALUE:
        return pfKey + GetOutTangentOffset() + 2 * nIndex + 1;
    }
    return nullptr;
}

float CSGAnimSampler::GetKeyPart(int32_t nKey, int32_t nOutput, EKeyPart ePart) const
{
    const float* pfPart = FindKeyPart(nKey, nOutput, ePart);
    return pfPart != nullptr ? *pfPart : 0.0f;
}

bool CSGAnimSampler::SetKeyPart(int32_t nKey, int32_t nOutput, EKeyPart ePart, float fPart)
{
    const float* pfPart = FindKeyPart(nKey, nOutput, ePart);
    if (pfPart == nullptr)
    {
        return false;
    }
    m_arrfKeyData[static_cast<size_t>(pfPart - m_arrfKeyData.data())] = fPart;
    return true;
}

bool CSGAnimSampler::SetKeyTime(int32_t nKey, float fTime)
{
    const float* pfKey = FindKey(nKey);
    QD_CHECK_NOT_NULL(pfKey, false);
    m_arrfKeyData[static_cast<size_t>(pfKey - m_arrfKeyData.data())] = fTime;
    return true;
}

bool CSGAnimSampler::SetKeyValue(int32_t nKey, int32_t nOutput, float fValue)
{
    return SetKeyPart(nKey, nOutput, PART_VALUE, fValue);
}

bool CSGAnimSampler::SetKeyInTangentTime(int32_t nKey, int32_t nOutput, float fTime)
{
    return SetKeyPart(nKey, nOutput, PART_IN_TANGENT_TIME, fTime);
}

bool CSGAnimSampler::SetKeyInTangentValue(int32_t nKey, int32_t nOutput, float fValue)
{
    return SetKeyPart(nKey, nOutput, PART_IN_TANGENT_VALUE, fValue);
}

bool CSGAnimSampler::SetKeyOutTangentTime(int32_t nKey, int32_t nOutput, float fTime)
{
    return SetKeyPart(nKey, nOutput, PART_OUT_TANGENT_TIME, fTime);
}

bool CSGAnimSampler::SetKeyOutTangentValue(int32_t nKey, int32_t nOutput, float fValue)
{
    return SetKeyPart(nKey, nOutput, PART_OUT_TANGENT_VALUE, fValue);
}

float CSGAnimSampler::GetKeyTime(int32_t nKey) const
{
    const float* pfKey = FindKey(nKey);
    QD_CHECK_NOT_NULL(pfKey, 0.0f);
    return *pfKey;
}

float CSGAnimSampler::GetKeyValue(int32_t nKey, int32_t nOutput) const
{
    return GetKeyPart(nKey, nOutput, PART_VALUE);
}

float CSGAnimSampler::GetKeyInTangentTime(int32_t nKey, int32_t nOutput) const
{
    return GetKeyPart(nKey, nOutput, PART_IN_TANGENT_TIME);
}

float CSGAnimSampler::GetKeyInTangentValue(int32_t nKey, int32_t nOutput) const
{
    return GetKeyPart(nKey, nOutput, PART_IN_TANGENT_VALUE);
}

float CSGAnimSampler::GetKeyOutTangentTime(int32_t nKey, int32_t nOutput) const
{
    return GetKeyPart(nKey, nOutput, PART_OUT_TANGENT_TIME);
}

float CSGAnimSampler::GetKeyOutTangentValue(int32_t nKey, int32_t nOutput) const
{
    return GetKeyPart(nKey, nOutput, PART_OUT_TANGENT_VALUE);
}

float CSGAnimSampler::GetBeginTime() const
{
    const float* pfFirstKey = FindKey(0);
    QD_CHECK_NOT_NULL(pfFirstKey, 0.0f);
    return *pfFirstKey;
}

float CSGAnimSampler::GetEndTime() const
{
    const float* pfLastKey = FindKey(m_nKeyCount - 1);
    QD_CHECK_NOT_NULL(pfLastKey, 0.0f);
    return *pfLastKey;
}

bool CSGAnimSampler::SampleAtTime(float fTime, float* arrfOutputValues, int32_t nOutputValueCount) const
{
    QD_CHECK_OR_RETURN(!m_arrfKeyData.empty(), "%s is NULL", "m_arrfKeyData", false);
    QD_CHECK_ARG(arrfOutputValues, false);
    QD_CHECK(nOutputValueCount == m_nOutputCount, false);
    const float* pfFirstKey = KeyAt(0);
    const float* pfLastKey = KeyAt(m_nKeyCount - 1);
    if (fTime <= *pfFirstKey)
    {
        std::copy_n(pfFirstKey + 1, m_nOutputCount, arrfOutputValues);
    }
    else if (fTime < *pfLastKey)
    {
        // Never the last key, even where the times are not sorted: the search passes its time last.
        const float* pfPrevKey = FindLatestKeyBeforeTime(fTime);
        QD_CHECK_NOT_NULL(pfPrevKey, false);
        QD_CHECK_CALL(Interpolate(fTime, pfPrevKey, arrfOutputValues), false);
    }
    else
    {
        std::copy_n(pfLastKey + 1, m_nOutputCount, arrfOutputValues);
    }
    return true;
}

const float* CSGAnimSampler::FindLatestKeyBeforeTime(float fTime) const
{
    QD_CHECK_OR_RETURN(!m_arrfKeyData.empty(), "%s is NULL", "m_arrfKeyData", nullptr);
    int32_t nLow = 0;
    int32_t nHigh = m_nKeyCount;
    while (nHigh - nLow > 1)
    {
        const int32_t nMiddle = nLow + (nHigh - nLow) / 2;
        // Without a branch: which way it goes cannot be foretold.
        const bool bBefore = fTime < *KeyAt(nMiddle);
        nHigh = bBefore ? nMiddle : nHigh;
        nLow = bBefore ? nLow : nMiddle;
    }
    return KeyAt(nLow);
}

bool CSGAnimSampler::Interpolate(float fTime, const float* pfPrevKey, float* arrfOutputValues) const
{
    QD_CHECK_ARG(pfPrevKey, false);
    QD_CHECK_ARG(arrfOutputValues, false);
    const float* pfLastKey = FindKey(m_nKeyCount - 1);
    QD_CHECK(pfPrevKey < pfLastKey, false);
    const float* pfNextKey = pfPrevKey + m_nKeyStride;
    const float u = (fTime - *pfPrevKey) / (*pfNextKey - *pfPrevKey);
    switch (m_eInterpType)
    {
    case INTERP_STEP:
        std::copy_n(pfPrevKey + 1, m_nOutputCount, arrfOutputValues);
        return true;
    case INTERP_LINEAR:
        InterpolateLinear(u, pfPrevKey + 1, pfNextKey + 1, arrfOutputValues, m_nOutputCount);
        return true;
    case INTERP_BEZIER:
        InterpolateBezier(fTime, pfPrevKey, pfNextKey, arrfOutputValues);
        return true;
    case INTERP_QUATERNION:
        if (m_nOutputCount != 4)
        {
            Log(QD_SCENEGRAPH, LOG_ERROR,
                "Tried to use Quaternion SLERP to interpolate a sampler that doesn't have 4 output values.");
            return false;
        }
        InterpolateQuaternion(u, pfPrevKey + 1, pfNextKey + 1, arrfOutputValues);
        return true;
    }
    Log(QD_SCENEGRAPH, LOG_ERROR, "Unknown interpolation type %d", m_eInterpType);
    return false;
}

void CSGAnimSampler::InterpolateBezier(float fTime, const float* pfPrevKey, const float* pfNextKey,
                                       float* arrfOutputValues) const
{
    const float* pfOutTangent = pfPrevKey + GetOutTangentOffset();
    const float* pfInTangent = pfNextKey + GetInTangentOffset();
    double s = 0.0;
    for (int32_t n = 0; n < m_nOutputCount; ++n, pfOutTangent += 2, pfInTangent += 2)
    {
        // The outputs of a key mostly have the same tangent times; the parameter is the costly part.
        if (n == 0 || pfOutTangent[0] != pfOutTangent[-2] || pfInTangent[0] != pfInTangent[-2])
        {
            s = FindBezierParameter(fTime, *pfPrevKey, pfOutTangent[0], pfInTangent[0], *pfNextKey);
        }
        arrfOutputValues[n] =
            EvaluateBezier(pfPrevKey[1 + n], pfOutTangent[1], pfInTangent[1], pfNextKey[1 + n], s);
    }
}

bool CSGAnimSampler::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    const int32_t nVersion = pLoadState->GetVersionToRead<CSGAnimSampler>();
    switch (nVersion)
    {
    case 1:
        return ReadVersion1(pStream);
    case 2:
        return ReadVersion2(pStream);
    }
    Log(QD_SCENEGRAPH, LOG_ERROR, "Unknown stream version %d", nVersion);
    return false;
}

// One output, and with each key the interpolation type. The first key's is the sampler's and tells the size
// of all records.
bool CSGAnimSampler::ReadVersion1(CStream* pStream)
{
    constexpr int64_t TYPE_BYTES = sizeof(int32_t);
    constexpr int32_t OUTPUTS = 1;

    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nKeyCount = pStream->ReadInt32();
    QD_CHECK_OR_RETURN(nKeyCount > 0, "%s is false", "m_nKeyCount > 0", false);
    QD_CHECK(pStream->CanRead(1, TYPE_BYTES), false);
    const auto eInterpType = static_cast<EInterpType>(pStream->ReadInt32());
    const int64_t nKeyBytes = CalcKeyStride(OUTPUTS, eInterpType) * static_cast<int64_t>(sizeof(float));
    QD_CHECK(pStream->CanRead(nKeyCount * (TYPE_BYTES + nKeyBytes) - TYPE_BYTES, 1), false);
    QD_CHECK_CALL(InitKeyData(nKeyCount, OUTPUTS, eInterpType), false);
    float* pfKey = m_arrfKeyData.data();
    for (int32_t nKey = 0; nKey < nKeyCount; ++nKey, pfKey += m_nKeyStride)
    {
        if (nKey > 0)
        {
            pStream->ReadInt32();
        }
        pStream->Read(pfKey, static_cast<size_t>(nKeyBytes));
    }
    return true;
}

bool CSGAnimSampler::ReadVersion2(CStream* pStream)
{
    QD_CHECK(pStream->CanRead(3, sizeof(int32_t)), false);
    const int32_t nKeyCount = pStream->ReadInt32();
    const int32_t nOutputCount = pStream->ReadInt32();
    const auto eInterpType = static_cast<EInterpType>(pStream->ReadInt32());
    QD_CHECK(nOutputCount >= 0, false);
    const int64_t nKeyBytes = CalcKeyStride(nOutputCount, eInterpType) * static_cast<int64_t>(sizeof(float));
    QD_CHECK(pStream->CanRead(nKeyCount, nKeyBytes), false);
    QD_CHECK_CALL(InitKeyData(nKeyCount, nOutputCount, eInterpType), false);
    pStream->Read(m_arrfKeyData.data(), m_arrfKeyData.size() * sizeof(float));
    return true;
}

bool CSGAnimSampler::WriteToStream(CStream* pStream, CSGStreamableSaveState*)
{
    QD_CHECK_ARG(pStream, false);
    pStream->WriteInt32(m_nKeyCount);
    pStream->WriteInt32(m_nOutputCount);
    pStream->WriteInt32(m_eInterpType);
    return pStream->Write(m_arrfKeyData.data(), m_arrfKeyData.size() * sizeof(float));
}

void CSGAnimSampler::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGAnimSampler: 0x%08llX interp_type=%d", rIndent, LogAddress(this),
        m_eInterpType);
    for (int32_t nKey = 0; nKey < m_nKeyCount; ++nKey)
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%s  time=%.3f", rIndent, GetKeyTime(nKey));
        for (int32_t n = 0; n < m_nOutputCount; ++n)
        {
            if (m_eInterpType == INTERP_BEZIER)
            {
                Log(QD_SCENEGRAPH, LOG_INFO,
                    "%s   %3d value=%.3f in_tangent=[%.3f, %.3f] out_tangent=[%.3f, %.3f]", rIndent, n,
                    GetKeyValue(nKey, n), GetKeyInTangentTime(nKey, n), GetKeyInTangentValue(nKey, n),
                    GetKeyOutTangentTime(nKey, n), GetKeyOutTangentValue(nKey, n));
            }
            else
            {
                Log(QD_SCENEGRAPH, LOG_INFO, "%s   %3d value=%.3f", rIndent, n, GetKeyValue(nKey, n));
            }
        }
    }
}
