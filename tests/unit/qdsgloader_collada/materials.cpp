// Materials: effects, images, and how instances of geometry bind them.
#include "daedom/CDaeUri.h"
#include "qdscenegraph/material/CSGData_Material.h"
#include "qdscenegraph/material/CSGParamTmpl.h"
#include "qdscenegraph/material/CSGSurf_Texture.h"
#include "qdscenegraph/nest/CSGNestReader.h"
#include "qdscenegraph/nest/CSGNestWriter.h"
#include "qdscenegraph/resource/CSGResourceSet.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureFromPool.h"
#include "qdscenegraph/texture/CSGTexturePool.h"
#include "qdsgloader_collada/CColladaImagePath.h"
#include "qdsgloader_collada/CColladaTestScene.h"

#include <gtest/gtest.h>

namespace
{

using namespace std::string_literals;

// 2 by 1 pixels, blue and red, from the bottom up and BGR.
const std::string TGA = "\0\0\2\0\0\0\0\0\0\0\0\0\2\0\1\0\30\0\xFF\0\0\0\0\xFF"s;

// A geometry "g" with one triangle for each symbol.
std::string Mesh(const std::vector<std::string>& rvecSymbols)
{
    std::string strPrimitives;
    for (const std::string& rSymbol : rvecSymbols)
    {
        strPrimitives +=
            "<triangles count=\"1\" material=\"" + rSymbol + "\">" + TEST_VERTEX + "<p>0 1 2</p></triangles>";
    }
    return TestMesh(strPrimitives);
}

std::string Effect(const std::string& rID, const std::string& rContent)
{
    return "<effect id=\"" + rID + "\"><profile_COMMON>" + rContent + "</profile_COMMON></effect>";
}

std::string Phong(const std::string& rSlots)
{
    return "<technique sid=\"t\"><phong>" + rSlots + "</phong></technique>";
}

std::string Material(const std::string& rID, const std::string& rEffect, const std::string& rExtra = "")
{
    return "<material id=\"" + rID + "\"><instance_effect url=\"#" + rEffect + "\"/>" +
           (rExtra.empty() ? "" : "<extra><technique profile=\"P\">" + rExtra + "</technique></extra>") +
           "</material>";
}

std::string Bind(const std::string& rSymbol, const std::string& rMaterial, const std::string& rBinds = "")
{
    return "<instance_material symbol=\"" + rSymbol + "\" target=\"#" + rMaterial + "\">" + rBinds +
           "</instance_material>";
}

std::string SetOf(const std::string& rSemantic, int nSet)
{
    return "<bind_vertex_input semantic=\"" + rSemantic + "\" input_semantic=\"TEXCOORD\" input_set=\"" +
           std::to_string(nSet) + "\"/>";
}

std::string Instance(const std::string& rBindings)
{
    return "<instance_geometry url=\"#g\"><bind_material><technique_common>" + rBindings +
           "</technique_common></bind_material></instance_geometry>";
}

// Nodes that show a geometry of those symbols, behind the libraries.
std::string Scene(const std::string& rImages, const std::string& rEffects, const std::string& rMaterials,
                  const std::string& rNodes, const std::vector<std::string>& rvecSymbols = {"s"})
{
    return "<library_images>" + rImages + "</library_images><library_effects>" + rEffects +
           "</library_effects><library_materials>" + rMaterials + "</library_materials>" +
           TestScene(rNodes, Mesh(rvecSymbols));
}

std::string Node(const std::string& rID, const std::string& rContent)
{
    return "<node id=\"" + rID + "\">" + rContent + "</node>";
}

std::string Image(const std::string& rID, const std::string& rFile)
{
    return "<image id=\"" + rID + "\"><init_from>" + rFile + "</init_from></image>";
}

std::string Surface(const std::string& rID, const std::string& rType, const std::string& rContent)
{
    return "<newparam sid=\"" + rID + "\"><surface type=\"" + rType + "\">" + rContent +
           "</surface></newparam>";
}

// Parameters "surface" and "sampler" for the image "i".
std::string Sampler(const std::string& rModes = "", const std::string& rSource = "surface")
{
    return Surface("surface", "2D", "<init_from>i</init_from>") +
           "<newparam sid=\"sampler\"><sampler2D><source>" + rSource + "</source>" + rModes +
           "</sampler2D></newparam>";
}

const std::string TEXTURE = "<texture texture=\"sampler\" texcoord=\"UV\"/>";

const std::string DIFFUSE = Phong("<diffuse>" + TEXTURE + "</diffuse>");

// A node "n" with the one material of the effect.
std::string SceneOfEffect(const std::string& rImages, const std::string& rProfile)
{
    return Scene(rImages, Effect("e", rProfile), Material("m", "e"), Node("n", Instance(Bind("s", "m"))));
}

CSGMaterial* MaterialOf(const CSGNode* pNode)
{
    const auto* pData = pNode != nullptr ? pNode->FindData<CSGData_Material>() : nullptr;
    return pData != nullptr ? pData->GetMaterial() : nullptr;
}

CSGTexture* TextureOf(const CSGSampler& rSampler)
{
    return static_cast<CSGSurf_Texture*>(rSampler.GetSurface())->GetTexture();
}

// What of a material is not the default: "diffuse=1,0,0,1 specular=set2 mode=0".
std::string DescribeMaterial(const CSGMaterial* pMaterial)
{
    if (pMaterial == nullptr)
    {
        return "none";
    }
    std::ostringstream objText;
    const CSGMaterialPtr spDefault =
        CSGMaterial::Create(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, "", 1, 0);
    for (int32_t n = 0; n < CSGMaterial::PARAM_COUNT; ++n)
    {
        const auto eParam = static_cast<CSGMaterial::EParam>(n);
        const CSGFloat4 vColor = pMaterial->GetColorValue(eParam);
        const float fValue = pMaterial->GetFloatValue(eParam);
        if (pMaterial->GetSampler(eParam) != nullptr)
        {
            objText << ' ' << CSGMaterial::GetParamName(eParam) << "=set"
                    << pMaterial->GetTexCoordSet(eParam);
        }
        else if (vColor != spDefault->GetColorValue(eParam))
        {
            objText << ' ' << CSGMaterial::GetParamName(eParam) << '=' << vColor.x << ',' << vColor.y << ','
                    << vColor.z << ',' << vColor.w;
        }
        else if (fValue != spDefault->GetFloatValue(eParam))
        {
            objText << ' ' << CSGMaterial::GetParamName(eParam) << '=' << fValue;
        }
    }
    objText << (pMaterial->GetTransparentMode() == CSGMaterial::TRANSPARENT_RGB_ZERO ? " mode=0" : "")
            << ((pMaterial->GetMaterialFlags() & CSGMaterial::FLAG_ALPHA_BLEND) != 0 ? " blend" : "");
    return objText.str().substr(objText.str().empty() ? 0 : 1);
}

// The nodes below one, each with its number of pieces and its material.
std::string DescribeTree(const CSGNode& rNode)
{
    std::string strText = rNode.GetGlobalName().c_str();
    if (const auto* pGeometry = rNode.FindData<CSGData_Geometry>())
    {
        const CSGMaterial* pMaterial = MaterialOf(&rNode);
        strText += ":" + std::to_string(pGeometry->GetGeomList()->GetNumBindings()) + ":" +
                   (pMaterial != nullptr ? pMaterial->GetGlobalName().c_str() : "");
    }
    for (int32_t n = 0; n < rNode.GetChildrenSize(); ++n)
    {
        strText += (n == 0 ? "(" : ",") + DescribeTree(*rNode.GetChild(n));
    }
    return rNode.GetChildCount() > 0 ? strText + ")" : strText;
}

std::string Failed(const std::string& rSlot)
{
    return "1 Failed to load <" + rSlot +
           "> for <phong> in <technique> in <profile_COMMON> in <effect id=\"e\">";
}

} // namespace

