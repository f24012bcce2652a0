// Reads the records of binary FBX files.
#pragma once

#include "fbxsdk/document/CFBXRecordTree.h"
#include "qdcommon/CQDString.h"

#include <cstdint>
#include <string_view>

// The head is "Kaydara FBX Binary  ", a zero, 0x1A, one byte that is 1 when all numbers of the file have
// their highest byte first, and the version. Then come records: where the record ends, how many values it
// has, how many bytes these take (32 bits each; from version 7500 on 64), the name with its length in one
// byte, the values, and the records inside of it, closed by a head of zeros. A record of zeros closes the top
// level, too; a footer follows.
class CFBXBinaryParser
{
  public:
    // Whether the file says that it is one.
    static bool IsBinary(std::string_view strBytes);
    // 2000 to 7999: what is known of the format's history.
    static bool IsKnownVersion(int64_t nVersion) { return nVersion >= 2000 && nVersion < 8000; }

    // The tree borrows from the bytes.
    CFBXBinaryParser(std::string_view strBytes, CFBXRecordTree& rTree);

    // False, with the fault and its byte in the error, when the file is damaged or of an unknown version.
    bool Parse(CQDString& rError);
    // As the head has it.
    int GetVersion() const { return m_nVersion; }

  private:
    struct SHead
    {
        uint64_t uiEnd = 0;
        uint64_t uiValues = 0;
        uint64_t uiValueBytes = 0;
        std::string_view strName;
        bool IsNull() const { return uiEnd == 0 && uiValues == 0 && uiValueBytes == 0 && strName.empty(); }
    };

    size_t GetHeadBytes() const { return m_bWide ? 25 : 13; } // before a record's name
    bool ParseHead();
    bool ParseRecords();
    bool ReadHead(SHead& rHead, size_t nLimit);
    bool ReadValues(const SHead& rHead);
    bool ReadRow(const SHead& rHead, size_t nEnd);
    bool ReadValue(size_t nEnd);
    bool ReadArray(EFBXType eType, size_t nEnd);
    bool TakeFromBudget(EFBXType eType, uint32_t uiCount, size_t nBytes);

    template <class T>
    T Take()
    {
        m_nNext += sizeof(T);
        return Get<T>(m_nNext - sizeof(T));
    }
    template <class T>
    T Get(size_t nPlace) const;
    bool Fail(size_t nPlace, const CQDString& rText);

    std::string_view m_strBytes;
    CFBXRecordTree& m_rTree;
    CQDString m_strError;
    size_t m_nNext = 0;
    size_t m_nUnpacked = 0; // numbers of all packed arrays so far
    int m_nVersion = 0;
    bool m_bBigEndian = false;
    bool m_bWide = false;
    bool m_bToldOfRest = false; // a record has more bytes than its values take: once is enough
};
