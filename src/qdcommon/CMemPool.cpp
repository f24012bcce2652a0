#include "qdcommon/CMemPool.h"

#include <cstring>
#include <memory>
#include <new>
#include <vector>

CMemPool::CMemPool(const char* szName) : m_szName(szName) {}

CMemPool& CMemPool::GetPool(const char* szName)
{
    // Never destroyed: objects with static lifetime give their memory back after everything else is gone.
    static auto& s_vecPools = *std::make_unique<std::vector<std::unique_ptr<CMemPool>>>().release();
    for (const auto& spPool : s_vecPools)
    {
        if (std::strcmp(spPool->GetName(), szName) == 0)
        {
            return *spPool;
        }
    }
    return *s_vecPools.emplace_back(std::make_unique<CMemPool>(szName));
}

void* CMemPool::Alloc(size_t nBytes)
{
    try
    {
        void* pBlock = m_objResource.allocate(nBytes);
        ++m_nLiveBlocks;
        m_nLiveBytes += static_cast<int64_t>(nBytes);
        return pBlock;
    }
    catch (const std::bad_alloc&)
    {
        return nullptr;
    }
}

void CMemPool::Free(void* pBlock, size_t nBytes)
{
    if (pBlock != nullptr)
    {
        m_objResource.deallocate(pBlock, nBytes);
        --m_nLiveBlocks;
        m_nLiveBytes -= static_cast<int64_t>(nBytes);
    }
}
