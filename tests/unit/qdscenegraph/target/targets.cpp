// What each animation target writes, what it leaves alone, and what it refuses.

#include "qdscenegraph/material/CSGParamTmpl.h"
#include "qdscenegraph/target/CSGATFTarget.h"
#include "qdscenegraph/target/CSGATF_Param.h"
#include "qdscenegraph/target/CSGATF_ParamSwizzle.h"
#include "qdscenegraph/target/CSGATF_Visible.h"
#include "qdscenegraph/target/CSGATF_XFrmRotate_Angle.h"
#include "qdscenegraph/target/CSGATF_XFrmRotate_Quat.h"
#include "qdscenegraph/target/CSGATF_XFrmScale.h"
#include "qdscenegraph/target/CSGATF_XFrmTransform3.h"
#include "qdscenegraph/target/CSGATF_XFrmTranslate.h"
#include "support/CLogCapture.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <functional>
#include <numbers>
#include <numeric>

namespace
{

// Counts how often a transform says that it has changed.
class CChangeCount : public CSGDirtyGraphNode
{
  public:
    explicit CChangeCount(CSGDirtyGraphNode* pSource) { m_objLink.Connect(pSource); }
    void MarkDirty() override { ++m_nChanges; }
    int m_nChanges = 0;

  private:
    CSGDirtyGraphLink m_objLink{this};
};

std::vector<float> Count(size_t nCount)
{
    std::vector<float> vecFloats(nCount);
    std::iota(vecFloats.begin(), vecFloats.end(), 0.0f);
    return vecFloats;
}

} // namespace

TEST(AnimationTargets, TransformsAreWrittenOnceAndOnlyWhereMeant)
{
    const float fHalf = std::numbers::sqrt2_v<float>; // of a quaternion that is twice as long as it should be
    const struct
    {
        CSGTransform::CTransformPtr spTransform;
        ETarget eTarget;
        std::vector<float> vecValue;
        std::array<float, 12> arrExpected; // three rows, then the translation
    } arrCases[] = {
        {CSGXFrm_Translate::Create({1, 2, 3}), TARGET_ALL, {4, 5, 6}, {1, 0, 0, 0, 1, 0, 0, 0, 1, 4, 5, 6}},
        {CSGXFrm_Translate::Create({1, 2, 3}), TARGET_X, {9}, {1, 0, 0, 0, 1, 0, 0, 0, 1, 9, 2, 3}},
        {CSGXFrm_Translate::Create({1, 2, 3}), TARGET_Y, {9}, {1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 9, 3}},
        {CSGXFrm_Translate::Create({1, 2, 3}), TARGET_Z, {9}, {1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 2, 9}},
        {CSGXFrm_Scale::Create({1, 2, 3}), TARGET_ALL, {4, 5, 6}, {4, 0, 0, 0, 5, 0, 0, 0, 6, 0, 0, 0}},
        {CSGXFrm_Scale::Create({1, 2, 3}), TARGET_X, {9}, {9, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0}},
        {CSGXFrm_Scale::Create({1, 2, 3}), TARGET_Y, {9}, {1, 0, 0, 0, 9, 0, 0, 0, 3, 0, 0, 0}},
        {CSGXFrm_Scale::Create({1, 2, 3}), TARGET_Z, {9}, {1, 0, 0, 0, 2, 0, 0, 0, 9, 0, 0, 0}},
        // A quarter turn about Z takes X to Y, and one about X takes Y to Z.
        {CSGXFrm_Rotate::Create({0, 0, 5}, 0.1f),
         TARGET_ANGLE,
         {std::numbers::pi_v<float> / 2},
         {0, 1, 0, -1, 0, 0, 0, 0, 1, 0, 0, 0}},
        {CSGXFrm_Rotate::Create({0, 0, 1}, 0.1f),
         TARGET_QUAT,
         {fHalf, 0, 0, fHalf},
         {1, 0, 0, 0, 0, 1, 0, -1, 0, 0, 0, 0}},
        {CSGXFrm_Transform3::Create({}), TARGET_ALL, Count(16), {0, 4, 8, 1, 5, 9, 2, 6, 10, 12, 13, 14}},
    };
    for (const auto& rCase : arrCases)
    {
        SCOPED_TRACE(rCase.spTransform->GetTypeInfo()->GetName() + CSGATFTarget::GetName(rCase.eTarget));
        const CChangeCount objChanges(rCase.spTransform.get());
        const CSGATFPtr spTarget = CSGATFTarget::Create(rCase.spTransform.get(), rCase.eTarget);
        ASSERT_TRUE(spTarget);
        EXPECT_EQ(spTarget->GetOutputCount(), static_cast<int32_t>(rCase.vecValue.size()));
        EXPECT_TRUE(spTarget->SetTargetValue(rCase.vecValue));
        EXPECT_EQ(objChanges.m_nChanges, 1);
        EXPECT_TRUE(spTarget->SetTargetValue(rCase.vecValue));
        EXPECT_EQ(objChanges.m_nChanges, 1);
        const auto arrResult = std::bit_cast<std::array<float, 12>>(rCase.spTransform->GetTransform());
        for (size_t n = 0; n < arrResult.size(); ++n)
        {
            EXPECT_NEAR(arrResult[n], rCase.arrExpected[n], 1e-6f) << n;
        }
        EXPECT_FALSE(spTarget->SetTargetValue(Count(rCase.vecValue.size() + 1)));
    }
}

