#include "qdsgloader_fbx/CFBXAnimCurveTranslator.h"

#include "qdcommon/CLogChecks.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

// The values that a curve has around one key.
enum class EPart
{
    Before,
    At,
    Behind
};

// Writes curves with the same key times, and constants, as the keys of a sampler.
class CKeyWriter
{
  public:
    // Borrows the curves. The times are those of one of them: one with keys, unless all are constant.
    CKeyWriter(std::span<const CFBXCurveKeys> arrCurves, const CFBXCurveKeys& rTimes, double fFactor)
        : m_arrCurves(arrCurves),
          m_arrTimes(rTimes.GetKeys()),
          m_fFactor(fFactor)
    {}

    CFBXAnimCurveTranslator::CSamplerPtr Write();
    CFBXAnimCurveTranslator::CSamplerPtr WriteQuaternions(EFbxRotationOrder eOrder);

  private:
    CFBXAnimCurveTranslator::CSamplerPtr WriteKeys();
    void Reserve(size_t nOutputs);
    CSGAnimSampler::EInterpType FindInterpType() const;
    double GetPart(const CFBXCurveKeys& rCurve, size_t nKey, EPart ePart) const;
    // Whether a curve jumps between the key and what is on that side of it.
    bool Jumps(size_t nKey, EPart eSide) const;
    // One with the key's own tangents, or with those of a jump.
    void AddKey(size_t nKey, EPart ePart, bool bInTangent, bool bOutTangent);
    void AddQuaternion(size_t nKey, EPart ePart);

    std::span<const CFBXCurveKeys> m_arrCurves;
    std::span<const CFBXCurveKey> m_arrTimes;
    double m_fFactor;
    CSGAnimSampler::EInterpType m_eInterpType = CSGAnimSampler::INTERP_STEP;
    EFbxRotationOrder m_eOrder = eEulerXYZ;
    std::vector<float> m_vecTimes;
    std::vector<float> m_vecValues;
    std::vector<float> m_vecInTangents;
    std::vector<float> m_vecOutTangents;
};

CFBXAnimCurveTranslator::CSamplerPtr CKeyWriter::Write()
{
    m_eInterpType = FindInterpType();
    return WriteKeys();
}

CFBXAnimCurveTranslator::CSamplerPtr CKeyWriter::WriteQuaternions(EFbxRotationOrder eOrder)
{
    m_eInterpType = CSGAnimSampler::INTERP_QUATERNION;
    m_eOrder = eOrder;
    return WriteKeys();
}

CFBXAnimCurveTranslator::CSamplerPtr CKeyWriter::WriteKeys()
{
    // A sampler of steps holds its values by itself.
    const bool bSteps = m_eInterpType == CSGAnimSampler::INTERP_STEP;
    const bool bQuaternions = m_eInterpType == CSGAnimSampler::INTERP_QUATERNION;
    Reserve(bQuaternions ? 4 : m_arrCurves.size());
    for (size_t n = 0; n < m_arrTimes.size(); ++n)
    {
        const bool bBefore = !bSteps && Jumps(n, EPart::Before);
        const bool bBehind = Jumps(n, EPart::Behind);
        if (bBefore)
        {
            AddKey(n, EPart::Before, true, false);
        }
        AddKey(n, EPart::At, !bBefore, !bBehind);
        if (bBehind)
        {
            AddKey(n, EPart::Behind, false, true);
        }
    }
    if (m_arrTimes.empty())
    {
        AddKey(0, EPart::At, false, false);
    }
    const auto spSampler =
        CSGAnimSampler::Create(static_cast<int32_t>(m_vecTimes.size()),
                               bQuaternions ? 4 : static_cast<int32_t>(m_arrCurves.size()), m_eInterpType);
    return spSampler && spSampler->SetKeyData(m_vecTimes, m_vecValues, m_vecInTangents, m_vecOutTangents)
               ? spSampler
               : nullptr;
}

// For keys without jumps.
void CKeyWriter::Reserve(size_t nOutputs)
{
    const size_t nTangents = m_eInterpType == CSGAnimSampler::INTERP_BEZIER ? 2 * nOutputs : 0;
    m_vecTimes.reserve(m_arrTimes.size());
    m_vecValues.reserve(m_arrTimes.size() * nOutputs);
    m_vecInTangents.reserve(m_arrTimes.size() * nTangents);
    m_vecOutTangents.reserve(m_arrTimes.size() * nTangents);
}

CSGAnimSampler::EInterpType CKeyWriter::FindInterpType() const
{
    auto eInterpType = CSGAnimSampler::INTERP_STEP;
    for (const CFBXCurveKeys& rCurve : m_arrCurves)
    {
        const auto arrKeys = rCurve.GetKeys();
        for (const CFBXCurveKey& rKey : arrKeys.first(arrKeys.empty() ? 0 : arrKeys.size() - 1))
        {
            if (rKey.m_ePiece == EFBXPiece::Cubic)
            {
                return CSGAnimSampler::INTERP_BEZIER;
            }
            eInterpType = rKey.m_ePiece == EFBXPiece::Linear ? CSGAnimSampler::INTERP_LINEAR : eInterpType;
        }
    }
    return eInterpType;
}

