// Extraction of skeletons and skinned parts from a character that is made here: two joints in a chain with
// two more at its end, one mesh that is moved off the root, and one that its own skeleton hangs below.

#include "qdscenegraph/animation/CSGAnimation.h"
#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdscenegraph/geometry/CSGGeom_Triangles.h"
#include "qdscenegraph/material/CSGData_Material.h"
#include "qdscenegraph/node/CSGCopyData.h"
#include "qdscenegraph/resource/CSGResourceSet.h"
#include "qdscenegraph/skin/CSGData_SkinBindingSet.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGData_WorldTransform.h"
#include "qdscenegraph/transform/CSGXFrm_Translate.h"
#include "support/CLogCapture.h"
#include "support/CTestData.h"

#include <gtest/gtest.h>

namespace
{

// Joints and weights of a vertex by their names: {{"hip", 0.25f}, {"leg", 0.75f}}.
using CInfluences = std::vector<std::pair<std::string, float>>;

void Move(CSGNode* pNode, float x, const char* szTransform = "move")
{
    const auto spMove = CSGXFrm_Translate::Create({x, 0.0f, 0.0f});
    spMove->SetName(szTransform);
    ASSERT_TRUE(pNode->AddData(CSGData_LocalTransform::Create(spMove).get()));
}

// Triangles with a material at a node.
boost::intrusive_ptr<CSGGeomBinding> Draw(CSGNode* pNode, int32_t nVertices)
{
    CSGVertexFormat objFormat;
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_POSITION, 0, 3);
    const auto spVertices = CSGVertexBuffer::Create(objFormat, nVertices);
    for (int32_t n = 0; n < nVertices; ++n)
    {
        const float arrPosition[] = {static_cast<float>(n), 1.0f, 2.0f};
        spVertices->SetVertMemberData(n, CSGVertexFormat::MEMBER_POSITION, 0, arrPosition, 3);
    }
    const auto spGeom = CSGGeom_Triangles::Create(CSGIndexBuffer::Create(3, nVertices));
    const auto spBinding = CSGGeomBinding::Create(spGeom, spVertices);
    const auto spGeomList = CSGGeomList::Create();
    EXPECT_TRUE(spGeomList->AddBinding(spBinding));
    EXPECT_TRUE(pNode->AddData(CSGData_Geometry::Create(spGeomList).get()));
    const auto spMaterial = CSGMaterial::Create(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                nullptr, "cloth", CSGMaterial::TRANSPARENT_A_ONE, 0);
    EXPECT_TRUE(pNode->AddData(CSGData_Material::Create(spMaterial.get()).get()));
    return spBinding;
}

// The same with a skin over all joints of the character, a row of influences for each vertex.
void Dress(CSGNode* pNode, CSGNode* pRoot, const std::vector<CInfluences>& rvecRows)
{
    const std::vector<std::string> vecNames = {"hip", "chest", "arm", "leg"};
    std::vector<CSGSkin::CJointPtr> vecJoints;
    for (const std::string& rName : vecNames)
    {
        CTransform3 objInverseBind;
        objInverseBind.m_objTranslation.y = static_cast<float>(rName.size());
        vecJoints.push_back(CSGJoint::Create("local " + rName, objInverseBind));
    }
    const auto spWeights = CSGSkinVertexWeights::Create();
    for (const CInfluences& rRow : rvecRows)
    {
        std::vector<CSGSkinWeight> vecWeights;
        for (const auto& [strJoint, fWeight] : rRow)
        {
            const auto nJoint = std::ranges::find(vecNames, strJoint) - vecNames.begin();
            vecWeights.push_back({static_cast<int32_t>(nJoint), fWeight});
        }
        ASSERT_TRUE(spWeights->AddVertex(vecWeights));
    }
    const auto spSkin = CSGSkin::Create(CTransform3(), vecJoints, spWeights);
    const auto spBinding = CSGSkinBinding::Create(spSkin, Draw(pNode, static_cast<int32_t>(rvecRows.size())));
    CSGNode* const arrRoots[] = {pRoot};
    ASSERT_TRUE(spBinding->BindJoints(arrRoots));
    const auto spSkins = CSGData_SkinBindingSet::Create();
    ASSERT_TRUE(spSkins->AddBinding(spBinding));
    ASSERT_TRUE(pNode->AddData(spSkins.get()));
}

