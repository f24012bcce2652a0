// The kinds of transforms against numbers worked out by hand and by other formulas, and how changes travel
// between them.

#include "qdscenegraph/transform/CSGXFrm_List.h"
#include "qdscenegraph/transform/CSGXFrm_LookAt.h"
#include "qdscenegraph/transform/CSGXFrm_Pair.h"
#include "qdscenegraph/transform/CSGXFrm_Rotate.h"
#include "qdscenegraph/transform/CSGXFrm_Scale.h"
#include "qdscenegraph/transform/CSGXFrm_Transform3.h"
#include "qdscenegraph/transform/CSGXFrm_Translate.h"
#include "support/CLogCapture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace
{

using CTransformPtr = CSGTransform::CTransformPtr;

constexpr float PI = std::numbers::pi_v<float>;

void ExpectNear(const CSGFloat3& a, const CSGFloat3& b, float fTolerance = 1e-6f)
{
    EXPECT_NEAR(a.x, b.x, fTolerance);
    EXPECT_NEAR(a.y, b.y, fTolerance);
    EXPECT_NEAR(a.z, b.z, fTolerance);
}

CSGFloat3 Row(const CTransform3& rTransform, int nRow)
{
    const auto& rRow = rTransform.m_objMatrix.m[nRow];
    return {rRow[0], rRow[1], rRow[2]};
}

// Counts what it hears.
struct CListener : public CSGDirtyGraphNode
{
    void MarkDirty() override { ++m_nChanges; }
    int m_nChanges = 0;
};

} // namespace

TEST(CSGXFrm_Rotate, QuarterTurns)
{
    const struct
    {
        CSGFloat3 vAxis;
        CSGFloat3 vFrom;
        CSGFloat3 vTo;
    } arrCases[] = {
        {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
        {{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}},
        {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}},
        {{0, 0, -5}, {1, 0, 0}, {0, -1, 0}},
        {{0, 0, 0}, {1, 2, 3}, {1, 2, 3}}, // without an axis nothing turns
    };
    for (const auto& r : arrCases)
    {
        ExpectNear(CSGXFrm_Rotate::Create(r.vAxis, PI / 2)->GetTransform().TransformPoint(r.vFrom), r.vTo);
    }
}

TEST(CSGXFrm_Rotate, AgreesWithQuaternions)
{
    std::mt19937 objRandom(11);
    std::uniform_real_distribution<float> objRange(-3.0f, 3.0f);
    const auto spByQuaternion = CSGXFrm_Rotate::Create({0, 0, 1}, 0);
    for (int n = 0; n < 500; ++n)
    {
        const CSGFloat3 vAxis = {objRange(objRandom), objRange(objRandom), objRange(objRandom)};
        const CSGFloat3 vPoint = {objRange(objRandom), objRange(objRandom), objRange(objRandom)};
        const float fAngle = 3.0f * objRange(objRandom);
        // v + 2 w (u x v) + 2 u x (u x v), with the quaternion (u, w)
        const double fLength = std::hypot(vAxis.x, vAxis.y, vAxis.z);
        const double s = std::sin(fAngle / 2.0) / fLength;
        const double u[3] = {s * vAxis.x, s * vAxis.y, s * vAxis.z};
        const double w = std::cos(fAngle / 2.0);
        const double v[3] = {vPoint.x, vPoint.y, vPoint.z};
        double c[3];
        double d[3];
        for (int i = 0; i < 3; ++i)
        {
            c[i] = u[(i + 1) % 3] * v[(i + 2) % 3] - u[(i + 2) % 3] * v[(i + 1) % 3];
        }
        for (int i = 0; i < 3; ++i)
        {
            d[i] =
                v[i] + 2 * w * c[i] + 2 * (u[(i + 1) % 3] * c[(i + 2) % 3] - u[(i + 2) % 3] * c[(i + 1) % 3]);
        }
        const CSGFloat3 vExpected = {float(d[0]), float(d[1]), float(d[2])};
        ExpectNear(CSGXFrm_Rotate::Create(vAxis, fAngle)->GetTransform().TransformPoint(vPoint), vExpected,
                   3e-6f);
        spByQuaternion->SetRotation({float(3 * u[0]), float(3 * u[1]), float(3 * u[2]), float(3 * w)});
        ExpectNear(spByQuaternion->GetTransform().TransformPoint(vPoint), vExpected, 6e-6f);
    }
    spByQuaternion->SetRotation({0, 0, 0, -2});
    EXPECT_TRUE(spByQuaternion->GetTransform().IsIdentity());
}

