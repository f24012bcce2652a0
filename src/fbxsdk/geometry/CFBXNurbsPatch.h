// A rational B-spline surface, as files give it.
#pragma once

#include "fbxsdk/geometry/CFBXSurfaceGrid.h"
#include "fbxsdk/geometry/FbxMesh.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

struct CFBXObject;

class CFBXNurbsPatch
{
  public:
    // Nothing (reported) when orders, knots and points do not belong together.
    static std::optional<CFBXNurbsPatch> Read(const CFBXObject& rObject);

    // Every stretch between two different knots is cut into as many parts as the file wants, but into fewer
    // (reported) where the grid would have more points than the surface's own are worth and than are left;
    // takes what it needs of these. Points of a high order, which take long to find, count more than once.
    FbxMesh::CParts Tessellate(size_t& rnPointsLeft) const;

  private:
    // u and v.
    struct CDirection
    {
        int32_t m_nOrder = 0;
        int32_t m_nCount = 0; // of points; in a closed direction the first ones come again after the last
        int32_t m_nStep = 0;  // parts of a stretch
        std::vector<double> m_vecKnots;

        // False when order, points and knots do not belong together.
        bool SetCount(int32_t nCount);
        double GetBegin() const { return m_vecKnots[static_cast<size_t>(m_nOrder - 1)]; }
        double GetEnd() const { return m_vecKnots[m_vecKnots.size() - static_cast<size_t>(m_nOrder)]; }
        size_t CountSamples(int32_t nStep) const;
    };
    struct CSample;

    size_t CountPoints(const std::array<int32_t, 2>& rSteps) const;
    static std::vector<CSample> GetSamples(const CDirection& rDirection, int32_t nStep);
    CFBXSurfaceGrid::CPlace GetPlace(const CSample& rColumn, const CSample& rRow) const;

    std::array<CDirection, 2> m_arrDirections;
    std::vector<double> m_vecPoints;
    std::vector<int32_t> m_vecMaterials; // one or none
    bool m_bFlipNormals = false;
    size_t m_uiBytes = 0;       // of the points, as the file has them
    CQDString m_strDescription; // for messages
};
