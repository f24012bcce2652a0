// Numbers out of values of any type.
#include "fbxsdk/document/CFBXValue.h"

#include "fbxsdk/document/FBXNumbers.h"

int64_t CFBXValue::GetInt64(int64_t nDefault) const
{
    switch (m_eType)
    {
    case EFBXType::INT:
        return m_nInt;
    case EFBXType::FLOAT:
        return m_dFloat == m_dFloat ? ConvertFBXNumber<int64_t>(m_dFloat) : nDefault;
    case EFBXType::STRING:
        return GetBytes() == "T" || GetBytes() == "Y"   ? 1
               : GetBytes() == "F" || GetBytes() == "N" ? 0
                                                        : nDefault;
    default:
        return nDefault;
    }
}

double CFBXValue::GetDouble(double dDefault) const
{
    return m_eType == EFBXType::FLOAT ? m_dFloat
           : m_eType == EFBXType::INT ? static_cast<double>(m_nInt)
                                      : dDefault;
}
