// The base of elements that hold one value as text and nothing else.
#pragma once

#include "animxml/CXMLElementParser.h"

class CXMLEltParse_Text : public CXMLElementParser
{
  public:
    bool HandleStart(const CXMLAttributeList& rListAttributes) override;
    bool HandleCharData(const CQDString& rStrCharData) override;
    // Takes the white space around the value away, then has it stored.
    bool HandleEnd() final;

  protected:
    using CXMLElementParser::CXMLElementParser;

    virtual bool StoreValue() = 0;

    CQDString m_strValue;
};