TEST(CSGXFrm_List, AppliesItsFirstTransformLast)
{
    const CTransformPtr spMove = CSGXFrm_Translate::Create({10, 20, 30});
    const CTransformPtr spTurn = CSGXFrm_Rotate::Create({0, 0, 1}, PI / 2);
    const CTransformPtr spStretch = CSGXFrm_Scale::Create({2, 3, 4});
    const auto spList = CSGXFrm_List::Create(std::vector{spMove, spTurn, spStretch});
    // (1, 1, 1) is stretched to (2, 3, 4), turned to (-3, 2, 4), and moved.
    ExpectNear(spList->GetTransform().TransformPoint({1, 1, 1}), {7, 22, 34});
    ExpectNear(spList->GetTransform().TransformDir({1, 1, 1}), {-3, 2, 4});
    const CTransformPtr spPair = CSGXFrm_Pair::Create(spMove, CSGXFrm_Pair::Create(spTurn, spStretch));
    EXPECT_EQ(spPair->GetTransform(), spList->GetTransform());
    EXPECT_TRUE(CSGXFrm_List::Create()->GetTransform().IsIdentity());
}

TEST(CSGXFrm_LookAt, LooksDownMinusZ)
{
    const struct
    {
        CSGFloat3 vEye;
        CSGFloat3 vTarget;
        CSGFloat3 vUp;
        CSGFloat3 vAhead; // -Z
        CSGFloat3 vRight; // X
        CSGFloat3 vTop;   // Y
    } arrCases[] = {
        {{1, 2, 3}, {1, 2, -7}, {0, 9, 0}, {0, 0, -1}, {1, 0, 0}, {0, 1, 0}},
        {{0, 0, 0}, {5, 0, 0}, {0, 1, 0}, {1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
        {{0, -8, 0}, {0, 0, 0}, {0, 0, 1}, {0, 1, 0}, {1, 0, 0}, {0, 0, 1}}, // Z up, looking at +Y
        {{0, 0, 0},
         {0, 0, -1},
         {1, 1, 0},
         {0, 0, -1},
         {0.70710678f, -0.70710678f, 0},
         {0.70710678f, 0.70710678f, 0}},
        {{0, 0, 0}, {3, 0, -4}, {0, 1, -7}, {0.6f, 0, -0.8f}, {}, {}}, // up is not square to the line of
                                                                       // sight
        {{4, 4, 4}, {4, 4, 4}, {0, 1, 0}, {0, 0, -1}, {1, 0, 0}, {0, 1, 0}}, // nothing to look at
        {{4, 4, 4}, {4, 4, 4}, {0, 0, 0}, {0, 0, -1}, {}, {}},
        {{0, 0, 0}, {0, -3, 0}, {0, 1, 0}, {0, -1, 0}, {}, {}}, // straight down
        {{0, 0, 0},
         {0.1f, 0.2f, 0.3f},
         {0.3f, 0.6f, 0.9f},
         {0.26726124f, 0.53452248f, 0.80178373f},
         {0, 0.83205029f, -0.55470020f},
         {0.96362411f, -0.14824986f, -0.22237480f}},
        {{0, 0, 0}, {1e-42f, 0, 0}, {0, 1e-42f, 0}, {1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
        {{0, 0, 0}, {3e38f, 0, 0}, {0, 3e38f, 0}, {1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
    };
    for (const auto& r : arrCases)
    {
        SCOPED_TRACE(testing::Message() << &r - arrCases);
        const CTransform3 objTransform = CSGXFrm_LookAt::Create(r.vEye, r.vTarget, r.vUp)->GetTransform();
        EXPECT_EQ(objTransform.TransformPoint({0, 0, 0}), r.vEye);
        ExpectNear(objTransform.TransformDir({0, 0, -1}), r.vAhead);
        if (r.vRight != CSGFloat3())
        {
            ExpectNear(Row(objTransform, 0), r.vRight);
            ExpectNear(Row(objTransform, 1), r.vTop);
        }
        // A rotation: the inverse is the transpose, and right-handed.
        const CSGFloat3 x = Row(objTransform, 0);
        const CSGFloat3 y = Row(objTransform, 1);
        ExpectNear({x.x * x.x + x.y * x.y + x.z * x.z, x.x * y.x + x.y * y.y + x.z * y.z,
                    y.x * y.x + y.y * y.y + y.z * y.z},
                   {1, 0, 1});
        ExpectNear({x.y * y.z - x.z * y.y, x.z * y.x - x.x * y.z, x.x * y.y - x.y * y.x},
                   Row(objTransform, 2));
    }
}

TEST(CSGTransform, ChangesReachWhateverIsMadeOfIt)
{
    const auto spMove = CSGXFrm_Translate::Create({1, 0, 0});
    const auto spTurn = CSGXFrm_Rotate::Create({0, 0, 1}, 0);
    const auto spInner = CSGXFrm_Pair::Create(spMove, spTurn);
    const auto spOuter = CSGXFrm_List::Create(std::vector<CTransformPtr>{spInner, spMove, spInner});
    CListener objListener;
    CSGTransformLink objLink(&objListener);
    objLink.Set(spOuter.get());
    EXPECT_EQ(spOuter->GetTransform().m_objTranslation, (CSGFloat3{3, 0, 0}));
    objListener.m_nChanges = 0;

    spMove->SetTranslation({1, 0, 0});
    spTurn->SetAngle(0);
    EXPECT_EQ(objListener.m_nChanges, 0) << "the values are the same";
    spMove->SetTranslation({2, 0, 0});
    EXPECT_EQ(objListener.m_nChanges, 1) << "told once, though it is in there three times";
    spTurn->SetAngle(PI);
    EXPECT_EQ(objListener.m_nChanges, 1) << "nobody has asked for the value since";
    ExpectNear(spOuter->GetTransform().m_objTranslation, {-2, 0, 0});
    const auto spLast = CSGXFrm_Scale::Create({2, 2, 2});
    EXPECT_TRUE(spOuter->AddTransform(spLast.get()));
    EXPECT_EQ(objListener.m_nChanges, 2);
    ExpectNear(spOuter->GetTransform().TransformPoint({1, 0, 0}), {0, 0, 0});
}

TEST(CSGTransform, NothingDanglesWhateverGoesFirst)
{
    const int64_t nLive = CSGMem::GetPool().GetNumLiveBlocks();
    {
        auto spMove = CSGXFrm_Translate::Create({1, 0, 0});
        std::vector<boost::intrusive_ptr<CSGXFrm_List>> vecLists;
        for (int n = 0; n < 6; ++n)
        {
            vecLists.push_back(CSGXFrm_List::Create());
            for (int nTimes = 0; nTimes <= n; ++nTimes) // grows, so that links move in memory
            {
                ASSERT_TRUE(vecLists.back()->AddTransform(spMove.get()));
            }
            vecLists.back()->GetTransform();
        }
        for (const size_t nGone : {3u, 0u, 3u}) // from the middle, the front and the end of what is linked
        {
            vecLists.erase(vecLists.begin() + static_cast<ptrdiff_t>(nGone));
            spMove->SetTranslation(spMove->GetTranslation() + CSGFloat3{1, 0, 0});
            for (const auto& spList : vecLists)
            {
                EXPECT_EQ(spList->GetTransform().m_objTranslation.x,
                          static_cast<float>(spList->GetNumTransforms()) * spMove->GetTranslation().x);
            }
        }
        spMove.reset();
        EXPECT_EQ(vecLists.front()->GetTransformObject(0)->GetRefCount(), 2 + 3 + 5);
        vecLists.front()->DropLinks();
        EXPECT_TRUE(vecLists.front()->GetTransform().IsIdentity() ||
                    vecLists.front()->GetNumTransforms() == 0);
    }
    EXPECT_EQ(CSGMem::GetPool().GetNumLiveBlocks(), nLive);
}

TEST(CSGTransform, ListsDoNotContainThemselves)
{
    CLogCapture objLog;
    const auto spOuter = CSGXFrm_List::Create();
    const auto spInner = CSGXFrm_List::Create();
    ASSERT_TRUE(spOuter->AddTransform(CSGXFrm_Pair::Create(spInner, spInner).get()));
    EXPECT_FALSE(spInner->AddTransform(spInner.get()));
    EXPECT_FALSE(spInner->AddTransform(spOuter.get()));
    EXPECT_FALSE(spInner->AddTransform(nullptr));
    EXPECT_EQ(CSGXFrm_Pair::Create(spInner, nullptr), nullptr);
    EXPECT_EQ(CSGXFrm_List::Create(std::vector<CTransformPtr>{spInner, nullptr}), nullptr);
    EXPECT_EQ(spInner->GetNumTransforms(), 0);
    EXPECT_TRUE(objLog.HasLine("1 pProduct == nullptr || !pProduct->IsOrContains(this) is false"));
    EXPECT_TRUE(objLog.HasLine("1 Handed in NULL pTransform"));
}

TEST(CSGTransform, CopiesAreDeepAndShareAlike)
{
    const auto spMove = CSGXFrm_Translate::Create({1, 2, 3});
    spMove->SetName("move");
    const auto spPair = CSGXFrm_Pair::Create(spMove, CSGXFrm_Rotate::Create({0, 1, 2}, 0.5f));
    const auto spList = CSGXFrm_List::Create(std::vector<CTransformPtr>{
        spPair, CSGXFrm_LookAt::Create({1, 2, 3}, {4, 5, 7}, {0, 1, 0}), spMove,
        CSGXFrm_Scale::Create({1, 2, 3}), spPair,
        CSGXFrm_Transform3::Create(CSGXFrm_Rotate::Create({1, 0, 0}, 1)->GetTransform())});
    spList->SetName("all");
    const CTransformPtr spCopy = spList->Copy();
    const auto* pCopy = dynamic_cast<const CSGXFrm_List*>(spCopy.get());
    ASSERT_NE(pCopy, nullptr);
    EXPECT_EQ(spCopy->GetTransform(), spList->GetTransform());
    EXPECT_STREQ(spCopy->GetName().c_str(), "all");
    EXPECT_STREQ(pCopy->GetTransformObject(2)->GetName().c_str(), "move");
    const auto* pPairCopy = dynamic_cast<CSGXFrm_Pair*>(pCopy->GetTransformObject(0));
    ASSERT_NE(pPairCopy, nullptr);
    EXPECT_EQ(pPairCopy, pCopy->GetTransformObject(4));
    EXPECT_EQ(pPairCopy->GetTransformObject(0), pCopy->GetTransformObject(2));
    const CTransform3 objBefore = spCopy->GetTransform();
    spMove->SetTranslation({0, 0, 0});
    EXPECT_EQ(spCopy->GetTransform(), objBefore) << "the copy has nothing of the original";
}

TEST(CSGTransform, TheDumpNamesEveryKindAndEachProductOnce)
{
    const auto spMove = CSGXFrm_Translate::Create({1, 2, 3});
    spMove->SetName("move");
    const auto spPair = CSGXFrm_Pair::Create(spMove, CSGXFrm_Rotate::Create({0, 1, 0}, 0.5f));
    const auto spList = CSGXFrm_List::Create(std::vector<CTransformPtr>{
        spPair, spPair, CSGXFrm_LookAt::Create({1, 2, 3}, {4, 5, 6}, {0, 1, 0}),
        CSGXFrm_Scale::Create({1, 2, 3}), CSGXFrm_Transform3::Create(CTransform3())});
    CLogCapture objLog;
    spList->OutputDebugInfo("> ");
    std::string strLines;
    for (const std::string& rLine : objLog.GetLines())
    {
        const size_t nAddress = rLine.find("0x");
        strLines +=
            (nAddress == std::string::npos ? rLine
                                           : rLine.substr(0, nAddress) + rLine.substr(rLine.find(" Name"))) +
            "\n";
    }
    EXPECT_EQ(strLines,
              "7 > CSGXFrm_List:  Name: '' - Transforms: 5\n"
              "7 >   CSGXFrm_Pair:  Name: '' - Transforms: 2\n"
              "7 >     CSGXFrm_Translate:  Name: 'move' - Translation: [1.000 2.000 3.000]\n"
              "7 >     CSGXFrm_Rotate:  Name: '' - Axis: [0.000 1.000 0.000] - Angle: 0.500\n"
              "7 >   CSGXFrm_Pair:  Name: '' - Transforms: 2 (as above)\n"
              "7 >   CSGXFrm_LookAt:  Name: '' - Eye: [1.000 2.000 3.000] - Target: [4.000 5.000 6.000]"
              " - Up: [0.000 1.000 0.000]\n"
              "7 >   CSGXFrm_Scale:  Name: '' - Scale: [1.000 2.000 3.000]\n"
              "7 >   CSGXFrm_Transform3:  Name: ''\n"
              "7 >     [1.000 0.000 0.000]\n"
              "7 >     [0.000 1.000 0.000]\n"
              "7 >     [0.000 0.000 1.000]\n"
              "7 >     [0.000 0.000 0.000]\n");
    EXPECT_EQ(CSGTypeInfo<CSGTransform>::GetTypeMap().Find(CQDString("CSGXFrm_Rotate")),
              &CSGXFrm_Rotate::ms_objTypeInfo);
}
