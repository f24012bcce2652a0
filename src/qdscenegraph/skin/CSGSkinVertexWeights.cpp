#include "qdscenegraph/skin/CSGSkinVertexWeights.h"

#include "qdcommon/CStream.h"

#include <algorithm>
#include <cmath>

namespace
{

const SGStreamableRegistration<CSGSkinVertexWeights> s_objRegistration(0xCDBB57186E21C7E6, 1, 1);

// Whether a sum of weights in floats can pass for 1.
bool IsOne(double fSum) { return std::abs(fSum - 1.0) <= 1e-3; }

bool IsNormalized(std::span<const float> arrWeights)
{
    double fSum = 0.0;
    for (const float fWeight : arrWeights)
    {
        fSum += fWeight;
    }
    return arrWeights.empty() || IsOne(fSum); // a NaN or an infinity is not near 1 either
}

// False (reported) when the stream holds fewer elements.
template <class T>
bool ReadBlock(CStream* pStream, int32_t nCount, CSGBulkArray<T>& rBlock)
{
    QD_CHECK(pStream->CanRead(nCount, sizeof(T)), false);
    QD_CHECK_CALL(TryResize(rBlock, static_cast<size_t>(nCount)), false);
    if (nCount > 0)
    {
        pStream->Read(rBlock.data(), rBlock.size() * sizeof(T));
    }
    return true;
}

template <class T>
void WriteBlock(CStream* pStream, const CSGBulkArray<T>& rBlock)
{
    pStream->Write(rBlock.data(), rBlock.size() * sizeof(T));
}

} // namespace

bool CSGSkinVertexWeights::Normalize(std::vector<CSGSkinWeight>& rvecWeights)
{
    double fSum = 0.0;
    for (const CSGSkinWeight& rWeight : rvecWeights)
    {
        fSum += rWeight.m_fWeight;
    }
    const auto GetNormalized = [fSum](const CSGSkinWeight& rWeight) {
        return static_cast<float>(rWeight.m_fWeight / fSum);
    };
    double fNewSum = 0.0;
    for (const CSGSkinWeight& rWeight : rvecWeights)
    {
        fNewSum += GetNormalized(rWeight);
    }
    if (!rvecWeights.empty() && !(fSum > 0.0 && IsOne(fNewSum)))
    {
        return false;
    }
    for (CSGSkinWeight& rWeight : rvecWeights)
    {
        rWeight.m_fWeight = GetNormalized(rWeight);
    }
    std::erase_if(rvecWeights, [](const CSGSkinWeight& rWeight) { return rWeight.m_fWeight == 0.0f; });
    return true;
}

boost::intrusive_ptr<CSGSkinVertexWeights> CSGSkinVertexWeights::Create()
{
    return CSGMem::Construct<CSGSkinVertexWeights>();
}

bool CSGSkinVertexWeights::AddVertex(std::span<const CSGSkinWeight> arrWeights)
{
    QD_CHECK(arrWeights.size() <= MAX_JOINTS_PER_VERTEX, false);
    uint16_t arrJoints[MAX_JOINTS_PER_VERTEX];
    float arrFactors[MAX_JOINTS_PER_VERTEX];
    for (size_t n = 0; n < arrWeights.size(); ++n)
    {
        const auto [nJoint, fWeight] = arrWeights[n];
        QD_CHECK(nJoint >= 0 && nJoint < MAX_JOINTS, false);
        arrJoints[n] = static_cast<uint16_t>(nJoint);
        arrFactors[n] = fWeight;
    }
    const std::span<const float> arrRow(arrFactors, arrWeights.size());
    QD_CHECK(IsNormalized(arrRow), false);
    QD_CHECK_CALL(AddRow({arrJoints, arrWeights.size()}, arrRow), false);
    return AddVertexOfRow(static_cast<uint32_t>(GetNumRows() - 1));
}

