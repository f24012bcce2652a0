// Splits polygons into triangles.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// Keeps its working memory from polygon to polygon: use one for many.
class CFBXTriangulator
{
  public:
    // Appends the corners of a polygon's triangles, three for each (n - 2 triangles for n corners), counted
    // from nFirst for the polygon's first. The polygon names its points by their place in the row of x, y, z
    // of all. Works in the plane of the polygon's mean normal (Newell's method) and cuts off ears; a polygon
    // that crosses itself gives triangles that cover it as far as that can be. Quadrilaterals are split along
    // the diagonal inside, the shorter one when both are.
    void Triangulate(std::span<const double> arrPoints, std::span<const int32_t> arrPolygon, int32_t nFirst,
                     std::vector<int32_t>& rCorners);

  private:
    using CPoint = std::array<double, 2>;
    static constexpr int32_t GONE = -1;

    void Project(std::span<const double> arrPoints, std::span<const int32_t> arrPolygon);
    void LayOutGrid();
    int32_t GetCellAlong(size_t uiAxis, double dValue) const;
    size_t GetCell(int32_t nCorner) const;
    bool IsConvex(int32_t nCorner) const;
    void CutEars(int32_t nFirst, std::vector<int32_t>& rCorners);
    bool IsEar(int32_t nCorner, int nLevel);
    // Whether a corner that is not convex lies in the triangle of this one and those beside it.
    bool HoldsCorner(int32_t nCorner, bool bBorder);

    std::vector<CPoint> m_vecPoints;    // of the polygon, in its plane, going around to the left
    std::vector<int32_t> m_vecPrevious; // corners that are left form a ring
    std::vector<int32_t> m_vecNext;     // GONE: cut off
    double m_dFlat = 0;                 // twice the area of a triangle that has none
    int64_t m_nPatienceLeft = 1 << 25;  // for all polygons; each adds to it
    int64_t m_nPatience = 0;            // tests until the rest is cut as it comes

    std::vector<int32_t> m_vecReflex; // corners that are not convex at the start
    int32_t m_nCells = 1;             // along each side of the grid
    CPoint m_arrMin{};
    CPoint m_arrCellsPerUnit{};
    std::vector<int32_t> m_vecCellEnds; // in m_vecCellCorners, row after row
    std::vector<int32_t> m_vecCellCorners;
};
