// Properties: read from both layouts of their records, and looked up.
#include "fbxsdk/objects/CFBXProperties.h"

#include "fbxsdk/document/CFBXRecord.h"

#include <algorithm>

namespace
{

// Up to here to look at each is faster.
constexpr size_t MOST_WITHOUT_MAP = 128;

// P: name, type, label, flags, values... and, before version 7, Property: name, type, flags, values...
CFBXProperty ReadProperty(const CFBXRecord& rLine, bool bLabelled)
{
    const size_t uiValues = bLabelled ? 4 : 3;
    CFBXProperty objProperty;
    objProperty.strName = rLine.GetString(0);
    objProperty.strType = rLine.GetString(1);
    objProperty.strLabel = bLabelled ? rLine.GetString(2) : std::string_view();
    objProperty.strFlags = rLine.GetString(uiValues - 1);
    objProperty.spanValues = rLine.GetValues().subspan(std::min(uiValues, rLine.GetNumValues()));
    return objProperty;
}

} // namespace

void CFBXProperties::Read(const CFBXRecord& rObject)
{
    const CFBXRecord* pLines = rObject.FindChild("Properties70");
    const bool bLabelled = pLines != nullptr;
    if (pLines == nullptr)
    {
        pLines = rObject.FindChild("Properties60");
    }
    if (pLines == nullptr)
    {
        return;
    }
    const auto objLines = pLines->GetChildren();
    m_vecProperties.reserve(m_vecProperties.size() +
                            static_cast<size_t>(std::distance(objLines.begin(), objLines.end())));
    for (const CFBXRecord& rLine : objLines)
    {
        if (rLine.GetName() == (bLabelled ? "P" : "Property") && !rLine.GetString(0).empty())
        {
            Add(ReadProperty(rLine, bLabelled));
        }
    }
}

void CFBXProperties::Add(const CFBXProperty& rProperty)
{
    m_vecProperties.push_back(rProperty);
    const size_t uiSize = m_vecProperties.size();
    if (uiSize <= MOST_WITHOUT_MAP)
    {
        return;
    }
    for (size_t uiPlace = m_mapPlaces.empty() ? 0 : uiSize - 1; uiPlace < uiSize; ++uiPlace)
    {
        m_mapPlaces.emplace(m_vecProperties[uiPlace].strName, uiPlace);
    }
}

const CFBXProperty* CFBXProperties::Find(std::string_view strName) const
{
    if (!m_mapPlaces.empty())
    {
        if (const auto it = m_mapPlaces.find(strName); it != m_mapPlaces.end())
        {
            return &m_vecProperties[it->second];
        }
    }
    else if (const auto it = std::ranges::find(m_vecProperties, strName, &CFBXProperty::strName);
             it != m_vecProperties.end())
    {
        return &*it;
    }
    return m_pTemplate != nullptr ? m_pTemplate->Find(strName) : nullptr;
}

int64_t CFBXProperties::GetInt64(std::string_view strName, int64_t nDefault) const
{
    const CFBXProperty* pProperty = Find(strName);
    return pProperty != nullptr ? pProperty->GetInt64(0, nDefault) : nDefault;
}

double CFBXProperties::GetDouble(std::string_view strName, double dDefault) const
{
    const CFBXProperty* pProperty = Find(strName);
    return pProperty != nullptr ? pProperty->GetDouble(0, dDefault) : dDefault;
}

std::string_view CFBXProperties::GetString(std::string_view strName) const
{
    const CFBXProperty* pProperty = Find(strName);
    return pProperty != nullptr ? pProperty->GetString(0) : std::string_view();
}
