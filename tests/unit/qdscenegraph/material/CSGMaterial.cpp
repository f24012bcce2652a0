#include "qdscenegraph/material/CSGData_Effect.h"
#include "qdscenegraph/material/CSGData_Material.h"
#include "qdscenegraph/material/CSGParamTmpl.h"
#include "qdscenegraph/material/CSGSurf_Texture.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "support/CLogCapture.h"

#include <gtest/gtest.h>

namespace
{

using EParam = CSGMaterial::EParam;

CSGMaterialPtr MakeMaterial(int32_t eMode = CSGMaterial::TRANSPARENT_RGB_ZERO)
{
    return CSGMaterial::Create(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               "brick", eMode, 0);
}

CSGSamplerPtr MakeSampler()
{
    return CSGSampler::Create(CSGSurf_Texture::Create(CSGTex_2D::GetTextureSinglePixel()));
}

std::string Address(const void* pObject)
{
    char arrText[32];
    std::snprintf(arrText, sizeof(arrText), "0x%08llX", LogAddress(pObject));
    return arrText;
}

} // namespace

TEST(CSGMaterial, SlotsTakeTheirTypesOnly)
{
    const CSGParamPtr arrParams[] = {CSGParamTmpl<CSGFloat4>::Create("", {}),
                                     CSGParamTmpl<CSGSamplerPtr>::Create("", MakeSampler()),
                                     CSGParamTmpl<float>::Create("", 0)};
    const std::string strIs = "spObjParam->GetType() == CSGParam::PARAM_TYPE_";
    const std::string strColor = strIs + "FLOAT4", strFloat = strIs + "FLOAT";
    const std::string strEither = strColor + " || " + strIs + "SAMPLER";
    const std::pair<std::string, std::string> arrSlots[] = {
        {"emission", strEither},    {"ambient", strEither},  {"diffuse", strEither},
        {"specular", strEither},    {"shininess", strFloat}, {"transparent", strColor},
        {"transparency", strFloat}, {"normalMap", strEither}};
    const CSGMaterialPtr spMaterial = MakeMaterial();
    for (int32_t nSlot = 0; nSlot < CSGMaterial::PARAM_COUNT; ++nSlot)
    {
        const auto eSlot = static_cast<EParam>(nSlot);
        const auto& [strName, strMust] = arrSlots[nSlot];
        EXPECT_EQ(CSGMaterial::GetParamName(eSlot), strName);
        EXPECT_EQ(CSGMaterial::GetSamplerName(eSlot), strName + "Sampler");
        EXPECT_EQ(spMaterial->GetParam(eSlot)->GetName(), strName);
        const bool arrTakes[] = {strMust != strFloat, strMust == strEither, strMust == strFloat};
        for (int n = 0; n < 3; ++n)
        {
            CLogCapture objLog;
            EXPECT_EQ(spMaterial->SetParam(eSlot, arrParams[n]), arrTakes[n]) << strName << n;
            EXPECT_EQ(objLog.HasLine("1 " + strMust + " is false"), !arrTakes[n]) << strName << n;
        }
    }
    CLogCapture objLog;
    const auto eNone = static_cast<EParam>(8);
    EXPECT_FALSE(spMaterial->SetParam(eNone, arrParams[0]));
    EXPECT_TRUE(objLog.HasLine("4 Unexpected param 8 (UNKNOWN), can't validate its type."));
    EXPECT_FALSE(spMaterial->SetTexCoordSet(eNone, 0));
    EXPECT_EQ(spMaterial->GetColorValue(eNone), (CSGFloat4{0, 0, 0, 1}));
    EXPECT_EQ(CSGMaterial::Create(nullptr, nullptr, nullptr, nullptr, nullptr, arrParams[0], nullptr, nullptr,
                                  "", 0, 0),
              nullptr);
    EXPECT_TRUE(objLog.HasLine("1 Call spObjMaterial->SetParam(PARAM_SHININESS, spObjShininess) failed"));
}

TEST(CSGMaterial, TotalTransparency)
{
    const struct
    {
        int32_t eMode;
        CSGFloat4 vTransparent;
        float fTransparency, fTotal;
    } arrCases[] = {
        {0, {0, 0, 0, 1}, 1, 1},     {0, {.25f, .5f, .125f, 0}, 1, .5f}, {0, {.75f, .5f, 0, 1}, .5f, .125f},
        {0, {0, 0, 1, 1}, 1, 0},     {1, {1, 1, 1, .5f}, .5f, .25f},     {1, {0, 0, 0, 1}, 0, 0},
        {2, {0, 0, 0, .5f}, .5f, 1},
    };
    for (const auto& r : arrCases)
    {
        const CSGMaterialPtr spMaterial = MakeMaterial(r.eMode);
        EXPECT_EQ(spMaterial->GetTotalTransparency(), 1.0f);
        spMaterial->SetColorValue(CSGMaterial::PARAM_TRANSPARENT, r.vTransparent);
        spMaterial->SetFloatValue(CSGMaterial::PARAM_TRANSPARENCY, r.fTransparency);
        CLogCapture objLog;
        EXPECT_EQ(spMaterial->GetTotalTransparency(), r.fTotal);
        EXPECT_EQ(objLog.HasLine("1 Unrecognized Transparent mode 2"), r.eMode == 2);
    }
}

