#include "qdscenegraph/texture/CSGTexturePool.h"

#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdscenegraph/texture/CSGTexturePoolReloadHandler.h"

#include <algorithm>
#include <new>
#include <string_view>

namespace
{

CQDString MakePoolName(const CQDString& rName) { return rName.empty() ? "default" : rName; }

// Whether a name stays below the folder it is appended to. Names come from files of other systems too, so
// both separators count, and so do drives.
bool StaysInside(std::string_view strName)
{
    constexpr std::string_view SEPARATORS = "/\\";
    if (strName.empty() || SEPARATORS.find(strName[0]) != std::string_view::npos ||
        (strName.size() > 1 && strName[1] == ':'))
    {
        return false;
    }
    for (size_t nBegin = 0; nBegin <= strName.size();)
    {
        const size_t nEnd = std::min(strName.find_first_of(SEPARATORS, nBegin), strName.size());
        if (strName.substr(nBegin, nEnd - nBegin) == "..")
        {
            return false;
        }
        nBegin = nEnd + 1;
    }
    return true;
}

// Null with the reason when it cannot be had.
CSGTexturePtr ReadFromPaths(const std::vector<std::filesystem::path>& rPaths,
                            CSGTextureLoader* pTextureLoader, const CQDString& rTextureName,
                            CQDString& rReason)
{
    if (!StaysInside(rTextureName))
    {
        rReason = "the name leads out of the pool";
        return nullptr;
    }
    for (const std::filesystem::path& rPath : rPaths)
    {
        const std::filesystem::path objFile = rPath / rTextureName;
        std::error_code objError;
        if (std::filesystem::exists(objFile, objError))
        {
            return pTextureLoader->ReadTexture(objFile.string(), rReason);
        }
    }
    rReason = "no such file in any path of the pool";
    return nullptr;
}

} // namespace

CSGTexturePool::CPoolMap& CSGTexturePool::GetPools()
{
    static CPoolMap s_mapPools;
    return s_mapPools;
}

boost::intrusive_ptr<CSGTexturePool> CSGTexturePool::GetPool(const CQDString& rName)
{
    const CQDString strName = MakePoolName(rName);
    boost::intrusive_ptr<CSGTexturePool>& rspPool = GetPools()[strName];
    if (!rspPool)
    {
        rspPool = new (std::nothrow) CSGTexturePool(strName);
    }
    return rspPool;
}

boost::intrusive_ptr<CSGTexturePool> CSGTexturePool::FindPool(const CQDString& rName)
{
    const auto itPool = GetPools().find(MakePoolName(rName));
    return itPool != GetPools().end() ? itPool->second : nullptr;
}

void CSGTexturePool::AddTexturePath(const std::filesystem::path& rPath)
{
    if (std::ranges::find(m_vecPaths, rPath) == m_vecPaths.end())
    {
        m_vecPaths.push_back(rPath);
    }
}

CSGTexturePtr CSGTexturePool::GetTexture(const CQDString& rTextureName) const
{
    const auto itTexture = m_mapTextures.find(rTextureName);
    return itTexture != m_mapTextures.end() ? itTexture->second : nullptr;
}

CSGTexturePtr CSGTexturePool::GetOrLoadTexture(CSGTextureLoader* pTextureLoader,
                                               const CQDString& rTextureName)
{
    if (const CSGTexturePtr spTexture = GetTexture(rTextureName))
    {
        return spTexture;
    }
    const CSGTexturePtr spTexture = TryLoadTexture(pTextureLoader, rTextureName);
    if (spTexture)
    {
        m_mapTextures[rTextureName] = spTexture;
    }
    return spTexture;
}

CSGTexturePtr CSGTexturePool::TryLoadTexture(CSGTextureLoader* pTextureLoader,
                                             const CQDString& rTextureName) const
{
    QD_CHECK_ARG(pTextureLoader, nullptr);
    CQDString strReason;
    const CSGTexturePtr spTexture = ReadFromPaths(m_vecPaths, pTextureLoader, rTextureName, strReason);
    if (!spTexture)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Failed to load texture \"%s\" of texture pool '%s': %s", rTextureName,
            m_strName, strReason);
        return nullptr;
    }
    if (spTexture->InstanceOf(&CSGTex_2D::ms_objTypeInfo))
    {
        static_cast<CSGTex_2D*>(spTexture.get())
            ->SetReloadHandler(new (std::nothrow) CSGTexturePoolReloadHandler(m_strName, rTextureName));
    }
    return spTexture;
}

bool CSGTexturePool::Reload(CSGTextureLoader* pTextureLoader)
{
    QD_CHECK_ARG(pTextureLoader, false);
    bool bAll = true;
    for (const auto& [strName, spTexture] : m_mapTextures)
    {
        bAll = spTexture->Reload(pTextureLoader) && bAll;
    }
    return bAll;
}
