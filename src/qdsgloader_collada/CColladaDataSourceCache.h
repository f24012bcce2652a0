// The data sources that have been read: primitives and samplers share them, and each is read once.
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
    // Lets go of the sources in the element. Those that it has borrowed from another stay.
    void DropSourcesOf(ColladaDOM141::domMesh& rMesh);
    void DropSourcesOf(ColladaDOM141::domAnimation& rAnimation);
    void DropSourcesOf(ColladaDOM141::domSkin& rSkin);
    // Counts numbers that are made of the sources. False when those are too many for the document.
    bool TakeFromBudget(uint64_t uiPrimitives);
    void Clear() { m_mapDataSources.clear(); }
    // The same for a new document.
    void Reset() { *this = CColladaDataSourceCache(); }

  private:
    std::unordered_map<ColladaDOM141::domSource*, CDataSourcePtr> m_mapDataSources;
    uint64_t m_uiDocumentSize = 0;
    uint64_t m_uiPrimitives = 0; // in all sources that were read, and made of them
};
