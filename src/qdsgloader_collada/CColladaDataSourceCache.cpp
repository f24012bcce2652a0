#include "qdsgloader_collada/CColladaDataSourceCache.h"

#include "qdsgloader_collada/CColladaDom.h"

CColladaDataSourceCache::CDataSourcePtr CColladaDataSourceCache::GetDataSource(domSource& rSource)
{
    const auto [it, bNew] = m_mapDataSources.try_emplace(&rSource);
    if (bNew)
    {
        it->second = CColladaDataSourceType::CreateDataSource(rSource);
    }
    return it->second;
}

void CColladaDataSourceCache::DropSourcesOf(domMesh& rMesh)
{
    for (const auto& rspSource : AsSpan(rMesh.getSource_array()))
    {
        m_mapDataSources.erase(rspSource.cast());
    }
}
