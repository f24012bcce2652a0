// What is asked of a record.
#include "fbxsdk/document/CFBXRecord.h"

#include "fbxsdk/document/CFBXArrayReader.h"
#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/document/FBXMessages.h"
#include "fbxsdk/document/FBXNumbers.h"
#include "qdcommon/CLog.h"

#include <algorithm>
#include <new>

const CFBXValue& CFBXRecord::GetValue(size_t n) const
{
    static const CFBXValue NO_VALUE;
    return n < m_uiValues ? m_pValues[n] : NO_VALUE;
}

const CFBXRecord* CFBXRecord::FindChild(std::string_view strName) const
{
    for (const CFBXRecord& rChild : GetChildren())
    {
        if (rChild.GetName() == strName)
        {
            return &rChild;
        }
    }
    return nullptr;
}

int64_t CFBXRecord::GetChildInt64(std::string_view strName, int64_t nDefault) const
{
    const CFBXRecord* pChild = FindChild(strName);
    return pChild != nullptr ? pChild->GetInt64(0, nDefault) : nDefault;
}

double CFBXRecord::GetChildDouble(std::string_view strName, double dDefault) const
{
    const CFBXRecord* pChild = FindChild(strName);
    return pChild != nullptr ? pChild->GetDouble(0, dDefault) : dDefault;
}

std::string_view CFBXRecord::GetChildString(std::string_view strName) const
{
    const CFBXRecord* pChild = FindChild(strName);
    return pChild != nullptr ? pChild->GetString(0) : std::string_view();
}

const CFBXValue* CFBXRecord::FindArray() const
{
    const auto objValues = GetValues();
    const auto itArray = std::ranges::find_if(objValues, &CFBXValue::IsArray);
    return itArray != objValues.end() ? &*itArray : nullptr;
}

size_t CFBXRecord::GetArrayCount() const
{
    if (const CFBXValue* pArray = FindArray())
    {
        return pArray->GetLayout().uiCount;
    }
    return static_cast<size_t>(std::ranges::count_if(GetValues(), &CFBXValue::IsNumber));
}

template <class T>
bool CFBXRecord::ReadNumbers(std::vector<T>& rVector) const
{
    CQDString strError;
    rVector.clear();
    if (const CFBXValue* pArray = FindArray())
    {
        if (CFBXArrayReader::Read(*pArray, rVector, strError))
        {
            return true;
        }
        Log(FBXSDK, LOG_ERROR, "The array of %s is damaged: %s.", Describe(), strError);
        return false;
    }
    try
    {
        rVector.reserve(m_uiValues);
        for (const CFBXValue& rValue : GetValues())
        {
            if (!rValue.IsNumber())
            {
                Log(FBXSDK, LOG_ERROR, "Value %llu of %s is not a number.",
                    static_cast<unsigned long long>(rVector.size()), Describe());
                rVector.clear();
                return false;
            }
            rVector.push_back(rValue.GetType() == EFBXType::INT ? ConvertFBXNumber<T>(rValue.GetInt64())
                                                                : ConvertFBXNumber<T>(rValue.GetDouble()));
        }
    }
    catch (const std::bad_alloc&)
    {
        Log(FBXSDK, LOG_ERROR, "Out of memory for the numbers of %s.", Describe());
        rVector.clear();
        return false;
    }
    return true;
}

bool CFBXRecord::ReadDoubles(std::vector<double>& rVector) const { return ReadNumbers(rVector); }

bool CFBXRecord::ReadFloats(std::vector<float>& rVector) const { return ReadNumbers(rVector); }

bool CFBXRecord::ReadInts(std::vector<int32_t>& rVector) const { return ReadNumbers(rVector); }

bool CFBXRecord::ReadInt64s(std::vector<int64_t>& rVector) const { return ReadNumbers(rVector); }

CQDString CFBXRecord::Describe() const
{
    return QuoteFBXText(GetName()) + (m_bLines ? " at line " : " at byte ") + std::to_string(m_uiPlace);
}
