// An accessor of a COLLADA source: which entries of its array make which value.
#pragma once

#include "qdsgloader_collada/CColladaDataSource.h"
#include "qdsgloader_collada/CColladaPrimitiveLayout.h"

#include <cstddef>

class CColladaAccessor
{
  public:
    // What the array must be: the kind of its primitives, and the DOM's type and name of its element.
    struct CArrayKind
    {
        EColladaPrimitive m_ePrimitive;
        int32_t m_nElementType;
        const char* m_szElementName;
    };

    // Reads the source's accessor. False (reported) when it is incomplete or its parameters are of another
    // kind.
    bool Setup(ColladaDOM141::domSource& rSource, const CArrayKind& rKind);
    // Whether every value lies within an array of the length (reported if not). To be asked before memory is
    // taken for the values: their number is only what the document claims.
    bool CheckArrayLength(size_t nLength) const;

    daeElement* GetArray() const { return m_pArray; }
    int32_t GetNumValues() const { return static_cast<int32_t>(m_nCount); }
    int32_t GetPrimitivesPerValue() const { return m_objLayout.GetPrimitivesPerValue(); }

    // Hands over all primitives in order: fnStore(entry of the array) for each.
    template <class F>
    void ForEachEntry(F fnStore) const
    {
        const auto& rParams = m_objLayout.GetParams();
        const auto nStride = static_cast<size_t>(m_nStride);
        size_t nBegin = static_cast<size_t>(m_nOffset);
        for (int64_t v = 0; v < m_nCount; ++v, nBegin += nStride)
        {
            for (const CColladaPrimitiveLayout::CParam& rParam : rParams)
            {
                const size_t nFirst = nBegin + static_cast<size_t>(rParam.m_nStartOffset);
                for (size_t n = nFirst; n < nFirst + static_cast<size_t>(rParam.m_nNumPrimitives); ++n)
                {
                    fnStore(n);
                }
            }
        }
    }
    // Whether the values stand in the array one after the other without gaps, and where the first does.
    bool IsContiguous() const { return m_objLayout.IsContiguous() && m_nStride == m_objLayout.GetExtent(); }
    size_t GetOffset() const { return static_cast<size_t>(m_nOffset); }

    // Whether the source's accessor, or the source itself where it has none, has an array of the element
    // type.
    static bool HasArray(ColladaDOM141::domSource& rSource, int32_t nElementType);

  private:
    bool BuildLayout(ColladaDOM141::domSource& rSource, EColladaPrimitive ePrimitive);

    CColladaPrimitiveLayout m_objLayout;
    daeElement* m_pArray = nullptr;
    int64_t m_nCount = 0;
    int64_t m_nOffset = 0;
    int64_t m_nStride = 1;
};
