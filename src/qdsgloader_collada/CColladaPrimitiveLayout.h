// How a value of a data source is made of the entries of its array: the parameters of an accessor that carry
// data.
#pragma once

#include <cstdint>
#include <vector>

class CColladaPrimitiveLayout
{
  public:
    struct CParam
    {
        int32_t m_nStartOffset;   // of its first entry within a value
        int32_t m_nNumPrimitives; // one after the other
    };

    // False (reported) for a negative offset or no primitives.
    bool AddParam(int32_t nStartOffset, int32_t nNumPrimitives);

    const std::vector<CParam>& GetParams() const { return m_vecParams; }
    int32_t GetPrimitivesPerValue() const { return m_nPrimitivesPerValue; }
    // How many entries from its start on a value reaches.
    int64_t GetExtent() const { return m_nExtent; }
    // Whether a value's primitives are the entries from its start on, with none left out.
    bool IsContiguous() const { return m_nExtent == m_nPrimitivesPerValue; }

  private:
    std::vector<CParam> m_vecParams;
    int32_t m_nPrimitivesPerValue = 0;
    int64_t m_nExtent = 0;
};
