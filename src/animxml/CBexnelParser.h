// Reads an XML file with Expat through a stack of element parsers.
//
//     CAnimationSliceData objSliceData;
//     CBexnelParser objParser(CXMLEltParse_DocAnimSlice::Create(objSliceData));
//     if (objParser.ParseFile(strFilename)) ...
//
// A fault is logged by the element parser that meets it, then with file, line and column: lines count from 1
// and columns from 0, as Expat has them.
#pragma once

#include "animxml/CXMLElementParser.h"

#include <cstdint>
#include <memory>

struct XML_ParserStruct;

// Reads one document in its life. It stays on one thread.
class CBexnelParser
{
  public:
    static constexpr int BUFFER_BYTES = 1024;
    // Elements nested deeper are refused: each open one takes far more memory than its text.
    static constexpr int MAX_DEPTH = 16384;

    // The top-level parser receives the root element as a child.
    explicit CBexnelParser(const CXMLElementParserPtr& spTopLevelParser);
    CBexnelParser(const CBexnelParser&) = delete;
    CBexnelParser& operator=(const CBexnelParser&) = delete;
    ~CBexnelParser();

    // Whether it can parse at all.
    bool IsValid() const;

    // Parses a whole regular file. The name is bytes as the file system has them.
    bool ParseFile(const CQDString& rStrFilename);
    // The directory part of the name of that file: what relative names in it start from. Empty when the name
    // had none.
    const CQDString& GetDirectory() const { return m_strDirectory; }

    // The steps of ParseFile: begin, then for each piece take a buffer, fill it and have it parsed. The
    // buffer is Expat's and holds until the next call; null on failure.
    bool StartParsing(const CQDString& rStrFilename);
    void* GetParseBuffer(int nBufferSize);
    bool ParseLastBuffer(int nLen, bool bFinished);

    // Where Expat is now.
    int GetCurLineNumber() const;
    int GetCurColumnNumber() const;

    // What Expat reports.
    bool PushElement(const CQDString& rStrName, const CXMLAttributeList& rListAttributes);
    bool PopElement(const CQDString& rStrName);
    bool HandleCharData(const CQDString& rStrCharData);

  private:
    struct CCallbacks;
    struct CExpatDeleter
    {
        void operator()(XML_ParserStruct* pExpatParser) const;
    };

    bool CountText(size_t nBytes);

    std::unique_ptr<XML_ParserStruct, CExpatDeleter> m_pExpatParser;
    CXMLElementParserPtr m_spTopLevelParser;
    CXMLElementParserPtr m_spCurEltParser; // the top of the stack; the parents are what is below
    int m_nDepth = 0;                      // of the stack, the top-level parser not counted
    bool m_bIsParsing = false;
    bool m_bHasParsed = false;
    bool m_bFailed = false; // Expat may still report things after it was stopped
    bool m_bOutOfMemory = false;
    int m_nFailedLine = 0; // where that was: once it is stopped, Expat stands behind the tag
    int m_nFailedColumn = 0;
    int m_nBufferSize = 0; // of the buffer that is being filled
    uint64_t m_uiFileBytes = 0;
    uint64_t m_uiTextBytes = 0; // handed to element parsers
    CQDString m_strFilename;
    CQDString m_strDirectory;
};
