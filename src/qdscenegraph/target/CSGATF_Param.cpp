#include "qdscenegraph/target/CSGATF_Param.h"

#include "qdscenegraph/material/CSGParamTmpl.h"

#include <algorithm>
#include <array>
#include <bit>

namespace
{

template <class T>
T ToValue(std::span<const float> arrValues)
{
    std::array<float, sizeof(T) / sizeof(float)> arrFloats;
    std::ranges::copy(arrValues, arrFloats.begin());
    return std::bit_cast<T>(arrFloats);
}

} // namespace

int32_t CSGATF_Param::GetOutputCount() const
{
    switch (m_spObjParam ? m_spObjParam->GetType() : CSGParam::PARAM_TYPE_COUNT)
    {
    case CSGParam::PARAM_TYPE_FLOAT:
        return 1;
    case CSGParam::PARAM_TYPE_FLOAT2:
        return 2;
    case CSGParam::PARAM_TYPE_FLOAT3:
        return 3;
    case CSGParam::PARAM_TYPE_FLOAT4:
        return 4;
    case CSGParam::PARAM_TYPE_FLOAT4x4:
        return 16;
    default:
        return 0;
    }
}

bool CSGATF_Param::SetTargetValue(std::span<const float> arrValues)
{
    QD_CHECK_NOT_NULL(m_spObjParam, false);
    switch (arrValues.size())
    {
    case 1:
    {
        const float fValue = arrValues[0];
        QD_CHECK(m_spObjParam->GetType() == CSGParam::PARAM_TYPE_FLOAT, false);
        QD_CHECK_CALL(m_spObjParam->SetValueAs<float>(fValue), false);
        return true;
    }
    case 2:
    {
        const auto rValue = ToValue<CSGFloat2>(arrValues);
        QD_CHECK(m_spObjParam->GetType() == CSGParam::PARAM_TYPE_FLOAT2, false);
        QD_CHECK_CALL(m_spObjParam->SetValueAs<CSGFloat2>(rValue), false);
        return true;
    }
    case 3:
    {
        const auto rValue = ToValue<CSGFloat3>(arrValues);
        QD_CHECK(m_spObjParam->GetType() == CSGParam::PARAM_TYPE_FLOAT3, false);
        QD_CHECK_CALL(m_spObjParam->SetValueAs<CSGFloat3>(rValue), false);
        return true;
    }
    case 4:
    {
        const auto rValue = ToValue<CSGFloat4>(arrValues);
        QD_CHECK(m_spObjParam->GetType() == CSGParam::PARAM_TYPE_FLOAT4, false);
        QD_CHECK_CALL(m_spObjParam->SetValueAs<CSGFloat4>(rValue), false);
        return true;
    }
    case 16:
    {
        const auto rValue = ToValue<CMatrix4>(arrValues);
        QD_CHECK(m_spObjParam->GetType() == CSGParam::PARAM_TYPE_FLOAT4x4, false);
        QD_CHECK_CALL(m_spObjParam->SetValueAs<CMatrix4>(rValue), false);
        return true;
    }
    default:
        Log(QD_SCENEGRAPH, LOG_ERROR, "Unsupported number of outputs: %d",
            static_cast<int>(arrValues.size()));
        return false;
    }
}
