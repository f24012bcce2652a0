// From stacks by way of layers and curve nodes to the curves of properties.
#include "support/FBXTestScene.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

namespace
{

constexpr const char* SCENE = R"(
Objects: {
    Model: 1, "Model::A", "Null" { Properties70: { P: "Lcl Translation", "", "", "A", 1,2,3 } }
    AnimationStack: 10, "AnimStack::S", "" { Properties70: {
        P: "Description", "KString", "", "", "walk"
        P: "LocalStart", "KTime", "Time", "", 46186158000
        P: "LocalStop", "KTime", "Time", "", 92372316000 } }
    AnimationLayer: 11, "AnimLayer::L", "" { }
    AnimationLayer: 12, "AnimLayer::M", "" { }
    AnimationCurveNode: 20, "AnimCurveNode::T", "" { Properties70: {
        P: "d|X", "Number", "", "A", 7
        P: "d|Y", "Number", "", "A", 8 } }
    AnimationCurveNode: 21, "AnimCurveNode::T", "" { Properties70: { P: "d|X", "Number", "", "A", 70 } }
    AnimationCurveNode: 22, "AnimCurveNode::Visibility", "" { }
    AnimationCurve: 30, "AnimCurve::y", "" {
        KeyTime: *2 { a: 0,46186158000 }
        KeyValueFloat: *2 { a: 0,10 }
        KeyAttrFlags: *1 { a: 4 }
        KeyAttrRefCount: *1 { a: 2 } }
    AnimationCurve: 31, "AnimCurve::keyless", "" { Default: 5 }
    AnimationCurve: 32, "AnimCurve::v", "" {
        KeyTime: *1 { a: 0 }
        KeyValueFloat: *1 { a: 0.5 } }
}
Connections: {
    C: "OO",1,0
    C: "OO",11,10
    C: "OO",12,10
    C: "OO",21,11
    C: "OO",20,11
    C: "OO",22,11
    C: "OP",21,1,"Lcl Translation"
    C: "OP",20,1,"Lcl Translation"
    C: "OP",22,1,"Visibility"
    C: "OP",30,20,"d|Y"
    C: "OP",31,20,"d|Z"
    C: "OP",32,22,"d|Visibility"
})";

TEST(FbxAnimLayer, FindsWhatDrivesAProperty)
{
    const CFBXTestScene objScene(SCENE);
    const FbxNode* pNode = objScene.FindNode("A");
    const FbxAnimStack* pStack = objScene.Find<FbxAnimStack>("S");
    ASSERT_TRUE(pNode != nullptr && pStack != nullptr) << objScene.GetError();
    EXPECT_EQ(pStack->GetDescription(), "walk");
    EXPECT_EQ(pStack->GetLocalTimeSpan().m_objStart.GetSecondDouble(), 1);
    EXPECT_EQ(pStack->GetLocalTimeSpan().m_objStop.GetSecondDouble(), 2);
    ASSERT_EQ(pStack->GetLayers().size(), 2u);
    const FbxAnimLayer* pLayer = pStack->GetLayers().front();
    EXPECT_EQ(pLayer->GetCurveNodes().size(), 3u);

    // The curve node without curves comes first, but does not animate.
    EXPECT_EQ(pLayer->GetCurveNode(pNode, "Lcl Translation"), objScene->FindObject(20));
    EXPECT_EQ(pLayer->GetCurve(pNode, "Lcl Translation", "Y"), objScene->FindObject(30));
    EXPECT_EQ(pLayer->GetCurve(pNode, "Lcl Translation", "X"), nullptr);
    EXPECT_EQ(pLayer->GetCurve(pNode, "Lcl Translation", "Z"), nullptr);
    EXPECT_EQ(pLayer->GetCurve(pNode, "Lcl Rotation", "X"), nullptr);
    EXPECT_EQ(pLayer->GetCurve(pNode, "Visibility"), objScene->FindObject(32));

    // A curve, the curve node's own value, and the default of a curve without keys.
    FbxDouble3 objValue{-1, -1, -1};
    EXPECT_TRUE(pLayer->Evaluate(pNode, "Lcl Translation", FbxTime::FromSeconds(0.25), objValue));
    EXPECT_EQ(objValue, (FbxDouble3{7, 2.5, 5}));
    objValue = {-1, -1, -1};
    EXPECT_FALSE(pStack->GetLayers().back()->Evaluate(pNode, "Lcl Translation", FbxTime(), objValue));
    EXPECT_EQ(objValue, (FbxDouble3{-1, -1, -1}));
}

// What a file says of its animated properties, by their names, at many times.
std::map<std::string, std::vector<double>> ReadMotion(const std::string& rFile)
{
    std::map<std::string, std::vector<double>> mapMotion;
    const std::unique_ptr<FbxManager> spManager = FbxManager::Create();
    const std::unique_ptr<FbxIOSettings> spSettings = FbxIOSettings::Create(spManager.get(), IOSROOT);
    const std::unique_ptr<FbxImporter> spImporter = FbxImporter::Create(spManager.get());
    FbxScene* pScene = FbxScene::Create(spManager.get(), "sample");
    EXPECT_TRUE(spImporter->Initialize(rFile, spSettings.get()) && spImporter->Import(pScene)) << rFile;
    for (const FbxAnimCurveNode* pCurveNode : pScene->GetObjects<FbxAnimCurveNode>())
    {
        for (const FbxAnimCurveNode::SChannel& rChannel : pCurveNode->GetChannels())
        {
            for (double dSeconds = -0.5; rChannel.pCurve != nullptr && dSeconds < 4; dSeconds += 0.0973)
            {
                const CFBXLink& rLink = pCurveNode->GetDstLinks().back();
                mapMotion[rLink.m_pObject->GetName() + std::string(rLink.m_strProperty) +
                          std::string(rChannel.strName)]
                    .push_back(rChannel.pCurve->Evaluate(FbxTime::FromSeconds(dSeconds)));
            }
        }
    }
    return mapMotion;
}

TEST(FbxAnimLayer, OldAndNewFilesOfASceneMoveAlike)
{
    const std::string strFolder = QDSG_SAMPLES_DIR "/fbx/ufbx__ufbx/data/";
    if (!std::filesystem::is_directory(strFolder))
    {
        GTEST_SKIP() << "no samples";
    }
    const struct
    {
        const char* szOne;
        const char* szOther;
        size_t nCurves;
    } PAIRS[] = {
        {"maya_pivot_offset_7700_ascii.fbx", "maya_pivot_offset_6100_binary.fbx", 40},
        {"maya_anim_extrapolation_7100_binary.fbx", "maya_anim_extrapolation_6100_ascii.fbx", 1},
        {"max2009_cube_anim_6100_binary.fbx", "max2009_cube_anim_5800_ascii.fbx", 9},
        {"motionbuilder_sausage_rrss_7700_ascii.fbx", "motionbuilder_sausage_rrss_7700_binary.fbx", 6},
    };
    for (const auto& [szOne, szOther, nCurves] : PAIRS)
    {
        auto mapOther = ReadMotion(strFolder + szOther);
        EXPECT_EQ(mapOther.size(), nCurves) << szOther;
        for (const auto& [strName, vecValues] : ReadMotion(strFolder + szOne))
        {
            ASSERT_EQ(mapOther[strName].size(), vecValues.size()) << szOther << " " << strName;
            for (size_t n = 0; n < vecValues.size(); ++n)
            {
                EXPECT_NEAR(mapOther[strName][n], vecValues[n], 1e-4)
                    << szOther << " " << strName << " " << n;
            }
        }
    }
}

} // namespace
