// Skins: the deformed vertices against a point-by-point truth, and what keeps joints bound.

#include "qdscenegraph/geometry/GeomTestScene.h"
#include "qdscenegraph/node/CSGCopyData.h"
#include "qdscenegraph/skin/CSGData_SkinBindingSet.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGXFrm_Transform3.h"

#include <bit>
#include <limits>

using namespace std::string_literals;

namespace
{

using CNodePtr = boost::intrusive_ptr<CSGNode>;

// Maps that turn, stretch, shear and move; the mirrored one also turns space inside out.
const CTransform3 BIND_SHAPE{{{{2, 0, 0}, {0, 1, 0.5f}, {0, 0, 1}}}, {1, 2, 3}};
const CTransform3 INVERSE_BIND{{{{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}}, {-1, 0, 4}};
const CTransform3 TURNED{{{{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}}, {5, -1, 0}};
const CTransform3 STRETCHED{{{{3, 0, 0}, {0, 0.5f, 0}, {1, 0, 1}}}, {0, 7, 0}};
const CTransform3 MIRRORED{{{{-1, 0, 0}, {0, 2, 0}, {0, 0, 1}}}, {0, 0, -2}};

void SetTransform(CSGNode* pNode, const CTransform3& rTransform)
{
    if (auto* pOld = pNode->FindData<CSGData_LocalTransform>())
    {
        pNode->RemoveData(pOld);
    }
    pNode->AddData(CSGData_LocalTransform::Create(CSGXFrm_Transform3::Create(rTransform)).get());
}

CNodePtr AddNode(CSGNode* pParent, const char* szName, const CTransform3& rTransform)
{
    const CNodePtr spNode = CSGNode::Create("global "s + szName, szName);
    SetTransform(spNode.get(), rTransform);
    if (pParent != nullptr)
    {
        pParent->AddChild(spNode.get());
    }
    return spNode;
}

CSGSkinBinding* GetSkin(const CSGNode* pNode)
{
    return pNode->FindData<CSGData_SkinBindingSet>()->GetBinding(0);
}

constexpr float INF = std::numeric_limits<float>::infinity();
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
const std::vector<std::vector<CSGSkinWeight>> WEIGHTS = {
    {{0, 1}}, {{0, 0.25f}, {1, 0.75f}}, {{3, 1}}, {}, {{1, 0.25f}, {2, 0.75f}}};

// root > hip > knee > body: the skinned node hangs below the joints of its own skin. Joint 2 has no name.
struct CCharacter
{
    CCharacter()
    {
        CSGVertexFormat objFormat;
        objFormat.AddMemberN(CSGVertexFormat::MEMBER_NORMAL, 0, 3);
        objFormat.AddMemberN(CSGVertexFormat::MEMBER_POSITION, 0, 3);
        const auto spVertices = CSGVertexBuffer::Create(objFormat, 5);
        float fValue = 1;
        std::ranges::generate(spVertices->EditData(), [&] { return fValue = 7 - 1.25f * fValue / 2; });
        const auto spWeights = CSGSkinVertexWeights::Create();
        for (const auto& rRow : WEIGHTS)
        {
            EXPECT_TRUE(spWeights->AddVertex(rRow));
        }
        const std::vector<CSGSkin::CJointPtr> vecJoints = {
            CSGJoint::Create("hip", INVERSE_BIND), CSGJoint::Create("knee", TURNED), CSGJoint::Create("", {}),
            CSGJoint::Create("mirror", INVERSE_BIND), CSGJoint::Create("unused", TURNED)};
        const auto spSet = CSGData_SkinBindingSet::Create();
        const auto spGeom = MakeTriangles({0, 1, 2}, spVertices);
        spSet->AddBinding(CSGSkinBinding::Create(CSGSkin::Create(BIND_SHAPE, vecJoints, spWeights), spGeom));
        const auto spList = CSGGeomList::Create();
        spList->AddBinding(spGeom);
        spBody->AddData(CSGData_Geometry::Create(spList).get());
        spBody->AddData(spSet.get());
        EXPECT_TRUE(GetSkin(spBody.get())->BindJoints(std::array{spRoot.get()}));
    }

    CNodePtr spRoot = AddNode(nullptr, "root", TURNED);
    CNodePtr spHip = AddNode(spRoot.get(), "hip", STRETCHED);
    CNodePtr spKnee = AddNode(spHip.get(), "knee", TURNED);
    CNodePtr spMirror = AddNode(spRoot.get(), "mirror", MIRRORED);
    CNodePtr spUnused = AddNode(spRoot.get(), "unused", MIRRORED);
    CNodePtr spBody = AddNode(spKnee.get(), "body", STRETCHED);
};

// Carries a point, or a direction, of vertex nVertex from map to map, joint by joint.
CSGFloat3 Deform(const CSGSkinBinding& rSkin, size_t nVertex, const CSGFloat3& rVector,
                 CSGFloat3 (CTransform3::*pMap)(const CSGFloat3&) const)
{
    const CSGFloat3 objBound = (BIND_SHAPE.*pMap)(rVector);
    CSGFloat3 objSum;
    for (const auto& [nJoint, fWeight] : WEIGHTS[nVertex])
    {
        CSGFloat3 v = objBound;
        const CNodePtr spJoint = rSkin.GetJointNode(nJoint);
        v = spJoint ? (rSkin.GetSkin()->GetJoint(nJoint)->GetInverseBindTransform().*pMap)(v) : v;
        for (const CSGNode* pNode = spJoint.get(); pNode != nullptr; pNode = pNode->GetParent())
        {
            v = (pNode->FindData<CSGData_LocalTransform>()->GetTransform().*pMap)(v);
        }
        objSum = objSum + v * fWeight;
    }
    return WEIGHTS[nVertex].empty() ? objBound : objSum;
}

float Dot(const CSGFloat3& a, const CSGFloat3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

void ExpectDeformed(const CSGSkinBinding& rSkin)
{
    std::vector<float> vecPositions, vecNormals, vecAlone;
    ASSERT_TRUE(rSkin.ComputeSkinnedVertices(vecPositions, vecNormals));
    ASSERT_TRUE(rSkin.ComputeSkinnedVertices(vecAlone));
    EXPECT_EQ(vecPositions, vecAlone);
    ASSERT_EQ(vecPositions.size(), 15u);
    const float* pVertex = rSkin.GetGeomBinding()->GetVertexBuffer()->GetData().data();
    for (size_t n = 0; n < WEIGHTS.size(); ++n, pVertex += 6)
    {
        SCOPED_TRACE(n);
        const CSGFloat3 objNormal{pVertex[0], pVertex[1], pVertex[2]};
        const CSGFloat3 d =
            CSGFloat3{vecPositions[3 * n], vecPositions[3 * n + 1], vecPositions[3 * n + 2]} -
            Deform(rSkin, n, {pVertex[3], pVertex[4], pVertex[5]}, &CTransform3::TransformPoint);
        EXPECT_NEAR(Dot(d, d), 0.0f, 1e-8f);
        // A normal stays upright on what was upright to it, and on its own side.
        const CSGFloat3 objDeformed{vecNormals[3 * n], vecNormals[3 * n + 1], vecNormals[3 * n + 2]};
        EXPECT_NEAR(Dot(objDeformed, objDeformed), 1.0f, 1e-5f);
        EXPECT_GT(Dot(objDeformed, Deform(rSkin, n, objNormal, &CTransform3::TransformDir)), 0.0f);
        for (const CSGFloat3& rTangent :
             {CSGFloat3{objNormal.y, -objNormal.x, 0}, CSGFloat3{0, objNormal.z, -objNormal.y}})
        {
            EXPECT_NEAR(Dot(objDeformed, Deform(rSkin, n, rTangent, &CTransform3::TransformDir)), 0, 1e-4f);
        }
    }
}

template <class T>
std::string Bytes(std::initializer_list<T> arrValues)
{
    return {reinterpret_cast<const char*>(arrValues.begin()), arrValues.size() * sizeof(T)};
}

} // namespace

TEST(Skins, DeformVerticesAsThePoseSays)
{
    CCharacter objCharacter;
    const CSGSkinBinding& rSkin = *GetSkin(objCharacter.spBody.get());
    ExpectDeformed(rSkin);
    SetTransform(objCharacter.spHip.get(), MIRRORED);
    ExpectDeformed(rSkin);
    objCharacter.spRoot->RemoveChild(objCharacter.spMirror.get());
    ExpectDeformed(rSkin);
    // A joint that is gone leaves its vertices in the bind shape.
    objCharacter.spMirror.reset();
    ASSERT_FALSE(rSkin.GetJointNode(3));
    ExpectDeformed(rSkin);
}

TEST(Skins, BoundsFollowThePose)
{
    const CCharacter objCharacter;
    const auto spBounds = CSGData_GeomBounds::GetOrCreateFromNode(objCharacter.spBody.get());
    for (const CTransform3& rPose : {STRETCHED, MIRRORED, TURNED})
    {
        SetTransform(objCharacter.spHip.get(), rPose);
        std::vector<float> vecPositions;
        GetSkin(objCharacter.spBody.get())->ComputeSkinnedVertices(vecPositions);
        CSGBoundingBox objBox; // of what the bounds hold, back in the root's space
        for (size_t n = 0; n < vecPositions.size(); n += 3)
        {
            CSGFloat3 v{vecPositions[n], vecPositions[n + 1], vecPositions[n + 2]};
            std::vector<CTransform3> vecAbove;
            for (const CSGNode* p = objCharacter.spBody.get(); p != nullptr; p = p->GetParent())
            {
                vecAbove.insert(vecAbove.begin(), p->FindData<CSGData_LocalTransform>()->GetTransform());
            }
            for (const CTransform3& rTransform : vecAbove)
            {
                CTransform3 objInverse;
                ASSERT_TRUE(rTransform.Inverse(objInverse));
                v = objInverse.TransformPoint(v);
            }
            objBox.Add(v);
        }
        const CSGFloat3 a = spBounds->GetBox().m_objMin - objBox.m_objMin;
        const CSGFloat3 b = spBounds->GetBox().m_objMax - objBox.m_objMax;
        EXPECT_NEAR(Dot(a, a) + Dot(b, b), 0.0f, 1e-6f);
        EXPECT_FALSE(spBounds->GetSphere().IsEmpty());
    }
}

TEST(Skins, JointsAreFoundInTheOrderOfTheRoots)
{
    CCharacter objCharacter;
    const auto spSkin = CSGSkinBinding::Create(GetSkin(objCharacter.spBody.get())->GetSkin(),
                                               GetSkin(objCharacter.spBody.get())->GetGeomBinding());
    const CNodePtr spOther = AddNode(nullptr, "knee", {});
    AddNode(spOther.get(), "hip", {});
    CLogCapture objLog;
    EXPECT_FALSE(
        spSkin->BindJoints(std::array<CSGNode*, 3>{spOther.get(), objCharacter.spHip.get(), nullptr}));
    EXPECT_EQ(objLog.GetLines(),
              (std::vector<std::string>{"1 Failed to find joint node with local name 'mirror'.",
                                        "1 Failed to find joint node with local name 'unused'."}));
    EXPECT_EQ(spSkin->GetJointNode(0), spOther->GetChild(0));
    EXPECT_EQ(spSkin->GetJointNode(1), spOther);
    EXPECT_FALSE(spSkin->GetJointNode(2));
    // What is bound stays bound.
    objCharacter.spKnee->SetLocalName("renamed");
    EXPECT_TRUE(spSkin->BindJoints(std::array{objCharacter.spRoot.get()}));
    EXPECT_EQ(spSkin->GetJointNode(1), spOther);
}

TEST(Skins, CopiesFollowCopiedJoints)
{
    CCharacter objCharacter;
    const CNodePtr spCopy = objCharacter.spRoot->Copy();
    const CSGSkinBinding& rCopy = *GetSkin(spCopy->FindNodeByLocalName("body"));
    EXPECT_EQ(rCopy.GetSkin(), GetSkin(objCharacter.spBody.get())->GetSkin());
    EXPECT_EQ(rCopy.GetJointNode(1), spCopy->FindNodeByLocalName("knee"));
    // A node that is copied without its joints follows the originals, for as long as they are there.
    const CNodePtr spPart = objCharacter.spBody->Copy();
    EXPECT_EQ(GetSkin(spPart.get())->GetJointNode(1), objCharacter.spKnee);
    objCharacter = CCharacter();
    EXPECT_FALSE(GetSkin(spPart.get())->GetJointNode(1));
    ExpectDeformed(*GetSkin(spPart.get()));
    ExpectDeformed(rCopy);
}

TEST(Skins, ComeBackFromAFile)
{
    CCharacter objCharacter;
    const std::string strBytes = Save(objCharacter.spRoot.get());
    const auto spLoaded = boost::dynamic_pointer_cast<CSGNode>(Load(strBytes));
    ASSERT_TRUE(spLoaded);
    const CSGSkinBinding& rLoaded = *GetSkin(spLoaded->FindNodeByLocalName("body"));
    EXPECT_EQ(rLoaded.GetJointNode(0), spLoaded->FindNodeByLocalName("hip"));
    EXPECT_EQ(rLoaded.GetSkin()->GetMaxJointsPerVertex(), 2);
    ExpectDeformed(rLoaded);
    EXPECT_EQ(Save(spLoaded.get()), strBytes);
    // Joints that are not saved come back unbound.
    const auto spPart = Load<CSGNode>(Save(objCharacter.spBody.get()));
    ASSERT_TRUE(spPart);
    EXPECT_FALSE(GetSkin(spPart.get())->GetJointNode(0));
    ExpectDeformed(*GetSkin(spPart.get()));
}

TEST(Skins, LoseTheJointsThatNoVertexFollows)
{
    const CCharacter objCharacter;
    const auto spReduced = GetSkin(objCharacter.spBody.get())->CreateWithoutUnusedJoints();
    ASSERT_EQ(spReduced->GetNumJoints(), 4);
    EXPECT_EQ(spReduced->GetJointNode(3), objCharacter.spMirror);
    ExpectDeformed(*spReduced);
}

TEST(SkinVertexWeights, AreNormalisedOrRefused)
{
    const struct
    {
        std::vector<float> vecWeights, vecExpected; // none expected: refused
    } arrCases[] = {
        {{2, 0, 6}, {0.25f, 0.75f}},
        {{3e38f, 3e38f}, {0.5f, 0.5f}},
        {{0}, {}},
        {{1, -1}, {}},
        {{-1}, {}},
        {{1, NOT_A_NUMBER}, {}},
        {{INF, 1}, {}},
        {{1e-38f}, {1}},
    };
    for (const auto& [vecWeights, vecExpected] : arrCases)
    {
        SCOPED_TRACE(testing::PrintToString(vecWeights));
        std::vector<CSGSkinWeight> vecRow;
        for (const float fWeight : vecWeights)
        {
            vecRow.push_back({static_cast<int32_t>(vecRow.size()), fWeight});
        }
        EXPECT_EQ(CSGSkinVertexWeights::Normalize(vecRow), !vecExpected.empty());
        const auto spWeights = CSGSkinVertexWeights::Create();
        ASSERT_EQ(spWeights->AddVertex(vecRow), !vecExpected.empty());
        EXPECT_TRUE(std::ranges::equal(spWeights->GetRowWeights(), vecExpected));
    }
    for (const int32_t nJoint : {-1, CSGSkinVertexWeights::MAX_JOINTS})
    {
        EXPECT_FALSE(CSGSkinVertexWeights::Create()->AddVertex(std::array{CSGSkinWeight{nJoint, 1}}));
    }
}

// Spread over split vertices, written as documented, and refused where damaged.
TEST(SkinVertexWeights, AreWrittenAsDocumented)
{
    const auto spMesh = CSGSkinVertexWeights::Create();
    for (const auto& rRow : WEIGHTS)
    {
        spMesh->AddVertex(rRow);
    }
    EXPECT_FALSE(spMesh->CreateSelection(std::array{5}));
    EXPECT_FALSE(spMesh->CreateSelection(std::array{-1}));
    const auto spWeights = spMesh->CreateSelection(std::array{1, 3, 1, 0});
    const std::string strHead = "NEST" + Bytes({2, 1}) + Bytes({0xCDBB57186E21C7E6}) + Bytes({1, 1, 0, 1}) +
                                Bytes({0xCDBB57186E21C7E6});
    const std::string strCounts = Bytes({4, 3, 3}), strRows = Bytes({0, 1, 0, 2}), strSizes = "\2\0\1"s,
                      strJoints = Bytes<uint16_t>({0, 1, 0}), strWeights = Bytes({0.25f, 0.75f, 1.0f});
    const std::string strGood = strCounts + strRows + strSizes + strJoints + strWeights;
    EXPECT_EQ(Save(spWeights.get()), strHead + strGood);
    EXPECT_TRUE(Load(strHead + strGood));
    const std::pair<const char*, std::string> arrDamaged[] = {
        {"more vertices than bytes", Bytes({0x7FFFFFFF, 3, 3}) + strRows + strSizes + strJoints + strWeights},
        {"fewer than no rows", Bytes({4, -1, 3}) + strRows + strSizes + strJoints + strWeights},
        {"more weights than bytes", Bytes({4, 3, 9}) + strRows + strSizes + strJoints + strWeights},
        {"a row that is not there", strCounts + Bytes({0, 1, 3, 2}) + strSizes + strJoints + strWeights},
        {"rows longer than the weights", strCounts + strRows + "\2\0\2"s + strJoints + strWeights},
        {"rows shorter than the weights", strCounts + strRows + "\2\0\0"s + strJoints + strWeights},
        {"not normalised", strCounts + strRows + strSizes + strJoints + Bytes({0.25f, 0.5f, 1.0f})},
        {"not a number", strCounts + strRows + strSizes + strJoints + Bytes({0.25f, NOT_A_NUMBER, 1.0f})},
        {"a joint above all", strCounts + strRows + strSizes + Bytes<uint16_t>({0, 65535, 0}) + strWeights},
        {"too short", strGood.substr(0, strGood.size() - 1)}};
    for (const auto& [szCase, strBody] : arrDamaged)
    {
        EXPECT_FALSE(Load(strHead + strBody)) << szCase;
    }
    // A skin and its geometry have to agree.
    const auto spSkin = [&](size_t nJoints) {
        return CSGSkin::Create({}, std::vector(nJoints, CSGJoint::Create("a", {})), spWeights);
    };
    EXPECT_FALSE(spSkin(1));
    ASSERT_TRUE(spSkin(2));
    EXPECT_FALSE(CSGSkinBinding::Create(spSkin(2), MakeTriangles({}, MakeVertices({0, 0, 0}))));
}
