// Turns the corners of a primitive, each with one index per input, into vertices with one index for all.
#pragma once

#include "qdsgloader_collada/CDeindexedVertexBuffer.h"
#include "qdsgloader_collada/CDeindexerInputData.h"

#include <span>
#include <vector>

class CSGIndexBuffer;

// Corners that agree in all their indices become one vertex; vertices are numbered in the order of their
// first corners. Values are not compared.
class CDeindexer
{
  public:
    // The cache must outlive the de-indexer.
    CDeindexer(int32_t nIndicesPerVertex, CColladaDataSourceCache& rDataSources)
        : m_nIndicesPerVertex(nIndicesPerVertex),
          m_rDataSources(rDataSources)
    {}

    // False (reported) when the input cannot be used. Inputs of an unknown semantic are kept, and fill
    // nothing.
    bool AddInput(ColladaDOM141::domInputLocalOffset& rInput);
    // The index list of the primitive: as many tuples as it has corners. Indices that 32 bits do not hold
    // become -1 below and the largest number above.
    bool DeindexPrimitives(std::span<const unsigned long long> arrIndices);
    // Null (reported) on failure, such as an index beyond a source.
    boost::intrusive_ptr<CDeindexedVertexBuffer> CreateVertexBuffer() const;
    // The vertex of each corner, in the order of the corners; null (reported) on failure.
    boost::intrusive_ptr<CSGIndexBuffer> CreateIndexBuffer() const
    {
        return CreateIndexBuffer(m_vecCornerVertices);
    }
    // The same of any list of vertices.
    boost::intrusive_ptr<CSGIndexBuffer> CreateIndexBuffer(std::span<const int32_t> arrVertices) const;
    std::span<const int32_t> GetCornerVertices() const { return m_vecCornerVertices; }
    // How many values the source has that came in through the VERTEX input; -1 (reported) without one.
    int32_t GetNumOriginalVertices() const;

  private:
    bool AddInput(int32_t nOffset, const CQDString& rStrSemantic, int32_t nSet,
                  ColladaDOM141::domSource& rSource);
    bool AddVertexFormatMember(CDeindexerInputData& rInput);
    // The index of the input in the vertex's tuple.
    int32_t GetIndex(int32_t nVertex, const CDeindexerInputData& rInput) const
    {
        return m_vecTuples[static_cast<size_t>(nVertex) * static_cast<size_t>(m_nIndicesPerVertex) +
                           static_cast<size_t>(rInput.GetOffset())];
    }
    bool CheckIndices() const;
    bool FillVertices(CDeindexedVertexBuffer& rBuffer) const;
    void FillMember(const CDeindexerInputData& rInput, std::span<float> arrVertices) const;

    int32_t m_nIndicesPerVertex;
    CColladaDataSourceCache& m_rDataSources;
    std::vector<CDeindexerInputData> m_vecInputs;
    int32_t m_nOriginalVerticesInput = -1;
    CSGVertexFormat m_objFormat;
    std::vector<int32_t> m_vecCornerVertices; // the vertex of each corner
    std::vector<int32_t> m_vecTuples;         // of each vertex, one after the other
    int32_t m_nNumVertices = 0;
};
