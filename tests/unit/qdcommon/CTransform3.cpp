// Transforms of space against sums worked out by hand and in double.

#include "qdcommon/CTransform3.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace
{

// Turns X to Y, Y to -X; then moves by (10, 20, 30).
const CTransform3 QUARTER_TURN = {CMatrix3{{{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}}, {10, 20, 30}};
const CTransform3 STRETCH = {CMatrix3{{{2, 0, 0}, {0, 3, 0}, {0, 0, 4}}}, {1, 1, 1}};

CTransform3 MakeRandom(std::mt19937& rRandom)
{
    std::uniform_real_distribution<float> objRange(-5.0f, 5.0f);
    CTransform3 objTransform;
    for (auto& rRow : objTransform.m_objMatrix.m)
    {
        for (float& rElement : rRow)
        {
            rElement = objRange(rRandom);
        }
    }
    objTransform.m_objTranslation = {objRange(rRandom), objRange(rRandom), objRange(rRandom)};
    return objTransform;
}

void ExpectNear(const CSGFloat3& a, const CSGFloat3& b, float fTolerance)
{
    EXPECT_NEAR(a.x, b.x, fTolerance);
    EXPECT_NEAR(a.y, b.y, fTolerance);
    EXPECT_NEAR(a.z, b.z, fTolerance);
}

} // namespace

TEST(CTransform3, PointsAndDirections)
{
    EXPECT_EQ(QUARTER_TURN.TransformPoint({1, 2, 3}), (CSGFloat3{8, 21, 33}));
    EXPECT_EQ(QUARTER_TURN.TransformDir({1, 2, 3}), (CSGFloat3{-2, 1, 3}));
    EXPECT_EQ(STRETCH.TransformPoint({1, 2, 3}), (CSGFloat3{3, 7, 13}));
    EXPECT_TRUE(CTransform3().IsIdentity());
    EXPECT_FALSE(STRETCH.IsIdentity());
}

TEST(CTransform3, AProductAppliesTheRightOneFirst)
{
    EXPECT_EQ((QUARTER_TURN * STRETCH).TransformPoint({1, 2, 3}), (CSGFloat3{3, 23, 43}));
    EXPECT_EQ((STRETCH * QUARTER_TURN).TransformPoint({1, 2, 3}), (CSGFloat3{17, 64, 133}));
    EXPECT_EQ((QUARTER_TURN * STRETCH).m_objMatrix, (CMatrix3{{{0, 2, 0}, {-3, 0, 0}, {0, 0, 4}}}));
}

TEST(CTransform3, InverseUndoes)
{
    std::mt19937 objRandom(7);
    for (int n = 0; n < 200; ++n)
    {
        const CTransform3 objTransform = MakeRandom(objRandom);
        CTransform3 objInverse;
        ASSERT_TRUE(objTransform.Inverse(objInverse));
        const CSGFloat3 vPoint = {1.5f, -2.5f, 0.75f};
        ExpectNear(objInverse.TransformPoint(objTransform.TransformPoint(vPoint)), vPoint, 2e-3f);
        ExpectNear((objTransform * objInverse).TransformPoint(vPoint), vPoint, 2e-3f);
    }
    CTransform3 objInverse;
    ASSERT_TRUE(QUARTER_TURN.Inverse(objInverse));
    EXPECT_EQ(objInverse.TransformPoint({8, 21, 33}), (CSGFloat3{1, 2, 3}));
    // Units that differ by far are no reason to give up.
    const CTransform3 objTiny = {CMatrix3{{{1e-20f, 0, 0}, {0, 1e-20f, 0}, {0, 0, 1e-20f}}}, {0, 0, 0}};
    ASSERT_TRUE(objTiny.Inverse(objInverse));
    EXPECT_FLOAT_EQ(objInverse.m_objMatrix.m[1][1], 1e20f);
}

TEST(CTransform3, WhatCannotBeUndoneLeavesTheResultAlone)
{
    const CTransform3 arrTransforms[] = {
        {CMatrix3{{{1, 0, 0}, {0, 0, 0}, {0, 0, 1}}}, {}},      // flattens
        {CMatrix3{{{1, 2, 3}, {2, 4, 6}, {0, 0, 1}}}, {}},      // likewise
        {CMatrix3{{{1e-40f, 0, 0}, {0, 1, 0}, {0, 0, 1}}}, {}}, // the inverse overflows
        {CMatrix3(), {std::numeric_limits<float>::infinity(), 0, 0}},
    };
    for (const CTransform3& rTransform : arrTransforms)
    {
        CTransform3 objInverse = QUARTER_TURN;
        EXPECT_FALSE(rTransform.Inverse(objInverse));
        EXPECT_EQ(objInverse, QUARTER_TURN);
    }
}

TEST(CTransform3, TakesAffineMatricesOnly)
{
    CMatrix4 objMatrix = {{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {10, 20, 30, 1}}};
    CTransform3 objTransform;
    ASSERT_TRUE(CTransform3::FromMatrix4(objMatrix, objTransform));
    EXPECT_EQ(objTransform, QUARTER_TURN);
    objMatrix.m[1][3] = -9e-6f;
    EXPECT_TRUE(CTransform3::FromMatrix4(objMatrix, objTransform));
    for (int nRow = 0; nRow < 4; ++nRow)
    {
        for (const float fWrong : {0.5f, 1.00002f, -1.0f, std::nanf("")})
        {
            CMatrix4 objWrong = {{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {10, 20, 30, 1}}};
            objWrong.m[nRow][3] = fWrong;
            EXPECT_FALSE(CTransform3::FromMatrix4(objWrong, objTransform)) << nRow << " " << fWrong;
        }
    }
}
