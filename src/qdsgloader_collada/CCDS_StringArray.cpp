#include "qdsgloader_collada/CCDS_StringArray.h"

#include "qdsgloader_collada/CColladaSourceReader.h"

CColladaDataSourceType CCDS_StringArray::ms_objType(
    2, "CCDS_StringArray",
    [](domSource& rSource) -> CColladaDataSourceType::CDataSourcePtr {
        return CCDS_StringArray::Create(rSource);
    },
    [](domSource& rSource) { return CColladaAccessor::HasArray(rSource, domName_array::ID()); });

boost::intrusive_ptr<CCDS_StringArray> CCDS_StringArray::Create(domSource& rSource)
{
    return ReadColladaSource<CCDS_StringArray, domName_array>(
        rSource, EColladaPrimitive::String, "Name_array",
        [](daeString szName) { return CQDString(Text(szName)); });
}

boost::intrusive_ptr<CCDS_StringArray> CCDS_StringArray::Create(int32_t nPrimitivesPerValue,
                                                                int32_t nNumValues)
{
    const boost::intrusive_ptr<CCDS_StringArray> spDataSource = new CCDS_StringArray;
    return spDataSource->Init(nPrimitivesPerValue, nNumValues) ? spDataSource : nullptr;
}

CQDString CCDS_StringArray::FormatValue(int32_t nIndex) const
{
    CQDString strText;
    for (const CQDString& rPrimitive : GetValue(nIndex))
    {
        strText += rPrimitive + " ";
    }
    return strText;
}
