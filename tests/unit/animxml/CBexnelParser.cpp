// The element stack, files of every kind, and the check for well-formed XML.
#include "animxml/CBexnelParser.h"

#include "animxml/CAnimationSliceData.h"
#include "animxml/CXMLEltParse_DocAnimSlice.h"
#include "animxml/CXMLEltParse_WellFormed.h"
#include "animxml/ParseXml.h"

#include <climits>
#include <gtest/gtest.h>

namespace
{

// Takes any child and any text but "no".
class CTestElement final : public CXMLElementParser
{
  public:
    using CXMLElementParser::CXMLElementParser;

    bool HandleStart(const CXMLAttributeList&) override { return true; }
    bool HandleCharData(const CQDString& rStrCharData) override { return rStrCharData != "no"; }
    bool HandleChildElement(const CQDString& rStrName, CXMLElementParserPtr& rspChildParser) override
    {
        rspChildParser = rStrName == "null" ? nullptr : new CTestElement(rStrName, this);
        return true;
    }
};

CXMLElementParserPtr MakeTestElement() { return new CTestElement("test", nullptr); }

} // namespace

TEST(CBexnelParser, WellFormedOrNot)
{
    constexpr int DEPTH = CBexnelParser::MAX_DEPTH;
    const std::string strBomb = "<!DOCTYPE a [<!ENTITY b '" + Repeat("0123456789", 100000) + "'>";
    const struct
    {
        std::string strDocument;
        std::string strResult; // what it begins with
    } arrCases[] = {{"<a b='1'>text<c/><!-- --><?d?>&lt;</a>", "parsed"},
                    {"\xef\xbb\xbf<a/>", "parsed"},
                    {std::string("\xff\xfe<\0a\0/\0>\0", 10), "parsed"},
                    // pieces of 1024 bytes
                    {"<a>" + std::string(1017, ' ') + "</a>", "parsed"},
                    {"<a>" + std::string(2041, ' ') + "</a>", "parsed"},
                    {"<a b='" + std::string(5000, 'b') + "'/>", "parsed"},
                    {"", "File a.anim is empty\nAssert 'nLen > 0' failed\n"
                         "Assert 'ParseLastBuffer(nBytesRead, bFinished)' failed"},
                    {"<a>\n <b></c></a>", "a.anim(2:6) - 7 - mismatched tag"},
                    {"<a>\n" + std::string(1019, ' '), "a.anim(2:1019) - 3 - no element found"},
                    {"<a b='' b=''/>", "a.anim(1:8) - 8 - duplicate attribute"},
                    {std::string("<a>\0</a>", 8), "a.anim(1:3) - 4 - not well-formed (invalid token)"},
                    {"<a>\xe9</a>", "a.anim(1:3) - 4 - not well-formed (invalid token)"},
                    // depth, and text out of nothing
                    {Repeat("<a>", DEPTH) + Repeat("</a>", DEPTH), "parsed"},
                    {Repeat("<a>", DEPTH + 1),
                     "Elements are nested deeper than 16384\na.anim(1:49152) - 35 - parsing aborted\n"},
                    {strBomb + "]><a>" + Repeat("&b;", 8) + "</a>", "parsed"},
                    {strBomb + "]><a>" + Repeat("&b;", 20) + "</a>",
                     "Entities expand to too much text for the size of the file"},
                    {strBomb + "<!ATTLIST c d CDATA '&b;'>]><a>" + Repeat("<c/>", 20) + "</a>",
                     "Entities expand to too much text for the size of the file"}};
    for (const auto& rCase : arrCases)
    {
        const std::string strResult = ParseXml(CXMLEltParse_WellFormed::CreateTopLevel(), rCase.strDocument);
        EXPECT_EQ(strResult.substr(0, rCase.strResult.size()), rCase.strResult)
            << rCase.strDocument.substr(0, 100);
    }
    EXPECT_TRUE(ParseXml(MakeTestElement(), "<a>\n <b/>no</a>")
                    .starts_with("Assert 'm_spCurEltParser->HandleCharData(rStrCharData)' failed\n"
                                 "a.anim(2:5) - 35 - parsing aborted\n"));
}

