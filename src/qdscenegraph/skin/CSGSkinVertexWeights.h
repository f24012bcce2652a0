// How much each vertex follows which joints.
#pragma once

#include "qdscenegraph/geometry/CSGBulkArray.h"
#include "qdscenegraph/streaming/CSGStreamable.h"

#include <span>

// One influence on a vertex.
struct CSGSkinWeight
{
    int32_t m_nJoint = 0;
    float m_fWeight = 0.0f;
};

// Compressed rows: the influences of all rows in one block, row after row. The weights of a row add up to 1;
// a row without any follows no joint: its vertices stay where the bind shape has them. Each vertex names its
// row, so that the vertices which a seam has split share one.
class CSGSkinVertexWeights final : public SGStreamableInterface<CSGSkinVertexWeights>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGSkinVertexWeights";
    static constexpr int32_t MAX_JOINTS = 65535;
    static constexpr int32_t MAX_JOINTS_PER_VERTEX = 255;

    struct CRow
    {
        std::span<const uint16_t> m_arrJoints;
        std::span<const float> m_arrWeights; // as many
    };

    // Makes the weights of a vertex add up to 1; those that are 0 go. False, with the weights as they were,
    // when that cannot be done: the sum is not above 0 or not a finite number. No weights at all are left
    // alone.
    static bool Normalize(std::vector<CSGSkinWeight>& rvecWeights);

    // Without vertices.
    static boost::intrusive_ptr<CSGSkinVertexWeights> Create();

    // The next vertex, with a row of its own: weights as Normalize leaves them. False (reported), and no
    // vertex, for weights that are not normalised, for more than MAX_JOINTS_PER_VERTEX, and for a joint
    // outside 0 to MAX_JOINTS - 1.
    bool AddVertex(std::span<const CSGSkinWeight> arrWeights);
    // The weights of other vertices that are each one of these: vertex n gets those of arrVertices[n]. Null
    // (reported) when one of them is not there. Spreads the weights of a mesh over its de-indexed vertices.
    boost::intrusive_ptr<CSGSkinVertexWeights> CreateSelection(std::span<const int32_t> arrVertices) const;
    // The same weights with joint n called arrJoints[n]. Null (reported) when a joint in use gets no name.
    boost::intrusive_ptr<CSGSkinVertexWeights> CreateWithJoints(std::span<const int32_t> arrJoints) const;

    int32_t GetNumVertices() const { return static_cast<int32_t>(m_vecVertexRows.size()); }
    // Of a vertex that is there.
    CRow GetWeights(int32_t nVertex) const { return GetRow(m_vecVertexRows[static_cast<size_t>(nVertex)]); }

    // All there is: vertex n has row GetVertexRows()[n]; row r has the entries GetRowOffsets()[r] to
    // GetRowOffsets()[r + 1] - 1 of the last two.
    std::span<const uint32_t> GetVertexRows() const { return m_vecVertexRows; }
    std::span<const uint32_t> GetRowOffsets() const { return m_vecRowOffsets; }
    std::span<const uint16_t> GetRowJoints() const { return m_vecJoints; }
    std::span<const float> GetRowWeights() const { return m_vecWeights; }

    // The largest number of weights on one vertex.
    int32_t GetMaxJointsPerVertex() const { return m_nMaxJointsPerVertex; }
    // The largest joint index in use, -1 when there is none.
    int32_t GetMaxJoint() const { return m_nMaxJoint; }

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    // Everything but the weights themselves.
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    int32_t GetNumRows() const { return static_cast<int32_t>(m_vecRowOffsets.size()) - 1; }
    CRow GetRow(uint32_t uiRow) const;
    bool AddRow(std::span<const uint16_t> arrJoints, std::span<const float> arrWeights);
    bool AddVertexOfRow(uint32_t uiRow);
    // Makes the row offsets for joints and weights that were read; false (reported) unless all of it fits
    // together and every row is normalised.
    bool SetRowSizes(std::span<const uint8_t> arrRowSizes);
    // Counts a row in.
    void UpdateMaxima(std::span<const uint16_t> arrJoints);

    CSGBulkArray<uint32_t> m_vecVertexRows;
    CSGBulkArray<uint32_t> m_vecRowOffsets{0u};
    CSGBulkArray<uint16_t> m_vecJoints;
    CSGBulkArray<float> m_vecWeights;
    int32_t m_nMaxJointsPerVertex = 0;
    int32_t m_nMaxJoint = -1;
};
