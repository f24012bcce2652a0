// <fps>: how many frames a second has, for the elements that follow.
#pragma once

#include "animxml/CXMLEltParse_Text.h"

class CAnimationSliceData;

class CXMLEltParse_animations_fps final : public CXMLEltParse_Text
{
  public:
    static constexpr const char* ELEMENT_NAME = "fps";

    // The slice data must outlive the parse.
    static CXMLElementParserPtr Create(const CXMLElementParserPtr& spParentParser,
                                       CAnimationSliceData& rSliceData);

  private:
    CXMLEltParse_animations_fps(const CXMLElementParserPtr& spParentParser, CAnimationSliceData& rSliceData);

    bool StoreValue() override;

    CAnimationSliceData& m_rSliceData;
};
