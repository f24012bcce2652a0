// The bookkeeping of types that saving and loading share.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

class SGStreamableType;

class CSGStreamableState
{
  public:
    struct CTypeHeader
    {
        const SGStreamableType* m_pSGType;
        int32_t m_nVersionBeingStreamed = -1;
    };

    int32_t GetNumTypes() const { return static_cast<int32_t>(m_vecSGTypeHeaders.size()); }

  protected:
    // The index of a type's header, -1 when it has none and none is to be added. A type that is added is
    // followed by its ancestors that are not listed yet.
    int32_t DoGetTypeIndex(const SGStreamableType* pSGType, bool bAdd);
    // Null (reported) for an index outside the headers.
    const SGStreamableType* DoGetType(int32_t nTypeIndex) const;
    CTypeHeader* DoGetTypeHeader(int32_t nTypeIndex);
    const CTypeHeader* DoGetTypeHeader(int32_t nTypeIndex) const;

  private:
    std::vector<CTypeHeader> m_vecSGTypeHeaders;
    std::unordered_map<const SGStreamableType*, int32_t> m_mapTypeIndices;
    // The type asked for last: runs of one type are the rule.
    const SGStreamableType* m_pLastType = nullptr;
    int32_t m_nLastTypeIndex = -1;
};
