// Posing, cutting and saving animations, and what is said of channels that do not fit.

#include "qdscenegraph/animation/CSGAnimation.h"

#include "AnimTestScene.h"
#include "qdcommon/CFileStream.h"
#include "qdscenegraph/nest/CSGNestReader.h"
#include "qdscenegraph/nest/CSGNestWriter.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"

#include <bit>
#include <cmath>

namespace
{

std::string I(int32_t nValue) { return {reinterpret_cast<const char*>(&nValue), sizeof(nValue)}; }
std::string S(const std::string& rText) { return I(static_cast<int32_t>(rText.size())) + rText; }
std::string F(float fValue) { return I(std::bit_cast<int32_t>(fValue)); }

std::string Save(CSGResourceSet* pSet)
{
    const CTempFile objFile("saved.nest");
    EXPECT_TRUE(CSGNestWriter::Create()->SaveResourceSet(objFile.GetName(), pSet));
    return objFile.ReadBytes();
}

boost::intrusive_ptr<CSGResourceSet> Load(const std::string& rBytes)
{
    const CTempFile objFile("loaded.nest", rBytes);
    const auto spReader = CSGNestReader::Create();
    return spReader->LoadFile(objFile.GetName()) ? spReader->m_spResourceSet : nullptr;
}

// The bytes with another text at an offset of the first place of a text.
std::string Change(std::string strBytes, const std::string& rPlace, size_t nOffset, const std::string& rNew)
{
    const size_t nPlace = strBytes.find(rPlace);
    EXPECT_NE(nPlace, std::string::npos);
    return strBytes.replace(nPlace + nOffset, rNew.size(), rNew);
}

} // namespace

TEST(CSGAnimation, PosesWhatItsChannelsLeadTo)
{
    const CAnimTestScene s;
    const auto spHide = CSGAnimChannel::Create("v", MakeCurve({1}, {0}), CSGRefPath::ForVisibility("box"));
    const auto spAnimation =
        CSGAnimation::Create({MakeChannel("p", "pos", TARGET_ALL, {0, 10, 20}, {4, 10, 30}),
                              MakeChannel("y", "pos", TARGET_Y, {-1}, {-3}),
                              MakeChannel("r", "rot", TARGET_ANGLE, {0}, {1}), spHide},
                             2, 5);
    EXPECT_TRUE(spAnimation->CanAnimate(s.m_spRoot.get()));
    EXPECT_TRUE(spAnimation->PoseModel(s.m_spRoot.get())) << "at its begin time, which is not 0";
    EXPECT_EQ(s.m_spPos->GetTranslation(), (CSGFloat3{2, -2, 25}));
    EXPECT_EQ(s.m_spRot->GetAngle(), 0.5f);
    EXPECT_TRUE(s.m_spBox->IsVisible());
    EXPECT_TRUE(spAnimation->PoseModelAtTime(s.m_spRoot.get(), 3));
    EXPECT_EQ(s.m_spPos->GetTranslation(), (CSGFloat3{4, -3, 30}));
    EXPECT_FALSE(s.m_spBox->IsVisible());
}

