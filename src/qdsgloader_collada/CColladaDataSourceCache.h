// The data sources of meshes that have been read: primitives share them, and each is read once.
#pragma once

#include "qdsgloader_collada/CColladaDataSource.h"

#include <unordered_map>

class CColladaDataSourceCache
{
  public:
    using CDataSourcePtr = boost::intrusive_ptr<CColladaDataSource>;

    // Null (reported at the first attempt) for a source that cannot be read.
    CDataSourcePtr GetDataSource(ColladaDOM141::domSource& rSource);
    // Lets go of the sources in the mesh. Those that a mesh has borrowed from another stay.
    void DropSourcesOf(ColladaDOM141::domMesh& rMesh);
    void Clear() { m_mapDataSources.clear(); }

  private:
    std::unordered_map<ColladaDOM141::domSource*, CDataSourcePtr> m_mapDataSources;
};
