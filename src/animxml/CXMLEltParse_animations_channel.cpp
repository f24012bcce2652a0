#include "animxml/CXMLEltParse_animations_channel.h"

#include "animxml/AnimXMLLog.h"
#include "animxml/CXMLEltParse_animations_channelSet.h"
#include "qdcommon/CLogChecks.h"

CXMLEltParse_animations_channel::CXMLEltParse_animations_channel(
    const boost::intrusive_ptr<CXMLEltParse_animations_channelSet>& spParentParser,
    const CAnimationSliceData& rSliceData)
    : CXMLElementParser(ELEMENT_NAME, spParentParser),
      m_rChannelSet(*spParentParser),
      m_rSliceData(rSliceData)
{}

CXMLElementParserPtr CXMLEltParse_animations_channel::Create(
    const boost::intrusive_ptr<CXMLEltParse_animations_channelSet>& spParentParser,
    const CAnimationSliceData& rSliceData)
{
    QD_ASSERT(spParentParser, nullptr);
    return new CXMLEltParse_animations_channel(spParentParser, rSliceData);
}

bool CXMLEltParse_animations_channel::HandleStart(const CXMLAttributeList& rListAttributes)
{
    CQDString strName;
    CQDString strValue;
    if (!GetSingleAttribute(rListAttributes, {"value", "refSet"}, strName, strValue))
    {
        return false;
    }
    for (const CXMLAttribute& rAttribute : rListAttributes)
    {
        if (rAttribute.m_strName != strName) // a "refset" would go unnoticed
        {
            Log(ANIM_XML, LOG_WARNING, "unknown attribute '%s' in <%s>. expecting %s", rAttribute.m_strName,
                GetElementName(), "value, refSet");
        }
    }
    if (strName == "value")
    {
        const CQDCompactString strChannel(strValue);
        return m_rChannelSet.AddChannels({&strChannel, 1});
    }
    const auto& rMapChannels = m_rSliceData.GetChannelSets();
    const auto itChannelSet = rMapChannels.find(strValue);
    if (itChannelSet == rMapChannels.end())
    {
        Log(ANIM_XML, LOG_ERROR, "unable to find set '%s' in <%s>.", strValue, GetElementName());
        return false;
    }
    return m_rChannelSet.AddChannels(itChannelSet->second);
}
