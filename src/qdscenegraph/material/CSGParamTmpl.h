// The concrete kinds of parameter, one for each type of value.
#pragma once

#include "qdcommon/CMatrix3.h"
#include "qdcommon/CMatrix4.h"
#include "qdcommon/CSGFloat2.h"
#include "qdcommon/CSGFloat3.h"
#include "qdcommon/CSGFloat4.h"
#include "qdscenegraph/material/CSGLightState.h"
#include "qdscenegraph/material/CSGMaterialState.h"
#include "qdscenegraph/material/CSGParam.h"
#include "qdscenegraph/material/CSGSampler.h"
#include "qdscenegraph/material/CSGSurface.h"

// What the type of a value is called: its number, and its names in files and in the log.
template <class T>
struct CSGParamTraits;

template <CSGParam::EType eType>
struct CSGParamTypeNumber
{
    static constexpr CSGParam::EType TYPE = eType;
};
template <>
struct CSGParamTraits<float> : CSGParamTypeNumber<CSGParam::PARAM_TYPE_FLOAT>
{
    static constexpr const char* SG_TYPE_NAME = "CSGParamTmpl<float>";
};
template <>
struct CSGParamTraits<CSGFloat2> : CSGParamTypeNumber<CSGParam::PARAM_TYPE_FLOAT2>
{
    static constexpr const char* SG_TYPE_NAME = "CSGParamTmpl<CSGFloat2>";
};
template <>
struct CSGParamTraits<CSGFloat3> : CSGParamTypeNumber<CSGParam::PARAM_TYPE_FLOAT3>
{
    static constexpr const char* SG_TYPE_NAME = "CSGParamTmpl<CSGFloat3>";
};
template <>
struct CSGParamTraits<CSGFloat4> : CSGParamTypeNumber<CSGParam::PARAM_TYPE_FLOAT4>
{
    static constexpr const char* SG_TYPE_NAME = "CSGParamTmpl<CSGFloat4>";
};
template <>
struct CSGParamTraits<CMatrix3> : CSGParamTypeNumber<CSGParam::PARAM_TYPE_FLOAT3x3>
{
    static constexpr const char* SG_TYPE_NAME = "CSGParamTmpl<CMatrix3>";
};
template <>
struct CSGParamTraits<CMatrix4> : CSGParamTypeNumber<CSGParam::PARAM_TYPE_FLOAT4x4>
{
    static constexpr const char* SG_TYPE_NAME = "CSGParamTmpl<CMatrix4>";
};
template <>
struct CSGParamTraits<int> : CSGParamTypeNumber<CSGParam::PARAM_TYPE_INT>
{
    static constexpr const char* SG_TYPE_NAME = "CSGParamTmpl<int>";
};
template <>
struct CSGParamTraits<CSGSurfacePtr> : CSGParamTypeNumber<CSGParam::PARAM_TYPE_SURFACE>
{
    static constexpr const char* SG_TYPE_NAME = "CSGParamTmpl<CSGSurfacePtr>";
};
template <>
struct CSGParamTraits<CSGSamplerPtr> : CSGParamTypeNumber<CSGParam::PARAM_TYPE_SAMPLER>
{
    static constexpr const char* SG_TYPE_NAME = "CSGParamTmpl<CSGSamplerPtr>";
};
template <>
struct CSGParamTraits<CSGLightState> : CSGParamTypeNumber<CSGParam::PARAM_TYPE_LIGHTDATA>
{
    static constexpr const char* SG_TYPE_NAME = "CSGParamTmpl<CSGLightState>";
};
template <>
struct CSGParamTraits<CSGMaterialState> : CSGParamTypeNumber<CSGParam::PARAM_TYPE_MATERIALDATA>
{
    static constexpr const char* SG_TYPE_NAME = "CSGParamTmpl<CSGMaterialState>";
};

// T is one of the types above. Matrices are saved row by row, surfaces and samplers as links.
template <class T>
class CSGParamTmpl final : public SGStreamableDerivedInterface<CSGParamTmpl<T>, CSGParam>
{
  public:
    static constexpr const char* SG_TYPE_NAME = CSGParamTraits<T>::SG_TYPE_NAME;

    CSGParamTmpl() { this->m_eType = CSGParamTraits<T>::TYPE; }

    static boost::intrusive_ptr<CSGParamTmpl> Create(const CQDCompactString& rName, const T& rValue);

    const T& GetValue() const { return m_objValue; }
    void SetValue(const T& rValue) { m_objValue = rValue; }

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pStreamable,
                            CSGStreamableLoadState* pLoadState) override;
    // A surface or sampler parameter without a value is refused.
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    void DropLinks() override;
    CSGParamPtr CreateCopy() const override { return Create(this->m_strName, m_objValue); }
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    T m_objValue{};
};

extern template class CSGParamTmpl<float>;
extern template class CSGParamTmpl<CSGFloat2>;
extern template class CSGParamTmpl<CSGFloat3>;
extern template class CSGParamTmpl<CSGFloat4>;
extern template class CSGParamTmpl<CMatrix3>;
extern template class CSGParamTmpl<CMatrix4>;
extern template class CSGParamTmpl<int>;
extern template class CSGParamTmpl<CSGSurfacePtr>;
extern template class CSGParamTmpl<CSGSamplerPtr>;
extern template class CSGParamTmpl<CSGLightState>;
extern template class CSGParamTmpl<CSGMaterialState>;

template <class T>
const T& CSGParam::GetValueAs() const
{
    static const T s_objDefault{};
    QD_CHECK(GetType() == CSGParamTraits<T>::TYPE, s_objDefault);
    return static_cast<const CSGParamTmpl<T>*>(this)->GetValue();
}

template <class T>
bool CSGParam::SetValueAs(const T& rValue)
{
    QD_CHECK(GetType() == CSGParamTraits<T>::TYPE, false);
    static_cast<CSGParamTmpl<T>*>(this)->SetValue(rValue);
    return true;
}