CSGAnimChannelPtr MakeChannel(const std::string& rNode, float fLast)
{
    const float arrTimes[] = {0.0f, 1.0f};
    const float arrValues[] = {0.0f, fLast};
    const auto spSampler = CSGAnimSampler::Create(2, 1, CSGAnimSampler::INTERP_LINEAR);
    EXPECT_TRUE(spSampler->SetKeyData(arrTimes, arrValues));
    return CSGAnimChannel::Create(rNode + "/move.X", spSampler,
                                  CSGRefPath::ForTransform(rNode, "move", TARGET_X));
}

class SkinnedParts : public testing::Test
{
  protected:
    void SetUp() override
    {
        m_spRoot = MakeNode("scene");
        const CNodePtr spRig = MakeNode("Rig", m_spRoot.get());
        const CNodePtr spHip = MakeNode("hip", spRig.get());
        const CNodePtr spChest = MakeNode("chest", spHip.get());
        const CNodePtr spArm = MakeNode("arm", spChest.get());
        const CNodePtr spHand = MakeNode("hand", spArm.get());
        const CNodePtr spRing = MakeNode("ring", spHand.get());
        const CNodePtr spLeg = MakeNode("leg", spHip.get());
        const CNodePtr spWardrobe = MakeNode("Wardrobe", m_spRoot.get());
        const CNodePtr spSleeve = MakeNode("Sleeve", spWardrobe.get());
        const CNodePtr spSuit = MakeNode("Suit", spWardrobe.get());
        const CNodePtr spTrousers = MakeNode("Trousers", spSuit.get());
        Move(spRig.get(), 10.0f);
        Move(spArm.get(), 1.0f);
        Move(spLeg.get(), 2.0f);
        Move(spWardrobe.get(), 100.0f);
        Move(spSleeve.get(), 5.0f, "own");
        Draw(spRing.get(), 3);
        Dress(spSleeve.get(), m_spRoot.get(),
              {{{"arm", 1.0f}}, {{"chest", 0.25f}, {"arm", 0.75f}}, {{"arm", 1.0f}}});
        Dress(spTrousers.get(), m_spRoot.get(), {{{"leg", 1.0f}}, {{"leg", 1.0f}}, {}});
        Dress(spHip.get(), m_spRoot.get(), {{{"hip", 1.0f}}, {{"leg", 1.0f}}, {{"hip", 1.0f}}});
        m_spSet = CSGResourceSet::Create();
        m_spSet->SetUpAxis(UP_AXIS_Y);
        ASSERT_TRUE(m_spSet->AddTopLevelNode(m_spRoot.get()));
        for (const auto& rNodes : {std::vector<std::string>{"arm"}, {"arm", "leg"}})
        {
            CSGAnimation::CChannelList listChannels;
            for (const std::string& rNode : rNodes)
            {
                listChannels.push_back(MakeChannel(rNode, 8.0f));
            }
            const auto spAnimation = CSGAnimation::Create(listChannels);
            spAnimation->SetName("moves " + rNodes.back());
            ASSERT_TRUE(m_spSet->AddTopLevelNode(spAnimation.get()));
        }
    }

    static CSGSkinBinding* FindSkin(const CSGNode* pRoot, const char* szNode)
    {
        const CSGNode* pNode = pRoot->FindNodeByGlobalName(szNode);
        const auto* pSkins = pNode != nullptr ? pNode->FindData<CSGData_SkinBindingSet>() : nullptr;
        return pSkins != nullptr ? pSkins->GetBinding(0) : nullptr;
    }

    static std::vector<float> Skin(const CSGNode* pRoot, const char* szNode)
    {
        std::vector<float> vecPositions;
        EXPECT_TRUE(FindSkin(pRoot, szNode)->ComputeSkinnedVertices(vecPositions));
        return vecPositions;
    }

