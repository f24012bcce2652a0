// What shading gets of a light, and the records of lights and environments byte for byte.

#include "qdscenegraph/light/CSGData_LightEnv.h"
#include "qdscenegraph/light/CSGData_LightSet.h"
#include "qdscenegraph/light/CSGData_RenderEnv.h"
#include "qdscenegraph/light/CSGLight_Ambient.h"
#include "qdscenegraph/light/CSGLight_Directional.h"
#include "qdscenegraph/light/CSGLight_Point.h"
#include "qdscenegraph/light/CSGLight_Spot.h"
#include "qdscenegraph/material/CSGParamTmpl.h"
#include "qdscenegraph/node/CSGNode.h"
#include "support/NestTestFile.h"

namespace
{

using CLightPtr = boost::intrusive_ptr<CSGLight>;

struct CLights
{
    CLightPtr m_spAmbient = CSGLight_Ambient::Create("a", {0.1f, 0.2f, 0.3f, 0.5f});
    CLightPtr m_spSun = CSGLight_Directional::Create("sun", {2, 3, 4, 1});
    CLightPtr m_spPoint = CSGLight_Point::Create("p", {1, 1, 0, 1}, {1, 2, 3});
    CLightPtr m_spSpot = CSGLight_Spot::Create("s", {0, 1, 0, 1}, {4, 5, 6}, {50, 0.25f});
};

} // namespace

TEST(CSGLight, SetsUpTheWholeState)
{
    const CLights l;
    // A quarter turn about X (Y becomes Z, Z becomes -Y, so that -Z becomes Y), doubled, then a move.
    const CTransform3 objWorld = {{{{2, 0, 0}, {0, 0, 2}, {0, -2, 0}}}, {5, 6, 7}};
    const CTransform3 objFlat = {{{{1, 0, 0}, {0, 1, 0}, {0, 0, 0}}}, {}};
    struct CCase
    {
        CLightPtr spLight;
        CTransform3 objWorld;
        CSGLightState objExpected;
    };
    const CCase arrCases[] = {
        {l.m_spAmbient, objWorld, {{0.1f, 0.2f, 0.3f, 1}, {0, 0, 0, 0}, 1, 0, 0, 0, 0, {0, 0, -1}, 180, 1}},
        {l.m_spSun, objWorld, {{2, 3, 4, 1}, {0, -1, 0, 0}, 1, 0, 0, 0, 0, {0, 0, -1}, 180, 1}},
        {l.m_spSun, objFlat, {{2, 3, 4, 1}, {0, 0, 1, 0}, 1, 0, 0, 0, 0, {0, 0, -1}, 180, 1}},
        {l.m_spPoint, objWorld, {{1, 1, 0, 1}, {5, 6, 7, 1}, 1, 2, 3, 0, 0, {0, 0, -1}, 180, 1}},
        {l.m_spSpot, objWorld, {{0, 1, 0, 1}, {5, 6, 7, 1}, 4, 5, 6, 0.25f, 0, {0, 1, 0}, 25, 1}},
    };
    std::vector<CSGLightState> vecStates(1);
    for (const CCase& rCase : arrCases)
    {
        const auto spLights = CSGData_LightSet::Create();
        ASSERT_TRUE(spLights->AddLight(rCase.spLight));
        spLights->SetupLightStates(rCase.objWorld, vecStates);
        EXPECT_EQ(vecStates.back(), rCase.objExpected) << rCase.spLight->GetName().c_str();
        // What was in the state before does not stay.
        rCase.spLight->SetupLightState(vecStates.front(), rCase.objWorld);
        EXPECT_EQ(vecStates.front(), rCase.objExpected);
    }
    EXPECT_EQ(vecStates.size(), 1 + std::size(arrCases));
}

