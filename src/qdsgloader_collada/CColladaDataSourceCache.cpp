#include "qdsgloader_collada/CColladaDataSourceCache.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

namespace
{

// An entry of an array takes two bytes at least, and is read once, or twice where a mesh borrows a source.
constexpr uint64_t FREE_PRIMITIVES = 1 << 20;
constexpr uint64_t PRIMITIVES_PER_BYTE = 4;

template <class MAP, class ELEMENT>
void EraseSources(MAP& rMap, ELEMENT& rElement)
{
    for (const auto& rspSource : AsSpan(rElement.getSource_array()))
    {
        rMap.erase(rspSource.cast());
    }
}

} // namespace

CColladaDataSourceCache::CDataSourcePtr CColladaDataSourceCache::GetDataSource(domSource& rSource)
{
    const auto [it, bNew] = m_mapDataSources.try_emplace(&rSource);
    const CDataSourcePtr spDataSource = bNew ? CColladaDataSourceType::CreateDataSource(rSource) : nullptr;
    if (spDataSource)
    {
        if (!TakeFromBudget(static_cast<uint64_t>(spDataSource->GetNumValues()) *
                            static_cast<uint64_t>(spDataSource->GetPrimitivesPerValue())))
        {
            Log(QD_COLLADA, LOG_ERROR,
                "The sources up to <source id=\"%s\"> hold too much for the size of the file",
                GetIDText(rSource));
            return nullptr;
        }
        it->second = spDataSource;
    }
    return it->second;
}

bool CColladaDataSourceCache::TakeFromBudget(uint64_t uiPrimitives)
{
    m_uiPrimitives += uiPrimitives;
    return m_uiPrimitives <= FREE_PRIMITIVES + PRIMITIVES_PER_BYTE * m_uiDocumentSize;
}

void CColladaDataSourceCache::DropSourcesOf(domMesh& rMesh) { EraseSources(m_mapDataSources, rMesh); }

void CColladaDataSourceCache::DropSourcesOf(domAnimation& rAnimation)
{
    EraseSources(m_mapDataSources, rAnimation);
}

void CColladaDataSourceCache::DropSourcesOf(domSkin& rSkin) { EraseSources(m_mapDataSources, rSkin); }
