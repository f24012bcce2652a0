// An FBX file as a tree of named records, whatever its age and encoding:
//
//     CQDString strError;
//     std::unique_ptr<CFBXDocument> spDocument = CFBXDocument::Load(strFilename, strError);
//
// Binary files of version 7000 and later, of 6000 to 6999, and older ones, in both byte orders; and ASCII
// files. What the records mean is not known here.
#pragma once

#include "fbxsdk/document/CFBXRecord.h"
#include "fbxsdk/document/CFBXRecordTree.h"
#include "qdcommon/CQDString.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

// Keeps the file's bytes: names, texts and arrays are borrowed from them for as long as the document lives.
class CFBXDocument
{
  public:
    CFBXDocument(const CFBXDocument&) = delete;
    CFBXDocument& operator=(const CFBXDocument&) = delete;

    // Null when the file cannot be read or is not FBX; the error then says what is wrong and at which byte,
    // in ASCII files at which line. The name is bytes as the file system has them.
    static std::unique_ptr<CFBXDocument> Load(const CQDString& rFilename, CQDString& rError);
    static std::unique_ptr<CFBXDocument> FromBytes(std::vector<uint8_t>&& vecBytes, CQDString& rError);

    // 7400 for 7.4 and so on. Of a binary file from its head (those of 3ds Max before 6000 all say 3000), of
    // an ASCII file from its FBXHeaderExtension or first comment; 0 when it says nowhere.
    int GetVersion() const { return m_nVersion; }
    bool IsASCII() const { return m_bASCII; }
    // Has no name and no values; its children are the records of the top level.
    const CFBXRecord& GetRoot() const { return m_objTree.GetRoot(); }

  private:
    CFBXDocument() = default;
    bool Parse(CQDString& rError);

    std::vector<uint8_t> m_vecBytes;
    std::deque<CQDString> m_listTexts; // those that the file writes otherwise
    CFBXRecordTree m_objTree;
    int m_nVersion = 0;
    bool m_bASCII = false;
};
