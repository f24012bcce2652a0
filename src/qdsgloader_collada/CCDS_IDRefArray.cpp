#include "qdsgloader_collada/CCDS_IDRefArray.h"

#include "qdsgloader_collada/CColladaSourceReader.h"

CColladaDataSourceType CCDS_IDRefArray::ms_objType(
    3, "CCDS_IDRefArray",
    [](domSource& rSource) -> CColladaDataSourceType::CDataSourcePtr {
        return CCDS_IDRefArray::Create(rSource);
    },
    [](domSource& rSource) { return CColladaAccessor::HasArray(rSource, domIDREF_array::ID()); });

boost::intrusive_ptr<CCDS_IDRefArray> CCDS_IDRefArray::Create(domSource& rSource)
{
    return ReadColladaSource<CCDS_IDRefArray, domIDREF_array>(
        rSource, EColladaPrimitive::IDRef, "IDREF_array",
        [](const daeIDRef& rReference) { return CQDString(Text(rReference.getID())); });
}

boost::intrusive_ptr<CCDS_IDRefArray> CCDS_IDRefArray::Create(int32_t nPrimitivesPerValue, int32_t nNumValues)
{
    const boost::intrusive_ptr<CCDS_IDRefArray> spDataSource = new CCDS_IDRefArray;
    return spDataSource->Init(nPrimitivesPerValue, nNumValues) ? spDataSource : nullptr;
}

CQDString CCDS_IDRefArray::FormatValue(int32_t nIndex) const
{
    CQDString strText;
    for (const CQDString& rPrimitive : GetValue(nIndex))
    {
        strText += rPrimitive + " ";
    }
    return strText;
}
