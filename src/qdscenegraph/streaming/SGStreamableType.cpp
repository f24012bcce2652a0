#include "qdscenegraph/streaming/SGStreamableType.h"

#include "qdscenegraph/object/CSGMem.h"
#include "qdscenegraph/streaming/CSGStreamable.h"

#include <cstdio>
#include <map>
#include <memory>
#include <source_location>

namespace
{

std::map<uint64_t, SGStreamableType*>& GetTypeMap()
{
    static auto& s_rMap = *std::make_unique<std::map<uint64_t, SGStreamableType*>>().release();
    return s_rMap;
}

} // namespace

bool SGStreamableType::Register(uint64_t uiGUID, int32_t nOldestVersion, int32_t nLatestVersion)
{
    // Types register before there is a logger: these two lines go to the standard error output by themselves.
    constexpr CLogSite SITE = MakeLogSite(std::source_location::current());
    const auto nGUID = static_cast<long long>(uiGUID);
    const auto [it, bInserted] = GetTypeMap().emplace(uiGUID, this);
    if (!bInserted && it->second == this)
    {
        std::fprintf(stderr,
                     "%s(%d): WARN(4) - Attempt to register guid %lld to CSGStreamableType at 0x%08llx more "
                     "than once\r\n",
                     SITE.szFile, SITE.nLine, nGUID, LogAddress(this));
        return false;
    }
    if (!bInserted)
    {
        std::fprintf(stderr,
                     "%s(%d): ERROR(1) - Attempt to register guid %lld to CSGStreamableType at 0x%08llx but "
                     "it is already "
                     "registered to 0x%08llx\r\n",
                     SITE.szFile, SITE.nLine, nGUID, LogAddress(this), LogAddress(it->second));
        return false;
    }
    m_uiGUID = uiGUID;
    m_nOldestVersion = nOldestVersion;
    m_nLatestVersion = nLatestVersion;
    m_bRegistered = true;
    return true;
}

bool SGStreamableType::VerifyRegistration() const
{
    if (!m_bRegistered && QD_SCENEGRAPH.Accepts(LOG_ERROR))
    {
        LogFormatted(LOG_ERROR, {"CSGStreamableType::VerifyRegistration", "SGStreamableType.cpp", __LINE__},
                     "CSGStreamableType*(0x%08llx) %s is not registered.", LogAddress(this),
                     m_strName.c_str());
    }
    return m_bRegistered;
}

bool SGStreamableType::GetGUID(uint64_t& rGUID) const
{
    if (!VerifyRegistration())
    {
        return false;
    }
    rGUID = m_uiGUID;
    return true;
}

const SGStreamableType* SGStreamableType::FindType(uint64_t uiGUID)
{
    const auto it = GetTypeMap().find(uiGUID);
    return it != GetTypeMap().end() ? it->second : nullptr;
}

std::vector<const SGStreamableType*> SGStreamableType::GetAllTypes()
{
    std::vector<const SGStreamableType*> vecTypes;
    for (const auto& [uiGUID, pType] : GetTypeMap())
    {
        vecTypes.push_back(pType);
    }
    return vecTypes;
}