TEST(ColladaMaterials, ImagePaths)
{
    const CTempFile objWood("wood.png", "x");
    const std::filesystem::path objFolder = std::filesystem::path(objWood.GetName()).parent_path();
    std::filesystem::create_directory(objFolder / "sub");
    for (const char* szName : {"sub/a b.png", "50%20.png", "caf\xC3\xA9.png"})
    {
        std::ofstream(objFolder / szName) << "x";
    }
    const std::string strFolder = objFolder.string();
    const std::string strInstead = "4 Loading '" + objWood.GetName() + "' instead of nonexistent '";
    struct CCase
    {
        std::string strReference; // as in the document
        std::string strFile;      // empty: not local
        std::string strLine = "";
    };
    const CCase arrCases[] = {
        {"wood.png", objWood.GetName()},
        {"./sub/../wood.png", strFolder + "/./sub/../wood.png"},
        {"sub/a b.png", strFolder + "/sub/a b.png"},
        {"sub\\a%20b.png", strFolder + "/sub/a b.png"},
        {"50%20.png", strFolder + "/50%20.png"},
        {"caf\xC3\xA9.png", strFolder + "/caf\xC3\xA9.png"},
        {"caf%C3%A9.png", strFolder + "/caf\xC3\xA9.png"},
        {objWood.GetName(), objWood.GetName()},
        {"file://" + objWood.GetName(), objWood.GetName()},
        {"FILE://localhost" + objWood.GetName(), objWood.GetName()},
        {"file:" + objWood.GetName(), objWood.GetName()},
        {"file:///C:/art/wood.png", objWood.GetName(), strInstead + "C:/art/wood.png'"},
        {"file://C:/art/wood.png", objWood.GetName(), strInstead + "C:/art/wood.png'"},
        {"C:\\art\\wood.png", objWood.GetName(), strInstead + "C:/art/wood.png'"},
        {"/art/wood.png", objWood.GetName(), strInstead + "/art/wood.png'"},
        {"no/such.png", strFolder + "/no/such.png"},
        {"sub", strFolder + "/sub"},
        {"wood.png%00.exe", strFolder + "/wood.png\0.exe"s},
        {"http://host/wood.png", ""},
        {"file://host/wood.png", ""},
    };
    for (const CCase& rCase : arrCases)
    {
        CLogCapture objLog;
        const CColladaImagePath objPath(EncodeDaeReference(rCase.strReference), objFolder);
        EXPECT_EQ(objPath.IsLocal(), !rCase.strFile.empty()) << rCase.strReference;
        if (objPath.IsLocal())
        {
            EXPECT_EQ(objPath.FindFile(), rCase.strFile) << rCase.strReference;
            EXPECT_EQ(objLog.GetLines(), rCase.strLine.empty() ? std::vector<std::string>()
                                                               : std::vector<std::string>{rCase.strLine})
                << rCase.strReference;
        }
    }
}

