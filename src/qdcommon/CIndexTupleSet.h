// Numbers tuples of indices: equal tuples get one number, new ones the next.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// An open-addressed hash table over one flat array of all tuples.
class CIndexTupleSet
{
  public:
    explicit CIndexTupleSet(int32_t nTupleSize);

    // The number of the tuple; numbers start at 0 and rise with every new tuple. Takes as many tuples as an
    // int32_t counts.
    int32_t Insert(const int32_t* arrTuple);

    int32_t GetCount() const { return m_nCount; }
    // The tuples in the order of their numbers. The set is empty afterwards.
    std::vector<int32_t> TakeTuples();

  private:
    struct CSlot
    {
        uint32_t m_uiHash;
        int32_t m_nNumber; // -1: free
    };

    uint32_t Hash(const int32_t* arrTuple) const;
    void Grow();

    size_t m_nTupleSize;
    int32_t m_nCount = 0;
    std::vector<int32_t> m_vecTuples;
    std::vector<CSlot> m_vecSlots; // a power of two of them, at most half in use
    uint64_t m_uiSeed;
};
