// The string of names: one pointer wide, immutable, equal texts shared.
#pragma once

#include "qdcommon/CQDString.h"

#include <cstdint>
#include <string_view>
#include <utility>

// Keeps one copy of every text that a CQDCompactString holds, with the count of its holders. Not thread safe.
class CQDCharAllocator
{
  public:
    struct CEntry
    {
        int32_t nRefCount;
        uint32_t uiLength;
        size_t nHash;

        // The characters follow the entry, zero-terminated.
        const char* GetChars() const { return reinterpret_cast<const char*>(this + 1); }
        std::string_view GetView() const { return {GetChars(), uiLength}; }
    };

    // The entry of a text with one more holder; null for the empty text and when memory is exhausted.
    static CEntry* Acquire(std::string_view strText);
    static void Release(CEntry* pEntry);
    // How many different texts are held at present.
    static size_t GetNumTexts();
};

class CQDCompactString
{
  public:
    CQDCompactString() = default;
    CQDCompactString(std::string_view strText) : m_pEntry(CQDCharAllocator::Acquire(strText)) {}
    CQDCompactString(const CQDString& rText) : CQDCompactString(std::string_view(rText)) {}
    CQDCompactString(const char* szText) : CQDCompactString(std::string_view(szText)) {}
    CQDCompactString(const CQDCompactString& rOther) : m_pEntry(rOther.m_pEntry)
    {
        if (m_pEntry != nullptr)
        {
            ++m_pEntry->nRefCount;
        }
    }
    CQDCompactString(CQDCompactString&& rOther) noexcept : m_pEntry(std::exchange(rOther.m_pEntry, nullptr))
    {}
    CQDCompactString& operator=(CQDCompactString objOther) noexcept
    {
        std::swap(m_pEntry, objOther.m_pEntry);
        return *this;
    }
    ~CQDCompactString()
    {
        if (m_pEntry != nullptr)
        {
            CQDCharAllocator::Release(m_pEntry);
        }
    }

    bool empty() const { return m_pEntry == nullptr; }
    const char* c_str() const { return m_pEntry != nullptr ? m_pEntry->GetChars() : ""; }
    std::string_view GetView() const
    {
        return m_pEntry != nullptr ? m_pEntry->GetView() : std::string_view();
    }

    // Equal texts are one entry.
    bool operator==(const CQDCompactString& rOther) const { return m_pEntry == rOther.m_pEntry; }

  private:
    CQDCharAllocator::CEntry* m_pEntry = nullptr;
};
