#include "animxml/CBexnelParser.h"

#include "animxml/AnimXMLLog.h"
#include "qdcommon/CLogChecks.h"

#include <boost/filesystem/operations.hpp>
#include <expat.h>

#include <fstream>

namespace
{

// Entities and default attributes repeat text without any in the file. So much is free, the rest is bounded
// by a multiple of what was read.
constexpr uint64_t FREE_TEXT_BYTES = 8 << 20;
constexpr uint64_t TEXT_BYTES_PER_BYTE = 4;

} // namespace

// Expat is C: no exception may pass through it.
struct CBexnelParser::CCallbacks
{
    template <class FUNCTION>
    static void Call(void* pvParser, FUNCTION&& fnHandle) noexcept
    {
        auto& rParser = *static_cast<CBexnelParser*>(pvParser);
        if (rParser.m_bFailed)
        {
            return;
        }
        try
        {
            rParser.m_bFailed = !fnHandle(rParser);
        }
        catch (const std::exception&)
        {
            rParser.m_bFailed = rParser.m_bOutOfMemory = true;
        }
        if (rParser.m_bFailed)
        {
            rParser.m_nFailedLine = rParser.GetCurLineNumber();
            rParser.m_nFailedColumn = rParser.GetCurColumnNumber();
            XML_StopParser(rParser.m_pExpatParser.get(), XML_FALSE);
        }
    }

    static void Start(void* pvParser, const XML_Char* szName, const XML_Char** ppAttributes)
    {
        Call(pvParser, [&](CBexnelParser& rParser) {
            CXMLAttributeList listAttributes;
            for (; *ppAttributes != nullptr; ppAttributes += 2)
            {
                listAttributes.push_back({ppAttributes[0], ppAttributes[1]});
                const CXMLAttribute& rAttribute = listAttributes.back();
                if (!rParser.CountText(rAttribute.m_strName.size() + rAttribute.m_strValue.size()))
                {
                    return false;
                }
            }
            return rParser.PushElement(szName, listAttributes);
        });
    }

    static void End(void* pvParser, const XML_Char* szName)
    {
        Call(pvParser, [&](CBexnelParser& rParser) { return rParser.PopElement(szName); });
    }

    static void Text(void* pvParser, const XML_Char* pText, int nLength)
    {
        Call(pvParser, [&](CBexnelParser& rParser) {
            const auto nBytes = static_cast<size_t>(nLength);
            return rParser.CountText(nBytes) && rParser.HandleCharData(CQDString(pText, nBytes));
        });
    }
};

void CBexnelParser::CExpatDeleter::operator()(XML_ParserStruct* pExpatParser) const
{
    XML_ParserFree(pExpatParser);
}

CBexnelParser::CBexnelParser(const CXMLElementParserPtr& spTopLevelParser)
    : m_pExpatParser(XML_ParserCreate(nullptr)),
      m_spTopLevelParser(spTopLevelParser),
      m_spCurEltParser(spTopLevelParser)
{
    QD_ASSERT(m_pExpatParser, );
    XML_SetUserData(m_pExpatParser.get(), this);
    XML_SetElementHandler(m_pExpatParser.get(), CCallbacks::Start, CCallbacks::End);
    XML_SetCharacterDataHandler(m_pExpatParser.get(), CCallbacks::Text);
}

// Takes the stack down one by one: a parser that goes with its parent would do so to any depth.
CBexnelParser::~CBexnelParser()
{
    while (m_spCurEltParser)
    {
        m_spCurEltParser = m_spCurEltParser->GetParentParser();
    }
}

bool CBexnelParser::IsValid() const { return m_pExpatParser && m_spTopLevelParser; }

bool CBexnelParser::ParseFile(const CQDString& rStrFilename)
{
    const boost::filesystem::path objPath(rStrFilename);
    boost::system::error_code objError;
    std::ifstream objFile;
    if (boost::filesystem::is_regular_file(objPath, objError)) // a directory opens as well, and a pipe waits
    {
        objFile.open(objPath.native(), std::ios_base::binary);
    }
    if (!objFile.is_open())
    {
        Log(ANIM_XML, LOG_ERROR, "Failed to open file %s", rStrFilename);
        return false;
    }
    m_strDirectory = objPath.parent_path().native();
    QD_ASSERT(StartParsing(rStrFilename), false);
    for (bool bFinished = false; !bFinished;)
    {
        void* pvBuffer = GetParseBuffer(BUFFER_BYTES);
        if (pvBuffer == nullptr)
        {
            return false;
        }
        objFile.read(static_cast<char*>(pvBuffer), BUFFER_BYTES);
        const auto nBytesRead = static_cast<int>(objFile.gcount());
        // The file may end with the buffer.
        bFinished = nBytesRead < BUFFER_BYTES || objFile.peek() == std::ifstream::traits_type::eof();
        if (objFile.bad())
        {
            Log(ANIM_XML, LOG_ERROR, "Failed to read file %s", rStrFilename);
            return false;
        }
        if (nBytesRead == 0)
        {
            Log(ANIM_XML, LOG_ERROR, "File %s is empty", rStrFilename); // and will not parse
        }
        QD_ASSERT(ParseLastBuffer(nBytesRead, bFinished), false);
    }
    return true;
}

