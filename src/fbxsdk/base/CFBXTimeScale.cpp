#include "fbxsdk/base/CFBXTimeScale.h"

#include "fbxsdk/objects/CFBXObjectTable.h"

namespace
{

constexpr int64_t NEW_TICKS_PER_SECOND = 141120000;

} // namespace

CFBXTimeScale::CFBXTimeScale(const CFBXObjectTable& rTable)
    : m_nFileTicksPerSecond(rTable.GetTicksDefinition() == CFBXObjectTable::USUAL_TICKS
                                ? FbxTime::TICKS_PER_SECOND
                                : NEW_TICKS_PER_SECOND)
{}

FbxTime CFBXTimeScale::operator()(int64_t nFileTicks) const
{
    return m_nFileTicksPerSecond == FbxTime::TICKS_PER_SECOND
               ? FbxTime(nFileTicks)
               : FbxTime::FromSeconds(static_cast<double>(nFileTicks) /
                                      static_cast<double>(m_nFileTicksPerSecond));
}
