#include "animxml/CXMLEltParse_animations_channelSet.h"

#include "animxml/AnimXMLLog.h"
#include "animxml/CXMLEltParse_animations_channel.h"
#include "qdcommon/CLogChecks.h"

CXMLEltParse_animations_channelSet::CXMLEltParse_animations_channelSet(
    const CXMLElementParserPtr& spParentParser, CAnimationSliceData& rSliceData)
    : CXMLElementParser(ELEMENT_NAME, spParentParser),
      m_rSliceData(rSliceData)
{}

CXMLElementParserPtr CXMLEltParse_animations_channelSet::Create(const CXMLElementParserPtr& spParentParser,
                                                                CAnimationSliceData& rSliceData)
{
    QD_ASSERT(spParentParser, nullptr);
    return new CXMLEltParse_animations_channelSet(spParentParser, rSliceData);
}

bool CXMLEltParse_animations_channelSet::HandleStart(const CXMLAttributeList& rListAttributes)
{
    for (const CXMLAttribute& rAttribute : rListAttributes)
    {
        if (rAttribute.m_strName != "id")
        {
            Log(ANIM_XML, LOG_ERROR, "unknown attribute '%s' in <%s>. expecting %s", rAttribute.m_strName,
                GetElementName(), "id");
            return false;
        }
    }
    CQDString strName;
    return GetSingleAttribute(rListAttributes, {"id"}, strName, m_strValue);
}

bool CXMLEltParse_animations_channelSet::HandleEnd()
{
    QD_ASSERT(m_rSliceData.AddChannelSet(m_strValue, m_listChannel), false);
    return true;
}

bool CXMLEltParse_animations_channelSet::HandleChildElement(const CQDString& rStrChildName,
                                                            CXMLElementParserPtr& rspChildParser)
{
    if (rStrChildName != CXMLEltParse_animations_channel::ELEMENT_NAME)
    {
        return RefuseChildElement(rStrChildName);
    }
    rspChildParser = CXMLEltParse_animations_channel::Create(this, m_rSliceData);
    return true;
}

bool CXMLEltParse_animations_channelSet::AddChannels(std::span<const CQDCompactString> arrNames)
{
    const size_t nHeld = m_rSliceData.GetNumChannelNames() + m_listChannel.size();
    if (nHeld + arrNames.size() > CAnimationSliceData::MAX_CHANNEL_NAMES)
    {
        Log(ANIM_XML, LOG_ERROR, "Too many channels in <%s id=\"%s\">: all sets hold %d at most",
            GetElementName(), m_strValue, static_cast<int>(CAnimationSliceData::MAX_CHANNEL_NAMES));
        return false;
    }
    m_listChannel.insert(m_listChannel.end(), arrNames.begin(), arrNames.end());
    return true;
}
