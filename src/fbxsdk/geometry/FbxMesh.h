// Polygons over control points, with layer elements.
#pragma once

#include "fbxsdk/geometry/FbxGeometry.h"
#include "fbxsdk/geometry/FbxLayerElement.h"

#include <array>
#include <memory>

class CFBXObjectTable;
class CFBXTriangulator;

// A corner of a polygon is a "polygon vertex". All numbers that it gives are valid: control points below
// their count, values of elements below theirs. Polygons have at least one corner.
class FbxMesh final : public FbxGeometry
{
  public:
    // Of a file's mesh, in the form of any version. Polygons that name control points which are not there are
    // left out, as are those that the file marks as holes. Null (reported) when its arrays cannot be read.
    static std::unique_ptr<FbxMesh> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    // What a mesh is made of when no file says it.
    struct CParts
    {
        std::vector<double> m_vecControlPoints;
        std::vector<int32_t> m_vecPolygonVertices;
        std::vector<int32_t> m_vecPolygonStarts; // and the end
        std::vector<FbxLayerElement> m_vecElements;
        std::vector<int32_t> m_vecMaterials; // one for each polygon, or one or none for all
    };
    // In the place of another geometry, whose name and connections it takes; of one with a skin, whose
    // weights are not those of the mesh's points, no connections.
    static std::unique_ptr<FbxMesh> Create(const FbxGeometry& rOriginal, CParts&& rParts);

    int32_t GetPolygonCount() const { return static_cast<int32_t>(m_vecPolygonStarts.size()) - 1; }
    int32_t GetPolygonSize(int32_t nPolygon) const
    {
        return GetPolygonStart(nPolygon + 1) - GetPolygonStart(nPolygon);
    }
    // Of its first corner, among all of the mesh. That of GetPolygonCount() is their number.
    int32_t GetPolygonStart(int32_t nPolygon) const
    {
        return m_vecPolygonStarts[static_cast<size_t>(nPolygon)];
    }
    int32_t GetPolygonVertexCount() const { return static_cast<int32_t>(m_vecPolygonVertices.size()); }
    // The control points of all corners, polygon after polygon.
    std::span<const int32_t> GetPolygonVertices() const { return m_vecPolygonVertices; }
    bool IsTriangleMesh() const;

    // In file order. Those of textures other than the diffuse one, which files before 7000 have, follow where
    // their names are others.
    std::span<const FbxLayerElement> GetElements(FbxLayerElement::EType eType) const
    {
        return m_arrElements[eType];
    }
    int32_t GetElementCount(FbxLayerElement::EType eType) const
    {
        return static_cast<int32_t>(m_arrElements[eType].size());
    }
    int32_t GetElementTangentCount() const { return GetElementCount(FbxLayerElement::eTangent); }
    int32_t GetElementUVCount() const { return GetElementCount(FbxLayerElement::eUV); }
    // Null when there are not so many.
    const FbxLayerElement* GetElement(FbxLayerElement::EType eType, int32_t n) const;
    const FbxLayerElement* GetElementNormal(int32_t n = 0) const
    {
        return GetElement(FbxLayerElement::eNormal, n);
    }
    const FbxLayerElement* GetElementTangent(int32_t n = 0) const
    {
        return GetElement(FbxLayerElement::eTangent, n);
    }
    const FbxLayerElement* GetElementUV(int32_t n = 0) const { return GetElement(FbxLayerElement::eUV, n); }
    // The number of the texture coordinate set of the name; -1 when there is none.
    int32_t FindElementUV(std::string_view strName) const;

    // Which of its node's materials a polygon has: any number that the file gives, 0 where it gives none.
    int32_t GetMaterialIndex(int32_t nPolygon) const
    {
        return m_vecMaterials.size() > 1 ? m_vecMaterials[static_cast<size_t>(nPolygon)]
               : m_vecMaterials.empty()  ? 0
                                         : m_vecMaterials[0];
    }

    // Splits polygons into triangles that cover the same surface, concave ones included; polygons of fewer
    // than three corners go. Elements and materials follow.
    void Triangulate();
    // One triangulator for many meshes has less patience with polygons that are no surfaces.
    void Triangulate(CFBXTriangulator& rTriangulator);
    // Makes a tangent for each corner, in the place of all that there are, from a set of texture coordinates
    // and the first normals. Corners that agree in place, normal, texture coordinate and handedness share
    // theirs. False (reported) when the mesh has not both.
    bool GenerateTangentsData(int32_t nUVLayer);

  private:
    friend class CFBXMeshReader;

    explicit FbxMesh(const CFBXObject& rObject) : FbxGeometry(&rObject, eMesh) {}
    explicit FbxMesh(const FbxGeometry& rOriginal) : FbxGeometry(rOriginal, eMesh) {}
    FbxLayerElement::CCounts GetCounts() const;
    // For each polygon and corner that there is to be: which it is now.
    void Remap(std::vector<int32_t>&& vecStarts, std::span<const int32_t> arrPolygons,
               std::span<const int32_t> arrPolygonVertices);

    std::vector<int32_t> m_vecPolygonVertices;
    std::vector<int32_t> m_vecPolygonStarts{0}; // and the end
    std::array<std::vector<FbxLayerElement>, FbxLayerElement::eTypeCount> m_arrElements;
    std::vector<int32_t> m_vecMaterials; // for each polygon, or one or none for all
};