TEST(CSGLight, RecordsAndSharing)
{
    const CLights l;
    const auto spNode = CSGNode::Create("n", "");
    const auto spSet = CSGData_LightSet::Create();
    for (const CLightPtr& rspLight : {l.m_spAmbient, l.m_spSun, l.m_spPoint, l.m_spSpot, l.m_spSun})
    {
        ASSERT_TRUE(spSet->AddLight(rspLight));
    }
    const auto spEnv = CSGData_LightEnv::Create();
    ASSERT_TRUE(spEnv->AddLight(l.m_spSpot) && spNode->AddData(spSet.get()) && spNode->AddData(spEnv.get()));
    const std::string strFile = Save(spNode.get());
    const std::string strSet = I({5, 2, 3, 4, 5, 3});
    for (const std::string& rRecord :
         {G<CSGData_LightSet>() + strSet + G<CSGLight_Ambient>() + S("a") + F({0.1f, 0.2f, 0.3f}) +
              G<CSGLight_Directional>() + S("sun") + F({2, 3, 4}) + G<CSGLight_Point>() + S("p") +
              F({1, 1, 0, 1, 2, 3}) + G<CSGLight_Spot>() + S("s") + F({0, 1, 0, 4, 5, 6, 50, 0.25f}),
          G<CSGData_LightEnv>() + I({1, 5})})
    {
        EXPECT_NE(strFile.find(rRecord), std::string::npos);
    }
    const auto spLoaded = Load<CSGNode>(strFile);
    ASSERT_TRUE(spLoaded);
    EXPECT_EQ(Save(spLoaded.get()), strFile);
    const auto* pSet = spLoaded->FindData<CSGData_LightSet>();
    EXPECT_EQ(pSet->GetLight(1), pSet->GetLight(4));
    EXPECT_EQ(pSet->GetLight(5), nullptr);
    EXPECT_EQ(spLoaded->Copy()->FindData<CSGData_LightSet>(), pSet);

    for (const std::string& rDamaged : {I({0x7FFFFFFF, 2, 3, 4, 5, 3}), I({5, -1, 3, 4, 5, 3}),
                                        I({5, 0, 3, 4, 5, 3}), I({5, 2, 3, 4, 1, 3})})
    {
        std::string strDamaged = strFile;
        EXPECT_FALSE(LoadSet(strDamaged.replace(strDamaged.find(strSet), strSet.size(), rDamaged)));
    }
}

TEST(CSGData_RenderEnv, KeepsItsNamesInFilesAndItsParametersToItself)
{
    const auto spNode = CSGNode::Create("n", "");
    const auto spEnv = CSGData_RenderEnv::Create();
    spEnv->SetBackgroundColor({0.5f, 0.25f, 0, 1});
    ASSERT_TRUE(spEnv->AddParam("fog", CSGParamTmpl<float>::Create("x", 7.0f)));
    ASSERT_TRUE(spEnv->AddParam("steps", CSGParamTmpl<int>::Create("y", 3)) && spNode->AddData(spEnv.get()));
    CLogCapture objLog;
    EXPECT_FALSE(spEnv->AddParam("fog", CSGParamTmpl<int>::Create("z", 1)));
    EXPECT_TRUE(objLog.HasLine("1 Already had param named 'fog'"));

    const std::string strFile = Save(spNode.get());
    const std::string strRecord =
        F({0.5f, 0.25f, 0, 1}) + I(2) + S("fog") + I(2) + S("steps") + I(3) + G<CSGParamTmpl<float>>();
    const size_t nRecord = strFile.find(G<CSGData_RenderEnv>() + strRecord);
    ASSERT_NE(nRecord, std::string::npos);
    const auto spLoaded = Load<CSGNode>(strFile);
    ASSERT_TRUE(spLoaded);
    EXPECT_EQ(Save(spLoaded.get()), strFile);
    auto* pLoaded = spLoaded->FindData<CSGData_RenderEnv>();
    const auto spCopy = spLoaded->Copy();
    EXPECT_TRUE(pLoaded->FindParam("steps")->SetValueAs<int>(4));
    EXPECT_EQ(spCopy->FindData<CSGData_RenderEnv>()->FindParam("steps")->GetValueAs<int>(), 3);
    EXPECT_EQ(spCopy->FindData<CSGData_RenderEnv>()->GetBackgroundColor(), (CColor{0.5f, 0.25f, 0, 1}));
    EXPECT_EQ(pLoaded->FindParam("x"), nullptr);

    for (const auto& [nOffset, nValue] : {std::pair(24, 0x10000000), std::pair(35, 0), std::pair(35, -1)})
    {
        std::string strDamaged = strFile;
        EXPECT_FALSE(LoadSet(strDamaged.replace(nRecord + static_cast<size_t>(nOffset), 4, I(nValue))));
    }
}