TEST(ColladaMaterials, Effects)
{
    const CTempFile objImage("i.tga", TGA);
    const std::string strInit = "<init_from>i</init_from>";
    const auto Technique = [](const std::string& rContent) {
        return "<technique sid=\"t\">" + rContent + "</technique>";
    };
    const auto NewParam = [](const std::string& rContent) {
        return "<newparam sid=\"p\">" + rContent + "</newparam>";
    };
    const std::string strDiffuseParam = Phong("<diffuse><param ref=\"p\"/></diffuse>");
    const auto Bump = [](const std::string& rType) {
        return Phong("").insert(Phong("").rfind("</technique>"), "<extra><technique profile=\"F\"><bump" +
                                                                     rType + ">" + TEXTURE +
                                                                     "</bump></technique></extra>");
    };
    struct CCase
    {
        std::string strProfile;
        std::string strMaterial;
        std::vector<std::string> vecLines = {};
    };
    const CCase arrCases[] = {
        {Phong(
             "<emission><color>1 2 3</color></emission><ambient><color>.1 .2 .3 .4</color></ambient>"
             "<diffuse><color sid=\"d\">1 0 0 1</color></diffuse><specular><color>0 1 0 0</color></specular>"
             "<shininess><float>20</float></shininess><transparent><color>1 1 1 .5</color></transparent>"
             "<transparency><float>.25</float></transparency>"),
         "emission=1,2,3,1 ambient=0.1,0.2,0.3,0.4 diffuse=1,0,0,1 specular=0,1,0,0 shininess=20 "
         "transparent=1,1,1,0.5 transparency=0.25"},
        {Technique("<lambert><diffuse><color>1 0 0 1</color></diffuse></lambert>"), "diffuse=1,0,0,1"},
        {Technique(
             "<constant><transparent opaque=\"RGB_ZERO\"><color>0 1 0</color></transparent></constant>"),
         "transparent=0,1,0,1 mode=0"},
        {Technique(""),
         "none",
         {"1 Didn't know how to load <technique> in <profile_COMMON> in <effect id=\"e\">",
          "1 Failed to load <instance_effect url=\"#e\"> in <material id=\"m\">",
          "1 Failed to get <material> referenced by <instance_material> in <bind_material>",
          "1 Had NULL material data for material \"s\"."}},
        {NewParam("<float3>1 2 3</float3>") + strDiffuseParam, "diffuse=1,2,3,1"},
        {Technique(NewParam("<float3>3 2 1</float3>") +
                   "<phong><diffuse><param ref=\"p\"/></diffuse></phong>"),
         "diffuse=3,2,1,1"},
        {NewParam("<float>3</float>") + Phong("<shininess><param ref=\"p\"/></shininess>"), "shininess=3"},
        {NewParam("<float4>1 2</float4>") + strDiffuseParam,
         "",
         {"1 Handed in list of floats that had 2 instead of 4 values.",
          "1 <param> referenced unknown <float3> or <float4> param p", Failed("diffuse")}},
        {Phong("<diffuse><color>1 0</color></diffuse><specular><color>1 1 1 1</color></specular>"),
         "specular=1,1,1,1",
         {"1 Handed in DOM list of floats with 2 values instead of 3 or 4.", Failed("diffuse")}},
        {Sampler() + Phong("<diffuse>" + TEXTURE + "</diffuse><specular>" + TEXTURE + "</specular>"),
         "diffuse=set0 specular=set0"},
        // older documents: the texture is the image itself
        {Phong("<diffuse><texture texture=\"i\" texcoord=\"UV\"/></diffuse>"), "diffuse=set0"},
        {Phong("<diffuse><texture texture=\"x\" texcoord=\"UV\"/></diffuse>"),
         "",
         {"1 <texture> referenced unknown sampler x", Failed("diffuse")}},
        {Sampler("", "x") + DIFFUSE,
         "",
         {"1 <source> for <sampler2D> referenced unknown param x",
          "1 <texture> referenced param sampler whose <sampler2D> failed", Failed("diffuse")}},
        {Surface("a", "CUBE", "") + Surface("b", "2D", "<init_as_null/>") +
             Surface("c", "2D", strInit + strInit) + Surface("d", "2D", "<init_from>no</init_from>") +
             Phong(""),
         "",
         {"1 Unsupported surface type \"CUBE\" in <surface>", "1 Unsupported <init_as_null> in <surface>",
          "1 2D <surface> had more than one <init_from>", "1 Failed to find element named \"no\".",
          "1 <init_from> referenced a NULL <image>"}},
        // slots without textures
        {Sampler() +
             Phong("<shininess>" + TEXTURE + "</shininess><transparent>" + TEXTURE + "</transparent>"),
         "blend",
         {"4 Ignoring <shininess> without a number in <effect id=\"e\">",
          "4 Ignoring <texture> in <transparent> in <effect id=\"e\">"}},
        {Phong("<transparent opaque=\"RGB_ONE\"><color>1 1 1 .5</color></transparent>"),
         "transparent=1,1,1,0.5",
         {"1 Unknown opaque enum 2, defaulting to ALPHA_ONE"}},
        {Sampler() + Bump(" bumptype=\"NORMALMAP\""), "normalMap=set0"},
        {Sampler() + Bump(""),
         "",
         {"4 Ignoring <bump> that is not of the type \"NORMALMAP\" in <effect id=\"e\">"}},
    };
    for (const CCase& rCase : arrCases)
    {
        const CColladaTestScene objScene(SceneOfEffect(Image("i", objImage.GetName()), rCase.strProfile));
        ASSERT_TRUE(objScene.m_spRoot) << rCase.strProfile;
        EXPECT_EQ(DescribeMaterial(MaterialOf(objScene.Find("n"))), rCase.strMaterial) << rCase.strProfile;
        EXPECT_EQ(objScene.GetComplaints(), rCase.vecLines) << rCase.strProfile;
    }
}