TEST(CSGMaterial, SamplersAndCopies)
{
    const CSGMaterialPtr spMaterial = MakeMaterial();
    const CSGSamplerPtr spFirst = MakeSampler(), spSecond = MakeSampler();
    spMaterial->SetColorValue(CSGMaterial::PARAM_DIFFUSE, {1, 1, 1, 1});
    EXPECT_TRUE(spMaterial->SetSamplerValue(CSGMaterial::PARAM_DIFFUSE, spFirst, 3));
    EXPECT_EQ(spMaterial->GetColorValue(CSGMaterial::PARAM_DIFFUSE), (CSGFloat4{0, 0, 0, 1}));
    EXPECT_TRUE(spMaterial->SetSamplerValue(CSGMaterial::PARAM_NORMALMAP, spFirst, 1));
    EXPECT_TRUE(spMaterial->SetSamplerValue(CSGMaterial::PARAM_EMISSION, spSecond, 2));
    EXPECT_FALSE(spMaterial->SetSamplerValue(CSGMaterial::PARAM_TRANSPARENT, spFirst, 0));
    EXPECT_FALSE(spMaterial->SetSamplerValue(CSGMaterial::PARAM_AMBIENT, spFirst, -1));
    std::vector<CSGSamplerPtr> vecSamplers;
    EXPECT_TRUE(spMaterial->GetSamplers(vecSamplers));
    EXPECT_EQ(vecSamplers, (std::vector{spSecond, spFirst, spFirst}));
    EXPECT_EQ(spMaterial->GetTexCoordSet(spFirst), 3);
    EXPECT_EQ(spMaterial->GetTexCoordSet(MakeSampler()), -1);

    // Values are shared by copies, slots and sets are not.
    const CSGMaterialPtr spCopy = spMaterial->CreateCopy();
    spMaterial->SetFloatValue(CSGMaterial::PARAM_SHININESS, 7.0f);
    spMaterial->SetTexCoordSet(CSGMaterial::PARAM_DIFFUSE, 4);
    spMaterial->SetColorValue(CSGMaterial::PARAM_DIFFUSE, {1, 0, 0, 1});
    EXPECT_EQ(spCopy->GetFloatValue(CSGMaterial::PARAM_SHININESS), 7.0f);
    EXPECT_EQ(spCopy->GetTexCoordSet(spFirst), 3);
    EXPECT_STREQ(spCopy->GetGlobalName().c_str(), "brick");
}

TEST(CSGMaterial, DebugOutput)
{
    const CSGMaterialPtr spMaterial = MakeMaterial();
    const CSGSamplerPtr spSampler = MakeSampler();
    spMaterial->SetSamplerValue(CSGMaterial::PARAM_DIFFUSE, spSampler, 0);
    const auto spData = CSGData_Material::Create(spMaterial.get());
    const auto Type = [](const auto& rInfo) {
        return rInfo.GetName() + " (" + std::to_string(rInfo.GetTypeID()) + "): ";
    };
    CLogCapture objLog;
    spData->OutputDebugInfo(">");
    std::vector<std::string> vecLines = objLog.GetLines();
    ASSERT_GT(vecLines.size(), 22u);
    EXPECT_TRUE(vecLines[12].starts_with("7 >              " + Type(CSGTex_2D::ms_objTypeInfo) +
                                         Address(CSGTex_2D::GetTextureSinglePixel().get())));
    const std::string strBlack = " Value: [0.000 0.000 0.000 1.000]";
    EXPECT_EQ(vecLines.back(), "7 >        Param (3 float4) Name: normalMap" + strBlack);
    EXPECT_EQ(vecLines[vecLines.size() - 3], "7 >        Param (0 float) Name: transparency Value: 1.000");
    vecLines.resize(12); // the texture's own lines, and slots like those before, follow
    std::string strLines;
    for (const std::string& rLine : vecLines)
    {
        strLines += rLine + "\n";
    }
    EXPECT_EQ(strLines,
              "7 >CSGData_Material: " + Address(spData.get()) + "\n7 >  Material:\n7 >    CSGMaterial: " +
                  Address(spMaterial.get()) + " Transparent Mode: 0 - Flags: 0x0\n" +
                  "7 >      Global Name: brick\n7 >      emission:\n" +
                  "7 >        Param (3 float4) Name: emission" + strBlack + "\n7 >      ambient:\n" +
                  "7 >        Param (3 float4) Name: ambient" + strBlack + "\n7 >      diffuse:\n" +
                  "7 >        Param (8 Sampler) Name: diffuse\n7 >          CSGSampler " +
                  Address(spSampler.get()) +
                  " - Wraps [S: 3 T: 3 P: 3] - Filters [Min: 1 Mag: 1 Mip: 1] - Border Color: [0.000 0.000 "
                  "0.000 1.000] - Max Mip Map Level: 1 - Mip Map Bias: 0.000\n7 >            " +
                  Type(CSGSurf_Texture::ms_objTypeInfo) + Address(spSampler->GetSurface()) + "\n");
    spData->SetOverrideMaterialName("stone");
    objLog.Clear();
    spData->OutputDebugInfo("");
    EXPECT_EQ(objLog.GetLines().back(), "7   Override Material: stone");
}

