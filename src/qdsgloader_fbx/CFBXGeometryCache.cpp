#include "qdsgloader_fbx/CFBXGeometryCache.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLogChecks.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <algorithm>

namespace
{

// A mesh on nodes with ever fewer materials than it asks for falls into other pieces on each of them: so many
// corners are taken for that beyond those of the file.
constexpr size_t MAX_REPEATED_CORNERS = 1 << 22;

} // namespace

const CFBXGeometryCache::CPieceList* CFBXGeometryCache::GetPieces(const FbxNode& rFBXNode,
                                                                  const FbxMesh& rMesh)
{
    const int32_t nLast = GetLastMaterial(rMesh);
    const int32_t nMaterials = nLast < rFBXNode.GetMaterialCount() ? nLast + 1 : rFBXNode.GetMaterialCount();
    auto it = m_mapEntries.find({&rMesh, nMaterials});
    if (it == m_mapEntries.end())
    {
        const auto itOther = m_mapEntries.lower_bound({&rMesh, 0});
        if (itOther != m_mapEntries.end() && itOther->first.first == &rMesh)
        {
            m_nRepeatedCorners += static_cast<size_t>(rMesh.GetPolygonVertexCount());
        }
        it =
            m_mapEntries
                .emplace(std::pair(&rMesh, nMaterials),
                         m_nRepeatedCorners <= MAX_REPEATED_CORNERS ? MakeEntry(rMesh, nMaterials) : CEntry())
                .first;
    }
    const CEntry& rEntry = it->second;
    if (rEntry.m_vecPieces.empty())
    {
        Log(QD_FBX, LOG_ERROR, "Ignoring the mesh of node '%s'", rFBXNode.GetName());
        return nullptr;
    }
    if (rEntry.m_nMissing > 0 && rFBXNode.GetMaterialCount() > 0)
    {
        Log(QD_FBX, LOG_WARNING, "%d polygons of node '%s' have a material that is not there.",
            rEntry.m_nMissing, rFBXNode.GetName());
    }
    return &rEntry.m_vecPieces;
}

int32_t CFBXGeometryCache::GetLastMaterial(const FbxMesh& rMesh)
{
    const auto [it, bNew] = m_mapLastMaterials.emplace(&rMesh, -1);
    for (int32_t n = 0; bNew && n < rMesh.GetPolygonCount(); ++n)
    {
        it->second = std::max(it->second, rMesh.GetMaterialIndex(n));
    }
    return it->second;
}

// Old and careless exporters name materials that are not there; the surface is worth to be seen nonetheless:
// its polygons get the number behind the last.
CFBXGeometryCache::CEntry CFBXGeometryCache::MakeEntry(const FbxMesh& rMesh, int32_t nMaterialCount) const
{
    CEntry objEntry;
    std::vector<int32_t> vecMaterials(static_cast<size_t>(rMesh.GetPolygonCount()));
    for (int32_t n = 0; int32_t & rnMaterial : vecMaterials)
    {
        rnMaterial = rMesh.GetMaterialIndex(n++);
        if (rnMaterial < 0 || rnMaterial >= nMaterialCount)
        {
            rnMaterial = nMaterialCount;
            ++objEntry.m_nMissing;
        }
    }
    CFBXGeometryBuilder objBuilder(rMesh, std::move(vecMaterials), nMaterialCount + 1);
    if (objBuilder.BuildGeometry())
    {
        objEntry.m_vecPieces = objBuilder.TakePieces();
    }
    return objEntry;
}
