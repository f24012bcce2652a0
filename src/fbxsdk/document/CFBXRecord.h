// A named record of an FBX document: values, then records of its own.
//
//     const CFBXRecord* pVertices = rGeometry.FindChild("Vertices");
//     std::vector<double> vecVertices;
//     if (pVertices != nullptr && pVertices->ReadDoubles(vecVertices)) ...
#pragma once

#include "fbxsdk/document/CFBXValue.h"
#include "qdcommon/CQDString.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>
#include <vector>

class CFBXRecordRange;

// Records lie one after the other, each before those inside of it, so that a record finds its own by their
// distance. They live in their document and are neither copied nor made elsewhere.
class CFBXRecord
{
  public:
    CFBXRecord(const CFBXRecord&) = delete;
    CFBXRecord& operator=(const CFBXRecord&) = delete;
    CFBXRecord(CFBXRecord&&) = default;
    CFBXRecord& operator=(CFBXRecord&&) = default;

    std::string_view GetName() const { return {m_pName, m_uiNameLength}; }

    // A long row of numbers (an array of files before 7000) is one array value, too. So look at single values
    // only where the format has few, and use ReadDoubles and its kin for the rest.
    size_t GetNumValues() const { return m_uiValues; }
    std::span<const CFBXValue> GetValues() const { return {m_pValues, m_uiValues}; }
    // A value of type NONE when there are not so many.
    const CFBXValue& GetValue(size_t n) const;
    int64_t GetInt64(size_t n, int64_t nDefault = 0) const { return GetValue(n).GetInt64(nDefault); }
    double GetDouble(size_t n, double dDefault = 0) const { return GetValue(n).GetDouble(dDefault); }
    std::string_view GetString(size_t n) const { return GetValue(n).GetString(); }

    bool HasChildren() const { return m_uiSpan > 1; }
    CFBXRecordRange GetChildren() const;
    // The first of the name; null when there is none.
    const CFBXRecord* FindChild(std::string_view strName) const;
    // The first value of the first child of the name.
    int64_t GetChildInt64(std::string_view strName, int64_t nDefault = 0) const;
    double GetChildDouble(std::string_view strName, double dDefault = 0) const;
    std::string_view GetChildString(std::string_view strName) const;

    // The numbers of the record: those of its first array, else its single values as far as they are numbers.
    // How many there are before they are read (the file's word for it: a damaged array has others):
    size_t GetArrayCount() const;
    // Replace what the vector holds. A damaged array is logged with the record's name and place, leaves the
    // vector empty and gives false; no numbers at all are fine. Numbers are converted, whole ones without
    // loss. Arrays are unpacked anew with each call.
    bool ReadDoubles(std::vector<double>& rVector) const;
    bool ReadFloats(std::vector<float>& rVector) const;
    bool ReadInts(std::vector<int32_t>& rVector) const;
    bool ReadInt64s(std::vector<int64_t>& rVector) const;

    // For messages: "'Vertices' at byte 1234", in an ASCII file "'Vertices' at line 56".
    CQDString Describe() const;

  private:
    friend class CFBXRecordTree;
    friend class CFBXRecordRange;

    CFBXRecord() = default;
    template <class T>
    bool ReadNumbers(std::vector<T>& rVector) const;
    const CFBXValue* FindArray() const;

    const char* m_pName = "";
    const CFBXValue* m_pValues = nullptr;
    uint64_t m_uiPlace = 0; // byte or line
    uint32_t m_uiValues = 0;
    uint32_t m_uiSpan = 1; // records: this one and all inside of it
    uint8_t m_uiNameLength = 0;
    bool m_bLines = false; // m_uiPlace is a line
};

// The records directly inside of one, in file order: for (const CFBXRecord& rChild : rRecord.GetChildren()).
class CFBXRecordRange
{
  public:
    class CIterator
    {
      public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = CFBXRecord;
        using difference_type = std::ptrdiff_t;
        using pointer = const CFBXRecord*;
        using reference = const CFBXRecord&;

        CIterator() = default;
        explicit CIterator(const CFBXRecord* pRecord) : m_pRecord(pRecord) {}
        reference operator*() const { return *m_pRecord; }
        pointer operator->() const { return m_pRecord; }
        CIterator& operator++()
        {
            m_pRecord += m_pRecord->m_uiSpan;
            return *this;
        }
        CIterator operator++(int)
        {
            const CIterator itThis = *this;
            ++*this;
            return itThis;
        }
        bool operator==(const CIterator&) const = default;

      private:
        const CFBXRecord* m_pRecord = nullptr;
    };

    explicit CFBXRecordRange(const CFBXRecord& rParent) : m_pParent(&rParent) {}
    CIterator begin() const { return CIterator(m_pParent + 1); }
    CIterator end() const { return CIterator(m_pParent + m_pParent->m_uiSpan); }

  private:
    const CFBXRecord* m_pParent;
};

inline CFBXRecordRange CFBXRecord::GetChildren() const { return CFBXRecordRange(*this); }
