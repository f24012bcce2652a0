// The records of materials, parameters and samplers byte for byte, in every version, and what damaged ones
// can do.

#include "qdscenegraph/material/CSGData_Material.h"
#include "qdscenegraph/material/CSGParamTmpl.h"
#include "qdscenegraph/material/CSGSurf_Texture.h"
#include "qdscenegraph/node/CSGData_RenderState.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"
#include "support/NestTestFile.h"

namespace
{

const auto NODE = TypeOf<CSGNode>(), DATA = TypeOf<CSGData>(), DATA_MATERIAL = TypeOf<CSGData_Material>(),
           MATERIAL = TypeOf<CSGMaterial>(), PARAM = TypeOf<CSGParam>(),
           FLOAT = TypeOf<CSGParamTmpl<float>>(), COLOR = TypeOf<CSGParamTmpl<CSGFloat4>>(),
           SAMPLER_PARAM = TypeOf<CSGParamTmpl<CSGSamplerPtr>>(), SAMPLER = TypeOf<CSGSampler>(),
           SURFACE = TypeOf<CSGSurface>(), SURF_TEXTURE = TypeOf<CSGSurf_Texture>(),
           RENDER_STATE = TypeOf<CSGData_RenderState>();

const std::string NODE_BODY = I({0, 0, 1, 1, 0}); // no names, attachment 1, no children

std::string SamplerBody(int32_t nSurfaceID)
{
    return I({nSurfaceID, 7, 8}) + F({.1f, .2f, .3f, .4f}) + I({1, 2, 4, 2, 3, 0}) + F({.5f, .6f, .7f, .8f}) +
           I({5}) + F({-1.5f});
}

// A material whose slots of emission, shininess and transparent link to the objects.
std::string MaterialBody(int32_t nEmission, int32_t nShininess = -1, int32_t nTransparent = -1)
{
    return I({0, nEmission, 0, -1, 0, -1, 0, -1, 0, nShininess, 0, nTransparent, 0, -1, 0, -1, 0, 1, 0});
}

CNestTypes Types(int32_t nMaterialVersion)
{
    return {NODE,          DATA_MATERIAL, DATA, {MATERIAL, nMaterialVersion}, COLOR, PARAM,
            SAMPLER_PARAM, SAMPLER,       FLOAT};
}

// Object 0 is a node, 1 its material's attachment, 2 the material, 3 its diffuse colour, 4 the parameter of
// its sampler 5, 6 its shininess.
std::string MaterialFile(int32_t nVersion, const std::string& rBehindTransparency)
{
    const std::string strSlots = I({-1, -1, -1, -1, 3, -1, 4, 2, 6, -1, -1, -1, -1, 5});
    return MakeNest(Types(nVersion), {{NODE, NODE_BODY},
                                      {DATA_MATERIAL, I({2}) + S("other")},
                                      {MATERIAL, S("brick") + strSlots + rBehindTransparency},
                                      {COLOR, F({.1f, .2f, .3f, .4f})},
                                      {SAMPLER_PARAM, I({5})},
                                      {SAMPLER, SamplerBody(-1)},
                                      {FLOAT, F({20.5f})}});
}

} // namespace

