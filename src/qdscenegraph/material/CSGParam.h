// The base of parameters: named, typed values that are handed to shading.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdscenegraph/streaming/CSGStreamable.h"

class CSGParamSet;

// The concrete kinds are the CSGParamTmpl<T>. A parameter stands in at most one parameter set; any number of
// materials may share it.
class CSGParam : public SGStreamableInterface<CSGParam>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGParam";

    enum EType : int32_t
    {
        PARAM_TYPE_FLOAT = 0,
        PARAM_TYPE_FLOAT2 = 1,
        PARAM_TYPE_FLOAT3 = 2,
        PARAM_TYPE_FLOAT4 = 3,
        PARAM_TYPE_FLOAT3x3 = 4,
        PARAM_TYPE_FLOAT4x4 = 5,
        PARAM_TYPE_INT = 6,
        PARAM_TYPE_SURFACE = 7,
        PARAM_TYPE_SAMPLER = 8,
        PARAM_TYPE_LIGHTDATA = 9,
        PARAM_TYPE_MATERIALDATA = 10,
        PARAM_TYPE_COUNT = 11
    };

    EType GetType() const { return m_eType; }
    // Not saved: empty in a parameter that was read from a file.
    const CQDCompactString& GetName() const { return m_strName; }

    // The value of a parameter whose type is T's; a default T, and for Set false, of another (reported). They
    // are there with CSGParamTmpl.h.
    template <class T>
    const T& GetValueAs() const;
    template <class T>
    bool SetValueAs(const T& rValue);

    // For CSGParamSet alone. False (reported) without a set, when the parameter stands in a set already, and
    // when it is removed from another than it stands in.
    bool NotifyAddedToParamSet(CSGParamSet* pParamSet);
    bool NotifyRemovedFromParamSet(CSGParamSet* pParamSet);

    // The record is the value alone.
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override = 0;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override = 0;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pStreamable,
                            CSGStreamableLoadState* pLoadState) override = 0;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override = 0;

    // A parameter of the same type, name and value that stands in no set; surfaces and samplers are shared.
    virtual boost::intrusive_ptr<CSGParam> CreateCopy() const = 0;
    // Written to the log at level 7, each line behind the indent.
    virtual void OutputDebugInfo(const CQDString& rIndent) const = 0;

  protected:
    CSGParam() = default;

    EType m_eType = PARAM_TYPE_COUNT; // not yet typed
    CQDCompactString m_strName;

  private:
    CSGParamSet* m_pParamSet = nullptr; // told apart, never used: the set may be gone
};

using CSGParamPtr = boost::intrusive_ptr<CSGParam>;
