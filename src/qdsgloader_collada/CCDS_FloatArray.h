// A data source of floats: an accessor over a float_array.
#pragma once

#include "qdsgloader_collada/CCDS_Array.h"

class CCDS_FloatArray : public CCDS_Array<float>
{
  public:
    static CColladaDataSourceType ms_objType;

    // Reads a DOM source; null (reported) on failure.
    static boost::intrusive_ptr<CCDS_FloatArray> Create(ColladaDOM141::domSource& rSource);
    // All zeros; null (reported) for a shape that cannot be.
    static boost::intrusive_ptr<CCDS_FloatArray> Create(int32_t nPrimitivesPerValue, int32_t nNumValues);

  protected:
    CQDString FormatValue(int32_t nIndex) const override;

  private:
    CCDS_FloatArray() : CCDS_Array(ms_objType) {}
};
