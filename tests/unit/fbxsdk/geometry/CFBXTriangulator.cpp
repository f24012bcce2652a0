// The triangles of a polygon cover it: none turned over, and together as large as it is.
#include "fbxsdk/geometry/CFBXTriangulator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <random>

namespace
{

using CPoint = std::array<double, 2>;
using CPolygon = std::vector<CPoint>;

double GetArea(const CPolygon& rPolygon)
{
    double dArea = 0;
    for (size_t n = 0; n < rPolygon.size(); ++n)
    {
        const CPoint& a = rPolygon[n];
        const CPoint& b = rPolygon[(n + 1) % rPolygon.size()];
        dArea += (a[0] * b[1] - b[0] * a[1]) / 2;
    }
    return dArea;
}

// Teeth of a comb: every second corner points inwards.
CPolygon MakeComb(int nTeeth)
{
    CPolygon vecPolygon{{static_cast<double>(nTeeth), -1}};
    for (int n = nTeeth - 1; n >= 0; --n)
    {
        vecPolygon.push_back({n + 0.5, 9});
        vecPolygon.push_back({static_cast<double>(n), 0});
    }
    vecPolygon.push_back({0, -1});
    return vecPolygon;
}

CPolygon MakeStar(unsigned uiSeed, int nCorners)
{
    std::mt19937 objRandom(uiSeed);
    CPolygon vecPolygon;
    for (int n = 0; n < nCorners; ++n)
    {
        const double dRadius = 1 + static_cast<double>(objRandom() % 1000);
        const double dAngle = 2 * std::acos(-1) * n / nCorners;
        vecPolygon.push_back({dRadius * std::cos(dAngle), dRadius * std::sin(dAngle)});
    }
    return vecPolygon;
}

std::vector<int32_t> Triangulate(const std::vector<double>& rPoints)
{
    std::vector<int32_t> vecPolygon(rPoints.size() / 3);
    std::iota(vecPolygon.begin(), vecPolygon.end(), 0);
    std::vector<int32_t> vecCorners;
    CFBXTriangulator().Triangulate(rPoints, vecPolygon, 0, vecCorners);
    EXPECT_EQ(vecCorners.size(), 3 * (vecPolygon.size() - 2));
    for (const int32_t nCorner : vecCorners)
    {
        EXPECT_TRUE(nCorner >= 0 && nCorner < static_cast<int32_t>(vecPolygon.size()));
    }
    return vecCorners;
}

TEST(CFBXTriangulator, CoversPolygons)
{
    const struct
    {
        const char* m_szWhat;
        CPolygon m_vecPolygon; // either way around
    } CASES[] = {
        {"square", {{0, 0}, {1, 0}, {1, 1}, {0, 1}}},
        {"dart", {{0, 0}, {4, 2}, {0, 4}, {1, 2}}},
        {"dart from the next corner", {{4, 2}, {0, 4}, {1, 2}, {0, 0}}},
        {"quadrilateral with a straight corner", {{0, 0}, {1, 0}, {2, 0}, {1, 2}}},
        {"arrow", {{0, 1}, {3, 1}, {3, 0}, {5, 2}, {3, 4}, {3, 3}, {0, 3}}},
        {"straight corners on all sides", {{0, 0}, {1, 0}, {2, 0}, {2, 1}, {2, 2}, {1, 2}, {0, 2}, {0, 1}}},
        {"hole with a slit to it",
         {{0, 0}, {6, 0}, {6, 6}, {0, 6}, {0, 0}, {2, 2}, {2, 4}, {4, 4}, {4, 2}, {2, 2}}},
        {"two holes with slits from one corner",
         {{0, 0},
          {9, 0},
          {9, 9},
          {0, 9},
          {0, 0},
          {1, 5},
          {1, 7},
          {3, 7},
          {1, 5},
          {0, 0},
          {5, 1},
          {7, 3},
          {7, 1},
          {5, 1}}},
        {"corner twice", {{0, 0}, {2, 0}, {2, 0}, {2, 2}, {1, 1}, {0, 2}}},
        {"comb", MakeComb(5000)},
        {"star", MakeStar(1, 300)},
    };
    for (const auto& rCase : CASES)
    {
        const double dArea = GetArea(rCase.m_vecPolygon);
        // In the planes of all axes, seen from both sides, and across them.
        for (int nPlane = 0; nPlane < 8; ++nPlane)
        {
            SCOPED_TRACE(rCase.m_szWhat + std::string(" in plane ") + std::to_string(nPlane));
            const size_t uiRight = static_cast<size_t>(nPlane % 3);
            const size_t uiUp = (uiRight + (nPlane < 3 ? 1 : 2)) % 3;
            const double dSlope = nPlane < 6 ? 0 : nPlane - 6.5;
            std::vector<double> vecPoints;
            for (const CPoint& rPoint : rCase.m_vecPolygon)
            {
                std::array<double, 3> arrPoint{};
                arrPoint[uiRight] = 1000 + rPoint[0];
                arrPoint[uiUp] = rPoint[1];
                arrPoint[3 - uiRight - uiUp] = dSlope * rPoint[0];
                vecPoints.insert(vecPoints.end(), arrPoint.begin(), arrPoint.end());
            }
            const std::vector<int32_t> vecCorners = Triangulate(vecPoints);
            double dSum = 0;
            double dLeast = 0;
            for (size_t n = 0; n < vecCorners.size(); n += 3)
            {
                CPolygon vecTriangle;
                for (size_t m = n; m < n + 3; ++m)
                {
                    vecTriangle.push_back(rCase.m_vecPolygon[static_cast<size_t>(vecCorners[m])]);
                }
                const double dTriangle = GetArea(vecTriangle) * (dArea < 0 ? -1 : 1);
                dSum += std::abs(dTriangle);
                dLeast = std::min(dLeast, dTriangle);
            }
            EXPECT_NEAR(dSum / std::abs(dArea), 1, 1e-6);
            EXPECT_GT(dLeast, -1e-6 * std::abs(dArea));
        }
    }
}

TEST(CFBXTriangulator, SplitsAlongTheShorterDiagonal)
{
    EXPECT_EQ(Triangulate({0, 0, 0, 4, 0, 0, 5, 1, 0, 0, 1, 0}), (std::vector<int32_t>{1, 2, 3, 1, 3, 0}));
    EXPECT_EQ(Triangulate({0, 0, 0, 4, 0, 0, 3, 1, 0, -1, 1, 0}), (std::vector<int32_t>{0, 1, 2, 0, 2, 3}));
}

TEST(CFBXTriangulator, EndsWithWhatIsNoPolygon)
{
    constexpr double NOTHING = std::numeric_limits<double>::quiet_NaN();
    constexpr double FAR = std::numeric_limits<double>::infinity();
    std::vector<double> vecKnot; // crosses itself thousands of times
    for (int n = 0; n < 5000; ++n)
    {
        vecKnot.insert(vecKnot.end(), {std::sin(n * 2.5), std::cos(n * 3.7), 0.0});
    }
    for (const std::vector<double>& rPoints :
         {std::vector<double>(15), std::vector<double>(18, NOTHING),
          std::vector<double>{0, 0, 0, 1, 0, 0, 2, 0, 0, 3, 0, 0, 4, 0, 0, 5, 0, 0},
          std::vector<double>{0, 0, 0, FAR, 0, 0, FAR, FAR, 0, 0, FAR, 0, -FAR, 1, NOTHING}, vecKnot})
    {
        Triangulate(rPoints);
    }
}

} // namespace
