// A data source of names: an accessor over a Name_array.
#pragma once

#include "qdsgloader_collada/CCDS_Array.h"

class CCDS_StringArray : public CCDS_Array<CQDString>
{
  public:
    static CColladaDataSourceType ms_objType;

    // Reads a DOM source; null (reported) on failure.
    static boost::intrusive_ptr<CCDS_StringArray> Create(ColladaDOM141::domSource& rSource);
    // All empty; null (reported) for a shape that cannot be.
    static boost::intrusive_ptr<CCDS_StringArray> Create(int32_t nPrimitivesPerValue, int32_t nNumValues);

  protected:
    CQDString FormatValue(int32_t nIndex) const override;

  private:
    CCDS_StringArray() : CCDS_Array(ms_objType) {}
};