TEST(ColladaMaterials, SamplerModes)
{
    const CTempFile objImage("i.tga", TGA);
    const std::filesystem::path objPath = objImage.GetName();
    const CColladaTestScene objScene(Scene(
        Image("i", "file://" + objImage.GetName()) +
            Image("j", (objPath.parent_path() / "." / objPath.filename()).string()),
        Effect("e", Sampler("<wrap_s>CLAMP</wrap_s><wrap_t>MIRROR</wrap_t><minfilter>NEAREST_MIPMAP_LINEAR"
                            "</minfilter><magfilter>NEAREST</magfilter><border_color>1 2 3 4</border_color>"
                            "<mipmap_maxlevel>200</mipmap_maxlevel><mipmap_bias>-.5</mipmap_bias>") +
                        DIFFUSE) +
            Effect("f", Sampler("<wrap_s>WIDE</wrap_s><minfilter>LINEAR</minfilter>") + DIFFUSE) +
            Effect("g", Phong("<diffuse><texture texture=\"j\" texcoord=\"UV\"/></diffuse>")),
        Material("m", "e") + Material("k", "f") + Material("l", "g"),
        Node("n", Instance(Bind("s", "m"))) + Node("o", Instance(Bind("s", "k"))) +
            Node("p", Instance(Bind("s", "l")))));
    ASSERT_TRUE(objScene.m_spRoot);
    const CSGSampler* pSampler = MaterialOf(objScene.Find("n"))->GetSampler(CSGMaterial::PARAM_DIFFUSE);
    const CSGSamplerParams& rParams = pSampler->GetParams();
    CSGSamplerParams objExpected;
    objExpected.m_eWrapS = CSGSamplerParams::WRAP_CLAMP;
    objExpected.m_eWrapT = CSGSamplerParams::WRAP_MIRROR;
    objExpected.m_eMinFilter = CSGSamplerParams::FILTER_NEAREST;
    objExpected.m_eMipFilter = CSGSamplerParams::FILTER_LINEAR;
    objExpected.m_eMagFilter = CSGSamplerParams::FILTER_NEAREST;
    objExpected.m_objBorderColor = {1, 2, 3, 4};
    objExpected.m_nMaxMipMapLevel = 200;
    objExpected.m_fMipMapBias = -0.5f;
    EXPECT_TRUE(rParams == objExpected);

    const CSGSampler* pOther = MaterialOf(objScene.Find("o"))->GetSampler(CSGMaterial::PARAM_DIFFUSE);
    EXPECT_EQ(pOther->GetParams().m_eMipFilter, CSGSamplerParams::FILTER_NONE);
    EXPECT_TRUE(objScene.m_objLog.HasLine("1 Unknown sampler wrap value 5"));

    // One texture for both, with all its levels; its pixels are the file's.
    EXPECT_EQ(pSampler->GetSurface(), pOther->GetSurface());
    const CSGTexture* pTexture = TextureOf(*pSampler);
    EXPECT_EQ(TextureOf(*MaterialOf(objScene.Find("p"))->GetSampler(CSGMaterial::PARAM_DIFFUSE)), pTexture)
        << "another image of the same file";
    EXPECT_EQ(pTexture->GetSourceName(), objImage.GetName());
    EXPECT_EQ(pTexture->GetLayout(), (CSGTextureLayout{2, 1, 2, PIXEL_FORMAT_R8G8B8}));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(pTexture->GetDataPtr()), 6), "\0\0\xFF\xFF\0\0"s);
}

