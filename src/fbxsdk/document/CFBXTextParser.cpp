// ASCII records. Long rows of numbers are only counted here and stay text until somebody reads them.
#include "fbxsdk/document/CFBXTextParser.h"

#include "fbxsdk/document/FBXMessages.h"
#include "fbxsdk/document/FBXNumbers.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

namespace
{

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
constexpr size_t MAX_NAME_LENGTH = 255;
// A row of numbers at least so long stays text: one value instead of thousands.
constexpr size_t MIN_ROW = 32;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// The usual form. What looks like it and is none ("1-2") shows up when the row is read.
bool LooksLikeNumber(std::string_view strWord)
{
    return std::ranges::all_of(strWord,
                               [](char c) {
                                   return IsDigit(c) || c == '.' || c == '-' || c == '+' || c == 'e' ||
                                          c == 'E';
                               }) &&
           (IsDigit(strWord.back()) || strWord.back() == '.');
}

// Quotes and line ends within texts are written as names.
CQDString Unescape(std::string_view strText)
{
    constexpr std::pair<std::string_view, char> NAMES[] = {{"&quot;", '"'}, {"&cr;", '\r'}, {"&lf;", '\n'}};
    CQDString strResult;
    strResult.reserve(strText.size());
    while (!strText.empty())
    {
        const auto* pName =
            std::ranges::find_if(NAMES, [&](const auto& rName) { return strText.starts_with(rName.first); });
        const bool bName = pName != std::end(NAMES);
        strResult += bName ? pName->second : strText.front();
        strText.remove_prefix(bName ? pName->first.size() : 1);
    }
    return strResult;
}

} // namespace

bool CFBXTextParser::IsText(std::string_view strBytes)
{
    constexpr size_t LOOKED_AT = 1024;
    if (strBytes.starts_with(BYTE_ORDER_MARK))
    {
        strBytes.remove_prefix(BYTE_ORDER_MARK.size());
    }
    const std::string_view strBegin = strBytes.substr(0, LOOKED_AT);
    if (std::ranges::any_of(strBegin, [](char c) { return c >= '\0' && c < '\t'; }))
    {
        return false;
    }
    const size_t nFirst = strBegin.find_first_not_of(" \t\r\n");
    return nFirst != std::string_view::npos && (strBegin[nFirst] == ';' || IsLetter(strBegin[nFirst]));
}

CFBXTextParser::CFBXTextParser(std::string_view strText, CFBXRecordTree& rTree,
                               std::deque<CQDString>& rlistTexts)
    : m_strText(strText),
      m_objScanner(strText),
      m_rTree(rTree),
      m_rlistTexts(rlistTexts)
{
    if (strText.starts_with(BYTE_ORDER_MARK))
    {
        m_objScanner.SetPlace(BYTE_ORDER_MARK.size());
    }
}

int CFBXTextParser::GetVersion() const
{
    std::string_view strLine = m_strText.substr(0, std::min(m_strText.find('\n'), m_strText.size()));
    const size_t nFBX = strLine.find("FBX ");
    if (nFBX == std::string_view::npos)
    {
        return 0;
    }
    int nVersion = 0;
    int nParts = 0;
    for (const char c : strLine.substr(nFBX + 4))
    {
        if (IsDigit(c) && nParts < 3)
        {
            nVersion = nVersion * 10 + (c - '0');
            ++nParts;
        }
        else if (c != '.')
        {
            break;
        }
    }
    return nParts == 3 ? nVersion * 10 : 0;
}

uint64_t CFBXTextParser::GetLine(size_t nPlace)
{
    if (nPlace < m_nCounted)
    {
        m_nCounted = 0;
        m_uiLine = 1;
    }
    const std::string_view strText = m_strText.substr(m_nCounted, nPlace - m_nCounted);
    for (size_t n = strText.find('\n'); n != std::string_view::npos; n = strText.find('\n', n + 1))
    {
        ++m_uiLine;
    }
    m_nCounted = nPlace;
    return m_uiLine;
}

