// A file that was written once must load and be saved byte for byte the same for ever.

#include "qdscenegraph/animation/CSGData_AnimStack.h"
#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdscenegraph/light/CSGData_LightSet.h"
#include "qdscenegraph/light/CSGData_RenderEnv.h"
#include "qdscenegraph/light/CSGLight_Spot.h"
#include "qdscenegraph/material/CSGData_Material.h"
#include "qdscenegraph/material/CSGParamTmpl.h"
#include "qdscenegraph/skin/CSGData_SkinBindingSet.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "support/NestTestFile.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <set>

namespace
{

std::string ReadGolden(const std::string& rName)
{
    std::ifstream objFile(QDSG_TEST_DATA_DIR "/" + rName, std::ios::binary);
    return {std::istreambuf_iterator<char>(objFile), {}};
}

// Loads a file, and expects that it is saved again as it stands. The loaded set.
boost::intrusive_ptr<CSGResourceSet> LoadAndCompare(const std::string& rName)
{
    const std::string strGolden = ReadGolden(rName);
    const auto spSet = LoadSet(strGolden);
    EXPECT_TRUE(SaveSet(spSet.get()) == strGolden) << "a record has changed without a new version";
    return spSet;
}

} // namespace

TEST(NestGolden, Geometry)
{
    const auto spSet = LoadAndCompare("every_class.nest");
    const CSGNode* pNode = spSet->GetFirstNode()->GetChild(1);
    EXPECT_FALSE(pNode->IsVisible());
    EXPECT_EQ(pNode->FindData<CSGData_Geometry>()->GetGeomList()->GetNumBindings(), 4);
    // T(1,2,3) of the list and of its pair, the look-at's (0,0,1), all behind a turn by 0.5 and a scale of
    // (1,2,3).
    const CSGFloat3 objOrigin =
        pNode->FindData<CSGData_LocalTransform>()->GetTransform().TransformPoint({0, 0, 0});
    const float fCos = std::cos(0.5f);
    const float fSin = std::sin(0.5f);
    EXPECT_NEAR(objOrigin.x, 1 + fCos * 1 - fSin * 2 * 2, 1e-5f);
    EXPECT_NEAR(objOrigin.y, 2 + fSin * 1 + fCos * 2 * 2, 1e-5f);
    EXPECT_NEAR(objOrigin.z, 3 + 3 * (1 + 3), 1e-5f);
}

TEST(NestGolden, Dressing)
{
    const auto spSet = LoadAndCompare("every_dressing_class.nest");
    const CSGNode* pRoot = spSet->GetFirstNode();
    const auto* pSpot = dynamic_cast<CSGLight_Spot*>(pRoot->FindData<CSGData_LightSet>()->GetLight(3));
    ASSERT_NE(pSpot, nullptr);
    EXPECT_EQ(pSpot->GetFalloffAngle(), 50.0f);
    EXPECT_EQ(pSpot->GetAttenuation(), (CSGLightAttenuation{1, 2, 4}));
    EXPECT_EQ(pRoot->FindData<CSGData_RenderEnv>()->FindParam("int")->GetValueAs<int>(), -7);

    const CSGMaterial& rMaterial = *pRoot->GetChild(0)->FindData<CSGData_Material>()->GetMaterial();
    EXPECT_EQ(rMaterial.GetGlobalName(), "brick");
    EXPECT_EQ(rMaterial.GetMaterialFlags(), CSGMaterial::FLAG_ALPHA_BLEND);
    EXPECT_EQ(rMaterial.GetTotalTransparency(), 0.5f); // 1 - the largest of (1/4, 1/2, 1/8)
    EXPECT_EQ(rMaterial.GetTexCoordSet(CSGMaterial::PARAM_DIFFUSE), 1);
    const CSGSampler* pSampler = rMaterial.GetSampler(CSGMaterial::PARAM_DIFFUSE);
    ASSERT_NE(pSampler, nullptr);
    EXPECT_EQ(pSampler->GetParams().m_eWrapS, CSGSamplerParams::WRAP_MIRROR);
    EXPECT_EQ(pSampler->GetLayout(), (CSGTextureLayout{4, 2, 3, PIXEL_FORMAT_R8G8B8A8}));

    // The pixels of the texture that follows were made as byte n = 7 n + 2, the format.
    const auto* pTexture = dynamic_cast<CSGTex_2D*>(spSet->GetTopLevelNode(1));
    ASSERT_NE(pTexture, nullptr);
    EXPECT_EQ(pTexture->GetFormat(), PIXEL_FORMAT_A8R8G8B8);
    EXPECT_EQ(pTexture->GetDataPtr()[63], static_cast<uint8_t>(7 * 63 + 2));
}