TEST(MaterialRecords, EveryVersion)
{
    const struct
    {
        int32_t nVersion;
        std::string strEnd;
        std::initializer_list<int32_t> arrSaved; // the slot of the normal map, mode, flags
    } arrCases[] = {
        {1, I({0}) + '\0', {-1, -1, 0, 0}},   {1, I({1}) + '\1', {-1, -1, 1, 2}},
        {1, I({9}) + '\xFF', {-1, -1, 9, 2}}, {2, I({0, 65}), {-1, -1, 0, 65}},
        {3, I({4, 1, 0, 65}), {4, 1, 0, 65}},
    };
    for (const auto& r : arrCases)
    {
        const auto spNode = Load<CSGNode>(MaterialFile(r.nVersion, r.strEnd));
        ASSERT_NE(spNode, nullptr) << r.nVersion;
        const auto* pData = spNode->FindData<CSGData_Material>();
        const CSGMaterial* pMaterial = pData->GetMaterial();
        EXPECT_EQ(pMaterial->GetParam(CSGMaterial::PARAM_EMISSION), nullptr);
        EXPECT_EQ(pMaterial->GetColorValue(CSGMaterial::PARAM_DIFFUSE), (CSGFloat4{.1f, .2f, .3f, .4f}));
        EXPECT_TRUE(pMaterial->GetParam(CSGMaterial::PARAM_DIFFUSE)->GetName().empty());
        EXPECT_EQ(pMaterial->GetFloatValue(CSGMaterial::PARAM_SHININESS), 20.5f);
        EXPECT_EQ(pMaterial->GetTexCoordSet(CSGMaterial::PARAM_TRANSPARENCY), 5);
        const CSGSampler* pSampler = pMaterial->GetSampler(CSGMaterial::PARAM_SPECULAR);
        EXPECT_EQ(pSampler->GetParams().m_objBorderColor, (CColor{.5f, .6f, .7f, .8f}));
        EXPECT_EQ(pSampler->GetParams().m_eMagFilter, CSGSamplerParams::FILTER_ANISOTROPIC);
        EXPECT_EQ(pMaterial->GetSampler(CSGMaterial::PARAM_NORMALMAP), r.nVersion == 3 ? pSampler : nullptr);
        EXPECT_EQ(Save(spNode.get()), MaterialFile(3, I(r.arrSaved)));
        EXPECT_EQ(spNode->Copy()->FindData<CSGData_Material>(), pData);
    }
}

