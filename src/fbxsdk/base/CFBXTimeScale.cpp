#include "fbxsdk/base/CFBXTimeScale.h"

#include "fbxsdk/objects/CFBXObjectTable.h"

namespace
{

constexpr int64_t NEW_TICKS_PER_SECOND = 141120000;
constexpr int64_t OLD_DEFINITION = 127;
constexpr int64_t FIRST_HEADER_WITH_DEFINITION = 1004; // older ones may hold a number that means nothing

int64_t GetTicksPerSecond(const CFBXDocument& rDocument)
{
    const CFBXRecord* pHeader = rDocument.GetRoot().FindChild("FBXHeaderExtension");
    const CFBXRecord* pFlags = pHeader != nullptr ? pHeader->FindChild("OtherFlags") : nullptr;
    if (pFlags == nullptr || pHeader->GetChildInt64("FBXHeaderVersion") < FIRST_HEADER_WITH_DEFINITION ||
        pFlags->GetChildInt64("TCDefinition", OLD_DEFINITION) == OLD_DEFINITION)
    {
        return FbxTime::TICKS_PER_SECOND;
    }
    return NEW_TICKS_PER_SECOND;
}

} // namespace

CFBXTimeScale::CFBXTimeScale(const CFBXObjectTable& rTable)
    : m_nFileTicksPerSecond(GetTicksPerSecond(rTable.GetDocument()))
{}

FbxTime CFBXTimeScale::operator()(int64_t nFileTicks) const
{
    return m_nFileTicksPerSecond == FbxTime::TICKS_PER_SECOND
               ? FbxTime(nFileTicks)
               : FbxTime::FromSeconds(static_cast<double>(nFileTicks) /
                                      static_cast<double>(m_nFileTicksPerSecond));
}
