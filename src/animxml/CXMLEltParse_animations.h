// <animations>, the root element of an animations document.
#pragma once

#include "animxml/CXMLElementParser.h"

class CAnimationSliceData;

class CXMLEltParse_animations final : public CXMLElementParser
{
  public:
    static constexpr const char* ELEMENT_NAME = "animations";

    // The slice data must outlive the parse.
    static CXMLElementParserPtr Create(const CXMLElementParserPtr& spParentParser,
                                       CAnimationSliceData& rSliceData);

    bool HandleStart(const CXMLAttributeList& rListAttributes) override;
    bool HandleEnd() override;
    bool HandleChildElement(const CQDString& rStrChildName, CXMLElementParserPtr& rspChildParser) override;

  private:
    CXMLEltParse_animations(const CXMLElementParserPtr& spParentParser, CAnimationSliceData& rSliceData);

    CAnimationSliceData& m_rSliceData;
};
