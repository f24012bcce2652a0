#include "qdscenegraph/material/CSGData_ParamSet.h"
#include "qdscenegraph/material/CSGParamTmpl.h"
#include "support/CLogCapture.h"

#include <gtest/gtest.h>

namespace
{

CSGParamPtr MakeFloat(const char* szName, float fValue = 0)
{
    return CSGParamTmpl<float>::Create(szName, fValue);
}

float GetFloat(const CSGParamSetPtr& spSet, const char* szName)
{
    const CSGParamPtr spParam = spSet->GetParam(szName);
    return spParam ? spParam->GetValueAs<float>() : -1.0f;
}

} // namespace

TEST(CSGParamSet, AParameterStandsInOneSetUnderOneName)
{
    const CSGParamSetPtr spSet = CSGParamSet::Create(), spOther = CSGParamSet::Create();
    const CSGParamPtr spA = MakeFloat("a"), spSameName = MakeFloat("a");
    ASSERT_TRUE(spSet->AddParam(MakeFloat("first")));
    ASSERT_TRUE(spSet->AddParam(spA));
    const struct
    {
        std::function<bool()> fnCall;
        std::vector<std::string> vecLines;
    } arrCases[] = {
        {[&] { return spSet->AddParam(nullptr); }, {"1 Handed in NULL spObjParam"}},
        {[&] { return spSet->AddParam(spSameName); },
         {"1 m_mapNameToIndex.find(rStrName) == m_mapNameToIndex.end() is false",
          "1 Already had param named 'a'"}},
        {[&] { return spOther->AddParam(spA); },
         {"1 Already had a Param set in a of type 0.",
          "1 Call spObjParam->NotifyAddedToParamSet(this) failed"}},
        {[&] { return spA->NotifyAddedToParamSet(nullptr); }, {"1 Handed in NULL Param set to a of type 0."}},
        {[&] { return spA->NotifyRemovedFromParamSet(spOther.get()); },
         {"1 Param a of type 0 was in different set than that handed in."}},
        {[&] { return spSet->RemoveParam(nullptr); }, {"1 Handed in NULL spObjParam"}},
        {[&] { return spOther->RemoveParam(spA); }, {"1 itIndex != m_mapNameToIndex.end() is false"}},
        {[&] { return spSet->RemoveParam(spSameName); },
         {"1 m_objParams.GetElement(nIndex) == spObjParam is false"}},
    };
    for (const auto& r : arrCases)
    {
        CLogCapture objLog;
        EXPECT_FALSE(r.fnCall()) << r.vecLines[0];
        EXPECT_EQ(objLog.GetLines(), r.vecLines);
        EXPECT_EQ(spSet->GetParam("a"), spA);
        EXPECT_EQ(spOther->GetParam("a"), nullptr);
    }
    EXPECT_TRUE(spSet->RemoveParam(spA));
    EXPECT_EQ(spSet->GetParam("a"), nullptr);
    EXPECT_TRUE(spOther->AddParam(spA));
}

TEST(CSGParamSet, FallsBackToItsBase)
{
    const CSGParamSetPtr spSet = CSGParamSet::Create(), spBase = CSGParamSet::Create(),
                         spLast = CSGParamSet::Create();
    spLast->AddParam(MakeFloat("a", 1));
    spLast->AddParam(MakeFloat("b", 2));
    spBase->AddParam(MakeFloat("b", 3));
    EXPECT_TRUE(spBase->SetBaseParams(spLast));
    EXPECT_TRUE(spSet->SetBaseParams(spBase));
    EXPECT_FALSE(spLast->SetBaseParams(spSet)) << "a circle";
    EXPECT_EQ(GetFloat(spSet, "a"), 1);
    EXPECT_EQ(GetFloat(spSet, "b"), 3);
    EXPECT_TRUE(spSet->AddParam(MakeFloat("a", 4)));
    EXPECT_EQ(GetFloat(spSet, "a"), 4);
    EXPECT_EQ(GetFloat(spSet, "c"), -1);

    // A copy has parameters of its own, and no base.
    const auto spData = CSGData_ParamSet::Create(spSet);
    const boost::intrusive_ptr<CSGData> spCopy = spData->CreateCopy(nullptr);
    const CSGParamSetPtr spCopied = static_cast<CSGData_ParamSet*>(spCopy.get())->GetParamSet();
    spSet->GetParam("a")->SetValueAs(5.0f);
    EXPECT_EQ(GetFloat(spCopied, "a"), 4);
    EXPECT_EQ(GetFloat(spCopied, "b"), -1);

    CLogCapture objLog;
    EXPECT_FALSE(spSet->GetParam("a")->SetValueAs<int>(2));
    EXPECT_EQ(spSet->GetParam("a")->GetValueAs<CSGSamplerPtr>(), nullptr);
    EXPECT_EQ(objLog.GetLines().size(), 2u);
    EXPECT_FALSE(spCopied->CopyShallow(spSet));
    EXPECT_EQ(objLog.GetLines().back(), "1 Call AddParam(spParamCopy) failed");
    EXPECT_FALSE(spData->WriteToStream(nullptr, nullptr));
    EXPECT_EQ(objLog.GetLines().back(), "4 Implement me!");
}

