// Accepts any XML: parsing a file with it tells whether the file is well formed.
#pragma once

#include "animxml/CXMLElementParser.h"

// A run succeeds exactly when Expat finds the file well formed, within CBexnelParser's bounds on depth and
// expanded text.
class CXMLEltParse_WellFormed final : public CXMLElementParser
{
  public:
    // The parser of a whole document.
    static CXMLElementParserPtr CreateTopLevel();
    static CXMLElementParserPtr Create(const CXMLElementParserPtr& spParentParser,
                                       const CQDString& rStrElementName);

    bool HandleStart(const CXMLAttributeList& rListAttributes) override;
    bool HandleChildElement(const CQDString& rStrChildName, CXMLElementParserPtr& rspChildParser) override;

  private:
    using CXMLElementParser::CXMLElementParser;
};
