// Geometry.
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaGeometrySet.h"
#include "qdsgloader_collada/CColladaMeshConverter.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

CColladaGeometrySet* CSGLoaderCollada::LoadGeometry(domGeometry& rGeometry)
{
    const auto [it, bNew] = m_mapGeometrySets.try_emplace(&rGeometry);
    const char* szID = GetIDText(rGeometry);
    if (!bNew)
    {
        if (!it->second)
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to load <mesh> in <geometry id=\"%s\">", szID);
        }
        return it->second.get();
    }
    boost::intrusive_ptr<CColladaGeometrySet> spSet = new CColladaGeometrySet;
    if (domMesh* pMesh = rGeometry.getMesh())
    {
        const bool bLoaded = CColladaMeshConverter(szID, *m_spDataSources).LoadMesh(*pMesh, *spSet);
        m_spDataSources->DropSourcesOf(*pMesh);
        if (!bLoaded)
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to load <mesh> in <geometry id=\"%s\">", szID);
            return nullptr;
        }
    }
    if (rGeometry.getConvex_mesh() != nullptr)
    {
        Log(QD_COLLADA, LOG_WARNING, "Ignoring <convex_mesh> in <geometry id=\"%s\">", szID);
    }
    if (rGeometry.getSpline() != nullptr)
    {
        Log(QD_COLLADA, LOG_WARNING, "Ignoring <spline> in <geometry id=\"%s\">", szID);
    }
    it->second = std::move(spSet);
    return it->second.get();
}

bool CSGLoaderCollada::LoadLibraryGeometries(domCOLLADA& rRoot)
{
    for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_geometries_array()))
    {
        for (const auto& rspGeometry : AsSpan(rspLibrary->getGeometry_array()))
        {
            if (LoadGeometry(*rspGeometry) == nullptr)
            {
                return false;
            }
        }
    }
    return true;
}
