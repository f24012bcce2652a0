// A map from the address of an object to a small value: open addressing, one flat array.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Entries are never taken out. T is cheap to copy.
template <class T>
class CPointerMap
{
  public:
    // The value of an object that was not added is the fallback.
    T Find(const void* pObject, T fallback) const
    {
        if (m_vecEntries.empty())
        {
            return fallback;
        }
        const CEntry& rEntry = m_vecEntries[FindSlot(m_vecEntries, pObject)];
        return rEntry.m_pObject != nullptr ? rEntry.m_value : fallback;
    }

    // False for an object that is there already; it keeps its value.
    bool Add(const void* pObject, T value)
    {
        if (2 * (m_nCount + 1) > m_vecEntries.size())
        {
            Grow();
        }
        CEntry& rEntry = m_vecEntries[FindSlot(m_vecEntries, pObject)];
        if (rEntry.m_pObject != nullptr)
        {
            return false;
        }
        rEntry = {pObject, value};
        ++m_nCount;
        return true;
    }

  private:
    struct CEntry
    {
        const void* m_pObject = nullptr;
        T m_value{};
    };

    // The slot of the object, or the vacant one where it would stand. At least one slot is vacant.
    static size_t FindSlot(const std::vector<CEntry>& rEntries, const void* pObject)
    {
        const size_t nMask = rEntries.size() - 1;
        const uint64_t uiHash =
            reinterpret_cast<uintptr_t>(pObject) * 0x9E3779B97F4A7C15u; // 2^64 / golden ratio
        size_t nSlot = static_cast<size_t>(uiHash >> 32) & nMask;
        while (rEntries[nSlot].m_pObject != nullptr && rEntries[nSlot].m_pObject != pObject)
        {
            nSlot = (nSlot + 1) & nMask;
        }
        return nSlot;
    }

    void Grow()
    {
        std::vector<CEntry> vecEntries(m_vecEntries.empty() ? 64 : 2 * m_vecEntries.size());
        for (const CEntry& rEntry : m_vecEntries)
        {
            if (rEntry.m_pObject != nullptr)
            {
                vecEntries[FindSlot(vecEntries, rEntry.m_pObject)] = rEntry;
            }
        }
        m_vecEntries.swap(vecEntries);
    }

    std::vector<CEntry> m_vecEntries; // a power of two
    size_t m_nCount = 0;
};
