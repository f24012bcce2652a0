#include "qdscenegraph/geometry/CSGIndexBuffer.h"

#include "qdcommon/CStream.h"

#include <algorithm>
#include <limits>

namespace
{

const SGStreamableRegistration<CSGIndexBuffer> s_objRegistration(0x42310C45A40FA9AB, 1, 1);

// Indices are handed around as int32.
constexpr int64_t MAX_INDEX = std::numeric_limits<int32_t>::max();

} // namespace

boost::intrusive_ptr<CSGIndexBuffer> CSGIndexBuffer::Create(int32_t nCount, int32_t nMaxIndex)
{
    QD_CHECK(nCount >= 0, nullptr);
    QD_CHECK(nMaxIndex >= 0, nullptr);
    boost::intrusive_ptr<CSGIndexBuffer> spBuffer = CSGMem::Construct<CSGIndexBuffer>();
    QD_CHECK_CREATED(spBuffer, nullptr);
    if (nMaxIndex > MAX_16_BIT)
    {
        spBuffer->m_objIndices = CIndices32();
    }
    QD_CHECK_CALL(spBuffer->Resize(static_cast<size_t>(nCount)), nullptr);
    std::visit([](auto& rIndices) { std::ranges::fill(rIndices, 0); }, spBuffer->m_objIndices);
    return spBuffer;
}

bool CSGIndexBuffer::Resize(size_t nCount)
{
    return std::visit([nCount](auto& rIndices) { return TryResize(rIndices, nCount); }, m_objIndices);
}

bool CSGIndexBuffer::Widen()
{
    const CIndices16& rNarrow = std::get<CIndices16>(m_objIndices);
    CIndices32 vecWide;
    QD_CHECK_CALL(TryResize(vecWide, rNarrow.size()), false);
    std::ranges::copy(rNarrow, vecWide.begin());
    m_objIndices = std::move(vecWide);
    return true;
}

int32_t CSGIndexBuffer::GetNumIndices() const
{
    return std::visit([](const auto& rIndices) { return static_cast<int32_t>(rIndices.size()); },
                      m_objIndices);
}

int32_t CSGIndexBuffer::GetIndex(int32_t i) const
{
    return std::visit(
        [n = static_cast<size_t>(i)](const auto& rIndices) {
            return n < rIndices.size() ? static_cast<int32_t>(rIndices[n]) : -1;
        },
        m_objIndices);
}

bool CSGIndexBuffer::SetIndex(int32_t i, int32_t nIndex)
{
    if (i < 0 || i >= GetNumIndices() || nIndex < 0 || !WidenFor(nIndex))
    {
        return false;
    }
    std::visit(
        [=](auto& rIndices) {
            rIndices[static_cast<size_t>(i)] = static_cast<std::decay_t<decltype(rIndices[0])>>(nIndex);
        },
        m_objIndices);
    m_nMaxIndex = MAX_UNKNOWN;
    return true;
}

bool CSGIndexBuffer::AddIndices(std::span<const int32_t> arrIndices)
{
    if (arrIndices.empty())
    {
        return true;
    }
    const auto [itMin, itMax] = std::ranges::minmax_element(arrIndices);
    QD_CHECK_OR_RETURN(*itMin >= 0, "%s is false", "nIndex >= 0", false);
    const auto nOldCount = static_cast<size_t>(GetNumIndices());
    const size_t nCount = nOldCount + arrIndices.size();
    QD_CHECK(nCount <= static_cast<size_t>(std::numeric_limits<int32_t>::max()), false);
    QD_CHECK_CALL(WidenFor(*itMax), false);
    QD_CHECK_CALL(Resize(nCount), false);
    std::visit(
        [&](auto& rIndices) {
            using CIndex = std::decay_t<decltype(rIndices[0])>;
            std::ranges::transform(arrIndices, rIndices.begin() + static_cast<std::ptrdiff_t>(nOldCount),
                                   [](int32_t nIndex) { return static_cast<CIndex>(nIndex); });
        },
        m_objIndices);
    m_nMaxIndex = MAX_UNKNOWN;
    return true;
}

int64_t CSGIndexBuffer::FindMaxIndex() const
{
    return std::visit(
        [](const auto& rIndices) {
            // Not max_element: keeping the place as well as the value takes three times as long.
            std::decay_t<decltype(rIndices[0])> nMax = 0;
            for (const auto nIndex : rIndices)
            {
                nMax = std::max(nMax, nIndex);
            }
            return rIndices.empty() ? int64_t{-1} : static_cast<int64_t>(nMax);
        },
        m_objIndices);
}

int32_t CSGIndexBuffer::GetMaxIndex() const
{
    if (m_nMaxIndex == MAX_UNKNOWN)
    {
        m_nMaxIndex = FindMaxIndex();
    }
    return static_cast<int32_t>(m_nMaxIndex);
}

bool CSGIndexBuffer::ReadFromStream(CStream* pStream, CSGStreamableLoadState*)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK(pStream->CanRead(2, sizeof(int32_t)), false);
    const int32_t nBytesEach = pStream->ReadInt32();
    const int32_t nCount = pStream->ReadInt32();
    QD_CHECK(nBytesEach == sizeof(uint16_t) || nBytesEach == sizeof(uint32_t), false);
    QD_CHECK(pStream->CanRead(nCount, nBytesEach), false);
    if (nBytesEach == sizeof(uint32_t))
    {
        m_objIndices = CIndices32();
    }
    QD_CHECK_CALL(Resize(static_cast<size_t>(nCount)), false);
    std::visit([&](auto& rIndices) { pStream->Read(rIndices.data(), rIndices.size() * sizeof(rIndices[0])); },
               m_objIndices);
    const int64_t nMaxIndex = FindMaxIndex();
    if (nMaxIndex > MAX_INDEX)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Index %lld is above %lld, the largest there is.",
            static_cast<long long>(nMaxIndex), static_cast<long long>(MAX_INDEX));
        return false;
    }
    m_nMaxIndex = nMaxIndex;
    return true;
}

bool CSGIndexBuffer::WriteToStream(CStream* pStream, CSGStreamableSaveState*)
{
    QD_CHECK_ARG(pStream, false);
    return std::visit(
        [&](const auto& rIndices) {
            pStream->WriteInt32(static_cast<int32_t>(sizeof(rIndices[0])));
            pStream->WriteInt32(static_cast<int32_t>(rIndices.size()));
            return pStream->Write(rIndices.data(), rIndices.size() * sizeof(rIndices[0]));
        },
        m_objIndices);
}

void CSGIndexBuffer::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGIndexBuffer: 0x%08llX - Indices: %d - Bits: %d", rIndent,
        LogAddress(this), GetNumIndices(), Is16Bit() ? 16 : 32);
}
