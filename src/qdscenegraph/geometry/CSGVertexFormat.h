// What a vertex consists of.
#pragma once

#include "qdcommon/CQDString.h"

#include <cstdint>
#include <span>
#include <vector>

class CStream;

// The members of a vertex stand one after the other, as floats, in the order in which they were added. A
// member may be there several times, told apart by set numbers (texture coordinate set 0, 1, ...).
class CSGVertexFormat
{
  public:
    // The values stand in files.
    enum EMember : int32_t
    {
        MEMBER_NONE = -1,
        MEMBER_POSITION,
        MEMBER_NORMAL,
        MEMBER_TEXCOORD,
        MEMBER_COLOR
    };
    static constexpr int32_t NUM_MEMBER_KINDS = 4;
    static constexpr int32_t MAX_FLOATS = 16; // of one member
    static constexpr int32_t MAX_SET = 255;
    static constexpr size_t MAX_MEMBERS = 64;

    struct CMember
    {
        EMember m_eMember;
        int32_t m_nSet;
        int32_t m_nFloats;
        int32_t m_nOffset; // in floats from the start of the vertex

        bool operator==(const CMember&) const = default;
    };

    // Appends a member of 1 to MAX_FLOATS floats. False (reported) for a member and set that are there
    // already, and for numbers outside the limits.
    bool AddMemberN(EMember eMember, int32_t nSet, int32_t nFloats);

    // Null when there is no such member.
    const CMember* FindMember(EMember eMember, int32_t nSet) const;
    // The one with the lowest set number; null when the format has none of the kind.
    const CMember* FindLowestMember(EMember eMember) const;
    std::span<const CMember> GetMembers() const { return m_vecMembers; }
    int32_t GetFloatsPerVertex() const { return m_nFloatsPerVertex; }

    // "position:3 normal:3 texcoord0:2": member, set and number of floats. Positions and normals show their
    // set only where it is not 0.
    CQDString GetDescription() const;

    bool operator==(const CSGVertexFormat&) const = default;

    // Part of a vertex buffer's record: the member count, then member, set and number of floats of each.
    bool ReadFromStream(CStream* pStream);
    bool WriteToStream(CStream* pStream) const;

  private:
    std::vector<CMember> m_vecMembers;
    int32_t m_nFloatsPerVertex = 0;
};
