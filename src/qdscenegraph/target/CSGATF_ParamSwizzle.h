// Animates one float of a parameter.
#pragma once

#include "qdscenegraph/material/CSGParam.h"
#include "qdscenegraph/target/CSGATF.h"

// For parameters of 1 to 4 floats; the others of them are kept.
class CSGATF_ParamSwizzle final : public CSGATFInterface<CSGATF_ParamSwizzle, 1>
{
  public:
    CSGATF_ParamSwizzle(CSGParam* pObjParam, int32_t nIndex) : m_spObjParam(pObjParam), m_nIndex(nIndex) {}
    // The index counts from 0 on. Null (reported) without a parameter, for one of another type, and for an
    // index that it does not have.
    static boost::intrusive_ptr<CSGATF_ParamSwizzle> Create(CSGParam* pObjParam, int32_t nIndex);

    bool SetValue(std::span<const float, 1> arrValue);

  private:
    CSGParamPtr m_spObjParam;
    int32_t m_nIndex;
};
