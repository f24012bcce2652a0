// <channelSet>: names of channels under an id.
#pragma once

#include "animxml/CAnimationSliceData.h"
#include "animxml/CXMLElementParser.h"

#include <span>

class CXMLEltParse_animations_channelSet final : public CXMLElementParser
{
  public:
    static constexpr const char* ELEMENT_NAME = "channelSet";

    // The slice data must outlive the parse.
    static CXMLElementParserPtr Create(const CXMLElementParserPtr& spParentParser,
                                       CAnimationSliceData& rSliceData);

    bool HandleStart(const CXMLAttributeList& rListAttributes) override;
    bool HandleEnd() override;
    bool HandleChildElement(const CQDString& rStrChildName, CXMLElementParserPtr& rspChildParser) override;

    // For the <channel> elements inside. Fails (reported) when the document's sets hold too many names.
    bool AddChannels(std::span<const CQDCompactString> arrNames);

  private:
    CXMLEltParse_animations_channelSet(const CXMLElementParserPtr& spParentParser,
                                       CAnimationSliceData& rSliceData);

    CAnimationSliceData& m_rSliceData;
    CQDString m_strValue; // the id
    CAnimationSliceData::CChannelList m_listChannel;
};
