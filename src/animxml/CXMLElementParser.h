// The base of the classes that each handle one kind of XML element.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdcommon/CRefObject.h"

#include <initializer_list>
#include <string_view>
#include <vector>

struct CXMLAttribute
{
    CQDString m_strName;
    CQDString m_strValue;
};
// In document order; no name comes twice. Texts are UTF-8, whatever the document's encoding.
using CXMLAttributeList = std::vector<CXMLAttribute>;

class CXMLElementParser;
using CXMLElementParserPtr = boost::intrusive_ptr<CXMLElementParser>;

// One object handles one element: CBexnelParser calls HandleStart, then HandleCharData and HandleChildElement
// as the content comes, then HandleEnd. Any of them logs what is wrong and returns false to stop the parse.
class CXMLElementParser : public CRefObject
{
  public:
    // The parent is null for the parser of a whole document only.
    CXMLElementParser(const CQDString& rStrElementName, const CXMLElementParserPtr& spParentParser);

    const CQDString& GetElementName() const { return m_strElementName; }
    const CXMLElementParserPtr& GetParentParser() const { return m_spParentParser; }

    virtual bool HandleStart(const CXMLAttributeList& rListAttributes) = 0;
    // Comes in pieces of any size, white space included. The base lets all text pass: between elements it
    // means nothing.
    virtual bool HandleCharData(const CQDString& rStrCharData);
    virtual bool HandleEnd();
    // Makes the parser of a child, whose parent is this one. The base refuses every child.
    virtual bool HandleChildElement(const CQDString& rStrChildName, CXMLElementParserPtr& rspChildParser);

    // The one attribute that has one of the names. A blank among the names allows that there is none: name
    // and value are empty then. Attributes of other names are not looked at.
    bool GetSingleAttribute(const CXMLAttributeList& rListAttributes,
                            std::initializer_list<std::string_view> listNames, CQDString& rStrName,
                            CQDString& rStrValue) const;

  protected:
    // What elements of several kinds check.
    bool CheckNoAttributes(const CXMLAttributeList& rListAttributes) const;
    bool RefuseChildElement(const CQDString& rStrChildName) const;

  private:
    CQDString m_strElementName;
    CXMLElementParserPtr m_spParentParser;
};