TEST(CSGAnimation, SaysWhichChannelDoesNotFit)
{
    const CAnimTestScene s;
    const auto spGood = MakeChannel("x", "pos", TARGET_X, {1}, {1});
    const auto spNarrow = MakeChannel("c", "pos", TARGET_ALL, {1}, {2});
    const auto spLost = MakeChannel("l", "none", TARGET_X, {1}, {2});
    const auto spKeyless = CSGAnimChannel::Create(
        "k", CSGAnimSampler::Create(0, 1, CSGAnimSampler::INTERP_STEP), spGood->GetTargetRef());
    EXPECT_FALSE(spNarrow->CanAnimate(s.m_spRoot.get()) || spLost->CanAnimate(s.m_spRoot.get()));
    CLogCapture objLog;
    const auto spAnimation = CSGAnimation::Create({spNarrow, spLost, nullptr, spKeyless, spGood}, 0, 1);
    EXPECT_FALSE(spAnimation->PoseModel(s.m_spRoot.get()));
    EXPECT_EQ(s.m_spPos->GetTranslation(), (CSGFloat3{1, 8, 9})) << "the good one";
    for (const char* szLine :
         {"1 In channel c, got target from node root with 3 outputs, but required 1 outputs instead.",
          "1 Can't resolve target for path:", "1   from node:", "1 Failed to pose with channel:",
          "1 spTarget is NULL", "1 Call UpdateOutputAbsoluteTime(spTarget.get(), fTime) failed"})
    {
        EXPECT_TRUE(objLog.HasLine(szLine)) << szLine;
    }
    EXPECT_TRUE(objLog.Contains("7     CSGAnimChannel: 0x"));

    objLog.Clear();
    const auto spFive =
        CSGAnimChannel::Create("", MakeCurve({1, 2, 3, 4, 5}, {1, 2, 3, 4, 5}), spGood->GetTargetRef());
    EXPECT_FALSE(spFive->UpdateOutputAbsoluteTime(spGood->GetTarget(s.m_spRoot.get()).get(), 1));
    EXPECT_EQ(CSGAnimation::Create({}, 0, 1), nullptr);
    EXPECT_EQ(CSGAnimation::Create({spGood}, 1, 0), nullptr);
    EXPECT_EQ(CSGAnimation::Create({spGood, spKeyless}), nullptr);
    EXPECT_EQ(spAnimation->Slice(NAN, 1), nullptr);
    EXPECT_EQ(spAnimation->GetChannel(5), nullptr);
    EXPECT_EQ(objLog.GetLines(),
              (std::vector<std::string>{
                  "1 Unsupported number of outputs: 5", "1 !rListChannels.empty() is false",
                  "1 fBeginTime <= fEndTime is false", "1 spSampler->GetKeyCount() > 0 is false",
                  "1 fBeginTime <= fEndTime is false", "1 Creation of spAnimation failed",
                  "1 nIndex < GetNumChannels() is false"}));
}

TEST(CSGAnimation, SlicesShareChannelsButNotTheirList)
{
    const CSGAnimation::CChannelList vecChannels = {MakeChannel("a", "pos", TARGET_X, {0}, {1}),
                                                    MakeChannel("b", "pos", TARGET_Y, {0}, {1}),
                                                    MakeChannel("a", "pos", TARGET_Z, {0}, {1})};
    ASSERT_TRUE(vecChannels[1]->GetSampler()->SetKeyTime(1, 9));
    const auto spWhole = CSGAnimation::Create(vecChannels);
    EXPECT_EQ(spWhole->GetEndTime() - spWhole->GetBeginTime(), 8);
    const auto spSlice = spWhole->Slice(2, 2);
    spWhole->RemoveChannel("none");
    EXPECT_EQ(spWhole->GetNumChannels(), 3);
    spWhole->RemoveChannel("a");
    EXPECT_EQ(spWhole->GetNumChannels(), 1);
    EXPECT_EQ(spSlice->GetNumChannels(), 3);
    EXPECT_EQ(spSlice->GetChannel(1), spWhole->GetChannel(0));
}