TEST(NestGolden, Animation)
{
    const auto spSet = LoadAndCompare("every_animation_class.nest");
    CSGNode* pRoot = spSet->GetFirstNode();
    const auto* pAnimation = dynamic_cast<CSGAnimation*>(spSet->GetTopLevelNode(1));
    ASSERT_NE(pAnimation, nullptr);
    EXPECT_EQ(pAnimation->GetName(), "walk");
    EXPECT_EQ(pAnimation->GetEndTime(), 2.5f);
    EXPECT_EQ(pAnimation->GetNumChannels(), 4);
    // Y goes from 10 at 1 s to 30 at 3 s, as evenly before the middle as behind it: 20 at 2 s.
    ASSERT_TRUE(pAnimation->GetChannel(0)->PoseModel(pRoot, 2.0f));
    const CSGFloat3 objOrigin =
        pRoot->GetChild(0)->FindData<CSGData_LocalTransform>()->GetTransform().TransformPoint({0, 0, 0});
    EXPECT_NEAR(objOrigin.y, 20.0f, 1e-4f);
    EXPECT_EQ(objOrigin.z, 3.0f);
    ASSERT_TRUE(pAnimation->GetChannel(1)->PoseModel(pRoot, 3.0f));
    EXPECT_FALSE(pRoot->GetChild(0)->IsVisible());
    const CSGAnimLayer* pLayer = pRoot->FindData<CSGData_AnimStack>()->GetLayer(0);
    EXPECT_EQ(pLayer->GetWeight(), 0.5f);
    EXPECT_FALSE(pLayer->PlaysChannel(*pAnimation->GetChannel(2)));
    EXPECT_TRUE(pLayer->PlaysChannel(*pAnimation->GetChannel(0)));
}

TEST(NestGolden, Skins)
{
    const auto spSet = LoadAndCompare("every_skin_class.nest");
    const CSGNode* pBody = spSet->GetFirstNode()->GetChild(0)->GetChild(0);
    const auto* pSkins = pBody->FindData<CSGData_SkinBindingSet>();
    ASSERT_NE(pSkins, nullptr);
    // The vertex (1, 1, 0), bound 10 to the right: a quarter stays at (11, 1, 0), three quarters are turned
    // by 90 degrees about (11, 0, 0), to (10, 0, 0).
    std::vector<float> vecPositions;
    ASSERT_TRUE(pSkins->GetBinding(0)->ComputeSkinnedVertices(vecPositions));
    ASSERT_GE(vecPositions.size(), 12u);
    EXPECT_NEAR(vecPositions[9], 10.25f, 1e-5f);
    EXPECT_NEAR(vecPositions[10], 0.25f, 1e-5f);
    EXPECT_NEAR(vecPositions[11], 0.0f, 1e-5f);
}

TEST(NestGolden, HasEveryClass)
{
    std::string strBytes;
    for (const char* szName : {"every_class.nest", "every_dressing_class.nest", "every_animation_class.nest",
                               "every_skin_class.nest"})
    {
        strBytes += ReadGolden(szName);
    }
    // Test data, and attachments of which only a run of the program knows.
    const std::set<std::string> setNeverSaved = {"CTestData", "CSGData_ParamSet", "CSGData_Effect"};
    for (const SGStreamableType* pType : SGStreamableType::GetAllTypes())
    {
        EXPECT_NE(strBytes.find(G(pType)) != std::string::npos, setNeverSaved.contains(pType->GetName()))
            << pType->GetName();
    }
}
