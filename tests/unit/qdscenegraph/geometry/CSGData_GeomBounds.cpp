// Bounds follow the geometry, and hold it.

#include "GeomTestScene.h"

#include <cmath>
#include <limits>
#include <random>

namespace
{

constexpr float INF = std::numeric_limits<float>::infinity();
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

const CSGBoundingBox EMPTY_BOX;

boost::intrusive_ptr<CSGGeomBinding> MakeBinding(const std::vector<float>& rFloats)
{
    return MakeTriangles({}, MakeVertices(rFloats));
}

boost::intrusive_ptr<CSGData_Geometry> MakeGeometry(const boost::intrusive_ptr<CSGGeomBinding>& spBinding)
{
    const auto spList = CSGGeomList::Create();
    spList->AddBinding(spBinding);
    return CSGData_Geometry::Create(spList);
}

// The same formula as a user would write it.
float GetDistance(const CSGFloat3& a, const CSGFloat3& b)
{
    const CSGFloat3 d = a - b;
    return std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
}

} // namespace

TEST(CSGData_GeomBounds, FollowEveryChange)
{
    const auto spNode = CSGNode::Create("node", "node");
    const auto spBounds = CSGData_GeomBounds::GetOrCreateFromNode(spNode.get());
    ASSERT_EQ(CSGData_GeomBounds::GetOrCreateFromNode(spNode.get()), spBounds);
    const auto ExpectBox = [&](const CSGBoundingBox& rBox, const char* szWhen) {
        EXPECT_EQ(spBounds->GetBox(), rBox) << szWhen;
        EXPECT_EQ(spBounds->GetSphere().IsEmpty(), rBox.IsEmpty()) << szWhen;
    };
    ExpectBox(EMPTY_BOX, "without geometry");

    const auto spFirst = MakeBinding({-1, -2, -3, 1, 2, 3});
    const auto spGeometry = MakeGeometry(spFirst);
    spNode->AddData(spGeometry.get());
    ExpectBox({{-1, -2, -3}, {1, 2, 3}}, "geometry added");
    EXPECT_NEAR(spBounds->GetSphere().m_fRadius, std::sqrt(14.0), 2e-6);
    EXPECT_EQ(spBounds->GetSphere().m_objCenter, CSGFloat3());

    CSGVertexBuffer* pVertices = spFirst->GetVertexBuffer();
    const float arrPosition[] = {5, 6, 7};
    pVertices->SetVertMemberData(1, CSGVertexFormat::MEMBER_POSITION, 0, arrPosition, 3);
    ExpectBox({{-1, -2, -3}, {5, 6, 7}}, "member set");
    pVertices->EditData()[5] = 70;
    ExpectBox({{-1, -2, -3}, {5, 6, 70}}, "data edited");

    const auto spSecond = MakeBinding({100, 100, 100});
    spGeometry->GetGeomList()->AddBinding(spSecond);
    ExpectBox({{-1, -2, -3}, {100, 100, 100}}, "binding added");
    spSecond->GetVertexBuffer()->EditData()[0] = 200;
    ExpectBox({{-1, -2, -3}, {200, 100, 100}}, "second buffer edited");
    spGeometry->GetGeomList()->RemoveBinding(spFirst.get());
    ExpectBox({{200, 100, 100}, {200, 100, 100}}, "first binding removed");
    EXPECT_EQ(spBounds->GetSphere().m_fRadius, 0.0f);
    spGeometry->GetGeomList()->RemoveBinding(spSecond.get());
    ExpectBox(EMPTY_BOX, "last binding removed");
    spGeometry->GetGeomList()->AddBinding(spSecond);

    // Made before the bounds, so that no stamp of it is newer than what the bounds were made of.
    const auto spOlder = MakeGeometry(spSecond);
    spSecond->GetVertexBuffer()->EditData();
    const auto spOther = MakeGeometry(MakeBinding({1, 1, 1}));
    spOlder->GetGeomList()->AddBinding(spOther->GetGeomList()->GetBinding(0));
    spSecond->GetVertexBuffer()->EditData();
    ExpectBox({{200, 100, 100}, {200, 100, 100}}, "binding back");
    spNode->RemoveData(spGeometry.get());
    spNode->AddData(spOlder.get());
    ExpectBox({{1, 1, 1}, {200, 100, 100}}, "other geometry that shares the newest buffer");
    spNode->RemoveData(spOlder.get());
    ExpectBox(EMPTY_BOX, "geometry removed");

    const auto spOtherNode = CSGNode::Create("other", "other");
    EXPECT_FALSE(spOtherNode->AddData(spBounds.get())) << "bounds belong to one node";
}

