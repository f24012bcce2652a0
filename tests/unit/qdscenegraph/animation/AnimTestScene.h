// A scene to animate, and short ways to write curves and channels for it.
#pragma once

#include "qdscenegraph/animation/CSGData_AnimStack.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGXFrm_List.h"
#include "qdscenegraph/transform/CSGXFrm_Rotate.h"
#include "qdscenegraph/transform/CSGXFrm_Translate.h"
#include "support/CTestData.h"

#include <gtest/gtest.h>

// A node "box" below "root", which has a stack, with the transforms "pos", which stands at (7, 8, 9), and
// "rot".
struct CAnimTestScene
{
    CNodePtr m_spRoot = MakeNode("root");
    CNodePtr m_spBox = MakeNode("box", m_spRoot.get());
    boost::intrusive_ptr<CSGXFrm_Translate> m_spPos = CSGXFrm_Translate::Create({7, 8, 9});
    boost::intrusive_ptr<CSGXFrm_Rotate> m_spRot = CSGXFrm_Rotate::Create({0, 0, 1}, 0);

    CAnimTestScene()
    {
        m_spPos->SetName("pos");
        m_spRot->SetName("rot");
        const boost::intrusive_ptr<CSGTransform> arrTransforms[] = {m_spPos, m_spRot};
        m_spBox->AddData(CSGData_LocalTransform::Create(CSGXFrm_List::Create(arrTransforms)).get());
        m_spRoot->AddData(CSGData_AnimStack::Create().get());
    }

    CSGAnimLayer* GetLayer(int32_t n) const { return m_spRoot->FindData<CSGData_AnimStack>()->GetLayer(n); }
    CSGAnimLayer* AddLayer(const CSGAnimation::CAnimationPtr& spAnimation, float fWeight = 1) const
    {
        const auto spLayer = CSGAnimLayer::Create("layer", spAnimation);
        spLayer->SetWeight(fWeight);
        EXPECT_TRUE(m_spRoot->FindData<CSGData_AnimStack>()->AddLayer(spLayer));
        return spLayer.get();
    }
};

// A straight line from one value at 1 s to another at 3 s.
inline boost::intrusive_ptr<CSGAnimSampler> MakeCurve(std::vector<float> vecFrom,
                                                      const std::vector<float>& rTo)
{
    const auto spSampler =
        CSGAnimSampler::Create(2, static_cast<int32_t>(rTo.size()), CSGAnimSampler::INTERP_LINEAR);
    vecFrom.insert(vecFrom.end(), rTo.begin(), rTo.end());
    EXPECT_TRUE(spSampler->SetKeyData(std::vector<float>{1, 3}, vecFrom));
    return spSampler;
}

// A channel for a transform of the box.
inline CSGAnimChannelPtr MakeChannel(const char* szName, const char* szTransform, ETarget eTarget,
                                     const std::vector<float>& rFrom, const std::vector<float>& rTo)
{
    return CSGAnimChannel::Create(szName, MakeCurve(rFrom, rTo),
                                  CSGRefPath::ForTransform("box", szTransform, eTarget));
}