bool CFBXTextParser::Fail(size_t nPlace, const CQDString& rText)
{
    m_strError = "line " + std::to_string(GetLine(nPlace)) + ": " + rText;
    return false;
}

bool CFBXTextParser::Parse(CQDString& rError)
{
    bool bParsed = true;
    while (bParsed)
    {
        const char cNext = m_objScanner.Peek();
        if (m_objScanner.IsAtEnd())
        {
            bParsed = m_rTree.GetDepth() == 1 ||
                      Fail(m_strText.size(), "the file ends within " + m_rTree.GetOpenRecord().Describe());
            break;
        }
        const size_t nPlace = m_objScanner.GetPlace();
        if (cNext == '}')
        {
            m_objScanner.SkipMark('}');
            if (m_rTree.GetDepth() == 1)
            {
                bParsed = Fail(nPlace, "'}' without '{'");
                break;
            }
            m_rTree.Close();
            continue;
        }
        const std::string_view strName = m_objScanner.ReadWord();
        if (strName.empty())
        {
            bParsed = Fail(nPlace, CQDString("'") + cNext + "' where a record should begin");
            break;
        }
        bParsed = m_objScanner.SkipMark(':')
                      ? ParseRecord(strName)
                      : Fail(nPlace, "no ':' after the record's name " + QuoteFBXText(strName));
    }
    rError = std::move(m_strError);
    return bParsed;
}

// Opens the record; one without braces is closed again.
bool CFBXTextParser::ParseRecord(std::string_view strName)
{
    const size_t nPlace = m_objScanner.GetPlace();
    if (strName.size() > MAX_NAME_LENGTH)
    {
        return Fail(nPlace, "the name " + QuoteFBXText(strName) + " is too long");
    }
    if (!m_rTree.Open(strName, GetLine(nPlace), true))
    {
        return Fail(nPlace, "records are nested too deep or too many");
    }
    if (!ParseValues())
    {
        return false;
    }
    if (m_objScanner.Peek() == '{' && m_objScanner.SkipMark('{'))
    {
        return true;
    }
    m_rTree.Close();
    return true;
}

bool CFBXTextParser::ParseValues()
{
    const size_t nBegin = m_objScanner.GetPlace();
    bool bRow = true; // only numbers up to here
    size_t nValues = 0;
    for (;;)
    {
        const char cNext = m_objScanner.Peek();
        const size_t nPlace = m_objScanner.GetPlace();
        if (cNext == '"')
        {
            if (!ParseText())
            {
                return false;
            }
            bRow = false;
            ++nValues;
            continue;
        }
        if (cNext == '*' && nValues == 0)
        {
            return ParseArray(nPlace);
        }
        const std::string_view strWord = m_objScanner.ReadWord();
        if (strWord.empty())
        {
            return true;
        }
        if (m_objScanner.SkipMark(':'))
        {
            m_objScanner.SetPlace(nPlace); // the next record's name
            return true;
        }
        if (!ParseValue(strWord))
        {
            return Fail(nPlace, QuoteFBXText(strWord) + " is neither a number nor a word");
        }
        bRow = bRow && LooksLikeNumber(strWord);
        ++nValues;
        if (bRow && nValues == MIN_ROW)
        {
            uint32_t uiCount = 0;
            size_t nEnd = 0;
            m_objScanner.SetPlace(nBegin);
            if (ReadNumbers(uiCount, nEnd))
            {
                m_rTree.RemoveValues();
                return AddTextArray(nBegin, nEnd, uiCount);
            }
            m_objScanner.SetPlace(nPlace + strWord.size());
            bRow = false; // something else comes later: all values one by one
        }
    }
}

bool CFBXTextParser::ParseValue(std::string_view strWord)
{
    SFBXNumber objNumber;
    if (ParseFBXNumber(strWord, objNumber))
    {
        return m_rTree.AddValue(objNumber.bWhole ? CFBXValue(objNumber.nWhole) : CFBXValue(objNumber.dFloat));
    }
    return IsLetter(strWord.front()) && m_rTree.AddValue(CFBXValue(strWord));
}