TEST(CSGMaterial, SurfacesWithoutTheirObject)
{
    const boost::intrusive_ptr<CSGSampler> spSampler = CSGMem::Construct<CSGSampler>();
    const boost::intrusive_ptr<CSGSurf_Texture> spSurface = CSGMem::Construct<CSGSurf_Texture>();
    CLogCapture objLog;
    EXPECT_EQ(spSampler->GetLayout(), CSGTextureLayout());
    EXPECT_TRUE(spSampler->SetSurface(spSurface));
    EXPECT_EQ(spSampler->GetChangeFrequency(), CSGTexture::CHANGE_FREQ_NEVER);
    EXPECT_FALSE(spSurface->HasChanged());
    EXPECT_FALSE(spSurface->InstanceOf(nullptr));
    EXPECT_EQ(objLog.GetLines(),
              (std::vector<std::string>{"1 Had NULL surface.", "1 Had NULL texture.", "1 Had NULL texture.",
                                        "1 Handed in NULL type object."}));
    EXPECT_EQ(MakeSampler()->GetLayout(), CSGTex_2D::GetTextureSinglePixel()->GetLayout());
}

TEST(CSGData_Effect, BelongsToOneNodeAndIsNotSaved)
{
    const CSGEffectPtr spEffect = CSGEffect::Create(CSGParamSet::Create(), "glow");
    const auto spData = CSGData_Effect::Create(spEffect);
    const auto spNode = CSGNode::Create("", ""), spOther = CSGNode::Create("", "");
    ASSERT_TRUE(spData->AddSurfaceEffect(spEffect));
    ASSERT_TRUE(spNode->AddData(spData.get()));
    EXPECT_EQ(spNode->GetRenderEffectsData(), spData);
    CLogCapture objLog;
    EXPECT_FALSE(spData->SetPrimaryEffect(spEffect));
    EXPECT_FALSE(spData->AddSurfaceEffect(spEffect));
    EXPECT_FALSE(spOther->AddData(spData.get()));
    EXPECT_TRUE(objLog.HasLine("1 Cannot add effect " + Address(spEffect.get()) +
                               " to data - it is already in the data."));
    EXPECT_TRUE(objLog.HasLine("1 GetNode() == 0 is false"));
    const auto spCopy = spNode->Copy();
    const auto* pCopy = spCopy->FindData<CSGData_Effect>();
    EXPECT_EQ(pCopy->GetPrimaryEffect(), spEffect.get());
    EXPECT_EQ(pCopy->GetSurfaceEffects().size(), 1u);

    EXPECT_TRUE(spData->RemoveSurfaceEffect(spEffect));
    EXPECT_FALSE(spData->RemoveSurfaceEffect(spEffect));
    EXPECT_EQ(objLog.GetLines().back(), "1 Data does not contain effect " + Address(spEffect.get()));
    EXPECT_TRUE(spNode->RemoveData(spData.get()));
    EXPECT_EQ(spNode->GetRenderEffectsData(), nullptr);
    CSGStreamableSaveState objSaveState;
    EXPECT_TRUE(spCopy->PreWrite(&objSaveState));
    EXPECT_FALSE(objSaveState.GetObject(1)->WriteToStream(nullptr, &objSaveState));
    EXPECT_EQ(objLog.GetLines().back(), "4 Implement me!");
}

TEST(CSGData_Effect, IsHandedOnToNodesWithoutOneOfTheirOwn)
{
    const auto spRoot = CSGNode::Create("", ""), spMiddle = CSGNode::Create("", ""),
               spLeaf = CSGNode::Create("", "");
    ASSERT_TRUE(spRoot->AddChild(spMiddle.get()) && spMiddle->AddChild(spLeaf.get()));
    const CSGEffectPtr spEffect = CSGEffect::Create(CSGParamSet::Create());
    const auto spOfRoot = CSGData_Effect::Create(spEffect), spOfMiddle = CSGData_Effect::Create(spEffect);
    for (const bool bRootFirst : {true, false})
    {
        ASSERT_TRUE(bRootFirst ? spRoot->AddData(spOfRoot.get()) : spMiddle->AddData(spOfMiddle.get()));
        EXPECT_EQ(spLeaf->GetRenderEffectsData(), bRootFirst ? spOfRoot : spOfMiddle);
        ASSERT_TRUE(bRootFirst ? spMiddle->AddData(spOfMiddle.get()) : spRoot->AddData(spOfRoot.get()));
        EXPECT_EQ(spLeaf->GetRenderEffectsData(), spOfMiddle);
        ASSERT_TRUE(spMiddle->RemoveData(spOfMiddle.get()));
        EXPECT_EQ(spLeaf->GetRenderEffectsData(), spOfRoot);
        ASSERT_TRUE(spRoot->RemoveData(spOfRoot.get()));
        EXPECT_EQ(spLeaf->GetRenderEffectsData(), nullptr);
    }
}
