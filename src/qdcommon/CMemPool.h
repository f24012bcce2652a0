// Named memory pools that know how much of them is in use.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>

// A pool of small blocks over the ordinary heap. Blocks go back to the pool they came from, with their size.
// Pools live as long as the process. Not thread safe.
class CMemPool
{
  public:
    // The pool of a name, made on first use. The name must be a literal: it is kept as it is.
    static CMemPool& GetPool(const char* szName);

    // Null when the memory is exhausted. Aligned for every standard type.
    void* Alloc(size_t nBytes);
    void Free(void* pBlock, size_t nBytes);

    const char* GetName() const { return m_szName; }
    // Blocks and bytes handed out and not yet given back.
    int64_t GetNumLiveBlocks() const { return m_nLiveBlocks; }
    int64_t GetNumLiveBytes() const { return m_nLiveBytes; }

    explicit CMemPool(const char* szName);
    CMemPool(const CMemPool&) = delete;
    CMemPool& operator=(const CMemPool&) = delete;

  private:
    const char* m_szName;
    int64_t m_nLiveBlocks = 0;
    int64_t m_nLiveBytes = 0;
#if defined(__SANITIZE_ADDRESS__)
    // Every block by itself, so that the sanitizer sees its end and its release.
    std::pmr::memory_resource& m_objResource = *std::pmr::new_delete_resource();
#else
    std::pmr::unsynchronized_pool_resource m_objResource;
#endif
};
