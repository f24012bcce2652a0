// <animation>: one named range of frames.
#pragma once

#include "animxml/CXMLElementParser.h"

class CAnimationSliceData;

class CXMLEltParse_animations_animation final : public CXMLElementParser
{
  public:
    static constexpr const char* ELEMENT_NAME = "animation";

    // The slice data must outlive the parse.
    static CXMLElementParserPtr Create(const CXMLElementParserPtr& spParentParser,
                                       CAnimationSliceData& rSliceData);

    bool HandleStart(const CXMLAttributeList& rListAttributes) override;

  private:
    CXMLEltParse_animations_animation(const CXMLElementParserPtr& spParentParser,
                                      CAnimationSliceData& rSliceData);

    CAnimationSliceData& m_rSliceData;
};
