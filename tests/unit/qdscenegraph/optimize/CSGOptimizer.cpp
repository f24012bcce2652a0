// Which transforms the optimiser leaves, and that nothing moves: neither as the scene stands nor when posed.

#include "qdscenegraph/optimize/CSGOptimizer.h"
#include "qdscenegraph/animation/CSGAnimation.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGData_WorldTransform.h"
#include "qdscenegraph/transform/CSGXFrm_List.h"
#include "qdscenegraph/transform/CSGXFrm_Rotate.h"
#include "qdscenegraph/transform/CSGXFrm_Translate.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <map>

namespace
{

using CTransformPtr = CSGTransform::CTransformPtr;

// Transforms are texts. A letter is a transform of that name: "t" translates, "b" undoes it, "r" rotates, "i"
// does nothing. What stands in "[...]" is a list of its own, the same one wherever the text is the same.
CTransformPtr Build(const std::string& rText, std::map<std::string, CTransformPtr>& rLists)
{
    std::vector<CTransformPtr> vecTransforms;
    for (size_t n = 0; n < rText.size(); ++n)
    {
        if (rText[n] == '[')
        {
            const std::string strInside = rText.substr(n + 1, rText.find(']', n) - n - 1);
            CTransformPtr& rspList = rLists[strInside];
            rspList = rspList ? rspList : Build(strInside, rLists);
            vecTransforms.push_back(rspList);
            n += strInside.size() + 1;
            continue;
        }
        const float fMove = rText[n] == 'b' ? -1.0f : 1.0f;
        const float fAngle = std::tolower(rText[n]) == 'i' ? 0.0f : 0.7f;
        vecTransforms.push_back(CSGXFrm_Translate::Create({fMove, -2 * fMove, 3 * fMove}));
        if (std::string("tTb").find(rText[n]) == std::string::npos)
        {
            vecTransforms.back() = CSGXFrm_Rotate::Create({1, 2, -1}, fAngle);
        }
        vecTransforms.back()->SetName(rText.substr(n, 1));
    }
    return vecTransforms.size() == 1 ? vecTransforms.front() : CSGXFrm_List::Create(vecTransforms);
}

// The text of a transform; what has no name is a matrix, "m".
std::string Describe(const CSGTransform* pTransform)
{
    const auto* pProduct = dynamic_cast<const CSGTransformProduct*>(pTransform);
    if (pProduct == nullptr)
    {
        return pTransform->GetName().empty() ? "m" : pTransform->GetName().c_str();
    }
    std::string strText = "(";
    for (int32_t n = 0; n < pProduct->GetNumTransforms(); ++n)
    {
        strText += Describe(pProduct->GetTransformObject(n));
    }
    return strText + ")";
}

void ExpectSamePlaces(CSGNode* pOne, CSGNode* pTwo)
{
    for (int32_t n = 0; n < pOne->GetChildrenSize(); ++n)
    {
        const auto* pWorld = CSGData_WorldTransform::GetOrCreateFromNode(pOne->GetChild(n));
        const auto* pOther = CSGData_WorldTransform::GetOrCreateFromNode(pTwo->GetChild(n));
        const CSGFloat3 a = pWorld->GetTransform().TransformPoint({1, 2, 3});
        const CSGFloat3 b = pOther->GetTransform().TransformPoint({1, 2, 3});
        EXPECT_LT(std::hypot(a.x - b.x, a.y - b.y, a.z - b.z), 1e-5f) << n;
    }
}

} // namespace