    // What the set's animations have of channels, and what becomes of the mesh when they are played.
    static void ComparePoses(const CSGResourceSet& rPart, const CSGResourceSet& rWhole, const char* szNode)
    {
        std::vector<CSGAnimation*> vecOwn;
        std::vector<CSGAnimation*> vecWhole;
        ASSERT_TRUE(rPart.GetAnimations(vecOwn));
        ASSERT_TRUE(rWhole.GetAnimations(vecWhole));
        ASSERT_EQ(vecOwn.size(), vecWhole.size());
        for (size_t n = 0; n < vecOwn.size(); ++n)
        {
            for (const float fTime : {0.0f, 0.5f, 1.0f})
            {
                EXPECT_TRUE(vecOwn[n]->PoseModelAtTime(rPart.GetFirstNode(), fTime));
                EXPECT_TRUE(vecWhole[n]->PoseModelAtTime(rWhole.GetFirstNode(), fTime));
                EXPECT_EQ(Skin(rPart.GetFirstNode(), szNode), Skin(rWhole.GetFirstNode(), szNode));
            }
        }
    }

    CNodePtr m_spRoot;
    boost::intrusive_ptr<CSGResourceSet> m_spSet;
};

TEST_F(SkinnedParts, HaveTheJointsThatTheyNeed)
{
    struct CCase
    {
        const char* szName;
        const char* szTree;
        const char* szSkinned;
        std::vector<std::string> vecJoints;
        int32_t nMaxJointsPerVertex;
        std::vector<int32_t> vecChannels;
        float fPlace; // of the skinned node
    };
    const CCase arrCases[] = {
        {"Sleeve", "scene(Rig(hip(chest(arm))),Sleeve)", "Sleeve", {"chest", "arm"}, 2, {1, 1}, 105.0f},
        {"Suit", "scene(Rig(hip(leg)),Suit(Trousers))", "Trousers", {"leg"}, 1, {0, 1}, 100.0f},
        {"hip", "scene(Rig(hip(leg)))", "hip", {"hip", "leg"}, 1, {0, 1}, 10.0f},
        {"scene",
         "scene(Rig(hip(chest(arm),leg)),Wardrobe(Sleeve,Suit(Trousers)))",
         "hip",
         {"hip", "leg"},
         1,
         {1, 2},
         10.0f},
    };
    const std::string strWhole = Describe(m_spRoot.get());
    for (const CCase& rCase : arrCases)
    {
        SCOPED_TRACE(rCase.szName);
        CLogCapture objLog;
        const auto spPart = m_spSet->GetSkinnedSubResourceSet(rCase.szName);
        ASSERT_TRUE(spPart);
        EXPECT_EQ(objLog.GetLines(),
                  (std::vector<std::string>{"7 -----GetFrankenResourceSet------ 0", "7  done?"}));
        EXPECT_EQ(spPart->GetUpAxis(), UP_AXIS_Y);
        CSGNode* pRoot = spPart->GetFirstNode();
        EXPECT_EQ(Describe(pRoot), rCase.szTree);
        const CSGSkinBinding* pSkin = FindSkin(pRoot, rCase.szSkinned);
        ASSERT_NE(pSkin, nullptr);
        ASSERT_EQ(pSkin->GetNumJoints(), static_cast<int32_t>(rCase.vecJoints.size()));
        for (int32_t n = 0; n < pSkin->GetNumJoints(); ++n)
        {
            EXPECT_EQ(pSkin->GetJointNode(n).get(),
                      pRoot->FindNodeByGlobalName(rCase.vecJoints[static_cast<size_t>(n)]));
        }
        EXPECT_EQ(pSkin->GetSkin()->GetMaxJointsPerVertex(), rCase.nMaxJointsPerVertex);
        CSGNode* pSkinned = pRoot->FindNodeByGlobalName(rCase.szSkinned);
        EXPECT_NE(pSkinned->FindData<CSGData_Material>(), nullptr);
        EXPECT_EQ(CSGData_WorldTransform::GetOrCreateFromNode(pSkinned)->GetTransform().m_objTranslation.x,
                  rCase.fPlace);
        std::vector<CSGAnimation*> vecAnimations;
        ASSERT_TRUE(spPart->GetAnimations(vecAnimations));
        ASSERT_EQ(vecAnimations.size(), 2u);
        for (size_t n = 0; n < 2; ++n)
        {
            EXPECT_EQ(vecAnimations[n]->GetNumChannels(), rCase.vecChannels[n]);
            EXPECT_EQ(vecAnimations[n]->GetName().GetView(), n == 0 ? "moves arm" : "moves leg");
            EXPECT_EQ(vecAnimations[n]->GetEndTime(), 1.0f);
        }
        ComparePoses(*spPart, *m_spSet, rCase.szSkinned);
    }
    EXPECT_EQ(Describe(m_spRoot.get()), strWhole) << "the source stays as it was";
    EXPECT_EQ(FindSkin(m_spRoot.get(), "Sleeve")->GetNumJoints(), 4);
}

