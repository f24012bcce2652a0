// Animates the whole value of a parameter.
#pragma once

#include "qdscenegraph/material/CSGParam.h"
#include "qdscenegraph/target/CSGATF.h"

// For parameters of 1 to 4 floats, and of 16, which are the rows of a matrix.
class CSGATF_Param final : public CSGATF
{
  public:
    explicit CSGATF_Param(CSGParam* pObjParam) : m_spObjParam(pObjParam) {}
    static boost::intrusive_ptr<CSGATF_Param> Create(CSGParam* pObjParam)
    {
        return CSGMem::Construct<CSGATF_Param>(pObjParam);
    }

    // 0 for a parameter of another type, which takes no value.
    int32_t GetOutputCount() const override;
    // False (reported) also when the parameter has another number of floats.
    bool SetTargetValue(std::span<const float> arrValues) override;
    size_t GetObjectSize() const override { return sizeof(CSGATF_Param); }

  private:
    CSGParamPtr m_spObjParam;
};
