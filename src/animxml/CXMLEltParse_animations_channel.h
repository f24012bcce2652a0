// <channel>: a channel's name, or all those of an earlier set.
#pragma once

#include "animxml/CXMLElementParser.h"

class CAnimationSliceData;
class CXMLEltParse_animations_channelSet;

class CXMLEltParse_animations_channel final : public CXMLElementParser
{
  public:
    static constexpr const char* ELEMENT_NAME = "channel";

    // The slice data must outlive the parse.
    static CXMLElementParserPtr Create(
        const boost::intrusive_ptr<CXMLEltParse_animations_channelSet>& spParentParser,
        const CAnimationSliceData& rSliceData);

    bool HandleStart(const CXMLAttributeList& rListAttributes) override;

  private:
    CXMLEltParse_animations_channel(
        const boost::intrusive_ptr<CXMLEltParse_animations_channelSet>& spParentParser,
        const CAnimationSliceData& rSliceData);

    CXMLEltParse_animations_channelSet& m_rChannelSet; // the parent
    const CAnimationSliceData& m_rSliceData;
};
