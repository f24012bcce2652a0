#include "qdsgloader_collada/CCDS_FloatArray.h"

#include "qdsgloader_collada/CColladaSourceReader.h"

CColladaDataSourceType CCDS_FloatArray::ms_objType(
    1, "CCDS_FloatArray",
    [](domSource& rSource) -> CColladaDataSourceType::CDataSourcePtr {
        return CCDS_FloatArray::Create(rSource);
    },
    [](domSource& rSource) { return CColladaAccessor::HasArray(rSource, domFloat_array::ID()); });

boost::intrusive_ptr<CCDS_FloatArray> CCDS_FloatArray::Create(domSource& rSource)
{
    return ReadColladaSource<CCDS_FloatArray, domFloat_array>(
        rSource, EColladaPrimitive::Float, "float_array",
        [](domFloat fValue) { return static_cast<float>(fValue); });
}

boost::intrusive_ptr<CCDS_FloatArray> CCDS_FloatArray::Create(int32_t nPrimitivesPerValue, int32_t nNumValues)
{
    const boost::intrusive_ptr<CCDS_FloatArray> spDataSource = new CCDS_FloatArray;
    return spDataSource->Init(nPrimitivesPerValue, nNumValues) ? spDataSource : nullptr;
}

CQDString CCDS_FloatArray::FormatValue(int32_t nIndex) const
{
    CQDString strText;
    for (const float fPrimitive : GetValue(nIndex))
    {
        strText += std::to_string(fPrimitive) + " ";
    }
    return strText;
}