bool CSGSkinVertexWeights::AddRow(std::span<const uint16_t> arrJoints, std::span<const float> arrWeights)
{
    const size_t nOffset = m_vecJoints.size();
    const size_t nEnd = nOffset + arrJoints.size();
    QD_CHECK(nEnd <= std::numeric_limits<int32_t>::max(), false);
    QD_CHECK_CALL(TryResize(m_vecJoints, nEnd), false);
    QD_CHECK_CALL(TryResize(m_vecWeights, nEnd), false);
    QD_CHECK_CALL(TryResize(m_vecRowOffsets, m_vecRowOffsets.size() + 1), false);
    std::ranges::copy(arrJoints, m_vecJoints.begin() + static_cast<ptrdiff_t>(nOffset));
    std::ranges::copy(arrWeights, m_vecWeights.begin() + static_cast<ptrdiff_t>(nOffset));
    m_vecRowOffsets.back() = static_cast<uint32_t>(nEnd);
    UpdateMaxima(arrJoints);
    return true;
}

void CSGSkinVertexWeights::UpdateMaxima(std::span<const uint16_t> arrJoints)
{
    for (const uint16_t nJoint : arrJoints)
    {
        m_nMaxJoint = std::max(m_nMaxJoint, static_cast<int32_t>(nJoint));
    }
    m_nMaxJointsPerVertex = std::max(m_nMaxJointsPerVertex, static_cast<int32_t>(arrJoints.size()));
}

bool CSGSkinVertexWeights::AddVertexOfRow(uint32_t uiRow)
{
    QD_CHECK_CALL(TryResize(m_vecVertexRows, m_vecVertexRows.size() + 1), false);
    m_vecVertexRows.back() = uiRow;
    return true;
}

CSGSkinVertexWeights::CRow CSGSkinVertexWeights::GetRow(uint32_t uiRow) const
{
    const size_t nBegin = m_vecRowOffsets[uiRow];
    const size_t nCount = m_vecRowOffsets[uiRow + 1] - nBegin;
    return {std::span<const uint16_t>(m_vecJoints).subspan(nBegin, nCount),
            std::span<const float>(m_vecWeights).subspan(nBegin, nCount)};
}

boost::intrusive_ptr<CSGSkinVertexWeights> CSGSkinVertexWeights::CreateSelection(
    std::span<const int32_t> arrVertices) const
{
    boost::intrusive_ptr<CSGSkinVertexWeights> spSelection = Create();
    QD_CHECK_CREATED(spSelection, nullptr);
    constexpr uint32_t NOT_TAKEN = ~0u;
    CSGBulkArray<uint32_t> vecNewRows; // by old row
    QD_CHECK_CALL(TryResize(vecNewRows, static_cast<size_t>(GetNumRows())), nullptr);
    std::ranges::fill(vecNewRows, NOT_TAKEN);
    for (const int32_t nVertex : arrVertices)
    {
        QD_CHECK(nVertex >= 0 && nVertex < GetNumVertices(), nullptr);
        const uint32_t uiRow = m_vecVertexRows[static_cast<size_t>(nVertex)];
        if (vecNewRows[uiRow] == NOT_TAKEN)
        {
            vecNewRows[uiRow] = static_cast<uint32_t>(spSelection->GetNumRows());
            const auto [arrJoints, arrWeights] = GetRow(uiRow);
            QD_CHECK_CALL(spSelection->AddRow(arrJoints, arrWeights), nullptr);
        }
        QD_CHECK_CALL(spSelection->AddVertexOfRow(vecNewRows[uiRow]), nullptr);
    }
    return spSelection;
}

boost::intrusive_ptr<CSGSkinVertexWeights> CSGSkinVertexWeights::CreateWithJoints(
    std::span<const int32_t> arrJoints) const
{
    boost::intrusive_ptr<CSGSkinVertexWeights> spRenamed = Create();
    QD_CHECK_CREATED(spRenamed, nullptr);
    std::vector<uint16_t> vecRow;
    for (uint32_t uiRow = 0; uiRow < static_cast<uint32_t>(GetNumRows()); ++uiRow)
    {
        vecRow.clear();
        const auto [arrRowJoints, arrRowWeights] = GetRow(uiRow);
        for (const uint16_t nJoint : arrRowJoints)
        {
            QD_CHECK(nJoint < arrJoints.size(), nullptr);
            QD_CHECK(arrJoints[nJoint] >= 0 && arrJoints[nJoint] < MAX_JOINTS, nullptr);
            vecRow.push_back(static_cast<uint16_t>(arrJoints[nJoint]));
        }
        QD_CHECK_CALL(spRenamed->AddRow(vecRow, arrRowWeights), nullptr);
    }
    for (const uint32_t uiRow : m_vecVertexRows)
    {
        QD_CHECK_CALL(spRenamed->AddVertexOfRow(uiRow), nullptr);
    }
    return spRenamed;
}

