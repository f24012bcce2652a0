#include "qdscenegraph/streaming/CSGStreamableState.h"

#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/streaming/SGStreamableType.h"

#include <utility>

int32_t CSGStreamableState::DoGetTypeIndex(const SGStreamableType* pSGType, bool bAdd)
{
    QD_CHECK_ARG(pSGType, -1);
    if (pSGType == m_pLastType)
    {
        return m_nLastTypeIndex;
    }
    if (const auto it = m_mapTypeIndices.find(pSGType); it != m_mapTypeIndices.end())
    {
        m_pLastType = pSGType;
        m_nLastTypeIndex = it->second;
        return it->second;
    }
    if (!bAdd)
    {
        return -1;
    }
    const int32_t nTypeIndex = GetNumTypes();
    m_vecSGTypeHeaders.push_back({pSGType});
    m_mapTypeIndices.emplace(pSGType, nTypeIndex);
    if (const SGStreamableType* pParentType = pSGType->GetParentType())
    {
        const int32_t nParentIndex = DoGetTypeIndex(pParentType, true);
        QD_CHECK(nParentIndex >= 0, -1);
    }
    return nTypeIndex;
}

const CSGStreamableState::CTypeHeader* CSGStreamableState::DoGetTypeHeader(int32_t nTypeIndex) const
{
    QD_CHECK_OR_RETURN(nTypeIndex >= 0 && nTypeIndex < GetNumTypes(), "%s is false",
                       "(nTypeIndex>=0) && (nTypeIndex < (int)m_vecSGTypeHeaders.size())", nullptr);
    return &m_vecSGTypeHeaders[static_cast<size_t>(nTypeIndex)];
}

CSGStreamableState::CTypeHeader* CSGStreamableState::DoGetTypeHeader(int32_t nTypeIndex)
{
    return const_cast<CTypeHeader*>(std::as_const(*this).DoGetTypeHeader(nTypeIndex));
}

const SGStreamableType* CSGStreamableState::DoGetType(int32_t nTypeIndex) const
{
    const CTypeHeader* pHeader = DoGetTypeHeader(nTypeIndex);
    return pHeader != nullptr ? pHeader->m_pSGType : nullptr;
}
