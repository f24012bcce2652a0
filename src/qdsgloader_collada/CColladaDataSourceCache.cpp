#include "qdsgloader_collada/CColladaDataSourceCache.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

namespace
{

// An entry of an array takes two bytes at least, and is read once, or twice where a mesh borrows a source.
constexpr uint64_t FREE_PRIMITIVES = 1 << 20;
constexpr uint64_t PRIMITIVES_PER_BYTE = 4;

} // namespace

CColladaDataSourceCache::CDataSourcePtr CColladaDataSourceCache::GetDataSource(domSource& rSource)
{
    const auto [it, bNew] = m_mapDataSources.try_emplace(&rSource);
    if (bNew)
    {
        const CDataSourcePtr spDataSource = CColladaDataSourceType::CreateDataSource(rSource);
        if (spDataSource && TakeFromBudget(*spDataSource, rSource))
        {
            it->second = spDataSource;
        }
    }
    return it->second;
}

bool CColladaDataSourceCache::TakeFromBudget(const CColladaDataSource& rDataSource, const domSource& rSource)
{
    m_uiPrimitives += static_cast<uint64_t>(rDataSource.GetNumValues()) *
                      static_cast<uint64_t>(rDataSource.GetPrimitivesPerValue());
    if (m_uiPrimitives > FREE_PRIMITIVES + PRIMITIVES_PER_BYTE * m_uiDocumentSize)
    {
        Log(QD_COLLADA, LOG_ERROR,
            "The sources up to <source id=\"%s\"> hold too much for the size of the file",
            GetIDText(rSource));
        return false;
    }
    return true;
}

void CColladaDataSourceCache::DropSourcesOf(domMesh& rMesh)
{
    for (const auto& rspSource : AsSpan(rMesh.getSource_array()))
    {
        m_mapDataSources.erase(rspSource.cast());
    }
}