TEST(AnimationTargets, AnythingButZeroShowsANode)
{
    const auto spNode = CSGNode::Create("", "");
    const CSGATFPtr spTarget = CSGATF_Visible::Create(spNode.get());
    const std::pair<float, bool> arrCases[] = {{-0.0f, false}, {std::nanf(""), true}, {0.0f, false},
                                               {1e-40f, true}, {-0.0f, false},        {-1.0f, true}};
    for (const auto& [fValue, bVisible] : arrCases)
    {
        EXPECT_TRUE(spTarget->SetTargetValue({{fValue}}));
        EXPECT_EQ(spNode->IsVisible(), bVisible) << fValue;
    }
}

TEST(AnimationTargets, ParametersWholeAndByFloat)
{
    const auto spFloat4 = CSGParamTmpl<CSGFloat4>::Create("", {1, 2, 3, 4});
    const auto spMatrix = CSGParamTmpl<CMatrix4>::Create("", {});
    EXPECT_TRUE(CSGATFTarget::Create(spMatrix.get(), TARGET_ALL)->SetTargetValue(Count(16)));
    EXPECT_EQ(spMatrix->GetValue().m[1][2], 6.0f);
    const std::pair<ETarget, CSGFloat4> arrCases[] = {{TARGET_R, {9, 2, 3, 4}}, {TARGET_G, {1, 9, 3, 4}},
                                                      {TARGET_B, {1, 2, 9, 4}}, {TARGET_A, {1, 2, 3, 9}},
                                                      {TARGET_X, {9, 2, 3, 4}}, {TARGET_Z, {1, 2, 9, 4}}};
    for (const auto& [eTarget, objExpected] : arrCases)
    {
        EXPECT_TRUE(CSGATFTarget::Create(spFloat4.get(), TARGET_ALL)->SetTargetValue({{1, 2, 3, 4}}));
        EXPECT_TRUE(CSGATFTarget::Create(spFloat4.get(), eTarget)->SetTargetValue({{9}}));
        EXPECT_EQ(spFloat4->GetValue(), objExpected) << CSGATFTarget::GetName(eTarget);
    }
}

TEST(AnimationTargets, RefusalsNameTheirReason)
{
    const auto spFloat3 = CSGParamTmpl<CSGFloat3>::Create("", {});
    const auto spInt = CSGParamTmpl<int>::Create("", 1);
    const auto spMove = CSGXFrm_Translate::Create({});
    const auto fnSwizzle = [](CSGParam* pParam, int32_t nIndex) {
        return CSGATF_ParamSwizzle::Create(pParam, nIndex) != nullptr;
    };
    const auto fnMade = [](CSGStreamable* pObject, int32_t nTarget) {
        return CSGATFTarget::Create(pObject, static_cast<ETarget>(nTarget)) != nullptr;
    };
    const auto fnSet = [](const CSGATFPtr& spTarget, size_t nCount) {
        return spTarget->SetTargetValue(Count(nCount));
    };
    const std::pair<std::function<bool()>, const char*> arrCases[] = {
        {[&] { return fnSwizzle(nullptr, 0); }, "Handed in NULL param."},
        {[&] { return fnSwizzle(spInt.get(), 0); },
         "Handed in param of invalid type 6 that wasn't a number of floats."},
        {[&] { return fnSwizzle(spFloat3.get(), 3); },
         "Handed in invalid index 3 for float3 param.  Must greater than or equal to 0 and less than 3"},
        {[&] { return fnSwizzle(spFloat3.get(), -1); },
         "Handed in invalid index -1 for float3 param.  Must greater than or equal to 0 and less than 3"},
        {[&] { return fnMade(spMove.get(), TARGET_ANGLE); },
         "A CSGXFrm_Translate has no part ANGLE (8) that can be animated."},
        {[&] { return fnMade(spFloat3.get(), -7); },
         "A CSGParamTmpl<CSGFloat3> has no part UNKNOWN (-7) that can be animated."},
        {[&] { return fnSet(CSGATF_Param::Create(spFloat3.get()), 4); },
         "m_spObjParam->GetType() == CSGParam::PARAM_TYPE_FLOAT4 is false"},
        {[&] { return fnSet(CSGATF_Param::Create(spInt.get()), 5); }, "Unsupported number of outputs: 5"},
        {[&] { return fnSet(CSGATF_Param::Create(nullptr), 1); }, "m_spObjParam is NULL"},
        {[&] { return fnSet(CSGATF_Visible::Create(nullptr), 1); }, "m_spObjNode is NULL"},
        {[&] { return fnSet(CSGATF_XFrmTransform3::Create(nullptr), 16); }, "m_spObjTransform is NULL"},
        {[&] { return fnSet(CSGATF_XFrmRotate_Quat::Create(nullptr), 4); }, "m_spTransform is NULL"},
        {[&] { return fnSet(CSGATF_XFrmRotate_Angle::Create(nullptr), 1); }, "Had NULL transform."},
        {[&] { return fnSet(CSGATF_XFrmTranslate_X::Create(nullptr), 1); }, "Had NULL transform."},
    };
    for (const auto& [fnRefused, szLine] : arrCases)
    {
        CLogCapture objLog;
        EXPECT_FALSE(fnRefused());
        EXPECT_EQ(objLog.GetLines(), std::vector{std::string("1 ") + szLine});
    }
}
