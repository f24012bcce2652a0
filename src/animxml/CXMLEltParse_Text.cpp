#include "animxml/CXMLEltParse_Text.h"

bool CXMLEltParse_Text::HandleStart(const CXMLAttributeList& rListAttributes)
{
    return CheckNoAttributes(rListAttributes);
}

bool CXMLEltParse_Text::HandleCharData(const CQDString& rStrCharData)
{
    m_strValue += rStrCharData;
    return true;
}

bool CXMLEltParse_Text::HandleEnd()
{
    constexpr std::string_view WHITE_SPACE = " \t\r\n";
    m_strValue.erase(m_strValue.find_last_not_of(WHITE_SPACE) + 1);
    m_strValue.erase(0, m_strValue.find_first_not_of(WHITE_SPACE));
    return StoreValue();
}
