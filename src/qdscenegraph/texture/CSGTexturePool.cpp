#include "qdscenegraph/texture/CSGTexturePool.h"

#include <algorithm>
#include <map>
#include <new>

boost::intrusive_ptr<CSGTexturePool> CSGTexturePool::GetPool(const CQDString& rName)
{
    static std::map<CQDString, boost::intrusive_ptr<CSGTexturePool>> s_mapPools;
    const CQDString strName = rName.empty() ? "default" : rName;
    boost::intrusive_ptr<CSGTexturePool>& rspPool = s_mapPools[strName];
    if (!rspPool)
    {
        rspPool = new (std::nothrow) CSGTexturePool(strName);
    }
    return rspPool;
}

void CSGTexturePool::AddTexturePath(const std::filesystem::path& rPath)
{
    if (std::ranges::find(m_vecPaths, rPath) == m_vecPaths.end())
    {
        m_vecPaths.push_back(rPath);
    }
}