TEST(ColladaMaterials, MaterialsOfOneEffectShareItsParameters)
{
    const CTempFile objImage("i.tga", TGA);
    const CColladaTestScene objScene(
        Scene(Image("i", objImage.GetName()),
              Effect("e", Sampler() + Phong("<emission>" + TEXTURE + "</emission>")),
              Material("a", "e") + Material("b", "e", "<Vantor_MipMapBias> -1.5 </Vantor_MipMapBias>") +
                  Material("c", "e", "<Vantor_AlphaBlend>1</Vantor_AlphaBlend>") +
                  Material("d", "e", "<Vantor_MipMapBias>x</Vantor_MipMapBias><Vantor_AlphaBlend/>"),
              Node("n", Instance(Bind("a", "a") + Bind("b", "b") + Bind("c", "c") + Bind("d", "d"))),
              {"a", "b", "c", "d"}));
    ASSERT_TRUE(objScene.m_spRoot);
    CSGMaterial* arrMaterials[] = {MaterialOf(objScene.Find("n/a")), MaterialOf(objScene.Find("n/b")),
                                   MaterialOf(objScene.Find("n/c")), MaterialOf(objScene.Find("n/d"))};
    for (CSGMaterial* pMaterial : arrMaterials)
    {
        ASSERT_NE(pMaterial, nullptr);
        // Defaults are shared, too.
        EXPECT_EQ(pMaterial->GetParam(CSGMaterial::PARAM_DIFFUSE),
                  arrMaterials[0]->GetParam(CSGMaterial::PARAM_DIFFUSE));
    }
    const auto GetSampler = [&](int n) { return arrMaterials[n]->GetSampler(CSGMaterial::PARAM_EMISSION); };
    EXPECT_EQ(GetSampler(0)->GetParams().m_fMipMapBias, 0.0f);
    EXPECT_EQ(GetSampler(1)->GetParams().m_fMipMapBias, -1.5f);
    EXPECT_EQ(GetSampler(1)->GetSurface(), GetSampler(0)->GetSurface());
    EXPECT_EQ(GetSampler(2), GetSampler(0));
    EXPECT_EQ(DescribeMaterial(arrMaterials[2]), "emission=set0 blend");
    EXPECT_STREQ(arrMaterials[2]->GetGlobalName().c_str(), "c");
    EXPECT_EQ(objScene.GetComplaints(),
              (std::vector<std::string>{"1 Failed to load Vantor_MipMapBias element.",
                                        "1 Failed to load Vantor_AlphaBlend element."}));
}

