#include "qdscenegraph/material/CSGParamTmpl.h"

#include "qdscenegraph/streaming/CSGFloatRecord.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

namespace
{

const SGStreamableRegistration<CSGParamTmpl<float>> s_objFloat(0xF7024B9A5776A08C, 1, 1);
const SGStreamableRegistration<CSGParamTmpl<CSGFloat2>> s_objFloat2(0xE1CFB5A06A4F0FCB, 1, 1);
const SGStreamableRegistration<CSGParamTmpl<CSGFloat3>> s_objFloat3(0xB4DBE1E3431D6B43, 1, 1);
const SGStreamableRegistration<CSGParamTmpl<CSGFloat4>> s_objFloat4(0x56F7AE29042290C1, 1, 1);
const SGStreamableRegistration<CSGParamTmpl<CMatrix3>> s_objMatrix3(0xDEFB6F196C05C0DD, 1, 1);
const SGStreamableRegistration<CSGParamTmpl<CMatrix4>> s_objMatrix4(0xEAEC3CE167072EB0, 1, 1);
const SGStreamableRegistration<CSGParamTmpl<int>> s_objInt(0x5A6DAC147895B02D, 1, 1);
const SGStreamableRegistration<CSGParamTmpl<CSGSurfacePtr>> s_objSurface(0xD84F8663B4C64222, 1, 1);
const SGStreamableRegistration<CSGParamTmpl<CSGSamplerPtr>> s_objSampler(0xD1620ED7D6E96957, 1, 1);
const SGStreamableRegistration<CSGParamTmpl<CSGLightState>> s_objLightState(0x48E5DD40FE1539A3, 1, 1);
const SGStreamableRegistration<CSGParamTmpl<CSGMaterialState>> s_objMaterialState(0xA369E7B0D3AB5465, 1, 1);

// The one link of the record.
constexpr int32_t COOKIE_VALUE = 0;

// Whether a value is an object of its own, linked to and not written into the record.
template <class T>
constexpr bool IS_LINK = requires(T value)
{
    value.get();
};

void LogCycle(const CSGParamTmpl<CSGSurfacePtr>* pParam)
{
    Log(QD_SCENEGRAPH, LOG_WARNING, "Cycle detected at (CSGParamTmpl<CSGSurfacePtr>*)0x%08llx",
        LogAddress(pParam));
}

void LogCycle(const CSGParamTmpl<CSGSamplerPtr>* pParam)
{
    Log(QD_SCENEGRAPH, LOG_WARNING, "Cycle detected at (CSGParamTmpl<CSGSamplerPtr>*)0x%08llx",
        LogAddress(pParam));
}

// The line of a parameter, one function for each type of value.
struct CParamOutput
{
    const CQDString& rIndent;
    CSGParam::EType eType;
    const CQDCompactString& rName;

    void operator()(float fValue) const
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%sParam (%d float) Name: %s Value: %.3f", rIndent, eType, rName,
            fValue);
    }
    void operator()(const CSGFloat2& v) const
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%sParam (%d float2) Name: %s Value: [%.3f %.3f]", rIndent, eType, rName,
            v.x, v.y);
    }
    void operator()(const CSGFloat3& v) const
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%sParam (%d float3) Name: %s Value: [%.3f %.3f %.3f]", rIndent, eType,
            rName, v.x, v.y, v.z);
    }
    void operator()(const CSGFloat4& v) const
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%sParam (%d float4) Name: %s Value: [%.3f %.3f %.3f %.3f]", rIndent,
            eType, rName, v.x, v.y, v.z, v.w);
    }
    void operator()(const CMatrix3& rMatrix) const
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%sParam (%d float3x3) Name: %s Value: ", rIndent, eType, rName);
        for (const auto& rRow : rMatrix.m)
        {
            Log(QD_SCENEGRAPH, LOG_INFO, "%s  [%.3f %.3f %.3f]", rIndent, rRow[0], rRow[1], rRow[2]);
        }
    }
    void operator()(const CMatrix4& rMatrix) const
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%sParam (%d float4x4) Name: %s Value: ", rIndent, eType, rName);
        for (const auto& rRow : rMatrix.m)
        {
            Log(QD_SCENEGRAPH, LOG_INFO, "%s  [%.3f %.3f %.3f %.3f]", rIndent, rRow[0], rRow[1], rRow[2],
                rRow[3]);
        }
    }
    void operator()(int nValue) const
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%sParam (%d int) Name: %s Value: %d", rIndent, eType, rName, nValue);
    }
    void operator()(const CSGSurfacePtr& spSurface) const
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%sParam (%d Surface) Name: %s", rIndent, eType, rName);
        OutputObject(spSurface.get());
    }
    void operator()(const CSGSamplerPtr& spSampler) const
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%sParam (%d Sampler) Name: %s", rIndent, eType, rName);
        OutputObject(spSampler.get());
    }
    void operator()(const CSGLightState&) const
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%sParam (%d LightData) Name: %s", rIndent, eType, rName);
    }
    void operator()(const CSGMaterialState&) const
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%sParam (%d MaterialData) Name: %s", rIndent, eType, rName);
    }

    template <class T>
    void OutputObject(const T* pObject) const
    {
        if (pObject != nullptr)
        {
            pObject->OutputDebugInfo(rIndent + "  ");
        }
    }
};

} // namespace

