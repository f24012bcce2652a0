// The vertices of geometry.
#pragma once

#include "qdcommon/CColor.h"
#include "qdscenegraph/geometry/CSGBounds.h"
#include "qdscenegraph/geometry/CSGBulkArray.h"
#include "qdscenegraph/geometry/CSGEditStamp.h"
#include "qdscenegraph/geometry/CSGVertexFormat.h"
#include "qdscenegraph/streaming/CSGStreamable.h"

// Interleaved floats in one block: vertex after vertex, each as the format says.
class CSGVertexBuffer final : public SGStreamableInterface<CSGVertexBuffer>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGVertexBuffer";

    // All zeros. Null (reported) for a negative count, for vertices without members, and when there is not
    // enough memory.
    static boost::intrusive_ptr<CSGVertexBuffer> Create(const CSGVertexFormat& rFormat, int32_t nVertices);

    int32_t GetNumVertices() const { return m_nVertices; }
    const CSGVertexFormat& GetFormat() const { return m_objFormat; }

    // False when there is no such vertex or member, or when the member has another number of floats.
    bool SetVertMemberData(int32_t nVertex, CSGVertexFormat::EMember eMember, int32_t nSet,
                           const float* pData, int32_t nFloats);
    // The same for a colour of four floats.
    bool SetVertColor(int32_t nVertex, int32_t nSet, const CColor& rColor);
    // The member's first float; null when there is no such vertex or member.
    const float* GetVertMemberData(int32_t nVertex, CSGVertexFormat::EMember eMember, int32_t nSet) const;

    // GetNumVertices() times GetFormat().GetFloatsPerVertex() floats.
    std::span<const float> GetData() const { return m_vecData; }
    // To be filled before anything that depends on the vertices is asked for again: the call counts as the
    // edit.
    std::span<float> EditData();

    // Of the positions (those of the lowest set; what they lack of three floats counts as 0). A vertex that
    // is not finite is left out, one that no index names is not. Kept until the vertices change.
    const CSGBounds& GetBounds() const;
    // The radius of a sphere around the centre that holds every vertex, -1 when there is none. Rounded so
    // that the distance of each vertex, computed in floats, is not above it.
    float GetRadiusAround(const CSGFloat3& rCenter) const;
    // Renewed by every edit.
    const CSGEditStamp& GetEditStamp() const { return m_objEditStamp; }

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    // Everything but the vertices themselves.
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    // Takes the memory; the floats are left as they are.
    bool Allocate(int32_t nVertices);
    const CSGVertexFormat::CMember* FindVertMember(int32_t nVertex, CSGVertexFormat::EMember eMember,
                                                   int32_t nSet) const;
    size_t GetFloatIndex(int32_t nVertex, int32_t nOffset) const;
    template <class FUNCTION>
    void ForEachPosition(FUNCTION&& fnEach) const;

    CSGVertexFormat m_objFormat;
    int32_t m_nVertices = 0;
    CSGBulkArray<float> m_vecData;
    CSGEditStamp m_objEditStamp;
    mutable CSGBounds m_objBounds;
    mutable uint64_t m_uiBoundsStamp = 0; // the edit stamp they were made at
};
