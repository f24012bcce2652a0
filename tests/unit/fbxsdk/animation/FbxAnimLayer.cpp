// From stacks by way of layers and curve nodes to the curves of properties.
#include "support/FBXTestScene.h"

#include <gtest/gtest.h>

namespace
{

TEST(FbxAnimLayer, FindsWhatDrivesAProperty)
{
    const CFBXTestScene objScene(
        Object("Model", 1, "A", "Null", Properties({"Lcl Translation 1,2,3"})) +
            Object("AnimationStack", 10, "S", "",
                   Properties({"Description \"walk\"", "LocalStart 46186158000", "LocalStop 92372316000"})) +
            Object("AnimationLayer", 11, "L") + Object("AnimationLayer", 12, "M") +
            Object("AnimationCurveNode", 20, "T", "", Properties({"d|X 7", "d|Y 8"})) +
            Object("AnimationCurveNode", 21, "T", "", Properties({"d|X 70"})) +
            Object("AnimationCurveNode", 22, "Visibility") +
            Object("AnimationCurve", 30, "y", "",
                   "KeyTime: *2 { a: 0,46186158000 }\nKeyValueFloat: *2 { a: 0,10 }\n"
                   "KeyAttrFlags: *1 { a: 4 }\nKeyAttrRefCount: *1 { a: 2 }\n") +
            Object("AnimationCurve", 31, "keyless", "", "Default: 5\n") +
            Object("AnimationCurve", 32, "v", "", "KeyTime: *1 { a: 0 }\nKeyValueFloat: *1 { a: 0.5 }\n"),
        Connect({"1,0", "11,10", "12,10", "21,11", "20,11", "22,11", "21,1,Lcl Translation",
                 "20,1,Lcl Translation", "22,1,Visibility", "30,20,d|Y", "31,20,d|Z", "32,22,d|Visibility"}));
    const FbxNode* pNode = objScene.FindNode("A");
    const FbxAnimStack* pStack = objScene.Find<FbxAnimStack>("S");
    ASSERT_TRUE(pNode != nullptr && pStack != nullptr);
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

} // namespace
