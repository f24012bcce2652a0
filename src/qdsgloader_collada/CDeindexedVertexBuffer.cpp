#include "qdsgloader_collada/CDeindexedVertexBuffer.h"

#include "qdcommon/CLogChecks.h"

boost::intrusive_ptr<CDeindexedVertexBuffer> CDeindexedVertexBuffer::Create(const CSGVertexFormat& rFormat,
                                                                            int32_t nNumOriginalVertices,
                                                                            int32_t nNumDeindexedVertices)
{
    QD_CHECK(nNumOriginalVertices >= 0, nullptr);
    QD_CHECK(nNumDeindexedVertices >= 0, nullptr);
    const boost::intrusive_ptr<CDeindexedVertexBuffer> spBuffer = new CDeindexedVertexBuffer;
    spBuffer->m_spVertexBuffer = CSGVertexBuffer::Create(rFormat, nNumDeindexedVertices);
    QD_CHECK_CREATED(spBuffer->m_spVertexBuffer, nullptr);
    spBuffer->m_nNumOriginalVertices = nNumOriginalVertices;
    spBuffer->m_vecOriginalIndices.assign(static_cast<size_t>(nNumDeindexedVertices), -1);
    return spBuffer;
}

bool CDeindexedVertexBuffer::AddIndex(int32_t nDeindexedIndex, int32_t nOriginalIndex)
{
    if (nDeindexedIndex < 0 || static_cast<size_t>(nDeindexedIndex) >= m_vecOriginalIndices.size() ||
        nOriginalIndex < 0 || nOriginalIndex >= m_nNumOriginalVertices)
    {
        return false;
    }
    m_vecOriginalIndices[static_cast<size_t>(nDeindexedIndex)] = nOriginalIndex;
    m_vecBegins.clear();
    return true;
}

std::span<const int32_t> CDeindexedVertexBuffer::GetDeindexedIndicesForOriginalIndex(
    int32_t nOriginalIndex) const
{
    if (nOriginalIndex < 0 || nOriginalIndex >= m_nNumOriginalVertices)
    {
        return {};
    }
    if (m_vecBegins.empty())
    {
        SortByOriginal();
    }
    const auto nBegin = static_cast<size_t>(m_vecBegins[static_cast<size_t>(nOriginalIndex)]);
    const auto nEnd = static_cast<size_t>(m_vecBegins[static_cast<size_t>(nOriginalIndex) + 1]);
    return std::span(m_vecDeindexedIndices).subspan(nBegin, nEnd - nBegin);
}

void CDeindexedVertexBuffer::SortByOriginal() const
{
    // A counting sort, which keeps the vertices of one original in rising order.
    m_vecBegins.assign(static_cast<size_t>(m_nNumOriginalVertices) + 1, 0);
    for (const int32_t nOriginal : m_vecOriginalIndices)
    {
        if (nOriginal >= 0)
        {
            ++m_vecBegins[static_cast<size_t>(nOriginal) + 1];
        }
    }
    for (size_t n = 1; n < m_vecBegins.size(); ++n)
    {
        m_vecBegins[n] += m_vecBegins[n - 1];
    }
    std::vector<int32_t> vecNext = m_vecBegins;
    m_vecDeindexedIndices.resize(static_cast<size_t>(m_vecBegins.back()));
    for (size_t n = 0; n < m_vecOriginalIndices.size(); ++n)
    {
        if (m_vecOriginalIndices[n] >= 0)
        {
            int32_t& rnNext = vecNext[static_cast<size_t>(m_vecOriginalIndices[n])];
            m_vecDeindexedIndices[static_cast<size_t>(rnNext++)] = static_cast<int32_t>(n);
        }
    }
}
