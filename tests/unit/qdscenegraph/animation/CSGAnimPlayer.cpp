// Layers played on a scene: their clocks, and values worked out by hand.

#include "qdscenegraph/animation/CSGAnimPlayer.h"

#include "AnimTestScene.h"

#include <cmath>

TEST(CSGAnimLayer, FollowsItsClock)
{
    const struct
    {
        double fTime;
        float fLooping, fHeld;
    } arrCases[] = {{0, 1, 1},       {0.5, 1.5f, 1.5f}, {2, 1, 3},        {5, 2, 3},
                    {-0.5, 2.5f, 1}, {-4, 1, 1},        {INFINITY, 3, 3}, {86400.25 * 365, 2.25f, 3}};
    const CAnimTestScene s;
    CSGAnimLayer* pLayer = s.AddLayer(CSGAnimation::Create({MakeChannel("x", "pos", TARGET_X, {0}, {1})}));
    EXPECT_EQ(pLayer->GetAnimationTime(), 1) << "without a clock";
    const auto spTime = CSGAnimTimeSource::Create();
    pLayer->SetTimeSource(spTime);
    for (const auto& rCase : arrCases)
    {
        spTime->SetTime(rCase.fTime);
        pLayer->SetLooping(true);
        EXPECT_EQ(pLayer->GetAnimationTime(), rCase.fLooping) << rCase.fTime;
        pLayer->SetLooping(false);
        EXPECT_EQ(pLayer->GetAnimationTime(), rCase.fHeld) << rCase.fTime;
    }
    spTime->SetTime(1);
    spTime->SetRate(-0.5);
    spTime->Advance(3);
    spTime->SetPaused(true);
    spTime->Advance(100);
    EXPECT_EQ(spTime->GetTime(), -0.5);
}

TEST(CSGAnimPlayer, BlendsLayersByTheirWeights)
{
    const CAnimTestScene s;
    // The channel of a layer that comes last counts.
    s.AddLayer(CSGAnimation::Create({MakeChannel("old", "pos", TARGET_X, {99}, {99}),
                                     MakeChannel("x", "pos", TARGET_X, {0}, {8}),
                                     MakeChannel("y", "pos", TARGET_Y, {1}, {3})}));
    for (const float fX : {100.0f, -20.0f})
    {
        s.AddLayer(CSGAnimation::Create({MakeChannel("x", "pos", TARGET_X, {fX}, {fX})}));
    }
    const auto spPlayer = CSGAnimPlayer::Create(s.m_spRoot.get());
    ASSERT_TRUE(spPlayer);
    // Half-way through: x is 4 of the low layer, 100 and -20 above it; y is 2.
    const struct
    {
        float arrWeights[3];
        CSGFloat3 vExpected;
    } arrCases[] = {{{1, 0, 0}, {4, 2, 9}},         {{1, 0.25f, 0}, {28, 2, 9}},
                    {{1, 0.25f, 0.5f}, {4, 2, 9}},  {{1, 1, 0.5f}, {40, 2, 9}},
                    {{1, 1, 1}, {-20, 2, 9}},       {{0.5f, 0.25f, 0}, {28, 2, 9}},
                    {{0, 0.25f, 0.5f}, {40, 0, 9}}, {{0, 0, 0}, {-1, 0, 9}}};
    for (const auto& rCase : arrCases)
    {
        s.m_spPos->SetTranslation({-1, 0, 9});
        for (int32_t n = 0; n < 3; ++n)
        {
            s.GetLayer(n)->SetWeight(rCase.arrWeights[n]);
        }
        spPlayer->GetTimeSource()->SetTime(0.5);
        spPlayer->GetTimeSource()->Advance(0.5);
        EXPECT_TRUE(spPlayer->Update());
        EXPECT_EQ(s.m_spPos->GetTranslation(), rCase.vExpected) << (&rCase - arrCases);
    }
    // A clock of its own, ahead of the player's.
    s.GetLayer(0)->SetTimeSource(CSGAnimTimeSource::Create());
    s.GetLayer(0)->GetTimeSource()->SetTime(1.5);
    s.GetLayer(0)->SetWeight(1);
    EXPECT_TRUE(spPlayer->Update());
    EXPECT_EQ(s.m_spPos->GetTranslation(), (CSGFloat3{6, 2.5f, 9}));
}

// Turns about Z by 0.6, 1.4 and 2, the latter two by either quaternion: each blend is half-way between two of
// the same length.
TEST(CSGAnimPlayer, BlendsQuaternionsOnTheShorterArc)
{
    for (const float fSign : {1.0f, -1.0f})
    {
        const CAnimTestScene s;
        for (const auto& [fTurn, fTurnSign] :
             {std::pair(0.3f, 1.0f), std::pair(0.7f, fSign), std::pair(1.0f, fSign)})
        {
            const std::vector<float> vecTurn = {0, 0, fTurnSign * std::sin(fTurn),
                                                fTurnSign * std::cos(fTurn)};
            s.AddLayer(CSGAnimation::Create({MakeChannel("q", "rot", TARGET_QUAT, vecTurn, vecTurn)}), 0.5f);
        }
        EXPECT_TRUE(CSGAnimPlayer::Create(s.m_spRoot.get())->Update());
        EXPECT_NEAR(s.m_spRot->GetAngle() * s.m_spRot->GetAxis().z, 1.5f, 1e-6f);
    }
}

TEST(CSGAnimPlayer, PlaysTheChannelsOfAMask)
{
    using CMask = CSGAnimLayer::CMask;
    for (const auto& [vecMask, vExpected] :
         {std::pair(CMask{"x"}, CSGFloat3{1, 8, 9}), std::pair(CMask{"none", "y"}, CSGFloat3{7, 2, 9}),
          std::pair(CMask{"box"}, CSGFloat3{1, 2, 9}), std::pair(CMask{"root"}, CSGFloat3{7, 8, 9})})
    {
        const CAnimTestScene s;
        s.AddLayer(CSGAnimation::Create({MakeChannel("x", "pos", TARGET_X, {1}, {1}),
                                         MakeChannel("y", "pos", TARGET_Y, {2}, {2})}))
            ->SetMask(vecMask);
        EXPECT_TRUE(CSGAnimPlayer::Create(s.m_spRoot.get())->Update());
        EXPECT_EQ(s.m_spPos->GetTranslation(), vExpected);
    }
}