TEST(ColladaMaterials, GeometryIsGroupedByMaterial)
{
    struct CCase
    {
        std::vector<std::string> vecSymbols;
        std::string strInstances;
        std::string strTree; // with the number of pieces and the material of each node
        std::vector<std::string> vecLines = {};
    };
    const std::string strUnbound =
        " material symbols of primitive elements that their <bind_material> does not bind.";
    const std::string strA = Bind("a", "m1");
    const std::string strB = Bind("b", "m2");
    const CCase arrCases[] = {
        {{"a", "a"}, Instance(strA), "n:2:m1"},
        {{"a", "b"}, Instance(strA + Bind("b", "m1")), "n:2:m1"},
        {{"a", "b", "a"}, Instance(strB + strA + Bind("z", "m2")), "n(n/m2:1:m2,n/m1:2:m1)"},
        {{"a", "b", "c", "d"}, Instance(strB), "n(n/m2:1:m2,n/a:3:)", {"4 Ignoring 3" + strUnbound}},
        {{"a", ""}, Instance(strA), "n(n/m1:1:m1,n/unbound:1:)"},
        {{"a", "b"}, Instance(""), "n:2:", {"4 Ignoring 2" + strUnbound}},
        {{"a", "b"}, "<instance_geometry url=\"#g\"/>", "n:2:"},
        {{"a"}, Instance(strA + Bind("a", "m2")), "n:1:m1"},
        {{"a", "b"},
         Instance(strA) + Instance(strA + strB),
         "n(n/g(n/g/m1:1:m1,n/g/b:1:),n/g(n/g/m1:1:m1,n/g/m2:1:m2))",
         {"4 Ignoring 1" + strUnbound}},
        {{"a", "b"},
         Instance(strA + Bind("b", "no")),
         "n(n/m1:1:m1,n/b:1:)",
         {"1 Failed to find element named \"no\".", "1 URI referenced NULL element.",
          "1 Failed to get <material> referenced by <instance_material> in <bind_material>",
          "1 Had NULL material data for material \"b\"."}},
    };
    for (const CCase& rCase : arrCases)
    {
        const CColladaTestScene objScene(Scene("", Effect("e", Phong("")),
                                               Material("m1", "e") + Material("m2", "e"),
                                               Node("n", rCase.strInstances), rCase.vecSymbols));
        ASSERT_TRUE(objScene.m_spRoot) << rCase.strTree;
        EXPECT_EQ(DescribeTree(*objScene.Find("n")), rCase.strTree);
        EXPECT_EQ(objScene.GetComplaints(), rCase.vecLines) << rCase.strTree;
    }
}

