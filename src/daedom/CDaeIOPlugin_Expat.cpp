// Reads COLLADA documents into the COLLADA DOM with Expat.
#include "daedom/CDaeIOPlugin_Expat.h"

#include "daedom/CDaeInput.h"
#include "daedom/CDaeTreeBuilder.h"
#include "qdcommon/CLog.h"

#include <dae/daeDatabase.h>
#include <dae/daeDocument.h>
#include <expat.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

namespace
{

constexpr size_t BUFFER_BYTES = 256 << 10;
// The text of a large array goes past Expat, in runs of so many bytes at least.
constexpr size_t MIN_ARRAY_RUN = 1024;
// Expat reads a token that is not complete again with every buffer. One that spans more than this is refused;
// no attribute or comment of a real document comes near it.
constexpr XML_Index MAX_TOKEN_BYTES = 16 << 20;

// Windows-1252 is Latin-1 but for the bytes 0x80 to 0x9f; -1: no character.
constexpr std::array<int, 32> WINDOWS_1252 = {0x20ac, -1,     0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021,
                                              0x02c6, 0x2030, 0x0160, 0x2039, 0x0152, -1,     0x017d, -1,
                                              -1,     0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014,
                                              0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, -1,     0x017e, 0x0178};

int ReadUnknownEncoding(void*, const XML_Char* szName, XML_Encoding* pEncoding)
{
    CQDString strName(szName);
    std::ranges::transform(strName, strName.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    });
    if (strName != "windows-1252" && strName != "cp1252")
    {
        return XML_STATUS_ERROR;
    }
    for (int n = 0; n < 256; ++n)
    {
        pEncoding->map[n] = n >= 0x80 && n < 0xa0 ? WINDOWS_1252[static_cast<size_t>(n - 0x80)] : n;
    }
    return XML_STATUS_OK;
}

// Where text that belongs to no markup ends, at the last space before: what is taken as a number at once is
// good XML.
size_t FindRunEnd(std::string_view strBytes)
{
    strBytes = strBytes.substr(0, strBytes.find('<'));
    strBytes = strBytes.substr(0, strBytes.find('&'));
    strBytes = strBytes.substr(0, strBytes.find(']')); // "]]>" ends a CDATA section
    return strBytes.find_last_of(" \t\n") + 1;         // not between "\r" and "\n"
}

// The end of the first tag, or what looks like one, that a long text follows; the size of all without one.
size_t FindRunBegin(std::string_view strBytes)
{
    for (size_t n = strBytes.find('>'); n != std::string_view::npos;)
    {
        const size_t nNext = strBytes.find('<', n + 1);
        if (std::min(nNext, strBytes.size()) - (n + 1) >= MIN_ARRAY_RUN)
        {
            return n + 1;
        }
        n = nNext == std::string_view::npos ? nNext : strBytes.find('>', nNext);
    }
    return strBytes.size();
}

struct CParserDeleter
{
    void operator()(XML_Parser pParser) const { XML_ParserFree(pParser); }
};

// One pass over one document.
class CPass
{
  public:
    CPass(DAE& rDAE, CDaeInput& rInput, const CQDString& rName, const CQDString& rURI);

    // Reads to the end. False, and reported, when the input is not well formed or cannot be read on.
    bool Run();
    bool IsUsable() const { return !m_objReport.HasFailed(); }
    bool HasXMLError() const { return !m_strError.empty(); }
    const CQDString& GetErrorText() const
    {
        return m_strError.empty() ? m_objReport.GetErrorText() : m_strError;
    }
    daeDocument* GetDocument() const { return m_objBuilder.GetDocument(); }

  private:
    // Expat is C: no exception may pass through it.
    template <class T>
    static void Call(void* pUser, T fnCall) noexcept
    {
        auto& rPass = *static_cast<CPass*>(pUser);
        try
        {
            fnCall(rPass);
        }
        catch (const std::exception&)
        {
            rPass.m_bOutOfMemory = true;
            XML_StopParser(rPass.m_spParser.get(), XML_FALSE);
        }
    }

    bool Stop(std::string_view strText)
    {
        m_objReport.Fail(strText);
        return false;
    }
    bool CheckContent(std::string_view strBegin);
    bool ParseBuffer(std::string_view strBytes, bool bFinal);
    bool Parse(std::string_view strBytes, bool bFinal);
    bool HandleParseError();
    // Whether Expat has used all it was given: nothing is cut off in the middle.
    bool IsIdle() const { return XML_GetCurrentByteIndex(m_spParser.get()) == m_nParsed; }
    void SkipRun(std::string_view strRun);
    // Line from 1 and column from 0.
    std::pair<int64_t, int64_t> GetPosition() const;

    CDaeInput& m_rInput;
    CQDString m_strName;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, CParserDeleter> m_spParser;
    CDaeReport m_objReport;
    CDaeTreeBuilder m_objBuilder;
    CQDString m_strError; // of a document that is not well formed
    bool m_bOutOfMemory = false;
    bool m_bBytewise = true;     // ASCII characters are single bytes: not UTF-16
    XML_Index m_nParsed = 0;     // bytes that Expat was given
    int64_t m_nSkippedLines = 0; // line ends that it was not given
    int64_t m_nShiftedLine = 0;  // its line from which columns were skipped last, and how many there are
    int64_t m_nSkippedColumns = 0;
};

