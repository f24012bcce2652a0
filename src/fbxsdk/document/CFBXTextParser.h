// Reads the records of ASCII FBX files.
#pragma once

#include "fbxsdk/document/CFBXRecordTree.h"
#include "fbxsdk/document/CFBXTextScanner.h"
#include "qdcommon/CQDString.h"

#include <cstdint>
#include <deque>
#include <string_view>

// A record is a name and a colon, values with commas between them, and in braces the records inside of it.
// Line ends mean nothing. From version 7000 on arrays are written "Vertices: *6 { a: 1,2,3,4,5,6 }"; they
// become one value of "Vertices".
class CFBXTextParser
{
  public:
    // Whether the file may be one: it has the characters of text and begins with a comment or a name.
    static bool IsText(std::string_view strBytes);

    // The tree borrows from the text and, for texts that the file writes otherwise, from the list.
    CFBXTextParser(std::string_view strText, CFBXRecordTree& rTree, std::deque<CQDString>& rlistTexts);

    // False, with the fault and its line in the error, when it breaks the grammar.
    bool Parse(CQDString& rError);
    // As the first comment has it ("; FBX 6.1.0 project file" is 6100); 0 when it does not.
    int GetVersion() const;

  private:
    bool ParseRecord(std::string_view strName);
    bool ParseValues();
    bool ParseValue(std::string_view strWord);
    bool ParseText();
    bool ParseArray(size_t nPlace);
    bool ReadNumbers(uint32_t& ruiCount, size_t& rnEnd);
    bool AddTextArray(size_t nBegin, size_t nEnd, uint32_t uiCount);
    uint64_t GetLine(size_t nPlace);
    bool Fail(size_t nPlace, const CQDString& rText);

    std::string_view m_strText;
    CFBXTextScanner m_objScanner;
    CFBXRecordTree& m_rTree;
    std::deque<CQDString>& m_rlistTexts;
    CQDString m_strError;
    size_t m_nCounted = 0; // up to where line ends were counted
    uint64_t m_uiLine = 1; // at that place
};
