// Numbers of vertices.
#pragma once

#include "qdscenegraph/geometry/CSGBulkArray.h"
#include "qdscenegraph/streaming/CSGStreamable.h"

#include <span>
#include <variant>

// Kept with 16 bits each as long as no index needs more, with 32 bits from then on.
class CSGIndexBuffer final : public SGStreamableInterface<CSGIndexBuffer>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGIndexBuffer";
    static constexpr int32_t MAX_16_BIT = 65535;

    // `nCount` zeros, with 16 bits when no index will be above 65535. Null (reported) for a negative number,
    // and when there is not enough memory.
    static boost::intrusive_ptr<CSGIndexBuffer> Create(int32_t nCount, int32_t nMaxIndex);

    int32_t GetNumIndices() const;
    bool Is16Bit() const { return std::holds_alternative<CIndices16>(m_objIndices); }
    // -1 for a position outside the buffer.
    int32_t GetIndex(int32_t i) const;
    // False for a position outside the buffer and for a negative index. An index of more than 16 bits widens
    // the buffer.
    bool SetIndex(int32_t i, int32_t nIndex);
    // Appends all of them or, where one is negative or memory runs out (reported), none.
    bool AddIndices(std::span<const int32_t> arrIndices);
    // -1 without indices. One pass over them after a change.
    int32_t GetMaxIndex() const;

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    // The count and width alone.
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    using CIndices16 = CSGBulkArray<uint16_t>;
    using CIndices32 = CSGBulkArray<uint32_t>;
    static constexpr int64_t MAX_UNKNOWN = -2;

    bool Resize(size_t nCount);
    bool Widen();
    bool WidenFor(int32_t nIndex) { return nIndex <= MAX_16_BIT || !Is16Bit() || Widen(); }
    int64_t FindMaxIndex() const;

    std::variant<CIndices16, CIndices32> m_objIndices;
    mutable int64_t m_nMaxIndex = MAX_UNKNOWN;
};