// The transform that places a moved node does not hide its own one from animations.
TEST_F(SkinnedParts, KeepTheirOwnTransforms)
{
    const auto spPart = m_spSet->GetSkinnedSubResourceSet("Sleeve");
    ASSERT_TRUE(spPart);
    CSGNode* pRoot = spPart->GetFirstNode();
    const auto spTarget = CSGRefPath::ForTransform("Sleeve", "own", TARGET_X)->ResolveTarget(pRoot);
    ASSERT_TRUE(spTarget);
    const float fPlace = 6.0f;
    EXPECT_TRUE(spTarget->SetTargetValue({&fPlace, 1}));
    CSGNode* pSleeve = pRoot->FindNodeByGlobalName("Sleeve");
    EXPECT_EQ(CSGData_WorldTransform::GetOrCreateFromNode(pSleeve)->GetTransform().m_objTranslation.x,
              106.0f);
}

TEST_F(SkinnedParts, ShareASkeleton)
{
    CSGCopyData objCopyData;
    const CNodePtr spSkeleton = m_spSet->GetSkeletonNode(&objCopyData);
    ASSERT_TRUE(spSkeleton);
    EXPECT_EQ(Describe(spSkeleton.get()), "scene(Rig(hip(chest(arm(hand)),leg)))");
    for (const CSGNode* pNode = spSkeleton.get(); pNode != nullptr;
         pNode = pNode->GetNextInTree(spSkeleton.get()))
    {
        EXPECT_EQ(pNode->FindData<CSGData_Geometry>(), nullptr);
        EXPECT_EQ(pNode->FindData<CSGData_Material>(), nullptr);
        EXPECT_EQ(pNode->FindData<CSGData_SkinBindingSet>(), nullptr);
    }
    for (const char* szName : {"Sleeve", "Suit"})
    {
        const CNodePtr spMesh = m_spSet->GetNodeInSkinBinding(szName, &objCopyData);
        ASSERT_TRUE(spMesh);
        EXPECT_EQ(spMesh->GetParent(), nullptr);
        const CSGSkinBinding* pSkin =
            FindSkin(spMesh.get(), szName == std::string("Suit") ? "Trousers" : szName);
        ASSERT_NE(pSkin, nullptr);
        for (int32_t n = 0; n < pSkin->GetNumJoints(); ++n)
        {
            EXPECT_TRUE(spSkeleton->IsDescendant(pSkin->GetJointNode(n).get()));
        }
    }
}

TEST_F(SkinnedParts, CannotBeMadeOfEverything)
{
    const auto spPlain = CSGResourceSet::Create();
    ASSERT_TRUE(spPlain->AddTopLevelNode(MakeNode("box").get()));
    CLogCapture objLog;
    CSGCopyData objCopyData;
    EXPECT_FALSE(spPlain->GetSkeletonNode(&objCopyData));
    EXPECT_FALSE(m_spSet->GetNodeInSkinBinding("none", &objCopyData));
    const CQDCompactString arrNames[] = {"Sleeve", "ring", "Suit"};
    std::vector<boost::intrusive_ptr<CSGResourceSet>> vecParts;
    EXPECT_FALSE(m_spSet->GetSkinnedSubResourceSets(arrNames, vecParts));
    EXPECT_FALSE(m_spSet->GetSkinnedSubResourceSet("none"));
    EXPECT_TRUE(objLog.HasLine("1 No skin below node 'box' is bound to a skeleton."));
    EXPECT_TRUE(objLog.HasLine("1 Node 'ring' has no skin, nor has any node below it."));
    EXPECT_TRUE(objLog.HasLine("7 -----GetFrankenResourceSet------ 1"));
    EXPECT_FALSE(objLog.HasLine("7 -----GetFrankenResourceSet------ 2"));
    EXPECT_TRUE(objLog.HasLine("1 Couldn't find descendant with name 'none'"));
}

} // namespace
