#include "qdsgloader_collada/CColladaAnimSamplerData.h"

#include "qdcommon/Angles.h"
#include "qdcommon/CLogChecks.h"
#include "qdsgloader_collada/CColladaConverter.h"
#include "qdsgloader_collada/CColladaDataSourceCache.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include <algorithm>
#include <cmath>

namespace
{

// Which number of a COLLADA matrix becomes which output.
constexpr size_t MATRIX_ORDER[16] = {0, 1, 2, 12, 4, 5, 6, 13, 8, 9, 10, 14, 3, 7, 11, 15};

// Which number of a key's values an output is made of.
size_t GetPlace(EColladaValues eValues, size_t nOutput)
{
    return eValues == EColladaValues::Matrix ? MATRIX_ORDER[nOutput] : nOutput;
}

float ConvertValue(EColladaValues eValues, float fValue)
{
    return eValues == EColladaValues::Degrees
               ? static_cast<float>(static_cast<double>(fValue) * RADIANS_PER_DEGREE)
               : fValue;
}

// Where a segment's Bezier control point is when the segment is a straight line.
float GetThird(float fKey, float fOtherKey) { return fKey + (fOtherKey - fKey) / 3.0f; }

} // namespace

// The keys of the curve, those included that the sampler does not have.
struct CColladaAnimSamplerData::CKeys
{
    void AddKey(size_t nSource, float fTime, EColladaInterpolation eSegment)
    {
        vecSources.push_back(nSource);
        vecTimes.push_back(fTime);
        vecSegments.push_back(eSegment);
    }

    std::vector<size_t> vecSources; // the key of the sampler that has the values
    std::vector<float> vecTimes;
    std::vector<EColladaInterpolation> vecSegments; // behind the key
    std::vector<float> vecValues;
    std::vector<float> vecInTangents; // pairs of time and value
    std::vector<float> vecOutTangents;
};

bool CColladaAnimSamplerData::LoadSources(domSampler& rSampler)
{
    m_strID = GetIDText(rSampler);
    for (const auto& rspInput : AsSpan(rSampler.getInput_array()))
    {
        const std::string_view strSemantic = Text(rspInput->getSemantic());
        const daeURI& rSource = rspInput->getSource();
        bool bSet = true;
        if (strSemantic == "INPUT")
        {
            bSet = SetSource(m_spInputValues, strSemantic, rSource);
        }
        else if (strSemantic == "OUTPUT")
        {
            bSet = SetSource(m_spOutputValues, strSemantic, rSource);
        }
        else if (strSemantic == "INTERPOLATION")
        {
            bSet = SetSource(m_spInterpolationValues, strSemantic, rSource);
        }
        else if (strSemantic == "IN_TANGENT")
        {
            bSet = SetSource(m_spInTangentValues, strSemantic, rSource);
        }
        else if (strSemantic == "OUT_TANGENT")
        {
            bSet = SetSource(m_spOutTangentValues, strSemantic, rSource);
        }
        else
        {
            Log(QD_COLLADA, LOG_WARNING, "Ignoring <input> with unknown semantic %s in <sampler>",
                CQDString(strSemantic));
        }
        if (!bSet)
        {
            return false;
        }
    }
    return true;
}

template <class T>
bool CColladaAnimSamplerData::SetSource(boost::intrusive_ptr<T>& rspValues, std::string_view strSemantic,
                                        const daeURI& rURI)
{
    if (rspValues)
    {
        Log(QD_COLLADA, LOG_ERROR, "Already had source for %s", CQDString(strSemantic));
        return false;
    }
    auto* pSource = CSGLoaderCollada::GetURIElement<domSource>(rURI);
    const auto spDataSource = pSource != nullptr ? m_rSources.GetDataSource(*pSource) : nullptr;
    if (!spDataSource)
    {
        return false;
    }
    if (!spDataSource->InstanceOf(&T::ms_objType))
    {
        Log(QD_COLLADA, LOG_ERROR, "Got data source of invalid type %d %s for %s",
            spDataSource->GetType().GetTypeID(), spDataSource->GetType().GetName(), CQDString(strSemantic));
        return false;
    }
    rspValues = boost::static_pointer_cast<T>(spDataSource);
    return true;
}

