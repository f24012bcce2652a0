// The records and values of a document while they are read, and after.
#pragma once

#include "fbxsdk/document/CFBXRecord.h"

#include <vector>

// The parsers open and close records in file order; the root, which has no name, is open from the start and
// until Finish.
class CFBXRecordTree
{
  public:
    // Records nested deeper are refused: real files have some ten levels.
    static constexpr size_t MAX_DEPTH = 64;
    static constexpr size_t MAX_RECORDS = 0xFFFFFFFFu;

    CFBXRecordTree();

    // For a file of so many bytes, so that nothing is copied while the tree grows. Memory that is not needed
    // in the end is never touched.
    void Reserve(size_t nFileBytes);
    // False when it is nested too deep or there are too many records. The name is borrowed.
    bool Open(std::string_view strName, uint64_t uiPlace, bool bLines);
    // Only before the first record is opened inside. False when there are too many.
    bool AddValue(const CFBXValue& rValue);
    // Takes back all values of the open record.
    void RemoveValues();
    void Close();
    // Closes all that is open. From here on records stay where they are and can be read.
    void Finish();

    size_t GetDepth() const { return m_vecOpen.size(); } // 1: only the root is open
    const CFBXRecord& GetOpenRecord() const { return m_vecRecords[m_vecOpen.back()]; }
    const CFBXRecord& GetRoot() const { return m_vecRecords.front(); }

  private:
    std::vector<CFBXRecord> m_vecRecords;
    std::vector<CFBXValue> m_vecValues;
    std::vector<size_t> m_vecOpen; // places in m_vecRecords, outermost first
};