TEST(ColladaMaterials, InstancesShareWhatTheyCan)
{
    const CTempFile objImage("i.tga", TGA);
    const std::string strProfile =
        Sampler() + Phong("<emission><texture texture=\"sampler\" texcoord=\"A\"/></emission>"
                          "<diffuse><texture texture=\"sampler\" texcoord=\"B\"/></diffuse>");
    const std::string strBound = Bind("s", "m", SetOf("A", 2) + SetOf("B", 1));
    const CColladaTestScene objScene(
        Scene(Image("i", objImage.GetName()), Effect("e", strProfile), Material("m", "e"),
              Node("n1", Instance(Bind("s", "m"))) + Node("n2", Instance(strBound)) +
                  Node("n3", Instance(strBound)) +
                  Node("n4", Instance(Bind("s", "m",
                                           "<bind semantic=\"A\" target=\"x\"/><bind_vertex_input "
                                           "semantic=\"T\" input_semantic=\"TANGENT\"/>")))));
    ASSERT_TRUE(objScene.m_spRoot);
    const auto GetMaterialData = [&](const char* sz) {
        return objScene.Find(sz)->FindData<CSGData_Material>();
    };
    EXPECT_EQ(DescribeMaterial(MaterialOf(objScene.Find("n1"))), "emission=set0 diffuse=set0");
    EXPECT_EQ(DescribeMaterial(MaterialOf(objScene.Find("n2"))), "emission=set2 diffuse=set1");
    EXPECT_EQ(GetMaterialData("n2"), GetMaterialData("n3"));
    EXPECT_EQ(GetMaterialData("n1"), GetMaterialData("n4"));
    EXPECT_EQ(MaterialOf(objScene.Find("n1"))->GetParam(CSGMaterial::PARAM_DIFFUSE),
              MaterialOf(objScene.Find("n2"))->GetParam(CSGMaterial::PARAM_DIFFUSE));
    EXPECT_EQ(objScene.Find("n1")->FindData<CSGData_Geometry>(),
              objScene.Find("n2")->FindData<CSGData_Geometry>());
    EXPECT_EQ(
        objScene.GetComplaints(),
        std::vector<std::string>{"1 Got unsupported input_semantic \"TANGENT\" in <bind_vertex_input> at "
                                 "index 0 of <instance_material>"});
}

TEST(ColladaMaterials, Images)
{
    const CTempFile objImage("i.tga", TGA);
    std::string strHex;
    for (const char c : TGA)
    {
        strHex += "0123456789abcdef"[static_cast<unsigned char>(c) >> 4];
        strHex += "0123456789ABCDEF"[c & 15];
    }
    const CSGTextureLayout objFailed = CSGTex_2D::GetTextureFailedToLoad()->GetLayout();
    struct CCase
    {
        std::string strImage;
        bool bLoaded;
        std::vector<std::string> vecLines = {};
    };
    const CCase arrCases[] = {
        {"<image id=\"i\"><data>" + strHex.substr(0, 7) + "\n" + strHex.substr(7) + "</data></image>", true},
        {"<image id=\"i\"><data>zz</data></image>", false},
        {Image("i", "no.png"), false},
        {Image("i", " "), false, {"1 <init_from> \"\" in <image id=\"i\"> names no file"}},
        {Image("i", "http://host/i.tga"),
         false,
         {"1 \"http://host/i.tga\" referenced by <init_from> in <image id=\"i\"> is not a local file"}},
    };
    for (const CCase& rCase : arrCases)
    {
        const CColladaTestScene objScene(SceneOfEffect(rCase.strImage, Sampler() + DIFFUSE));
        ASSERT_TRUE(objScene.m_spRoot) << rCase.strImage;
        const CSGSampler* pSampler = MaterialOf(objScene.Find("n"))->GetSampler(CSGMaterial::PARAM_DIFFUSE);
        EXPECT_EQ(TextureOf(*pSampler)->GetLayout(),
                  rCase.bLoaded ? (CSGTextureLayout{2, 1, 2, PIXEL_FORMAT_R8G8B8}) : objFailed)
            << rCase.strImage;
        const std::vector<std::string> vecLines = objScene.GetComplaints();
        EXPECT_EQ(vecLines.size(), rCase.bLoaded ? 0u : 1u) << rCase.strImage;
        EXPECT_TRUE(rCase.vecLines.empty() || vecLines == rCase.vecLines) << rCase.strImage;
    }
}