CColladaAnimSamplerData::CSamplerPtr CColladaAnimSamplerData::CreateSampler(EColladaValues eValues,
                                                                            int32_t nOutputCount)
{
    std::vector<EColladaInterpolation> vecTypes;
    if (!CheckSources(nOutputCount) || !ReadInterpolations(vecTypes) ||
        (m_spInTangentValues && (!FixInTangentValues() || !FixOutTangentValues())))
    {
        return nullptr;
    }
    // What the last key says is about nothing, unless it is the only one.
    const size_t nNumKeys = vecTypes.size();
    const auto arrSegments = std::span(vecTypes).first(std::max<size_t>(1, nNumKeys - 1));
    const bool bMixed =
        std::ranges::any_of(arrSegments, [&](auto eType) { return eType != arrSegments.front(); });
    const bool bBezier = std::ranges::find(arrSegments, COLLADA_BEZIER) != arrSegments.end();

    CKeys objKeys;
    const auto arrTimes = m_spInputValues->GetPrimitives();
    for (size_t n = 0; n < nNumKeys; ++n)
    {
        const bool bHold = bMixed && vecTypes[n] == COLLADA_STEP && n + 1 < nNumKeys;
        objKeys.AddKey(n, arrTimes[n], bHold ? COLLADA_LINEAR : vecTypes[n]);
        if (bHold)
        {
            objKeys.AddKey(n, arrTimes[n + 1], COLLADA_LINEAR);
        }
    }
    const auto nOutputs = static_cast<size_t>(nOutputCount);
    if (!m_rSources.TakeFromBudget(objKeys.vecTimes.size() * (1 + nOutputs * (bBezier ? 5 : 1))))
    {
        Log(QD_COLLADA, LOG_ERROR,
            "The curves up to <sampler id=\"%s\"> hold too much for the size of the file", m_strID);
        return nullptr;
    }
    objKeys.vecValues.reserve(objKeys.vecTimes.size() * nOutputs);
    for (const size_t nSource : objKeys.vecSources)
    {
        const float* pfValues = m_spOutputValues->GetPrimitives().data() + nSource * nOutputs;
        for (size_t nOutput = 0; nOutput < nOutputs; ++nOutput)
        {
            objKeys.vecValues.push_back(ConvertValue(eValues, pfValues[GetPlace(eValues, nOutput)]));
        }
    }
    if (bBezier)
    {
        AddTangents(objKeys, eValues);
    }
    const auto eInterpType = bBezier                                           ? CSGAnimSampler::INTERP_BEZIER
                             : bMixed || arrSegments.front() == COLLADA_LINEAR ? CSGAnimSampler::INTERP_LINEAR
                                                                               : CSGAnimSampler::INTERP_STEP;
    const CSamplerPtr spSampler =
        CSGAnimSampler::Create(static_cast<int32_t>(objKeys.vecTimes.size()), nOutputCount, eInterpType);
    return spSampler && spSampler->SetKeyData(objKeys.vecTimes, objKeys.vecValues, objKeys.vecInTangents,
                                              objKeys.vecOutTangents)
               ? spSampler
               : nullptr;
}

