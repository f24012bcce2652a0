// A slot list: a value keeps its index for as long as it is in the list, and freed slots are used again,
// oldest first.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

// T has an empty state (its default value) that marks a vacant slot; ALLOCATOR provides static
// AllocEltArray(count), which returns storage of `count` empty elements or null, and FreeEltArray(array,
// count).
//
// Slots 0 to the high-water mark - 1 have been handed out; the vacant ones among them stand in a ring, in the
// order in which they were freed. Freeing the highest slot lowers the mark by one instead, and when nothing
// is in use the list starts anew.
template <class T, class ALLOCATOR, int32_t MIN_CAPACITY = 4>
class CListSet
{
  public:
    CListSet() = default;
    CListSet(const CListSet&) = delete;
    CListSet& operator=(const CListSet&) = delete;
    ~CListSet() { ALLOCATOR::FreeEltArray(m_arrElts, m_nCapacity); }

    // One past the highest slot in use or vacant below it.
    int32_t GetSize() const { return m_nHighWater; }
    // The number of values.
    int32_t GetCount() const { return m_nHighWater - m_nNumFreed; }
    int32_t GetCapacity() const { return m_nCapacity; }
    bool IsInUse(int32_t nIndex) const
    {
        return nIndex >= 0 && nIndex < m_nHighWater && m_arrElts[nIndex].objValue != T();
    }
    // The value of a slot, the empty value for a vacant one; the index must lie below GetSize().
    const T& operator[](int32_t nIndex) const { return m_arrElts[nIndex].objValue; }

    // Puts a value that is not empty into the oldest vacancy, else behind the last slot. Returns its index,
    // or -1 when memory is exhausted.
    int32_t Add(T objValue)
    {
        int32_t nIndex;
        if (m_nNumFreed > 0)
        {
            nIndex = m_arrElts[m_nHead].nFreedSlot;
            m_arrElts[m_nHead].nFreedSlot = -1;
            m_nHead = (m_nHead + 1) % m_nCapacity;
            --m_nNumFreed;
        }
        else
        {
            if (m_nHighWater == m_nCapacity && !ChangeCapacity(std::max(MIN_CAPACITY, m_nCapacity * 2)))
            {
                return -1;
            }
            nIndex = m_nHighWater++;
        }
        m_arrElts[nIndex].objValue = std::move(objValue);
        return nIndex;
    }

    // Takes the value of a slot in use out of the list.
    T Remove(int32_t nIndex)
    {
        T objValue = std::exchange(m_arrElts[nIndex].objValue, T());
        if (nIndex == m_nHighWater - 1)
        {
            --m_nHighWater;
            if (m_nHighWater * 2 <= m_nCapacity && m_nCapacity / 2 >= MIN_CAPACITY)
            {
                ChangeCapacity(m_nCapacity / 2);
            }
        }
        else
        {
            m_arrElts[(m_nHead + m_nNumFreed) % m_nCapacity].nFreedSlot = nIndex;
            ++m_nNumFreed;
        }
        if (m_nNumFreed == m_nHighWater)
        {
            m_nHighWater = m_nHead = m_nNumFreed = 0;
            if (m_nCapacity > MIN_CAPACITY)
            {
                ChangeCapacity(MIN_CAPACITY);
            }
            else
            {
                std::for_each_n(m_arrElts, m_nCapacity, [](CElt& rElt) { rElt.nFreedSlot = -1; });
            }
        }
        return objValue;
    }

    // Makes an empty list one of vacant slots that Set fills in any order; false when memory is exhausted.
    // Afterwards FreeUnset frees the slots that were not filled.
    bool Reserve(int32_t nSize)
    {
        int32_t nCapacity = MIN_CAPACITY;
        while (nCapacity < nSize)
        {
            nCapacity *= 2;
        }
        if (!ChangeCapacity(nCapacity))
        {
            return false;
        }
        m_nHighWater = nSize;
        return true;
    }
    void Set(int32_t nIndex, T objValue) { m_arrElts[nIndex].objValue = std::move(objValue); }
    void FreeUnset()
    {
        for (int32_t n = 0; n < m_nHighWater; ++n)
        {
            if (m_arrElts[n].objValue == T())
            {
                Remove(n);
            }
        }
    }

    // One slot, with one entry of the ring beside it.
    struct CElt
    {
        T objValue{};
        int32_t nFreedSlot = -1;
    };

  private:
    bool ChangeCapacity(int32_t nCapacity)
    {
        CElt* arrElts = ALLOCATOR::AllocEltArray(nCapacity);
        if (arrElts == nullptr)
        {
            return false;
        }
        for (int32_t n = 0; n < m_nHighWater; ++n)
        {
            arrElts[n].objValue = std::move(m_arrElts[n].objValue);
        }
        for (int32_t n = 0; n < m_nNumFreed; ++n)
        {
            arrElts[n].nFreedSlot = m_arrElts[(m_nHead + n) % m_nCapacity].nFreedSlot;
        }
        ALLOCATOR::FreeEltArray(m_arrElts, m_nCapacity);
        m_arrElts = arrElts;
        m_nCapacity = nCapacity;
        m_nHead = 0;
        return true;
    }

    CElt* m_arrElts = nullptr;
    int32_t m_nCapacity = 0;
    int32_t m_nHighWater = 0;
    int32_t m_nHead = 0;
    int32_t m_nNumFreed = 0;
};
