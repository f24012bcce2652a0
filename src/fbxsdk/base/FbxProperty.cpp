#include "fbxsdk/base/FbxProperty.h"

#include "fbxsdk/objects/CFBXProperty.h"

#include <cmath>

namespace
{

// Not a number and infinity are no values that a scene can use.
double FiniteOr(double dValue, double dDefault) { return std::isfinite(dValue) ? dValue : dDefault; }

} // namespace

std::string_view FbxProperty::GetName() const { return IsValid() ? m_pProperty->strName : ""; }

std::string_view FbxProperty::GetTypeName() const { return IsValid() ? m_pProperty->strType : ""; }

bool FbxProperty::IsUserDefined() const { return IsValid() && m_pProperty->IsUserDefined(); }

bool FbxProperty::IsString() const
{
    return IsValid() && !m_pProperty->spanValues.empty() && m_pProperty->spanValues[0].IsString();
}

double FbxProperty::GetDouble(double dDefault) const
{
    return IsValid() ? FiniteOr(m_pProperty->GetDouble(0, dDefault), dDefault) : dDefault;
}

int64_t FbxProperty::GetInt(int64_t nDefault) const
{
    return IsValid() ? m_pProperty->GetInt64(0, nDefault) : nDefault;
}

bool FbxProperty::GetBool(bool bDefault) const { return GetInt(bDefault ? 1 : 0) != 0; }

FbxDouble3 FbxProperty::GetDouble3(const FbxDouble3& rDefault) const
{
    FbxDouble3 objValue = rDefault;
    for (size_t n = 0; n < 3 && IsValid(); ++n)
    {
        objValue[n] = FiniteOr(m_pProperty->GetDouble(n, rDefault[n]), rDefault[n]);
    }
    return objValue;
}

std::string_view FbxProperty::GetString(std::string_view strDefault) const
{
    return IsString() ? m_pProperty->GetString(0) : strDefault;
}
