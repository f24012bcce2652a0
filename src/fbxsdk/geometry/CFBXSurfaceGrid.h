// Points of a surface in rows and columns, on their way to become a mesh.
#pragma once

#include "fbxsdk/geometry/FbxMesh.h"

#include <array>
#include <cstddef>
#include <vector>

class CFBXSurfaceGrid
{
  public:
    struct CPlace
    {
        std::array<double, 3> m_arrPoint;
        std::array<double, 3> m_arrAlongU; // derivatives; of any length, zero at poles
        std::array<double, 3> m_arrAlongV;
        std::array<double, 2> m_arrUV;
    };

    // Two of each at least.
    CFBXSurfaceGrid(size_t uiColumns, size_t uiRows);

    // Row after row; u runs along the rows.
    void AddPlace(const CPlace& rPlace) { m_vecPlaces.push_back(rPlace); }
    // When all are there: quadrilaterals, triangles at poles, with normals (along u x along v, or against it)
    // and texture coordinates. The first and the last row or column grow together where they meet, as does
    // one that is a single point.
    FbxMesh::CParts MakeMesh(bool bFlip) const;

  private:
    size_t GetIndex(size_t uiColumn, size_t uiRow) const { return uiRow * m_uiColumns + uiColumn; }
    double GetExtent() const;
    // For each place, the one whose point it shares.
    std::vector<size_t> FindSamePoints() const;
    std::vector<float> GetNormals(const std::vector<size_t>& rSamePoints, bool bFlip) const;

    size_t m_uiColumns;
    size_t m_uiRows;
    std::vector<CPlace> m_vecPlaces;
};
