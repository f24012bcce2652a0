// Makes geometry of a mesh: corners that agree in everything become one vertex.
#pragma once

#include "qdscenegraph/geometry/CSGGeomBinding.h"

#include <vector>

class FbxLayerElement;
class FbxMesh;

class CFBXGeometryBuilder
{
  public:
    // The triangles of one material.
    struct CPiece
    {
        boost::intrusive_ptr<CSGGeomBinding> m_spBinding; // null: no triangle has the material
        std::vector<int32_t> m_vecControlPoints;          // the control point of each vertex
    };

    // The mesh is one of triangles, and must outlive the builder. The count is that of the materials that its
    // polygons may name, at least 1.
    CFBXGeometryBuilder(const FbxMesh& rMesh, int32_t nMaterialCount);

    // Makes the pieces: positions, and the first normals, all texture coordinates and all colours that the
    // mesh has, each under its number there. False (reported) on failure.
    bool BuildGeometry();
    // One for each material.
    const std::vector<CPiece>& GetPieces() const { return m_vecPieces; }

  private:
    // Where the floats of a vertex come from.
    struct CSource
    {
        const FbxLayerElement* m_pElement;
        size_t m_nFloats;
    };

    bool MakeFormat();
    bool AddElement(const FbxLayerElement& rElement, CSGVertexFormat::EMember eMember, int32_t nSet,
                    size_t nFloats);
    bool SortPolygonsByMaterial();
    bool BuildPiece(CPiece& rPiece, std::span<const int32_t> arrPolygons) const;
    // The control point of a corner, then the bits of the vertex' floats.
    void GetVertex(int32_t nPolygon, int32_t nCorner, int32_t* pnVertex) const;

    const FbxMesh& m_rMesh;
    int32_t m_nMaterialCount;
    CSGVertexFormat m_objFormat;
    std::vector<CSource> m_vecSources;
    std::vector<int32_t> m_vecPolygons;   // in the order of their materials
    std::vector<size_t> m_vecPieceBegins; // where those of each material begin, and the end
    std::vector<CPiece> m_vecPieces;
};