TEST(CSGData_GeomBounds, BelongToTheCopiedNode)
{
    const auto spNode = CSGNode::Create("node", "node");
    const auto spGeometry = MakeGeometry(MakeBinding({1, 2, 3}));
    spNode->AddData(spGeometry.get());
    const auto spBounds = CSGData_GeomBounds::GetOrCreateFromNode(spNode.get());
    EXPECT_EQ(spBounds->GetBox().m_objMax, (CSGFloat3{1, 2, 3}));
    const auto spCopy = spNode->Copy();
    auto* pCopiedBounds = spCopy->FindData<CSGData_GeomBounds>();
    ASSERT_NE(pCopiedBounds, spBounds);
    spCopy->RemoveData(spGeometry.get());
    EXPECT_EQ(pCopiedBounds->GetBox(), EMPTY_BOX);
    EXPECT_EQ(spBounds->GetBox().m_objMax, (CSGFloat3{1, 2, 3}));
}

TEST(CSGData_GeomBounds, LeaveOutWhatIsNotFinite)
{
    const struct
    {
        std::vector<float> vecPositions;
        int32_t nFloatsEach;
        CSGBoundingBox objBox;
    } arrCases[] = {
        {{NOT_A_NUMBER, 9, 9, 1, 2, 3, 9, INF, 9, -1, 0, 3, 9, 9, -INF}, 3, {{-1, 0, 3}, {1, 2, 3}}},
        {{NOT_A_NUMBER, 0, 0}, 3, EMPTY_BOX},
        {{}, 3, EMPTY_BOX},
        {{1, 2, 3, 4}, 2, {{1, 2, 0}, {3, 4, 0}}},
        {{1, 2, 3, NOT_A_NUMBER}, 4, {{1, 2, 3}, {1, 2, 3}}},
        {{-3e38f, 0, 0, 3e38f, 0, 0}, 3, {{-3e38f, 0, 0}, {3e38f, 0, 0}}},
    };
    for (const auto& rCase : arrCases)
    {
        const CSGBounds objBounds = MakeVertices(rCase.vecPositions, rCase.nFloatsEach)->GetBounds();
        EXPECT_EQ(objBounds.m_objBox, rCase.objBox) << testing::PrintToString(rCase.vecPositions);
        EXPECT_EQ(objBounds.m_objSphere.m_fRadius >= 0.0f, !rCase.objBox.IsEmpty());
    }
    CSGVertexFormat objFormat;
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_NORMAL, 0, 3);
    EXPECT_EQ(CSGVertexBuffer::Create(objFormat, 5)->GetBounds(), CSGBounds()) << "no positions";
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_POSITION, 7, 3);
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_POSITION, 2, 3);
    const CVertexBufferPtr spBuffer = CSGVertexBuffer::Create(objFormat, 1);
    std::ranges::copy(std::array{9, 9, 9, 8, 8, 8, 1, 2, 3}, spBuffer->EditData().begin());
    EXPECT_EQ(spBuffer->GetBounds().m_objBox.m_objMax, (CSGFloat3{1, 2, 3})) << "the lowest set";
}

