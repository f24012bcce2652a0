#include "animxml/CXMLElementParser.h"

#include "animxml/AnimXMLLog.h"
#include "qdcommon/CLog.h"

#include <algorithm>

CXMLElementParser::CXMLElementParser(const CQDString& rStrElementName,
                                     const CXMLElementParserPtr& spParentParser)
    : m_strElementName(rStrElementName),
      m_spParentParser(spParentParser)
{}

bool CXMLElementParser::HandleCharData(const CQDString&) { return true; }

bool CXMLElementParser::HandleEnd() { return true; }

bool CXMLElementParser::HandleChildElement(const CQDString&, CXMLElementParserPtr&)
{
    Log(ANIM_XML, LOG_ERROR, "<%s> does not support child elements.", m_strElementName);
    return false;
}

bool CXMLElementParser::GetSingleAttribute(const CXMLAttributeList& rListAttributes,
                                           std::initializer_list<std::string_view> listNames,
                                           CQDString& rStrName, CQDString& rStrValue) const
{
    const auto nBlanks = std::ranges::count(listNames, std::string_view());
    if (nBlanks > 1)
    {
        Log(ANIM_XML, LOG_ERROR, "Handed in list with more than one blank attribute for element <%s>",
            m_strElementName);
        return false;
    }
    CQDString strAllNames;
    for (const std::string_view strName : listNames)
    {
        strAllNames.append(strAllNames.empty() || strName.empty() ? "" : ", ").append(strName);
    }
    const CXMLAttribute* pFound = nullptr;
    for (const CXMLAttribute& rAttribute : rListAttributes)
    {
        if (std::ranges::find(listNames, rAttribute.m_strName) == listNames.end())
        {
            continue;
        }
        if (pFound != nullptr)
        {
            Log(ANIM_XML, LOG_ERROR, "<%s> requires only one of the following attributes: %s",
                m_strElementName, strAllNames);
            return false;
        }
        pFound = &rAttribute;
    }
    if (pFound == nullptr && nBlanks == 0)
    {
        Log(ANIM_XML, LOG_ERROR, "<%s> requires one of the following attributes: %s", m_strElementName,
            strAllNames);
        return false;
    }
    rStrName = pFound != nullptr ? pFound->m_strName : CQDString();
    rStrValue = pFound != nullptr ? pFound->m_strValue : CQDString();
    return true;
}

bool CXMLElementParser::CheckNoAttributes(const CXMLAttributeList& rListAttributes) const
{
    if (!rListAttributes.empty())
    {
        Log(ANIM_XML, LOG_ERROR, "%d attributes specified for <%s> that takes no attributes.",
            static_cast<int>(rListAttributes.size()), m_strElementName);
        return false;
    }
    return true;
}

bool CXMLElementParser::RefuseChildElement(const CQDString& rStrChildName) const
{
    Log(ANIM_XML, LOG_ERROR, "<%s> is not a valid child of <%s>", rStrChildName, m_strElementName);
    return false;
}
