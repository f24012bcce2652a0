// The data sources of meshes that have been read: primitives share them, and each is read once.
#pragma once

#include "qdsgloader_collada/CColladaDataSource.h"

#include <unordered_map>

class CColladaDataSourceCache
{
  public:
    using CDataSourcePtr = boost::intrusive_ptr<CColladaDataSource>;

    // What may be read altogether depends on the size of the document, in bytes: many accessors of one array
    // would make gigabytes of a small file.
    void SetDocumentSize(uint64_t uiBytes) { m_uiDocumentSize = uiBytes; }
    // Null (reported at the first attempt) for a source that cannot be read.
    CDataSourcePtr GetDataSource(ColladaDOM141::domSource& rSource);
    // Lets go of the sources in the mesh. Those that a mesh has borrowed from another stay.
    void DropSourcesOf(ColladaDOM141::domMesh& rMesh);
    void Clear() { m_mapDataSources.clear(); }
    // The same for a new document.
    void Reset() { *this = CColladaDataSourceCache(); }

  private:
    // False (reported) when the source is one too many.
    bool TakeFromBudget(const CColladaDataSource& rDataSource, const ColladaDOM141::domSource& rSource);

    std::unordered_map<ColladaDOM141::domSource*, CDataSourcePtr> m_mapDataSources;
    uint64_t m_uiDocumentSize = 0;
    uint64_t m_uiPrimitives = 0; // in all sources that were read
};