TEST(CSGOptimizer, FewestTransforms)
{
    // The node's name and what the channels that name it write; without: the text, and its capitals.
    const struct
    {
        std::string strBefore;
        std::string strAfter;
        std::string strName = strBefore;
        std::string strAnimated = strBefore;
    } arrCases[] = {
        {"i", ""},
        {"tb", ""},
        {"t", "t"},
        {"iit", "t"},
        {"tri", "m"},
        {"[tr]t", "m"},
        {"T", "T"},
        {"TI", "(TI)"},
        {"iTi", "T"},
        {"tRt", "(tRt)"},
        {"trRtt", "(mRm)"},
        {"tbTrib", "(Tm)"},
        {"t[rbTt][bR]t", "(mTRt)"},
        // A name stands for all nodes that have it, and for no other.
        {"tTrR", "(tTm)", "a", "T"},
        {"TrtR", "(Tm)", "a", ""},
        {"tTrR", "m", "b", ""},
        // What is animated through one node stays in the other, and what is shared stays shared.
        {"t[R]", "(tR)", "c", "R"},
        {"[R]tr", "(Rm)", "d", ""},
        {"[trTit]", "(mTt)", "e", "T"},
        {"[trTit]", "(mTt)", "f", ""},
        {"[rtR]ib", "((mR)b)", "g", "R"},
        {"tr[rtR]", "(m(mR))", "h", ""},
    };
    const auto spSampler = CSGAnimSampler::Create(2, 1, CSGAnimSampler::INTERP_LINEAR);
    spSampler->SetKeyData(std::vector<float>{0, 1}, std::vector<float>{0.5f, 2});
    CSGAnimation::CChannelList vecChannels;
    const auto spRoot = CSGNode::Create("", "");
    const auto spOriginal = CSGNode::Create("", ""); // a copy would not share what its nodes share
    std::map<std::string, CTransformPtr> arrLists[2];
    for (const auto& rCase : arrCases)
    {
        for (CSGNode* pRoot : {spRoot.get(), spOriginal.get()})
        {
            const auto spTransform = Build(rCase.strBefore, arrLists[pRoot == spRoot ? 0 : 1]);
            const auto spNode = CSGNode::Create(rCase.strName, "");
            spNode->AddData(CSGData_LocalTransform::Create(spTransform).get());
            pRoot->AddChild(spNode.get());
        }
        for (const char c : rCase.strAnimated)
        {
            const ETarget eTarget = c == 'T' ? TARGET_Y : TARGET_ANGLE;
            const auto spPath = CSGRefPath::ForTransform(rCase.strName, std::string(1, c), eTarget);
            vecChannels.resize(vecChannels.size() + (std::isupper(c) ? 2 : 0), // of several clips
                               CSGAnimChannel::Create("", spSampler, spPath));
        }
    }
    const auto spAnimation = CSGAnimation::Create(vecChannels);
    ExpectSamePlaces(spOriginal.get(), spRoot.get());
    for (int nRun = 0; nRun < 2; ++nRun) // the second one changes nothing
    {
        ASSERT_TRUE(CSGOptimizer::OptimizeNonTargetTransforms(spRoot.get(), {nullptr, spAnimation.get()}));
        ExpectSamePlaces(spOriginal.get(), spRoot.get());
        for (int32_t n = 0; n < spRoot->GetChildrenSize(); ++n)
        {
            const auto* pLocal = spRoot->GetChild(n)->FindData<CSGData_LocalTransform>();
            EXPECT_EQ(pLocal != nullptr ? Describe(pLocal->GetTransformObject()) : "", arrCases[n].strAfter)
                << arrCases[n].strBefore;
        }
    }
    for (const float fTime : {0.0f, 0.3f, 5.0f})
    {
        ASSERT_TRUE(spAnimation->PoseModelAtTime(spOriginal.get(), fTime));
        ASSERT_TRUE(spAnimation->PoseModelAtTime(spRoot.get(), fTime));
        ExpectSamePlaces(spOriginal.get(), spRoot.get());
    }
}

TEST(CSGOptimizer, SharedListsAreVisitedOnce)
{
    // Each list stands in the next one twice.
    CTransformPtr spList = CSGXFrm_Rotate::Create({0, 0, 1}, 0.0f);
    for (int n = 0; n < 60; ++n)
    {
        spList = CSGXFrm_List::Create({{spList, spList}});
    }
    const auto spNode = CSGNode::Create("", "");
    spNode->AddData(CSGData_LocalTransform::Create(spList).get());
    ASSERT_TRUE(CSGOptimizer::OptimizeNonTargetTransforms(spNode.get(), {}));
    EXPECT_EQ(spNode->FindData<CSGData_LocalTransform>(), nullptr);
}