bool CColladaAnimSamplerData::CheckSources(int32_t nOutputCount) const
{
    QD_ASSERT(m_spInputValues, false);
    QD_ASSERT(m_spOutputValues, false);
    QD_ASSERT(m_spInterpolationValues, false);
    QD_CHECK_OR_RETURN((m_spInTangentValues != nullptr) == (m_spOutTangentValues != nullptr),
                       "Assert '%s' failed", "(m_spInTangentValues != 0) == (m_spOutTangentValues != 0)",
                       false);
    if (m_spInputValues->GetPrimitivesPerValue() != 1)
    {
        Log(QD_COLLADA, LOG_ERROR, "Input had %d primitives per value.  Expected 1.",
            m_spInputValues->GetPrimitivesPerValue());
        return false;
    }
    if (m_spInterpolationValues->GetPrimitivesPerValue() != 1)
    {
        Log(QD_COLLADA, LOG_ERROR, "Interpolation values had %d primitives per value.  Expected 1.",
            m_spInterpolationValues->GetPrimitivesPerValue());
        return false;
    }
    if (m_spInputValues->GetNumValues() < 1)
    {
        Log(QD_COLLADA, LOG_ERROR, "Data didn't have at least 1 value.");
        return false;
    }
    if (m_spOutputValues->GetPrimitivesPerValue() != nOutputCount)
    {
        Log(QD_COLLADA, LOG_ERROR, "<sampler id=\"%s\"> has %d numbers for a value of a target of %d",
            m_strID, m_spOutputValues->GetPrimitivesPerValue(), nOutputCount);
        return false;
    }
    return CheckCount(*m_spOutputValues, "OUTPUT") && CheckCount(*m_spInterpolationValues, "INTERPOLATION") &&
           CheckTimes();
}

bool CColladaAnimSamplerData::CheckCount(const CColladaDataSource& rSource,
                                         std::string_view strSemantic) const
{
    const int32_t nNumKeys = m_spInputValues->GetNumValues();
    if (rSource.GetNumValues() != nNumKeys)
    {
        Log(QD_COLLADA, LOG_ERROR, "<sampler id=\"%s\"> has %d values for INPUT and %d for %s", m_strID,
            nNumKeys, rSource.GetNumValues(), CQDString(strSemantic));
        return false;
    }
    return true;
}

bool CColladaAnimSamplerData::CheckTimes() const
{
    const auto arrTimes = m_spInputValues->GetPrimitives();
    for (size_t n = 0; n < arrTimes.size(); ++n)
    {
        if (!std::isfinite(arrTimes[n]) || (n > 0 && arrTimes[n] < arrTimes[n - 1]))
        {
            Log(QD_COLLADA, LOG_ERROR, "The times of <sampler id=\"%s\"> do not ascend at key %d", m_strID,
                static_cast<int>(n));
            return false;
        }
    }
    return true;
}

bool CColladaAnimSamplerData::ReadInterpolations(std::vector<EColladaInterpolation>& rvecTypes) const
{
    rvecTypes.reserve(m_spInterpolationValues->GetPrimitives().size());
    for (const CQDString& rName : m_spInterpolationValues->GetPrimitives())
    {
        EColladaInterpolation eType{};
        if (!CColladaConverter::GetInterpolationType(rName, eType))
        {
            return false;
        }
        if (eType > COLLADA_BEZIER)
        {
            Log(QD_COLLADA, LOG_ERROR, "Unsupported interpolation type %d", eType);
            return false;
        }
        rvecTypes.push_back(eType == COLLADA_BEZIER && !m_spInTangentValues ? COLLADA_LINEAR : eType);
    }
    return true;
}

bool CColladaAnimSamplerData::FixInTangentValues() { return FixTangentValues(m_spInTangentValues, -1); }
bool CColladaAnimSamplerData::FixOutTangentValues() { return FixTangentValues(m_spOutTangentValues, 1); }

