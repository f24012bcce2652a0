// <dae>: the name of the COLLADA file that the animations are in.
#pragma once

#include "animxml/CXMLEltParse_Text.h"

class CAnimationSliceData;

class CXMLEltParse_animations_dae final : public CXMLEltParse_Text
{
  public:
    static constexpr const char* ELEMENT_NAME = "dae";

    // The slice data must outlive the parse.
    static CXMLElementParserPtr Create(const CXMLElementParserPtr& spParentParser,
                                       CAnimationSliceData& rSliceData);

  private:
    CXMLEltParse_animations_dae(const CXMLElementParserPtr& spParentParser, CAnimationSliceData& rSliceData);

    bool StoreValue() override;

    CAnimationSliceData& m_rSliceData;
};
