// Resource sets: what they hand out, and what they say when they cannot.

#include "qdscenegraph/resource/CSGResourceSet.h"

#include "qdscenegraph/animation/CSGData_AnimStack.h"
#include "support/CLogCapture.h"
#include "support/CTestData.h"

#include <gtest/gtest.h>

TEST(ResourceSet, HandsOutCopies)
{
    const auto spSet = CSGResourceSet::Create();
    const CNodePtr spRoot = MakeNode("root");
    const CNodePtr spA = MakeNode("a", spRoot.get());
    const CNodePtr spB = MakeNode("b", spA.get());
    ASSERT_TRUE(spSet->AddTopLevelNode(spRoot.get()));
    ASSERT_TRUE(spSet->AddTopLevelNode(spRoot.get())) << "listed twice";
    EXPECT_EQ(spSet->GetNumTopLevelNodes(), 2);
    EXPECT_EQ(spSet->GetFirstNode(), spRoot.get());
    const CNodePtr spCopy = spSet->GetSceneGraph();
    EXPECT_NE(spCopy, spRoot);
    EXPECT_NE(spCopy, spSet->GetSceneGraph());
    EXPECT_EQ(Describe(spSet->GetSceneGraphWithIgnores({spB.get()}).get()), "root(a)");
    EXPECT_EQ(Describe(spSet->GetNodeWithIgnores("a", {}).get()), "a(b)");
    EXPECT_EQ(spSet->GetNode("b"), spB.get());

    CLogCapture objLog;
    EXPECT_EQ(spSet->GetNode("c"), nullptr);
    EXPECT_EQ(spSet->GetNodeWithIgnores("a", {spA.get()}), nullptr);
    EXPECT_EQ(spSet->GetSceneGraphWithIgnores({spRoot.get()}), nullptr);
    EXPECT_TRUE(objLog.HasLine("1 Couldn't find descendant with name 'c'"));
    EXPECT_TRUE(objLog.HasLine("1 Failed to copy node 'a'"));
    EXPECT_TRUE(objLog.HasLine("1 Failed to copy scene graph"));
}

TEST(ResourceSet, WithoutASceneGraph)
{
    CLogCapture objLog;
    const auto spSet = CSGResourceSet::Create();
    EXPECT_EQ(spSet->GetFirstNode(), nullptr);
    EXPECT_FALSE(spSet->AddTopLevelNode(nullptr));
    const boost::intrusive_ptr<CSGAnimation> spAnimation = CSGMem::Construct<CSGAnimation>();
    ASSERT_TRUE(spSet->AddTopLevelNode(spAnimation.get()));
    EXPECT_EQ(spSet->GetSceneGraph(), nullptr);
    EXPECT_EQ(objLog.GetLines(), (std::vector<std::string>{"1 Empty resource set.", "1 pNode is NULL",
                                                           "1 pOriginal is NULL", "1 pOriginal is NULL"}));
    std::vector<CSGAnimation*> vecAnimations;
    EXPECT_TRUE(spSet->GetAnimations(vecAnimations));
    EXPECT_EQ(vecAnimations, std::vector<CSGAnimation*>{spAnimation.get()});
}

TEST(ResourceSet, RenamesTheFirstNodeOfAName)
{
    const auto spSet = CSGResourceSet::Create();
    const CNodePtr spRoot = CSGNode::Create("root", "root");
    const CNodePtr spA = MakeNode("a", spRoot.get());
    const CNodePtr spSecond = MakeNode("a", spRoot.get());
    ASSERT_TRUE(spSet->AddTopLevelNode(spRoot.get()));
    EXPECT_TRUE(spSet->RenameNode("a", "b"));
    EXPECT_EQ(Describe(spRoot.get()), "root(b,a)");
    EXPECT_EQ(spA->GetLocalName().GetView(), "local a");
    EXPECT_TRUE(spSet->RenameNode("root", "top"));
    EXPECT_EQ(spRoot->GetLocalName().GetView(), "top");
    CLogCapture objLog;
    EXPECT_FALSE(spSet->RenameNode("none", "b"));
    EXPECT_EQ(objLog.GetLines(), std::vector<std::string>{"1 Couldn't find descendant with name 'none'"});
}

TEST(ResourceSet, RenamesAnimations)
{
    const auto spSet = CSGResourceSet::Create();
    ASSERT_TRUE(spSet->AddTopLevelNode(MakeNode("walk").get()));
    const boost::intrusive_ptr<CSGAnimation> arrAnimations[] = {CSGMem::Construct<CSGAnimation>(),
                                                                CSGMem::Construct<CSGAnimation>()};
    arrAnimations[0]->SetName("walk");
    arrAnimations[1]->SetName("run");
    for (const auto& spAnimation : arrAnimations)
    {
        ASSERT_TRUE(spSet->AddTopLevelNode(spAnimation.get()));
    }
    CLogCapture objLog;
    EXPECT_TRUE(spSet->RenameAnimation("none", "none"));
    EXPECT_FALSE(spSet->RenameAnimation("none", "walk"));
    EXPECT_FALSE(spSet->RenameAnimation("walk", "run"));
    EXPECT_EQ(arrAnimations[0]->GetName().GetView(), "walk");
    EXPECT_TRUE(spSet->RenameAnimation("walk", "stroll"));
    EXPECT_EQ(arrAnimations[0]->GetName().GetView(), "stroll");
    EXPECT_EQ(objLog.GetLines(),
              (std::vector<std::string>{"4 Ignoring attempt to rename 'none' to 'none' (same name)",
                                        "1 Didn't find animation named 'none'",
                                        "1 Animation with name 'run' already exists."}));
}

TEST(ResourceSet, AnimationsFindARenamedNode)
{
    const auto spSet = CSGResourceSet::Create();
    const CNodePtr spRoot = MakeNode("root");
    const CNodePtr spBox = MakeNode("box", spRoot.get());
    CSGAnimation::CAnimationPtr arrAnimations[2]; // "walk" is listed, the other is played
    for (auto& rspAnimation : arrAnimations)
    {
        const auto spSampler = CSGAnimSampler::Create(1, 1, CSGAnimSampler::INTERP_STEP);
        rspAnimation = CSGAnimation::Create(
            {CSGAnimChannel::Create("", spSampler, CSGRefPath::ForVisibility("box"))}, 0, 1);
    }
    const auto& [spWalk, spRun] = arrAnimations;
    spWalk->SetName("walk");
    const auto spLayer = CSGAnimLayer::Create("", spRun);
    spLayer->SetMask({"box"});
    const auto spStack = CSGData_AnimStack::Create();
    ASSERT_TRUE(spStack->AddLayer(spLayer) && spRoot->AddData(spStack.get()));
    ASSERT_TRUE(spSet->AddTopLevelNode(spRoot.get()) && spSet->AddTopLevelNode(spWalk.get()));

    ASSERT_TRUE(spSet->RenameNode("box", "crate"));
    EXPECT_TRUE(spWalk->PoseModel(spRoot.get()));
    EXPECT_FALSE(spBox->IsVisible()) << "the curve is 0";
    EXPECT_TRUE(spRun->CanAnimate(spRoot.get()));
    EXPECT_EQ(spLayer->GetMask(), CSGAnimLayer::CMask{"crate"});

    EXPECT_TRUE(spSet->HasAnimation("walk") && !spSet->HasAnimation(""));
    spSet->ClearAnimations();
    EXPECT_EQ(spSet->GetNumTopLevelNodes(), 1);
}