CPass::CPass(DAE& rDAE, CDaeInput& rInput, const CQDString& rName, const CQDString& rURI)
    : m_rInput(rInput),
      m_strName(rName),
      m_spParser(XML_ParserCreate(nullptr)),
      m_objReport(rName, [this] { return GetPosition(); }),
      m_objBuilder(rDAE, m_objReport, rURI, rInput.GetSize())
{
    XML_Parser pParser = m_spParser.get();
    if (!pParser)
    {
        return;
    }
    XML_SetUserData(pParser, this);
    XML_SetUnknownEncodingHandler(pParser, ReadUnknownEncoding, nullptr);
    XML_SetElementHandler(
        pParser,
        [](void* pUser, const XML_Char* szName, const XML_Char** ppAttributes) {
            Call(pUser, [&](CPass& r) { r.m_objBuilder.StartElement(szName, ppAttributes); });
        },
        [](void* pUser, const XML_Char*) { Call(pUser, [](CPass& r) { r.m_objBuilder.EndElement(); }); });
    XML_SetCharacterDataHandler(pParser, [](void* pUser, const XML_Char* pText, int nLength) {
        Call(pUser, [&](CPass& r) { r.m_objBuilder.AddText({pText, static_cast<size_t>(nLength)}); });
    });
    // Only reached in documents that name a document type elsewhere, which is not read.
    XML_SetSkippedEntityHandler(pParser, [](void* pUser, const XML_Char* szName, int) {
        Call(pUser, [&](CPass& r) { r.Stop("Entity &" + CDaeReport::Quote(szName) + "; is not defined"); });
    });
}

bool CPass::Run()
{
    if (!m_spParser)
    {
        return Stop("Memory ran out");
    }
    const auto spBuffer = std::make_unique<char[]>(BUFFER_BYTES);
    bool bFirst = true;
    for (bool bFinal = false; !bFinal; bFirst = false)
    {
        const std::optional<size_t> nBytes = m_rInput.Read({spBuffer.get(), BUFFER_BYTES});
        if (!nBytes)
        {
            return Stop("The file cannot be read");
        }
        const std::string_view strBytes(spBuffer.get(), *nBytes);
        bFinal = strBytes.size() < BUFFER_BYTES;
        if ((bFirst && !CheckContent(strBytes)) || !ParseBuffer(strBytes, bFinal))
        {
            return false;
        }
    }
    return true;
}

// Nearly all of a large file are the numbers of its arrays. Expat would look at each of their characters only
// to hand them on; they go to the builder directly, and Expat reads what stands around them. To Expat that
// makes no difference but for the position: numbers and spaces are just text, in an element as in a CDATA
// section.
bool CPass::ParseBuffer(std::string_view strBytes, bool bFinal)
{
    for (bool bIdle = IsIdle(); bIdle && !strBytes.empty(); bIdle = IsIdle())
    {
        if (m_bBytewise && m_objBuilder.IsInNumbers())
        {
            const std::string_view strRun = strBytes.substr(0, FindRunEnd(strBytes));
            m_objBuilder.AddText(strRun);
            if (m_objReport.HasFailed())
            {
                break; // Expat sees the run after all: it may not even be XML
            }
            SkipRun(strRun);
            strBytes.remove_prefix(strRun.size());
        }
        // The beginning of a run may turn out to lie in a comment or the like. That is then read to its end,
        // or to that of the buffer, in one go: Expat would read it anew for every run in it.
        const size_t nBegin = FindRunBegin(strBytes);
        if (nBegin == strBytes.size())
        {
            break;
        }
        if (!Parse(strBytes.substr(0, nBegin), false))
        {
            return false;
        }
        strBytes.remove_prefix(nBegin);
    }
    return Parse(strBytes, bFinal);
}

bool CPass::Parse(std::string_view strBytes, bool bFinal)
{
    XML_Parser pParser = m_spParser.get();
    if (XML_Parse(pParser, strBytes.data(), static_cast<int>(strBytes.size()), bFinal) != XML_STATUS_OK)
    {
        return HandleParseError();
    }
    m_nParsed += static_cast<XML_Index>(strBytes.size());
    if (!bFinal && m_nParsed - XML_GetCurrentByteIndex(pParser) > MAX_TOKEN_BYTES)
    {
        return Stop("A tag, comment or other token is longer than " + std::to_string(MAX_TOKEN_BYTES >> 20) +
                    " MB");
    }
    return true;
}