// Tangents come in three widths. FCollada and OpenCOLLADA, so Maya and 3ds Max, write a pair of time and
// value for each output; Blender does, too, and has single outputs only. COLLADA 1.4.1 itself wants one time
// for all outputs of a key, then their values. The conformance suite and old 3ds Max exporters leave out the
// times, which then lie at the thirds of the segments: such tangents become pairs here. nOtherKey says where
// the other end of a tangent's segment is.
bool CColladaAnimSamplerData::FixTangentValues(CFloatsPtr& rspTangents, int32_t nOtherKey) const
{
    const int32_t nOutputs = m_spOutputValues->GetPrimitivesPerValue();
    const int32_t nNumKeys = m_spInputValues->GetNumValues();
    if (rspTangents->GetPrimitivesPerValue() != nOutputs)
    {
        return CheckTangentWidth(*rspTangents);
    }
    if (rspTangents->GetNumValues() != nNumKeys)
    {
        Log(QD_COLLADA, LOG_ERROR, "Input values and single tangent values had different number of values.");
        return false;
    }
    const CFloatsPtr spPairs = CCDS_FloatArray::Create(2 * nOutputs, nNumKeys);
    if (!spPairs)
    {
        return false;
    }
    const auto arrTimes = m_spInputValues->GetPrimitives();
    const float* pfValue = rspTangents->GetPrimitives().data();
    float* pfPair = spPairs->EditPrimitives().data();
    for (int32_t nKey = 0; nKey < nNumKeys; ++nKey)
    {
        const int32_t nOther = std::clamp(nKey + nOtherKey, 0, nNumKeys - 1);
        const float fTime =
            GetThird(arrTimes[static_cast<size_t>(nKey)], arrTimes[static_cast<size_t>(nOther)]);
        for (int32_t nOutput = 0; nOutput < nOutputs; ++nOutput)
        {
            *pfPair++ = fTime;
            *pfPair++ = *pfValue++;
        }
    }
    rspTangents = spPairs;
    return true;
}

bool CColladaAnimSamplerData::CheckTangentWidth(const CCDS_FloatArray& rTangents) const
{
    const int32_t nOutputs = m_spOutputValues->GetPrimitivesPerValue();
    const int32_t nWidth = rTangents.GetPrimitivesPerValue();
    if (nWidth != 2 * nOutputs && nWidth != nOutputs + 1)
    {
        Log(QD_COLLADA, LOG_ERROR, "<sampler id=\"%s\"> has %d numbers for a tangent of %d outputs", m_strID,
            nWidth, nOutputs);
        return false;
    }
    return CheckCount(rTangents, &rTangents == m_spInTangentValues.get() ? "IN_TANGENT" : "OUT_TANGENT");
}

void CColladaAnimSamplerData::AddTangents(CKeys& rKeys, EColladaValues eValues) const
{
    const auto nOutputs = static_cast<size_t>(m_spOutputValues->GetPrimitivesPerValue());
    const auto Read = [&](const CCDS_FloatArray& rTangents, std::vector<float>& rvecPairs) {
        const auto nWidth = static_cast<size_t>(rTangents.GetPrimitivesPerValue());
        const bool bPairs = nWidth == 2 * nOutputs;
        rvecPairs.reserve(rKeys.vecValues.size() * 2);
        for (const size_t nSource : rKeys.vecSources)
        {
            const float* pfTangent = rTangents.GetPrimitives().data() + nSource * nWidth;
            for (size_t nOutput = 0; nOutput < nOutputs; ++nOutput)
            {
                const size_t nPlace = GetPlace(eValues, nOutput);
                rvecPairs.push_back(pfTangent[bPairs ? 2 * nPlace : 0]);
                rvecPairs.push_back(ConvertValue(eValues, pfTangent[bPairs ? 2 * nPlace + 1 : nPlace + 1]));
            }
        }
    };
    Read(*m_spInTangentValues, rKeys.vecInTangents);
    Read(*m_spOutTangentValues, rKeys.vecOutTangents);
    for (size_t nKey = 0; nKey + 1 < rKeys.vecTimes.size(); ++nKey)
    {
        for (size_t n = 0; rKeys.vecSegments[nKey] != COLLADA_BEZIER && n < nOutputs; ++n)
        {
            const size_t nLeft = nKey * nOutputs + n;
            const size_t nRight = nLeft + nOutputs;
            rKeys.vecOutTangents[2 * nLeft] = GetThird(rKeys.vecTimes[nKey], rKeys.vecTimes[nKey + 1]);
            rKeys.vecOutTangents[2 * nLeft + 1] = GetThird(rKeys.vecValues[nLeft], rKeys.vecValues[nRight]);
            rKeys.vecInTangents[2 * nRight] = GetThird(rKeys.vecTimes[nKey + 1], rKeys.vecTimes[nKey]);
            rKeys.vecInTangents[2 * nRight + 1] = GetThird(rKeys.vecValues[nRight], rKeys.vecValues[nLeft]);
        }
    }
}
