#include "qdscenegraph/geometry/CSGVertexFormat.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/object/CSGMem.h"

namespace
{

struct CMemberName
{
    const char* szName;
    bool bAlwaysWithSet;
};

// In the order of EMember.
constexpr CMemberName MEMBER_NAMES[CSGVertexFormat::NUM_MEMBER_KINDS] = {
    {"position", false}, {"normal", false}, {"texcoord", true}, {"color", true}};

} // namespace

bool CSGVertexFormat::AddMemberN(EMember eMember, int32_t nSet, int32_t nFloats)
{
    QD_CHECK(eMember > MEMBER_NONE && eMember < NUM_MEMBER_KINDS, false);
    QD_CHECK(nSet >= 0 && nSet <= MAX_SET, false);
    QD_CHECK(nFloats >= 1 && nFloats <= MAX_FLOATS, false);
    QD_CHECK(m_vecMembers.size() < MAX_MEMBERS, false);
    if (FindMember(eMember, nSet) != nullptr)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "The vertex format %s already has %s of set %d.", GetDescription(),
            MEMBER_NAMES[eMember].szName, nSet);
        return false;
    }
    m_vecMembers.push_back({eMember, nSet, nFloats, m_nFloatsPerVertex});
    m_nFloatsPerVertex += nFloats;
    return true;
}

const CSGVertexFormat::CMember* CSGVertexFormat::FindMember(EMember eMember, int32_t nSet) const
{
    for (const CMember& rMember : m_vecMembers)
    {
        if (rMember.m_eMember == eMember && rMember.m_nSet == nSet)
        {
            return &rMember;
        }
    }
    return nullptr;
}

const CSGVertexFormat::CMember* CSGVertexFormat::FindLowestMember(EMember eMember) const
{
    const CMember* pLowest = nullptr;
    for (const CMember& rMember : m_vecMembers)
    {
        if (rMember.m_eMember == eMember && (pLowest == nullptr || rMember.m_nSet < pLowest->m_nSet))
        {
            pLowest = &rMember;
        }
    }
    return pLowest;
}

CQDString CSGVertexFormat::GetDescription() const
{
    CQDString strDescription;
    for (const CMember& rMember : m_vecMembers)
    {
        const CMemberName& rName = MEMBER_NAMES[rMember.m_eMember];
        strDescription += strDescription.empty() ? "" : " ";
        strDescription += rName.szName;
        if (rName.bAlwaysWithSet || rMember.m_nSet != 0)
        {
            strDescription += std::to_string(rMember.m_nSet);
        }
        strDescription += ":" + std::to_string(rMember.m_nFloats);
    }
    return strDescription;
}

bool CSGVertexFormat::ReadFromStream(CStream* pStream)
{
    constexpr int64_t MEMBER_SIZE = 3 * sizeof(int32_t);
    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nMembers = pStream->ReadInt32();
    QD_CHECK(pStream->CanRead(nMembers, MEMBER_SIZE), false);
    *this = CSGVertexFormat();
    for (int32_t n = 0; n < nMembers; ++n)
    {
        const int32_t nMember = pStream->ReadInt32();
        const int32_t nSet = pStream->ReadInt32();
        const int32_t nFloats = pStream->ReadInt32();
        QD_CHECK_CALL(AddMemberN(static_cast<EMember>(nMember), nSet, nFloats), false);
    }
    return true;
}

bool CSGVertexFormat::WriteToStream(CStream* pStream) const
{
    pStream->WriteInt32(static_cast<int32_t>(m_vecMembers.size()));
    for (const CMember& rMember : m_vecMembers)
    {
        pStream->WriteInt32(rMember.m_eMember);
        pStream->WriteInt32(rMember.m_nSet);
        pStream->WriteInt32(rMember.m_nFloats);
    }
    return pStream->IsGood();
}
