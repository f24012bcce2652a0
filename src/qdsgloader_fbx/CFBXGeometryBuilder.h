// Makes geometry of a mesh: corners that agree in everything become one vertex.
#pragma once

#include "qdscenegraph/geometry/CSGGeomBinding.h"

#include <utility>
#include <vector>

class CFBXVertexSet;
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

    // The mesh is one of triangles, and must outlive the builder. The materials are those of its polygons,
    // each a number below the count, which is at least 1.
    CFBXGeometryBuilder(const FbxMesh& rMesh, std::vector<int32_t> vecMaterials, int32_t nMaterialCount);

    // Makes the pieces: positions, and the first normals, all texture coordinates and all colours that the
    // mesh has, each under its number there. False (reported) on failure.
    bool BuildGeometry();
    // One for each material.
    std::vector<CPiece> TakePieces() { return std::move(m_vecPieces); }

  private:
    bool MakeFormat();
    bool AddElement(const FbxLayerElement& rElement, CSGVertexFormat::EMember eMember, int32_t nSet);
    bool SortPolygonsByMaterial();
    // The set is empty before and after.
    bool BuildPiece(CPiece& rPiece, std::span<const int32_t> arrPolygons, CFBXVertexSet& rVertexSet) const;

    const FbxMesh& m_rMesh;
    std::vector<int32_t> m_vecMaterials;
    int32_t m_nMaterialCount;
    CSGVertexFormat m_objFormat;
    std::vector<const FbxLayerElement*> m_vecElements; // of a vertex, in the order of its floats
    std::vector<int32_t> m_vecPolygons;                // in the order of their materials
    std::vector<size_t> m_vecPieceBegins;              // where those of each material begin, and the end
    std::vector<CPiece> m_vecPieces;
};