TEST(ColladaMaterials, TexturePool)
{
    const CTempFile objImage("pooled.tga", TGA);
    const CTempFile objOther("other.tga", TGA);
    const boost::intrusive_ptr<CSGTexturePool> spPool = CSGTexturePool::GetPool("collada materials");
    spPool->AddTexturePath(std::filesystem::path(objImage.GetName()).parent_path());
    const auto Load = [&](const std::string& rFile, CLogCapture& rLog) {
        const CTempFile objFile("scene.dae",
                                DaeTestDocument(SceneOfEffect(Image("i", rFile), Sampler() + DIFFUSE)));
        CQDSGLoaderColladaLib::InitLibrary();
        const auto spLoader = CSGLoaderCollada::Create(CSGTextureLoader::CreateStandardLoader());
        spLoader->SetTexturePool(spPool);
        EXPECT_TRUE(spLoader->LoadFile(objFile.GetName()));
        rLog.Clear();
        const auto spRoot = spLoader->LoadSceneGraph();
        const CSGSampler* pSampler =
            MaterialOf(spRoot->FindNodeByGlobalName("n"))->GetSampler(CSGMaterial::PARAM_DIFFUSE);
        return boost::intrusive_ptr<CSGTexture>(TextureOf(*pSampler));
    };
    CLogCapture objLog;
    const auto spPooled = Load("far/away/pooled.tga", objLog);
    auto* pPooled = SGStreamableCast<CSGTextureFromPool>(spPooled.get());
    ASSERT_NE(pPooled, nullptr);
    EXPECT_EQ(pPooled->GetTexture(), spPool->GetTexture("pooled.tga").get());
    EXPECT_EQ(pPooled->GetLayout(), (CSGTextureLayout{2, 1, 2, PIXEL_FORMAT_R8G8B8}));
    EXPECT_TRUE(objLog.HasLine("7 Substituting TexturePool 'collada materials' texture 'pooled.tga' for file "
                               "'far/away/pooled.tga'"));
    const auto spOther = Load(objOther.GetName(), objLog);
    EXPECT_NE(SGStreamableCast<CSGTex_2D>(spOther.get()), nullptr);
    EXPECT_EQ(spOther->GetSourceName(), objOther.GetName());
    EXPECT_TRUE(
        objLog.HasLine("4 Failed to load texture 'other.tga' from pool 'collada materials'.  Trying actual "
                       "file."));
}

TEST(ColladaMaterials, DressedSceneIsSavedWhole)
{
    CQDSGLoaderColladaLib::InitLibrary();
    const auto spLoader = CSGLoaderCollada::Create(CSGTextureLoader::CreateStandardLoader());
    ASSERT_TRUE(spLoader->LoadFile(QDSG_TEST_DATA_DIR "/dressed.dae"));
    const CTempFile objFile("dressed.nest");
    ASSERT_TRUE(CSGNestWriter().SaveResourceSet(objFile.GetName(), spLoader->LoadResourceSet().get()));
    CSGNestReader objReader;
    ASSERT_TRUE(objReader.LoadFile(objFile.GetName()));
    const CSGNode& rRoot = *objReader.m_spResourceSet->GetFirstNode();
    EXPECT_EQ(DescribeTree(rRoot),
              "Scene(Wall(Wall/glass:1:glass,Wall/brick:1:brick),Fence:2:fence,Lamp,Eye)");
    const auto Describe = [&](const char* sz) {
        return DescribeMaterial(MaterialOf(rRoot.FindNodeByGlobalName(sz)));
    };
    EXPECT_EQ(Describe("Wall/glass"),
              "diffuse=0.5,0.75,1,1 transparent=0.5,0.75,0.25,1 transparency=0.5 mode=0");
    EXPECT_EQ(Describe("Wall/brick"), "diffuse=set1 specular=0.25,0.5,0.75,1 shininess=16");
    EXPECT_EQ(Describe("Fence"), "diffuse=set0 specular=0.25,0.5,0.75,1 shininess=16 blend");
    const CSGSampler* pSampler =
        MaterialOf(rRoot.FindNodeByGlobalName("Fence"))->GetSampler(CSGMaterial::PARAM_DIFFUSE);
    EXPECT_EQ(pSampler->GetParams().m_fMipMapBias, -1.5f);
    EXPECT_EQ(pSampler->GetParams().m_eWrapS, CSGSamplerParams::WRAP_MIRROR);
    // The top left pixel is red, the bottom left one grey.
    const auto* pTexture = SGStreamableCast<CSGTex_2D>(TextureOf(*pSampler));
    CColor objColor;
    EXPECT_TRUE(pTexture->GetPixelColor(0, 0, objColor) && objColor == (CColor{1, 0, 0, 1}));
    EXPECT_TRUE(pTexture->GetPixelColor(0, 3, objColor) && objColor.r == 180 / 255.0f);
}
