// The animations document as a whole: holds its root element.
#pragma once

#include "animxml/CXMLElementParser.h"

class CAnimationSliceData;

// What the document says goes into the slice data, which must outlive the parse.
class CXMLEltParse_DocAnimSlice final : public CXMLElementParser
{
  public:
    static CXMLElementParserPtr Create(CAnimationSliceData& rSliceData);

    // A document has neither start nor end: both fail.
    bool HandleStart(const CXMLAttributeList& rListAttributes) override;
    bool HandleEnd() override;
    bool HandleChildElement(const CQDString& rStrChildName, CXMLElementParserPtr& rspChildParser) override;

  private:
    explicit CXMLEltParse_DocAnimSlice(CAnimationSliceData& rSliceData);

    CAnimationSliceData& m_rSliceData;
};
