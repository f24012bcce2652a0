#include "qdscenegraph/target/CSGATF_ParamSwizzle.h"

#include "qdscenegraph/material/CSGParamTmpl.h"

#include <array>
#include <bit>

namespace
{

// 0 for a type that is not a number of floats.
int32_t GetNumFloats(CSGParam::EType eType)
{
    static_assert(CSGParam::PARAM_TYPE_FLOAT == 0 && CSGParam::PARAM_TYPE_FLOAT4 == 3);
    return eType >= CSGParam::PARAM_TYPE_FLOAT && eType <= CSGParam::PARAM_TYPE_FLOAT4 ? eType + 1 : 0;
}

const char* GetTypeName(int32_t nNumFloats)
{
    static constexpr const char* NAMES[] = {"Unknown", "single float", "float2", "float3", "float4"};
    return NAMES[nNumFloats];
}

template <class T>
bool SetFloat(CSGParam* pParam, int32_t nIndex, float fValue)
{
    auto arrFloats = std::bit_cast<std::array<float, sizeof(T) / sizeof(float)>>(pParam->GetValueAs<T>());
    arrFloats[static_cast<size_t>(nIndex)] = fValue;
    return pParam->SetValueAs<T>(std::bit_cast<T>(arrFloats));
}

} // namespace

boost::intrusive_ptr<CSGATF_ParamSwizzle> CSGATF_ParamSwizzle::Create(CSGParam* pObjParam, int32_t nIndex)
{
    if (pObjParam == nullptr)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Handed in NULL param.");
        return nullptr;
    }
    const int32_t nNumFloats = GetNumFloats(pObjParam->GetType());
    if (nNumFloats == 0)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Handed in param of invalid type %d that wasn't a number of floats.",
            pObjParam->GetType());
        return nullptr;
    }
    if (nIndex < 0 || nIndex >= nNumFloats)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR,
            "Handed in invalid index %d for %s param.  Must greater than or equal to 0 and less than %d",
            nIndex, GetTypeName(nNumFloats), nNumFloats);
        return nullptr;
    }
    return CSGMem::Construct<CSGATF_ParamSwizzle>(pObjParam, nIndex);
}

bool CSGATF_ParamSwizzle::SetValue(std::span<const float, 1> arrValue)
{
    static constexpr const char* POSITIONS[] = {"first", "second", "third", "fourth"};
    if (!m_spObjParam)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Had NULL param.");
        return false;
    }
    bool bSet = false;
    switch (m_spObjParam->GetType())
    {
    case CSGParam::PARAM_TYPE_FLOAT:
        if (!m_spObjParam->SetValueAs<float>(arrValue[0]))
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Failed to set single float value.");
            return false;
        }
        return true;
    case CSGParam::PARAM_TYPE_FLOAT2:
        bSet = SetFloat<CSGFloat2>(m_spObjParam.get(), m_nIndex, arrValue[0]);
        break;
    case CSGParam::PARAM_TYPE_FLOAT3:
        bSet = SetFloat<CSGFloat3>(m_spObjParam.get(), m_nIndex, arrValue[0]);
        break;
    case CSGParam::PARAM_TYPE_FLOAT4:
        bSet = SetFloat<CSGFloat4>(m_spObjParam.get(), m_nIndex, arrValue[0]);
        break;
    default:
        Log(QD_SCENEGRAPH, LOG_ERROR, "Had param of invalid type %d that wasn't a number of floats.",
            m_spObjParam->GetType());
        return false;
    }
    if (!bSet)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Failed to set %s value of a %s.", POSITIONS[m_nIndex],
            GetTypeName(GetNumFloats(m_spObjParam->GetType())));
    }
    return bSet;
}
