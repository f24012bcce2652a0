#include "qdcommon/CQDCompactString.h"

#include "qdcommon/CMemPool.h"

#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <unordered_set>

namespace
{

using CEntry = CQDCharAllocator::CEntry;

struct CKey
{
    std::string_view strText;
    size_t nHash;
};

struct CHash
{
    using is_transparent = void;
    size_t operator()(const CEntry* pEntry) const { return pEntry->nHash; }
    size_t operator()(const CKey& rKey) const { return rKey.nHash; }
};

struct CEqual
{
    using is_transparent = void;
    bool operator()(const CEntry* pA, const CEntry* pB) const { return pA == pB; }
    bool operator()(const CKey& rKey, const CEntry* pEntry) const
    {
        return rKey.strText == pEntry->GetView();
    }
    bool operator()(const CEntry* pEntry, const CKey& rKey) const
    {
        return rKey.strText == pEntry->GetView();
    }
};

using CTable = std::unordered_set<CEntry*, CHash, CEqual>;

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
    const CKey objKey{strText, std::hash<std::string_view>()(strText)};
    CTable& rTable = GetTable();
    if (const auto it = rTable.find(objKey); it != rTable.end())
    {
        ++(*it)->nRefCount;
        return *it;
    }
    const auto uiLength = static_cast<uint32_t>(strText.size());
    void* pBlock = GetPool().Alloc(GetEntrySize(uiLength));
    if (pBlock == nullptr)
    {
        return nullptr;
    }
    auto* pEntry = ::new (pBlock) CEntry{1, uiLength, objKey.nHash};
    char* pChars = reinterpret_cast<char*>(pEntry + 1);
    std::memcpy(pChars, strText.data(), strText.size());
    pChars[uiLength] = '\0';
    rTable.insert(pEntry);
    return pEntry;
}

void CQDCharAllocator::Release(CEntry* pEntry)
{
    if (--pEntry->nRefCount == 0)
    {
        GetTable().erase(pEntry);
        GetPool().Free(pEntry, GetEntrySize(pEntry->uiLength));
    }
}

size_t CQDCharAllocator::GetNumTexts() { return GetTable().size(); }