double CKeyWriter::GetPart(const CFBXCurveKeys& rCurve, size_t nKey, EPart ePart) const
{
    if (rCurve.IsConstant())
    {
        return rCurve.GetConstant();
    }
    const CFBXCurveKey& rKey = rCurve.GetKeys()[nKey];
    return ePart == EPart::At ? rKey.m_fValue : ePart == EPart::Before ? rKey.m_fBefore : rKey.m_fBehind;
}

bool CKeyWriter::Jumps(size_t nKey, EPart eSide) const
{
    return std::ranges::any_of(m_arrCurves, [&](const CFBXCurveKeys& rCurve) {
        return GetPart(rCurve, nKey, eSide) != GetPart(rCurve, nKey, EPart::At);
    });
}

void CKeyWriter::AddKey(size_t nKey, EPart ePart, bool bInTangent, bool bOutTangent)
{
    static constexpr CFBXCurveKey NO_KEY;
    const CFBXCurveKey& rTimes = m_arrTimes.empty() ? NO_KEY : m_arrTimes[nKey];
    auto fTime = static_cast<float>(rTimes.m_fTime);
    if (ePart == EPart::Behind)
    {
        // The value at the key's own time is the key's.
        fTime = std::nextafter(fTime, std::numeric_limits<float>::infinity());
    }
    // Keys that are nearer to each other than a float tells.
    fTime = m_vecTimes.empty() ? fTime : std::max(fTime, m_vecTimes.back());
    m_vecTimes.push_back(fTime);
    if (m_eInterpType == CSGAnimSampler::INTERP_QUATERNION)
    {
        AddQuaternion(nKey, ePart);
        return;
    }
    for (const CFBXCurveKeys& rCurve : m_arrCurves)
    {
        const double fValue = GetPart(rCurve, nKey, ePart);
        m_vecValues.push_back(static_cast<float>(fValue * m_fFactor));
        if (m_eInterpType != CSGAnimSampler::INTERP_BEZIER)
        {
            continue;
        }
        const bool bConstant = rCurve.IsConstant();
        const CFBXCurveKey& rKey = bConstant ? rTimes : rCurve.GetKeys()[nKey];
        const auto AddTangent = [&](std::vector<float>& rvecTangents, bool bOwn, double fTangentTime,
                                    double fTangentValue) {
            rvecTangents.push_back(bOwn ? static_cast<float>(fTangentTime) : fTime);
            rvecTangents.push_back(
                static_cast<float>((bOwn && !bConstant ? fTangentValue : fValue) * m_fFactor));
        };
        AddTangent(m_vecInTangents, bInTangent && nKey > 0, rKey.m_fInTime, rKey.m_fInValue);
        AddTangent(m_vecOutTangents, bOutTangent && nKey + 1 < m_arrTimes.size(), rKey.m_fOutTime,
                   rKey.m_fOutValue);
    }
}

void CKeyWriter::AddQuaternion(size_t nKey, EPart ePart)
{
    const auto q =
        FbxQuaternion::FromEuler({{GetPart(m_arrCurves[0], nKey, ePart), GetPart(m_arrCurves[1], nKey, ePart),
                                   GetPart(m_arrCurves[2], nKey, ePart)}},
                                 m_eOrder);
    for (const double f : {q.x, q.y, q.z, q.w})
    {
        m_vecValues.push_back(static_cast<float>(f));
    }
}

} // namespace

bool CFBXAnimCurveTranslator::Analyze()
{
    m_nTimes = 0;
    while (m_nTimes + 1 < NUM_CURVES && m_arrCurves[m_nTimes].IsConstant())
    {
        ++m_nTimes;
    }
    return std::ranges::all_of(m_arrCurves, [&](const CFBXCurveKeys& rCurve) {
        return rCurve.IsConstant() || rCurve.SharesTimes(m_arrCurves[m_nTimes]);
    });
}

CFBXAnimCurveTranslator::CSamplerPtr CFBXAnimCurveTranslator::CreateSampler(double fFactor) const
{
    return CKeyWriter(m_arrCurves, m_arrCurves[m_nTimes], fFactor).Write();
}

CFBXAnimCurveTranslator::CSamplerPtr CFBXAnimCurveTranslator::CreateSampler(size_t nCurve,
                                                                            double fFactor) const
{
    return CKeyWriter({&m_arrCurves[nCurve], 1}, m_arrCurves[nCurve], fFactor).Write();
}

CFBXAnimCurveTranslator::CSamplerPtr CFBXAnimCurveTranslator::CreateQuaternionSampler(
    EFbxRotationOrder eOrder) const
{
    return CKeyWriter(m_arrCurves, m_arrCurves[m_nTimes], 1).WriteQuaternions(eOrder);
}

void CFBXAnimCurveTranslator::OutputCurves() const
{
    for (size_t n = 0; n < NUM_CURVES; ++n)
    {
        const auto arrKeys = m_arrCurves[n].GetKeys();
        Log(QD_FBX, LOG_ERROR, "  %s curve: constant=%d keys=%d begin=%g end=%g", CQDString(1, "XYZ"[n]),
            arrKeys.empty() ? 1 : 0, static_cast<int>(arrKeys.size()),
            arrKeys.empty() ? 0.0 : arrKeys.front().m_fTime, arrKeys.empty() ? 0.0 : arrKeys.back().m_fTime);
    }
}