bool CFBXTextParser::ParseText()
{
    const size_t nPlace = m_objScanner.GetPlace();
    const size_t nEnd = m_strText.find('"', nPlace + 1);
    if (nEnd == std::string_view::npos || nEnd - nPlace > std::numeric_limits<uint32_t>::max())
    {
        return Fail(nPlace, "a text in " + m_rTree.GetOpenRecord().Describe() + " has no closing quotes");
    }
    m_objScanner.SetPlace(nEnd + 1);
    std::string_view strText = m_strText.substr(nPlace + 1, nEnd - nPlace - 1);
    if (strText.find('&') != std::string_view::npos)
    {
        strText = m_rlistTexts.emplace_back(Unescape(strText));
    }
    return m_rTree.AddValue(CFBXValue(strText));
}

// "*N {", perhaps "a:", numbers, "}". How many come counts, not N.
bool CFBXTextParser::ParseArray(size_t nPlace)
{
    const std::string_view strCount = m_objScanner.ReadWord().substr(1);
    uint64_t uiDeclared = 0;
    const std::from_chars_result objResult =
        std::from_chars(strCount.data(), strCount.data() + strCount.size(), uiDeclared);
    if (objResult.ec != std::errc() || objResult.ptr != strCount.data() + strCount.size())
    {
        return Fail(nPlace, QuoteFBXText(strCount) + " is not the length of an array");
    }
    if (m_objScanner.Peek() != '{' || !m_objScanner.SkipMark('{'))
    {
        return Fail(nPlace, "an array without '{'");
    }
    if (m_objScanner.Peek() == 'a')
    {
        m_objScanner.ReadWord();
        if (!m_objScanner.SkipMark(':'))
        {
            return Fail(m_objScanner.GetPlace(), "no ':' after the name of an array's numbers");
        }
    }
    const size_t nBegin = m_objScanner.GetPlace();
    uint32_t uiCount = 0;
    size_t nEnd = 0;
    if (!ReadNumbers(uiCount, nEnd))
    {
        const size_t nFault = m_objScanner.GetPlace();
        const std::string_view strWord = m_objScanner.ReadWord();
        return Fail(nFault,
                    (strWord.empty() ? CQDString("a text") : QuoteFBXText(strWord)) + " is not a number");
    }
    if (m_objScanner.Peek() != '}' || !m_objScanner.SkipMark('}'))
    {
        return Fail(m_objScanner.GetPlace(),
                    "the numbers of " + m_rTree.GetOpenRecord().Describe() + " are not closed by '}'");
    }
    return AddTextArray(nBegin, nEnd, uiCount);
}

// Passes over numbers up to a mark or the next record's name. False at anything else, and stays there.
bool CFBXTextParser::ReadNumbers(uint32_t& ruiCount, size_t& rnEnd)
{
    for (ruiCount = 0, rnEnd = m_objScanner.GetPlace();; ++ruiCount)
    {
        const char cNext = m_objScanner.Peek();
        const size_t nPlace = m_objScanner.GetPlace();
        const std::string_view strWord = m_objScanner.ReadWord();
        if (strWord.empty())
        {
            return cNext != '"';
        }
        SFBXNumber objNumber;
        if (!LooksLikeNumber(strWord) && !ParseFBXNumber(strWord, objNumber))
        {
            const bool bName = m_objScanner.SkipMark(':');
            m_objScanner.SetPlace(nPlace);
            return bName;
        }
        rnEnd = m_objScanner.GetPlace();
    }
}

bool CFBXTextParser::AddTextArray(size_t nBegin, size_t nEnd, uint32_t uiCount)
{
    if (nEnd - nBegin > std::numeric_limits<uint32_t>::max())
    {
        return Fail(nBegin, "an array is too long");
    }
    return m_rTree.AddValue(
        CFBXValue(EFBXType::TEXT_ARRAY, m_strText.substr(nBegin, nEnd - nBegin), {uiCount}));
}
