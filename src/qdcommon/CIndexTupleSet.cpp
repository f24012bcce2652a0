#include "qdcommon/CIndexTupleSet.h"

#include <algorithm>
#include <random>
#include <utility>

namespace
{

constexpr size_t INITIAL_SLOTS = 256;

// Differs from process to process, so that no document can be made whose tuples all meet in one place of the
// table. The numbering does not depend on it.
uint64_t GetProcessSeed()
{
    static const uint64_t s_uiSeed = [] {
        std::random_device objDevice;
        return (uint64_t{objDevice()} << 32) | objDevice();
    }();
    return s_uiSeed;
}

} // namespace

CIndexTupleSet::CIndexTupleSet(int32_t nTupleSize)
    : m_nTupleSize(static_cast<size_t>(nTupleSize)),
      m_vecSlots(INITIAL_SLOTS, CSlot{0, -1}),
      m_uiSeed(GetProcessSeed())
{}

uint32_t CIndexTupleSet::Hash(const int32_t* arrTuple) const
{
    uint64_t uiHash = m_uiSeed;
    for (size_t n = 0; n < m_nTupleSize; ++n)
    {
        // The multiplier and shift of the splitmix64 finaliser (S. Vigna).
        uiHash ^= static_cast<uint32_t>(arrTuple[n]);
        uiHash *= 0xBF58476D1CE4E5B9;
        uiHash ^= uiHash >> 31;
    }
    return static_cast<uint32_t>(uiHash ^ (uiHash >> 32));
}

int32_t CIndexTupleSet::Insert(const int32_t* arrTuple)
{
    const uint32_t uiHash = Hash(arrTuple);
    const size_t nMask = m_vecSlots.size() - 1;
    size_t nSlot = uiHash & nMask;
    for (; m_vecSlots[nSlot].m_nNumber >= 0; nSlot = (nSlot + 1) & nMask)
    {
        const CSlot& rSlot = m_vecSlots[nSlot];
        if (rSlot.m_uiHash == uiHash &&
            std::equal(arrTuple, arrTuple + m_nTupleSize,
                       m_vecTuples.data() + static_cast<size_t>(rSlot.m_nNumber) * m_nTupleSize))
        {
            return rSlot.m_nNumber;
        }
    }
    m_vecSlots[nSlot] = {uiHash, m_nCount};
    m_vecTuples.insert(m_vecTuples.end(), arrTuple, arrTuple + m_nTupleSize);
    ++m_nCount;
    if (static_cast<size_t>(m_nCount) * 2 > m_vecSlots.size())
    {
        Grow();
    }
    return m_nCount - 1;
}

void CIndexTupleSet::Grow()
{
    std::vector<CSlot> vecOld(m_vecSlots.size() * 2, CSlot{0, -1});
    vecOld.swap(m_vecSlots);
    const size_t nMask = m_vecSlots.size() - 1;
    for (const CSlot& rOld : vecOld)
    {
        if (rOld.m_nNumber >= 0)
        {
            size_t nSlot = rOld.m_uiHash & nMask;
            while (m_vecSlots[nSlot].m_nNumber >= 0)
            {
                nSlot = (nSlot + 1) & nMask;
            }
            m_vecSlots[nSlot] = rOld;
        }
    }
}

std::vector<int32_t> CIndexTupleSet::TakeTuples()
{
    m_nCount = 0;
    m_vecSlots.assign(INITIAL_SLOTS, CSlot{0, -1});
    return std::exchange(m_vecTuples, {});
}