template <class T>
boost::intrusive_ptr<CSGParamTmpl<T>> CSGParamTmpl<T>::Create(const CQDCompactString& rName, const T& rValue)
{
    boost::intrusive_ptr<CSGParamTmpl> spParam = CSGMem::Construct<CSGParamTmpl>();
    if (spParam)
    {
        spParam->m_strName = rName;
        spParam->m_objValue = rValue;
    }
    return spParam;
}

template <class T>
bool CSGParamTmpl<T>::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    if constexpr (IS_LINK<T>)
    {
        QD_CHECK_OR_RETURN(pLoadState->ReadChildID(pStream, this, COOKIE_VALUE), "Call %s failed",
                           "pLoadState->ReadChildID(pStream,this,0)", false);
        return true;
    }
    else
    {
        T objValue{};
        QD_CHECK_CALL(ReadFloats(pStream, objValue), false);
        m_objValue = objValue;
        return true;
    }
}

template <class T>
bool CSGParamTmpl<T>::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    if constexpr (IS_LINK<T>)
    {
        QD_CHECK_OR_RETURN(pSaveState->WriteChildID(pStream, m_objValue.get()), "Call %s failed",
                           "pSaveState->WriteChildID(pStream,m_objValue.get())", false);
        return true;
    }
    else
    {
        return WriteFloats(pStream, m_objValue);
    }
}

template <class T>
bool CSGParamTmpl<T>::NotifyObjectLoaded(int32_t, CSGStreamable* pStreamable,
                                         CSGStreamableLoadState* pLoadState)
{
    if constexpr (IS_LINK<T>)
    {
        QD_CHECK_ARG(pStreamable, false);
        QD_CHECK_ARG(pLoadState, false);
        auto* pValue = SGStreamableCast<typename T::element_type>(pStreamable);
        QD_CHECK_NOT_NULL(pValue, false);
        m_objValue = pValue;
    }
    return true;
}

template <class T>
bool CSGParamTmpl<T>::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    if constexpr (IS_LINK<T>)
    {
        if (pSaveState->HasObject(this))
        {
            LogCycle(this);
            return true;
        }
        QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
        QD_CHECK_NOT_NULL(m_objValue, false);
        QD_CHECK_CALL(m_objValue->PreWrite(pSaveState), false);
    }
    else
    {
        QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
    }
    return true;
}

template <class T>
void CSGParamTmpl<T>::DropLinks()
{
    if constexpr (IS_LINK<T>)
    {
        m_objValue.reset();
    }
}

template <class T>
void CSGParamTmpl<T>::OutputDebugInfo(const CQDString& rIndent) const
{
    CParamOutput{rIndent, this->m_eType, this->m_strName}(m_objValue);
}

template class CSGParamTmpl<float>;
template class CSGParamTmpl<CSGFloat2>;
template class CSGParamTmpl<CSGFloat3>;
template class CSGParamTmpl<CSGFloat4>;
template class CSGParamTmpl<CMatrix3>;
template class CSGParamTmpl<CMatrix4>;
template class CSGParamTmpl<int>;
template class CSGParamTmpl<CSGSurfacePtr>;
template class CSGParamTmpl<CSGSamplerPtr>;
template class CSGParamTmpl<CSGLightState>;
template class CSGParamTmpl<CSGMaterialState>;