TEST(CSGParamSet, SamplersOfTheBaseFollowTheOwn)
{
    const auto AddSampler = [](const CSGParamSetPtr& spSet, const char* szName,
                               const CSGSamplerPtr& spSampler) {
        EXPECT_TRUE(spSet->AddParam(CSGParamTmpl<CSGSamplerPtr>::Create(szName, spSampler)));
    };
    const CSGSamplerPtr spA = CSGMem::Construct<CSGSampler>(), spB = CSGMem::Construct<CSGSampler>();
    const CSGParamSetPtr spSet = CSGParamSet::Create(), spBase = CSGParamSet::Create();
    AddSampler(spBase, "shadowed", spB);
    AddSampler(spSet, "z", spA);
    AddSampler(spSet, "null", nullptr);
    spSet->AddParam(MakeFloat("float"));
    AddSampler(spSet, "shadowed", spA);
    spSet->SetBaseParams(spBase);
    std::vector<CSGSamplerPtr> vecSamplers;
    EXPECT_TRUE(spSet->GetSamplers(vecSamplers));
    EXPECT_EQ(vecSamplers, (std::vector{spA, spA, spB}));
}

TEST(CSGParam, DebugLines)
{
    const CSGParamSetPtr spSet = CSGParamSet::Create(), spBase = CSGParamSet::Create();
    const std::pair<CSGParamPtr, std::string> arrCases[] = {
        {CSGParamTmpl<CSGFloat2>::Create("p", {1, 2}), "(1 float2) Name: p Value: [1.000 2.000]"},
        {CSGParamTmpl<CSGFloat3>::Create("p", {1, 2, 3}), "(2 float3) Name: p Value: [1.000 2.000 3.000]"},
        {CSGParamTmpl<CMatrix3>::Create("p", {}), "(4 float3x3) Name: p Value: "},
        {CSGParamTmpl<CMatrix4>::Create("p", {}), "(5 float4x4) Name: p Value: "},
        {CSGParamTmpl<int>::Create("p", 7), "(6 int) Name: p Value: 7"},
        {CSGParamTmpl<CSGSurfacePtr>::Create("p", nullptr), "(7 Surface) Name: p"},
        {CSGParamTmpl<CSGLightState>::Create("p", {}), "(9 LightData) Name: p"},
        {CSGParamTmpl<CSGMaterialState>::Create("p", {}), "(10 MaterialData) Name: p"},
    };
    CLogCapture objLog;
    for (const auto& [spParam, strLine] : arrCases)
    {
        objLog.Clear();
        spParam->OutputDebugInfo(">");
        EXPECT_EQ(objLog.GetLines()[0], "7 >Param " + strLine);
    }
    spSet->SetBaseParams(spBase);
    spBase->AddParam(arrCases[4].first);
    objLog.Clear();
    spSet->OutputDebugInfo(">");
    EXPECT_EQ(objLog.GetLines()[1], "7 >  Base Params:");
    EXPECT_EQ(objLog.GetLines()[3], "7 >      Param (6 int) Name: p Value: 7");
}