// Over clouds of all sizes and places: every vertex is inside as computed in floats, the farthest one nearly
// touches.
TEST(CSGData_GeomBounds, HoldEveryVertexTightly)
{
    std::mt19937 objRandom(7);
    std::uniform_real_distribution<float> objUnit(-1.0f, 1.0f);
    for (int nCloud = 0; nCloud < 400; ++nCloud)
    {
        const float fSize = std::pow(10.0f, 8.0f * objUnit(objRandom));
        const float fPlace = std::pow(10.0f, 4.0f * objUnit(objRandom));
        std::vector<float> vecPositions(3 * (1 + static_cast<size_t>(nCloud) % 50));
        for (float& rFloat : vecPositions)
        {
            rFloat = fPlace + fSize * objUnit(objRandom);
        }
        const auto spList = CSGGeomList::Create();
        const size_t nHalf = vecPositions.size() / 6 * 3;
        spList->AddBinding(
            MakeBinding({vecPositions.begin(), vecPositions.begin() + static_cast<long>(nHalf)}));
        spList->AddBinding(
            MakeBinding({vecPositions.begin() + static_cast<long>(nHalf), vecPositions.end()}));
        const CSGBounds objBounds = spList->GetBounds();
        const auto& [objCenter, fRadius] = objBounds.m_objSphere;
        float fFarthest = 0.0f;
        for (size_t n = 0; n < vecPositions.size(); n += 3)
        {
            const CSGFloat3 objPosition{vecPositions[n], vecPositions[n + 1], vecPositions[n + 2]};
            CSGBoundingBox objGrown = objBounds.m_objBox;
            objGrown.Add(objPosition);
            ASSERT_EQ(objGrown, objBounds.m_objBox);
            ASSERT_LE(GetDistance(objPosition, objCenter), fRadius);
            fFarthest = std::max(fFarthest, GetDistance(objPosition, objCenter));
        }
        ASSERT_LE(fRadius, fFarthest * (1.0f + 1e-6f));
    }
}

TEST(CSGData_GeomBounds, AreSavedUpToDateAndBelievedWhenLoaded)
{
    const auto spNode = CSGNode::Create("node", "node");
    const auto spBinding = MakeBinding({0, 0, 0, 1, 2, 3});
    spNode->AddData(MakeGeometry(spBinding).get());
    const auto spBounds = CSGData_GeomBounds::GetOrCreateFromNode(spNode.get());
    EXPECT_FALSE(spBounds->GetBox().IsEmpty());
    spBinding->GetVertexBuffer()->EditData()[3] = 4;

    std::string strFile = Save(spNode.get());
    const std::string strBox = F({0, 0, 0, 4, 2, 3});
    const size_t nBox = strFile.rfind(strBox); // the vertices look the same, and stand before
    ASSERT_NE(nBox, strFile.find(strBox));
    strFile.replace(nBox + 12, 4, F({44}));

    const auto spLoaded = Load<CSGNode>(strFile);
    ASSERT_TRUE(spLoaded);
    const auto* pLoadedBounds = spLoaded->FindData<CSGData_GeomBounds>();
    EXPECT_EQ(pLoadedBounds->GetBox().m_objMax, (CSGFloat3{44, 2, 3}));
    EXPECT_EQ(Save(spLoaded.get()), strFile);
    spLoaded->FindData<CSGData_Geometry>()->GetGeomList()->GetBinding(0)->GetVertexBuffer()->EditData();
    EXPECT_EQ(pLoadedBounds->GetBox().m_objMax, (CSGFloat3{4, 2, 3}));
}

TEST(CSGData_Geometry, CountsForGeometryStatistics)
{
    const CVertexBufferPtr spShared = MakeVertices(std::vector<float>(30));
    CSGVertexFormat objFormat;
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_POSITION, 0, 3);
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_TEXCOORD, 0, 2);
    const auto spPrims = CSGGeom_PrimList::Create();
    spPrims->AddPrimitive(CSGPrim_Polygon::Create(std::vector<int32_t>{0, 1, 2, 3, 4}));
    const auto spList = CSGGeomList::Create();
    spList->AddBinding(MakeTriangles({0, 1, 2}, spShared));
    spList->AddBinding(CSGGeomBinding::Create(CSGGeom_Quads::Create(MakeIndices({0, 1, 2, 3})), spShared));
    spList->AddBinding(CSGGeomBinding::Create(CSGGeom_Lines::Create(MakeIndices({0, 1, 2, 3})), spShared));
    spList->AddBinding(CSGGeomBinding::Create(spPrims, CSGVertexBuffer::Create(objFormat, 7)));
    CSGGeomStats objStats;
    CSGData_Geometry::Create(spList)->AddGeomStats(objStats);
    EXPECT_EQ(objStats.m_nVertexBuffers, 2);
    EXPECT_EQ(objStats.m_nVertices, 10 + 7);
    EXPECT_EQ(objStats.m_nGeoms, 4);
    EXPECT_EQ(objStats.m_nTriangles, 1 + 2 + 3);
    EXPECT_EQ(objStats.m_nLines, 2);
    EXPECT_EQ(objStats.m_setVertexFormats, (std::set<CQDString>{"position:3", "position:3 texcoord0:2"}));
}