TEST(CBexnelParser, FilesThatCannotBeRead)
{
    const CTempFile objFile("some \xff\n.anim", "<a/>");
    CBexnelParser objParser(MakeTestElement());
    for (const std::string& rName :
         {std::string(), objFile.GetName() + "x", std::string("/"), std::string("/dev/zero")})
    {
        CLogCapture objLog;
        EXPECT_FALSE(objParser.ParseFile(rName));
        EXPECT_EQ(objLog.GetLines(), std::vector<std::string>{"1 Failed to open file " + rName});
    }
    EXPECT_TRUE(objParser.ParseFile(objFile.GetName()));
    EXPECT_EQ(objParser.GetDirectory() + "/some \xff\n.anim", objFile.GetName());
    CLogCapture objLog;
    EXPECT_FALSE(objParser.ParseFile(objFile.GetName()));
    EXPECT_EQ(objLog.GetLines(), (std::vector<std::string>{"1 Assert '!m_bHasParsed' failed",
                                                           "1 Assert 'StartParsing(rStrFilename)' failed"}));
    // opens, but reading from address 0 of this process fails
    EXPECT_FALSE(CBexnelParser(MakeTestElement()).ParseFile("/proc/self/mem"));
    EXPECT_EQ(objLog.GetLines().back(), "1 Failed to read file /proc/self/mem");
}

TEST(CBexnelParser, StepsOutOfOrder)
{
    CLogCapture objLog;
    CBexnelParser objParser(MakeTestElement());
    CAnimationSliceData objData;
    const CXMLElementParserPtr spDocument = CXMLEltParse_DocAnimSlice::Create(objData);
    const CXMLAttributeList listAttributes{{"a", "1"}, {"b", "2"}};
    CQDString strName;
    CQDString strValue = "old";
    const std::pair<bool, const char*> arrSteps[] = {
        {CBexnelParser(nullptr).StartParsing(""), "Assert 'IsValid()' failed"},
        {objParser.GetParseBuffer(1) != nullptr, "Assert 'm_bIsParsing' failed"},
        {!objParser.StartParsing("x.xml"), nullptr},
        {objParser.StartParsing("x.xml"), "Assert '!m_bIsParsing' failed"},
        {objParser.GetParseBuffer(0) != nullptr, "Assert 'nBufferSize > 0' failed"},
        {objParser.GetParseBuffer(INT_MAX) != nullptr, "Assert 'pvBuffer' failed"},
        {objParser.GetParseBuffer(4) == nullptr, nullptr},
        {objParser.ParseLastBuffer(0, true), "Assert 'nLen > 0' failed"},
        {objParser.ParseLastBuffer(5, true), "Assert 'nLen <= m_nBufferSize' failed"},
        {objParser.PopElement("a"), "Tried to pop a <a> when a <test> was on top of the parse stack."},
        {!objParser.PushElement("a", {}), nullptr},
        {objParser.PushElement("null", {}), "Assert 'spChildParser' failed"},
        {objParser.HandleCharData("no"), "Assert 'm_spCurEltParser->HandleCharData(rStrCharData)' failed"},
        {objParser.PopElement("b"), "Tried to pop a <b> when a <a> was on top of the parse stack."},
        {CXMLEltParse_WellFormed::Create(nullptr, "a") != nullptr, "Handed in NULL parent parser."},
        {spDocument->HandleStart({}), "This top level parser should never be called here."},
        {spDocument->HandleEnd(), "This top level parser should never be called here."},
        {spDocument->GetSingleAttribute(listAttributes, {"", "a", ""}, strName, strValue),
         "Handed in list with more than one blank attribute for element <>"},
        {!spDocument->GetSingleAttribute(listAttributes, {"c", "b"}, strName, strValue) || strValue != "2",
         nullptr},
        {!spDocument->GetSingleAttribute(listAttributes, {"", "c"}, strName, strValue) || !strValue.empty(),
         nullptr},
    };
    std::vector<std::string> vecLines;
    for (const auto& [bWrong, szLine] : arrSteps)
    {
        EXPECT_FALSE(bWrong) << &bWrong - &arrSteps[0].first;
        if (szLine != nullptr)
        {
            vecLines.push_back(std::string("1 ") + szLine);
        }
    }
    EXPECT_EQ(objLog.GetLines(), vecLines);
}
