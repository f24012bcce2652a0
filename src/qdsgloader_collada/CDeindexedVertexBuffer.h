// The vertices that de-indexing made, and which original vertex each of them comes from.
#pragma once

#include "qdcommon/CRefObject.h"
#include "qdscenegraph/geometry/CSGVertexBuffer.h"

#include <span>
#include <vector>

class CDeindexedVertexBuffer : public CRefObject
{
  public:
    // The buffer's vertices are all zeros. Null (reported) when a number is negative or memory is exhausted.
    static boost::intrusive_ptr<CDeindexedVertexBuffer> Create(const CSGVertexFormat& rFormat,
                                                               int32_t nNumOriginalVertices,
                                                               int32_t nNumDeindexedVertices);

    CSGVertexBuffer* GetVertexBuffer() const { return m_spVertexBuffer.get(); }
    int32_t GetNumOriginalVertices() const { return m_nNumOriginalVertices; }

    // Notes that the vertex was made from the original one; of several notes on a vertex the last one stands.
    // False for indices outside the buffer.
    bool AddIndex(int32_t nDeindexedIndex, int32_t nOriginalIndex);
    // The vertices made from an original one, in rising order; empty for an index outside the original
    // vertices. Valid until the next AddIndex.
    std::span<const int32_t> GetDeindexedIndicesForOriginalIndex(int32_t nOriginalIndex) const;

  private:
    void SortByOriginal() const;

    boost::intrusive_ptr<CSGVertexBuffer> m_spVertexBuffer;
    int32_t m_nNumOriginalVertices = 0;
    std::vector<int32_t> m_vecOriginalIndices; // for each vertex; -1 for none
    // All vertices in the order of their originals, and where those of each original begin; made on first
    // use.
    mutable std::vector<int32_t> m_vecDeindexedIndices;
    mutable std::vector<int32_t> m_vecBegins;
};
