// Makes geometry of a <mesh>.
#pragma once

#include "qdsgloader_collada/CColladaDataSourceCache.h"
#include "qdsgloader_collada/CColladaGeometrySet.h"

class CDeindexer;

class CColladaMeshConverter
{
  public:
    // The id names the geometry in messages. Both must outlive the converter.
    CColladaMeshConverter(const char* szGeometryID, CColladaDataSourceCache& rDataSources)
        : m_szGeometryID(szGeometryID),
          m_rDataSources(rDataSources)
    {}

    // Adds one piece for every <lines>, <polylist> and <triangles>, in this order. False (reported) when one
    // fails.
    bool LoadMesh(ColladaDOM141::domMesh& rMesh, CColladaGeometrySet& rSet);

  private:
    using CGeometryPtr = CColladaGeometrySet::CGeometryPtr;

    CGeometryPtr LoadLines(ColladaDOM141::domLines& rLines);
    CGeometryPtr LoadPolylist(ColladaDOM141::domPolylist& rPolylist);
    CGeometryPtr LoadTriangles(ColladaDOM141::domTriangles& rTriangles);
    template <class DOM, class CHECK, class MAKE>
    CGeometryPtr LoadPrimitives(DOM& rElement, const char* szElement, CHECK fnCheckLength, MAKE fnMakeGeom);

    const char* m_szGeometryID;
    CColladaDataSourceCache& m_rDataSources;
};
