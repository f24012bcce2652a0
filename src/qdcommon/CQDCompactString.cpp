#include "qdcommon/CQDCompactString.h"

#include "qdcommon/CMemPool.h"

#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <vector>

namespace
{

using CEntry = CQDCharAllocator::CEntry;

// The texts that are held: open addressing over the hashes. A slot keeps its text's hash, so
// that a look-up touches the text itself only where it most likely agrees.
class CTable
{
  public:
    // The slot of the text, or the vacant one where it would stand.
    size_t FindSlot(std::string_view strText, size_t nHash) const
    {
        size_t nSlot = nHash & GetMask();
        while (m_vecSlots[nSlot].m_pEntry != nullptr &&
               (m_vecSlots[nSlot].m_nHash != nHash || m_vecSlots[nSlot].m_pEntry->GetView() != strText))
        {
            nSlot = (nSlot + 1) & GetMask();
        }
        return nSlot;
    }
    CEntry* GetEntry(size_t nSlot) const { return m_vecSlots[nSlot].m_pEntry; }
    size_t GetCount() const { return m_nCount; }

    void Insert(size_t nSlot, CEntry* pEntry)
    {
        m_vecSlots[nSlot] = {pEntry, pEntry->nHash};
        if (2 * ++m_nCount > m_vecSlots.size())
        {
            Grow();
        }
    }

    void Erase(const CEntry* pEntry)
    {
        size_t nSlot = pEntry->nHash & GetMask();
        while (m_vecSlots[nSlot].m_pEntry != pEntry)
        {
            nSlot = (nSlot + 1) & GetMask();
        }
        // Those behind it that would not be found across the gap move up.
        for (size_t nNext = (nSlot + 1) & GetMask(); m_vecSlots[nNext].m_pEntry != nullptr;
             nNext = (nNext + 1) & GetMask())
        {
            const size_t nHome = m_vecSlots[nNext].m_nHash & GetMask();
            if (((nNext - nHome) & GetMask()) >= ((nNext - nSlot) & GetMask()))
            {
                m_vecSlots[nSlot] = m_vecSlots[nNext];
                nSlot = nNext;
            }
        }
        m_vecSlots[nSlot] = {};
        --m_nCount;
    }

  private:
    struct CSlot
    {
        CEntry* m_pEntry = nullptr;
        size_t m_nHash = 0;
    };

    size_t GetMask() const { return m_vecSlots.size() - 1; }

    void Grow()
    {
        std::vector<CSlot> vecSlots(2 * m_vecSlots.size());
        vecSlots.swap(m_vecSlots);
        for (const CSlot& rSlot : vecSlots)
        {
            if (rSlot.m_pEntry != nullptr)
            {
                size_t nSlot = rSlot.m_nHash & GetMask();
                while (m_vecSlots[nSlot].m_pEntry != nullptr)
                {
                    nSlot = (nSlot + 1) & GetMask();
                }
                m_vecSlots[nSlot] = rSlot;
            }
        }
    }

    std::vector<CSlot> m_vecSlots{1024}; // a power of two
    size_t m_nCount = 0;
};

// Never destroyed: names with static lifetime are released after everything else is gone.
CTable& GetTable()
{
    static CTable& s_rTable = *std::make_unique<CTable>().release();
    return s_rTable;
}

CMemPool& GetPool()
{
    static CMemPool& s_rPool = CMemPool::GetPool("Names");
    return s_rPool;
}

size_t GetEntrySize(uint32_t uiLength) { return sizeof(CEntry) + uiLength + 1; }

} // namespace

CEntry* CQDCharAllocator::Acquire(std::string_view strText)
{
    if (strText.empty() || strText.size() >= std::numeric_limits<uint32_t>::max())
    {
        return nullptr;
    }
    const size_t nHash = std::hash<std::string_view>()(strText);
    CTable& rTable = GetTable();
    const size_t nSlot = rTable.FindSlot(strText, nHash);
    if (CEntry* pEntry = rTable.GetEntry(nSlot))
    {
        ++pEntry->nRefCount;
        return pEntry;
    }
    const auto uiLength = static_cast<uint32_t>(strText.size());
    void* pBlock = GetPool().Alloc(GetEntrySize(uiLength));
    if (pBlock == nullptr)
    {
        return nullptr;
    }
    auto* pEntry = ::new (pBlock) CEntry{1, uiLength, nHash};
    char* pChars = reinterpret_cast<char*>(pEntry + 1);
    std::memcpy(pChars, strText.data(), strText.size());
    pChars[uiLength] = '\0';
    rTable.Insert(nSlot, pEntry);
    return pEntry;
}

void CQDCharAllocator::Release(CEntry* pEntry)
{
    if (--pEntry->nRefCount == 0)
    {
        GetTable().Erase(pEntry);
        GetPool().Free(pEntry, GetEntrySize(pEntry->uiLength));
    }
}

size_t CQDCharAllocator::GetNumTexts() { return GetTable().GetCount(); }