// Keeps the position right for a run that Expat does not see.
void CPass::SkipRun(std::string_view strRun)
{
    if (strRun.empty())
    {
        return;
    }
    size_t nLastLine = 0; // its begin in the run
    for (char cEnd : {'\n', '\r'})
    {
        for (size_t n = strRun.find(cEnd); n != std::string_view::npos; n = strRun.find(cEnd, n + 1))
        {
            if (cEnd == '\n' || strRun[n + 1] != '\n') // a run does not end with "\r"
            {
                ++m_nSkippedLines;
                nLastLine = std::max(nLastLine, n + 1);
            }
        }
    }
    const int64_t nBefore = nLastLine == 0 ? GetPosition().second : 0;
    const int64_t nEnd = nBefore + static_cast<int64_t>(strRun.size() - nLastLine);
    m_nShiftedLine = static_cast<int64_t>(XML_GetCurrentLineNumber(m_spParser.get()));
    m_nSkippedColumns = nEnd - static_cast<int64_t>(XML_GetCurrentColumnNumber(m_spParser.get()));
}

std::pair<int64_t, int64_t> CPass::GetPosition() const
{
    const auto nLine = static_cast<int64_t>(XML_GetCurrentLineNumber(m_spParser.get()));
    const auto nColumn = static_cast<int64_t>(XML_GetCurrentColumnNumber(m_spParser.get()));
    return {nLine + m_nSkippedLines, nColumn + (nLine == m_nShiftedLine ? m_nSkippedColumns : 0)};
}

bool CPass::CheckContent(std::string_view strBegin)
{
    if (strBegin.starts_with("\x1f\x8b"))
    {
        return Stop("The file is compressed with gzip; unpack it first");
    }
    if (strBegin.starts_with("PK\x03\x04"))
    {
        return Stop("The file is a ZIP archive; unpack it first");
    }
    const std::string_view strFirst = strBegin.substr(0, 2);
    m_bBytewise =
        strFirst != "\xff\xfe" && strFirst != "\xfe\xff" && strFirst.find('\0') == std::string_view::npos;
    return true;
}

bool CPass::HandleParseError()
{
    if (m_bOutOfMemory)
    {
        return Stop("Memory ran out");
    }
    XML_Parser pParser = m_spParser.get();
    const XML_Error eError = XML_GetErrorCode(pParser);
    const auto [nLine, nColumn] = GetPosition();
    m_strError = m_strName + "(" + std::to_string(nLine) + ":" + std::to_string(nColumn) + ") - " +
                 std::to_string(static_cast<int>(eError)) + " - " + XML_ErrorString(eError);
    Log(QD_COLLADA_READER, LOG_ERROR, "%s", m_strError);
    return false;
}

} // namespace

CDaeIOPlugin_Expat::CDaeIOPlugin_Expat() { supportedProtocols.emplace_back("file"); }

void CDaeIOPlugin_Expat::SetSource(const CQDString& rFileName) { m_objSource = {rFileName, std::nullopt}; }

void CDaeIOPlugin_Expat::SetSource(const CQDString& rName, std::string_view strDocument)
{
    m_objSource = {rName, strDocument};
}

daeInt CDaeIOPlugin_Expat::setMeta(daeMetaElement*)
{
    return DAE_OK; // the database makes the root
}

void CDaeIOPlugin_Expat::setDatabase(daeDatabase* pDatabase) { m_pDatabase = pDatabase; }

daeInt CDaeIOPlugin_Expat::read(const daeURI& rURI, daeString szDocument)
{
    if (!m_objSource || !m_pDatabase || szDocument)
    {
        Log(QD_COLLADA_READER, LOG_WARNING, "Not opening %s: only the file that is being loaded is read",
            rURI.str());
        return DAE_ERR_INVALID_CALL;
    }
    const CSource objSource = *std::exchange(m_objSource, std::nullopt);
    m_bWellFormed = false;
    m_bXMLError = false;
    m_nError = DAE_ERR_BACKEND_IO;
    m_pDocument = nullptr;

    CDaeInput objInput;
    m_strError = objSource.strDocument ? objInput.OpenMemory(*objSource.strDocument)
                                       : objInput.OpenFile(objSource.strName);
    if (!m_strError.empty())
    {
        Log(QD_COLLADA_READER, LOG_ERROR, "%s", m_strError);
        return m_nError;
    }
    m_uiSize = objInput.GetSize();
    CPass objPass(*rURI.getDAE(), objInput, objSource.strName, rURI.str());
    m_bWellFormed = objPass.Run();
    m_bXMLError = objPass.HasXMLError();
    m_strError = objPass.GetErrorText();
    if (m_bWellFormed)
    {
        m_nError = objPass.IsUsable() ? DAE_OK : DAE_ERR_BACKEND_VALIDATION;
    }
    if (m_nError == DAE_OK)
    {
        m_pDocument = objPass.GetDocument();
    }
    else if (objPass.GetDocument())
    {
        m_pDatabase->removeDocument(objPass.GetDocument());
    }
    return m_nError;
}

daeInt CDaeIOPlugin_Expat::write(const daeURI&, daeDocument*, daeBool) { return DAE_ERR_NOT_IMPLEMENTED; }

daeInt CDaeIOPlugin_Expat::writeToMemory(std::vector<char>&, daeDocument*) { return DAE_ERR_NOT_IMPLEMENTED; }

daeInt CDaeIOPlugin_Expat::setOption(daeString, daeString) { return DAE_ERR_NOT_IMPLEMENTED; }

daeString CDaeIOPlugin_Expat::getOption(daeString) { return nullptr; }