bool CBexnelParser::StartParsing(const CQDString& rStrFilename)
{
    QD_ASSERT(!m_bHasParsed, false);
    QD_ASSERT(!m_bIsParsing, false);
    QD_ASSERT(IsValid(), false);
    m_strFilename = rStrFilename;
    m_bIsParsing = true;
    return true;
}

void* CBexnelParser::GetParseBuffer(int nBufferSize)
{
    QD_ASSERT(m_bIsParsing, nullptr);
    QD_ASSERT(m_pExpatParser, nullptr);
    QD_ASSERT(nBufferSize > 0, nullptr);
    void* pvBuffer = XML_GetBuffer(m_pExpatParser.get(), nBufferSize);
    QD_ASSERT(pvBuffer, nullptr);
    m_nBufferSize = nBufferSize;
    return pvBuffer;
}

bool CBexnelParser::ParseLastBuffer(int nLen, bool bFinished)
{
    QD_ASSERT(m_bIsParsing, false);
    QD_ASSERT(nLen > 0, false);
    QD_ASSERT(nLen <= m_nBufferSize, false);
    m_nBufferSize = 0;
    m_uiFileBytes += static_cast<uint64_t>(nLen);
    XML_Parser pExpatParser = m_pExpatParser.get();
    const bool bParsed = XML_ParseBuffer(pExpatParser, nLen, bFinished) == XML_STATUS_OK;
    if (m_bOutOfMemory)
    {
        Log(ANIM_XML, LOG_ERROR, "Memory ran out");
    }
    if (!bParsed)
    {
        const XML_Error eError = XML_GetErrorCode(pExpatParser);
        Log(ANIM_XML, LOG_ERROR, "%s(%d:%d) - %d - %s", m_strFilename,
            m_bFailed ? m_nFailedLine : GetCurLineNumber(),
            m_bFailed ? m_nFailedColumn : GetCurColumnNumber(), eError, XML_ErrorString(eError));
    }
    if (!bParsed || bFinished)
    {
        m_bIsParsing = false;
        m_bHasParsed = true;
    }
    return bParsed;
}

int CBexnelParser::GetCurLineNumber() const
{
    return m_pExpatParser ? static_cast<int>(XML_GetCurrentLineNumber(m_pExpatParser.get())) : 0;
}

int CBexnelParser::GetCurColumnNumber() const
{
    return m_pExpatParser ? static_cast<int>(XML_GetCurrentColumnNumber(m_pExpatParser.get())) : 0;
}

bool CBexnelParser::PushElement(const CQDString& rStrName, const CXMLAttributeList& rListAttributes)
{
    QD_ASSERT(m_bIsParsing, false);
    if (m_nDepth == MAX_DEPTH)
    {
        Log(ANIM_XML, LOG_ERROR, "Elements are nested deeper than %d", MAX_DEPTH);
        return false;
    }
    CXMLElementParserPtr spChildParser;
    if (!m_spCurEltParser->HandleChildElement(rStrName, spChildParser))
    {
        if (m_nDepth == 0)
        {
            Log(ANIM_XML, LOG_ERROR, "<%s> is not valid at the top level of a document.", rStrName);
        }
        else
        {
            Log(ANIM_XML, LOG_ERROR, "<%s> is not valid inside of <%s>.", rStrName,
                m_spCurEltParser->GetElementName());
        }
        return false;
    }
    QD_ASSERT(spChildParser, false);
    QD_ASSERT(spChildParser->GetParentParser() == m_spCurEltParser, false);
    m_spCurEltParser = spChildParser;
    ++m_nDepth;
    if (!spChildParser->HandleStart(rListAttributes))
    {
        Log(ANIM_XML, LOG_ERROR, "Child element <%s> failed to handle attributes.", rStrName);
        return false;
    }
    return true;
}

bool CBexnelParser::PopElement(const CQDString& rStrName)
{
    QD_ASSERT(m_bIsParsing, false);
    const CQDString& rStrTopName = m_spCurEltParser->GetElementName();
    if (m_nDepth == 0 || rStrTopName != rStrName)
    {
        Log(ANIM_XML, LOG_ERROR, "Tried to pop a <%s> when a <%s> was on top of the parse stack.", rStrName,
            rStrTopName);
        return false;
    }
    if (!m_spCurEltParser->HandleEnd())
    {
        Log(ANIM_XML, LOG_ERROR, "Failed to handle end of <%s>", rStrName);
        return false;
    }
    m_spCurEltParser = m_spCurEltParser->GetParentParser();
    --m_nDepth;
    return true;
}

bool CBexnelParser::HandleCharData(const CQDString& rStrCharData)
{
    QD_ASSERT(m_bIsParsing, false);
    QD_ASSERT(m_spCurEltParser->HandleCharData(rStrCharData), false);
    return true;
}

bool CBexnelParser::CountText(size_t nBytes)
{
    m_uiTextBytes += nBytes;
    if (m_uiTextBytes > FREE_TEXT_BYTES + TEXT_BYTES_PER_BYTE * m_uiFileBytes)
    {
        Log(ANIM_XML, LOG_ERROR, "Entities expand to too much text for the size of the file");
        return false;
    }
    return true;
}
