#include "qdsgloader_collada/CColladaDataSource.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <algorithm>
#include <iterator>

bool CColladaDataSource::InstanceOf(const CColladaDataSourceType* pType) const
{
    if (pType == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in NULL type object.");
        return false;
    }
    return pType == &m_rType;
}

bool CColladaDataSource::SetShape(int32_t nPrimitivesPerValue, int32_t nNumValues)
{
    if (nPrimitivesPerValue < 1)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in invalid number of primitives per value %d.",
            nPrimitivesPerValue);
        return false;
    }
    if (nNumValues < 0)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in invalid number of values %d.", nNumValues);
        return false;
    }
    m_nPrimitivesPerValue = nPrimitivesPerValue;
    m_nNumValues = nNumValues;
    return true;
}

void CColladaDataSource::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_COLLADA, LOG_INFO, "%s%s (%d): 0x%08llX", rIndent, m_rType.GetName(), m_rType.GetTypeID(),
        LogAddress(this));
    Log(QD_COLLADA, LOG_INFO, "%s  %d Values:", rIndent, m_nNumValues);
    for (int32_t n = 0; n < m_nNumValues; ++n)
    {
        Log(QD_COLLADA, LOG_INFO, "%s    %s", rIndent, FormatValue(n));
    }
}

bool CColladaDataSource::GetPrimTypeAndNumberFromName(std::string_view strName,
                                                      EColladaPrimitive& rePrimitive,
                                                      int32_t& rnNumPrimitives)
{
    struct CEntry
    {
        std::string_view strName;
        EColladaPrimitive ePrimitive;
        int32_t nNumPrimitives;
    };
    // Exporters also write "double" for a float and "Name" for a name.
    static constexpr CEntry ENTRIES[] = {
        {"float", EColladaPrimitive::Float, 1},     {"float4", EColladaPrimitive::Float, 4},
        {"float4x4", EColladaPrimitive::Float, 16}, {"double", EColladaPrimitive::Float, 1},
        {"name", EColladaPrimitive::String, 1},     {"Name", EColladaPrimitive::String, 1},
        {"IDREF", EColladaPrimitive::IDRef, 1},
    };
    const auto* pEntry = std::ranges::find(ENTRIES, strName, &CEntry::strName);
    if (pEntry == std::end(ENTRIES))
    {
        Log(QD_COLLADA, LOG_ERROR, "Unknown primitive type name \"%s\"", CQDString(strName));
        return false;
    }
    rePrimitive = pEntry->ePrimitive;
    rnNumPrimitives = pEntry->nNumPrimitives;
    return true;
}
