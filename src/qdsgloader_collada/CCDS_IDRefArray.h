// A data source of ids of elements: an accessor over an IDREF_array.
#pragma once

#include "qdsgloader_collada/CCDS_Array.h"

class CCDS_IDRefArray : public CCDS_Array<CQDString>
{
  public:
    static CColladaDataSourceType ms_objType;

    // Reads a DOM source; null (reported) on failure.
    static boost::intrusive_ptr<CCDS_IDRefArray> Create(ColladaDOM141::domSource& rSource);
    // All empty; null (reported) for a shape that cannot be.
    static boost::intrusive_ptr<CCDS_IDRefArray> Create(int32_t nPrimitivesPerValue, int32_t nNumValues);

  protected:
    CQDString FormatValue(int32_t nIndex) const override;

  private:
    CCDS_IDRefArray() : CCDS_Array(ms_objType) {}
};