TEST(MaterialRecords, Parameters)
{
    const boost::intrusive_ptr<CSGSampler> spSampler = CSGMem::Construct<CSGSampler>();
    const std::string strSampler = I({1}) + G(SAMPLER) + I({-1, 0, 0}) + F({0, 0, 0, 1}) +
                                   I({3, 3, 3, 1, 1, 1}) + F({0, 0, 0, 1}) + I({1, 0});
    const struct
    {
        CSGParamPtr spParam;
        const char* szValue;
        int32_t nType;
        std::string strBody;
    } arrCases[] = {
        {CSGParamTmpl<float>::Create("p", -0.0f), "float", 0, F({-0.0f})},
        {CSGParamTmpl<CSGFloat2>::Create("p", {1, 2}), "CSGFloat2", 1, F({1, 2})},
        {CSGParamTmpl<CSGFloat3>::Create("p", {1, 2, 3}), "CSGFloat3", 2, F({1, 2, 3})},
        {CSGParamTmpl<CSGFloat4>::Create("p", {1, 2, 3, 4}), "CSGFloat4", 3, F({1, 2, 3, 4})},
        {CSGParamTmpl<CMatrix3>::Create("p", {{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}), "CMatrix3", 4,
         F({1, 2, 3, 4, 5, 6, 7, 8, 9})},
        {CSGParamTmpl<CMatrix4>::Create("p", {}), "CMatrix4", 5,
         F({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1})},
        {CSGParamTmpl<int>::Create("p", -2), "int", 6, I({-2})},
        {CSGParamTmpl<CSGSamplerPtr>::Create("p", spSampler), "CSGSamplerPtr", 8, strSampler},
        {CSGParamTmpl<CSGLightState>::Create("p", {}), "CSGLightState", 9,
         F({1, 1, 1, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, -1, 180, 1})},
        {CSGParamTmpl<CSGMaterialState>::Create("p", {}), "CSGMaterialState", 10,
         F({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0})},
    };
    for (const auto& r : arrCases)
    {
        SCOPED_TRACE(r.szValue);
        EXPECT_EQ(r.spParam->GetSGStreamableType()->GetName(), CQDString("CSGParamTmpl<") + r.szValue + ">");
        const std::string strSaved = Save(r.spParam.get());
        EXPECT_TRUE(strSaved.ends_with(r.strBody));
        const auto spLoaded = Load<CSGParam>(strSaved);
        ASSERT_NE(spLoaded, nullptr);
        EXPECT_EQ(spLoaded->GetType(), r.nType);
        EXPECT_TRUE(spLoaded->GetName().empty());
        EXPECT_EQ(Save(spLoaded.get()), strSaved);
        EXPECT_STREQ(r.spParam->CreateCopy()->GetName().c_str(), "p");
        EXPECT_EQ(Save(r.spParam->CreateCopy().get()), strSaved);
    }
    CLogCapture objLog;
    CSGStreamableSaveState objSaveState;
    EXPECT_FALSE(CSGParamTmpl<CSGSamplerPtr>::Create("p", nullptr)->PreWrite(&objSaveState));
    EXPECT_TRUE(objLog.HasLine("1 m_objValue is NULL"));
}

TEST(MaterialRecords, DamagedOnesAreRefused)
{
    const CNestRecord objData = {DATA_MATERIAL, I({2, 0})}, objFloat = {FLOAT, F({1})},
                      objCut = {DATA_MATERIAL, I({-1, 4}) + "cut"};
    const struct
    {
        CNestRecords vecRecords;
        std::string strLine;
    } arrCases[] = {
        {{{NODE, NODE_BODY}, objData, objFloat}, "1 pMaterial is NULL"},
        {{{NODE, NODE_BODY}, {DATA_MATERIAL, I({-1, 0})}}, "1 m_spMaterial is NULL"},
        {{{MATERIAL, MaterialBody(1)}, {SAMPLER, SamplerBody(-1)}}, "1 pParam is NULL"},
        {{{NODE, NODE_BODY}, objData, {MATERIAL, MaterialBody(1)}}, "1 pParam is NULL"},
        {{{MATERIAL, MaterialBody(3)}}, "1 Call pLoadState->ReadChildID(pStream, this, nParamIndex) failed"},
        {{{SAMPLER_PARAM, I({1})}, objFloat}, "1 pValue is NULL"},
        {{{SAMPLER, SamplerBody(1)}, objFloat}, "1 pSurface is NULL"},
        {{{SURF_TEXTURE, I({1})}, objFloat}, "1 pTexture is NULL"},
        {{{SURFACE, ""}}, "1 Invalid call of abstract Create"},
        {{objCut}, "1 Call pStream->ReadString(m_strOverrideMaterialName) failed"},
    };
    const int64_t nLive = CSGMem::GetPool().GetNumLiveBlocks();
    CNestTypes vecTypes = Types(3);
    vecTypes.insert(vecTypes.end(), {SURFACE, SURF_TEXTURE});
    for (const auto& r : arrCases)
    {
        ExpectRefused(MakeNest(vecTypes, r.vecRecords), r.strLine);
    }
    for (const std::string& rWhole : {MaterialFile(1, I({0}) + '\1'), MaterialFile(3, I({4, 1, 0, 65}))})
    {
        for (size_t nSize = 0; nSize < rWhole.size(); ++nSize)
        {
            EXPECT_EQ(LoadSet(rWhole.substr(0, nSize)), nullptr) << nSize;
        }
    }
    EXPECT_EQ(CSGMem::GetPool().GetNumLiveBlocks(), nLive);
}

TEST(MaterialRecords, ParameterOfAnotherTypeCountsAsNotThere)
{
    // Emission and transparent are floats, shininess is a sampler.
    const CNestRecords vecRecords = {{MATERIAL, MaterialBody(3, 1, 3)},
                                     {SAMPLER_PARAM, I({2})},
                                     {SAMPLER, SamplerBody(-1)},
                                     {FLOAT, F({.5f})}};
    const auto spMaterial = Load<CSGMaterial>(MakeNest(Types(3), vecRecords));
    ASSERT_NE(spMaterial, nullptr);
    EXPECT_EQ(spMaterial->GetMaterialState(), CSGMaterialState());
    EXPECT_EQ(spMaterial->GetTotalTransparency(), 1.0f);
    EXPECT_TRUE(spMaterial->SetFloatValue(CSGMaterial::PARAM_SHININESS, 3.0f));
    EXPECT_EQ(spMaterial->GetMaterialState().m_fShininess, 3.0f);
}

TEST(MaterialRecords, RenderStateHadNoDepthBiasInItsFirstVersion)
{
    const auto MakeState = [](int32_t nVersion, const std::string& rDepthBias) {
        return MakeNest({{RENDER_STATE, nVersion}, DATA}, {{RENDER_STATE, I({5}) + rDepthBias}});
    };
    for (const auto& [strFile, fDepthBias] :
         {std::pair(MakeState(1, ""), 0.0f), std::pair(MakeState(2, F({-.25f})), -.25f)})
    {
        const auto spState = Load<CSGData_RenderState>(strFile);
        ASSERT_NE(spState, nullptr);
        EXPECT_EQ(spState->GetDepthBias(), fDepthBias);
        EXPECT_EQ(Save(spState.get()), MakeState(2, F({fDepthBias})));
    }
}