TEST(CSGAnimation, RecordsAndSharing)
{
    const CAnimTestScene s;
    const auto spWalk = CSGAnimation::Create({MakeChannel("box/pos.X", "pos", TARGET_X, {5}, {6}),
                                              MakeChannel("r", "rot", TARGET_ANGLE, {0}, {1})},
                                             1, 3);
    spWalk->SetName("walk");
    const auto spSlice = spWalk->Slice(2, 3);
    s.AddLayer(spSlice, 0.5f)->SetMask({"box", ""});
    s.GetLayer(0)->SetLooping(false);
    const auto spSet = CSGResourceSet::Create();
    ASSERT_TRUE(spSet->AddTopLevelNode(s.m_spRoot.get()) && spSet->AddTopLevelNode(spWalk.get()));

    // 0 root, 1 stack, 2 layer, 3 slice, 4 channel, 5 sampler, 6 path, 7 to 10 references, 11 channel.
    const std::string strFile = Save(spSet.get());
    const std::string strLayer = S("layer") + F(0.5f) + I(0) + I(3) + I(2) + S("box") + S("");
    const std::string strSlice = S("walk") + F(2) + F(3) + I(2) + I(4) + I(11);
    const std::string strChannel = S("box/pos.X") + I(5) + I(6);
    for (const std::string& rRecord :
         {I(1) + I(2), strLayer, strSlice, strChannel, S("walk") + F(1) + F(3) + I(2) + I(4) + I(11)})
    {
        EXPECT_NE(strFile.find(rRecord), std::string::npos);
    }
    const auto spLoaded = Load(strFile);
    ASSERT_TRUE(spLoaded);
    EXPECT_EQ(Save(spLoaded.get()), strFile);
    // A copy has a layer of its own with the same animation.
    const CSGNode* pLoaded = spLoaded->GetFirstNode();
    const CNodePtr spCopy = spLoaded->GetSceneGraph();
    CSGAnimLayer* pLayer = pLoaded->FindData<CSGData_AnimStack>()->FindLayer("layer");
    const CSGAnimLayer* pCopiedLayer = spCopy->FindData<CSGData_AnimStack>()->GetLayer(0);
    EXPECT_EQ(pLayer->GetAnimation(), pCopiedLayer->GetAnimation());
    pLayer->RenameInMask("box", "crate");
    EXPECT_EQ(pCopiedLayer->GetMask(), (CSGAnimLayer::CMask{"box", ""}));
    EXPECT_EQ(pCopiedLayer->GetWeight(), 0.5f);
    EXPECT_FALSE(pCopiedLayer->IsLooping());

    const struct
    {
        const std::string& rRecord;
        size_t nOffset;
        std::string strNew;
    } arrDamages[] = {{strLayer, 17, I(-1)},  {strLayer, 17, I(2)},       {strLayer, 21, I(1 << 30)},
                      {strSlice, 16, I(-1)},  {strSlice, 16, I(1 << 30)}, {strSlice, 8, F(NAN)},
                      {strSlice, 20, I(-1)},  {strSlice, 24, I(5)},       {strSlice, 20, I(11) + I(-1)},
                      {strChannel, 13, I(6)}, {strChannel, 13, I(-1)},    {strChannel, 17, I(5)},
                      {strChannel, 17, I(-1)}};
    for (const auto& rDamage : arrDamages)
    {
        EXPECT_FALSE(Load(Change(strFile, rDamage.rRecord, rDamage.nOffset, rDamage.strNew)))
            << (&rDamage - arrDamages);
    }
}

// Empty animations: the first version's record is the second's with eight bytes before the count. One of an
// unknown version is taken for the second.
TEST(CSGAnimation, ReadsOtherVersions)
{
    const auto spSet = CSGResourceSet::Create();
    ASSERT_TRUE(spSet->AddTopLevelNode(CSGMem::Construct<CSGAnimation>()));
    const std::string strFile = Save(spSet.get());
    const size_t nVersion = 4 + 4 + 4 + 8;
    std::string strOld = strFile;
    strOld.replace(nVersion, 4, I(1)).insert(strOld.size() - 4, I(1) + F(2));
    EXPECT_FALSE(Load(strOld.substr(0, strOld.size() - 8)));
    const auto spLoaded = Load(strOld);
    ASSERT_TRUE(spLoaded);
    EXPECT_EQ(Save(spLoaded.get()), strFile);

    const CTempFile objFile("record", S("walk") + F(1) + F(3) + I(0));
    CFileStream objStream(objFile.GetName(), CFileStream::OPEN_READ);
    CSGStreamableLoadState objState;
    objState.SetVersionBeingLoaded(CSGAnimation::GetStaticSGStreamableType(), 5);
    const CSGAnimation::CAnimationPtr spNewer = CSGMem::Construct<CSGAnimation>();
    CLogCapture objLog;
    EXPECT_TRUE(spNewer->ReadFromStream(&objStream, &objState));
    EXPECT_EQ(objLog.GetLines(), std::vector<std::string>{"1 Unexpected version 5 of CSGAnimation."});
    EXPECT_EQ(spNewer->GetEndTime(), 3);

    // The first version of a channel has no name.
    const auto spChannel = MakeChannel("box/pos.X", "pos", TARGET_X, {5}, {6});
    spSet->ClearAnimations();
    ASSERT_TRUE(spSet->AddTopLevelNode(spChannel.get()));
    std::string strChannel = Save(spSet.get());
    strChannel.replace(nVersion, 4, I(1)).erase(strChannel.find(S("box/pos.X")), S("box/pos.X").size());
    spChannel->SetName("");
    const auto spNameless = Load(strChannel);
    ASSERT_TRUE(spNameless);
    EXPECT_EQ(Save(spNameless.get()), Save(spSet.get()));
}
