// The geometry of meshes, for all nodes that show them.
#pragma once

#include "qdsgloader_fbx/CFBXGeometryBuilder.h"

#include <map>
#include <unordered_map>
#include <utility>

class FbxNode;

// One for a scene graph. Nodes with the same mesh share its geometry, as far as they have the materials that
// it asks for. The meshes must outlive it.
class CFBXGeometryCache
{
  public:
    using CPieceList = std::vector<CFBXGeometryBuilder::CPiece>;

    // The pieces of a mesh of triangles: one for each material of the node, as far as the mesh asks for them,
    // and behind them one without material. Null (reported) when no geometry can be made.
    const CPieceList* GetPieces(const FbxNode& rFBXNode, const FbxMesh& rMesh);

  private:
    struct CEntry
    {
        CPieceList m_vecPieces; // empty: no geometry can be made
        int32_t m_nMissing = 0; // polygons whose material is not there
    };

    // The largest material number of the mesh's polygons; -1 when there is none.
    int32_t GetLastMaterial(const FbxMesh& rMesh);
    CEntry MakeEntry(const FbxMesh& rMesh, int32_t nMaterialCount) const;

    std::map<std::pair<const FbxMesh*, int32_t>, CEntry> m_mapEntries; // by the number of materials
    std::unordered_map<const FbxMesh*, int32_t> m_mapLastMaterials;
    size_t m_nRepeatedCorners = 0;
};