bool CSGSkinVertexWeights::ReadFromStream(CStream* pStream, CSGStreamableLoadState*)
{
    QD_CHECK_ARG(pStream, false);
    constexpr int64_t NUM_COUNTS = 3;
    QD_CHECK(pStream->CanRead(NUM_COUNTS, sizeof(int32_t)), false);
    const int32_t nVertices = pStream->ReadInt32();
    const int32_t nRows = pStream->ReadInt32();
    const int32_t nWeights = pStream->ReadInt32();
    CSGBulkArray<uint8_t> vecRowSizes;
    QD_CHECK_CALL(ReadBlock(pStream, nVertices, m_vecVertexRows), false);
    QD_CHECK_CALL(ReadBlock(pStream, nRows, vecRowSizes), false);
    QD_CHECK_CALL(ReadBlock(pStream, nWeights, m_vecJoints), false);
    QD_CHECK_CALL(ReadBlock(pStream, nWeights, m_vecWeights), false);
    return SetRowSizes(vecRowSizes);
}

bool CSGSkinVertexWeights::SetRowSizes(std::span<const uint8_t> arrRowSizes)
{
    QD_CHECK_CALL(TryResize(m_vecRowOffsets, arrRowSizes.size() + 1), false);
    m_vecRowOffsets[0] = 0;
    for (size_t nRow = 0; nRow < arrRowSizes.size(); ++nRow)
    {
        m_vecRowOffsets[nRow + 1] = m_vecRowOffsets[nRow] + arrRowSizes[nRow];
        QD_CHECK(m_vecRowOffsets[nRow + 1] <= m_vecWeights.size(), false);
        const auto [arrJoints, arrWeights] = GetRow(static_cast<uint32_t>(nRow));
        QD_CHECK(IsNormalized(arrWeights), false);
        UpdateMaxima(arrJoints);
    }
    QD_CHECK(m_vecRowOffsets.back() == m_vecWeights.size(), false);
    QD_CHECK(m_nMaxJoint < MAX_JOINTS, false);
    for (const uint32_t uiRow : m_vecVertexRows)
    {
        QD_CHECK(uiRow < arrRowSizes.size(), false);
    }
    return true;
}

bool CSGSkinVertexWeights::WriteToStream(CStream* pStream, CSGStreamableSaveState*)
{
    QD_CHECK_ARG(pStream, false);
    pStream->WriteInt32(GetNumVertices());
    pStream->WriteInt32(GetNumRows());
    pStream->WriteInt32(static_cast<int32_t>(m_vecWeights.size()));
    CSGBulkArray<uint8_t> vecRowSizes;
    QD_CHECK_CALL(TryResize(vecRowSizes, static_cast<size_t>(GetNumRows())), false);
    for (size_t nRow = 0; nRow < vecRowSizes.size(); ++nRow)
    {
        vecRowSizes[nRow] = static_cast<uint8_t>(m_vecRowOffsets[nRow + 1] - m_vecRowOffsets[nRow]);
    }
    WriteBlock(pStream, m_vecVertexRows);
    WriteBlock(pStream, vecRowSizes);
    WriteBlock(pStream, m_vecJoints);
    WriteBlock(pStream, m_vecWeights);
    return pStream->IsGood();
}

void CSGSkinVertexWeights::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGSkinVertexWeights: 0x%08llX - Vertices: %d - Rows: %d - Weights: %d",
        rIndent, LogAddress(this), GetNumVertices(), GetNumRows(), static_cast<int>(m_vecWeights.size()));
}
