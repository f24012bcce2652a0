// Materials, textures and images of FBX files.
#include "qdscenegraph/material/CSGData_Material.h"
#include "qdscenegraph/material/CSGSampler.h"
#include "qdscenegraph/material/CSGSurf_Texture.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdsgloader_fbx/CFBXTestGraph.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{

using namespace std::string_literals;
using EParam = CSGMaterial::EParam;
namespace fs = std::filesystem;

// 2 by 1 pixels, blue and red, from the bottom up and BGR.
const std::string TGA = "\0\0\2\0\0\0\0\0\0\0\0\0\2\0\1\0\30\0\xFF\0\0\0\0\xFF"s;
const std::string TGA_BASE64 = "AAACAAAAAAAAAAAAAgABABgA/wAAAAD/";

std::string Material(const CValues& rValues, const std::string& rShading = "phong")
{
    return Object("Material", 3, "m", "", "ShadingModel: \"" + rShading + "\"\n" + Properties(rValues));
}

std::string Texture(int nID, const std::string& rName, const std::string& rFile,
                    const std::string& rRelative = "", const CValues& rValues = {})
{
    return Object("Texture", nID, rName, "",
                  "FileName: \"" + rFile + "\"\nRelativeFilename: \"" + rRelative + "\"\n" +
                      Properties(rValues));
}

std::string Video(int nID, const std::string& rName, const std::string& rContent = "")
{
    return Object("Video", nID, rName, "", rContent.empty() ? "" : "Content: , " + rContent + "\n");
}

std::string UVSet(const std::string& rLayer, const std::string& rName)
{
    return "LayerElementUV: " + rLayer + " {\nName: \"" + rName +
           "\"\nMappingInformationType: \"ByPolygonVertex\"\nReferenceInformationType: \"Direct\"\n"
           "UV: *6 { a: 0,0,1,0,0,1 }\n}\nLayer: " +
           rLayer + " {\nLayerElement: {\nType: \"LayerElementUV\"\nTypedIndex: " + rLayer + "\n}\n}\n";
}

// A model "n" (2) of one triangle with texture coordinates "one" and "two", and the material 3.
std::string Scene(const std::string& rObjects, const CValues& rConnections = {},
                  const CValues& rNodeValues = {})
{
    return MakeFBXFile(
        Object("Geometry", 1, "g", "Mesh",
               "Vertices: *9 { a: 0,0,0,1,0,0,0,1,0 }\nPolygonVertexIndex: *3 { a: 0,1,-3 }\n" +
                   UVSet("0", "one") + UVSet("1", "two")) +
            Object("Model", 2, "n", "Mesh", Properties(rNodeValues, "U")) + rObjects,
        Connect({"2,0", "1,2", "3,2"}) + Connect(rConnections));
}

// The materials of a scene graph by name.
struct CMaterialGraph : CFBXTestGraph
{
    explicit CMaterialGraph(const CTempFile& rFile,
                            const boost::intrusive_ptr<CSGTexturePool>& spPool = nullptr)
        : CFBXTestGraph(rFile.GetName(), 0, spPool)
    {}
    using CFBXTestGraph::CFBXTestGraph;

    // Of any node, else of the one below a node.
    const CSGMaterial* Get(const std::string& rName = "m", const CSGNode* pNode = nullptr) const
    {
        pNode = pNode == nullptr ? m_spRoot.get() : pNode;
        const auto* pData = pNode != nullptr ? pNode->FindData<CSGData_Material>() : nullptr;
        const CSGMaterial* pFound = pData != nullptr ? pData->GetMaterial() : nullptr;
        pFound = pFound != nullptr && pFound->GetGlobalName() == rName ? pFound : nullptr;
        for (int32_t n = 0; pFound == nullptr && pNode != nullptr && n < pNode->GetChildrenSize(); ++n)
        {
            pFound = Get(rName, pNode->GetChild(n));
        }
        return pFound;
    }
    // The name that the image of a slot was loaded by.
    std::string GetImage(EParam eParam, const std::string& rName = "m") const
    {
        const CSGTexture* pTexture = GetTexture(eParam, rName);
        return pTexture == nullptr                                     ? "no texture"
               : pTexture == CSGTex_2D::GetTextureFailedToLoad().get() ? "failed to load"
                                                                       : pTexture->GetSourceName();
    }
    const CSGTexture* GetTexture(EParam eParam, const std::string& rName = "m") const
    {
        const CSGMaterial* pMaterial = Get(rName);
        const CSGSampler* pSampler = pMaterial != nullptr ? pMaterial->GetSampler(eParam) : nullptr;
        return pSampler != nullptr ? static_cast<const CSGSurf_Texture*>(pSampler->GetSurface())->GetTexture()
                                   : nullptr;
    }
};

std::string DescribeColor(const CSGMaterial& rMaterial, EParam eParam)
{
    const CSGFloat4 c = rMaterial.GetColorValue(eParam);
    char arrText[64];
    std::snprintf(arrText, sizeof(arrText), "%g %g %g|", static_cast<double>(c.x), static_cast<double>(c.y),
                  static_cast<double>(c.z));
    return arrText;
}

} // namespace

TEST(FBXMaterials, PropertiesBecomeColors)
{
    const struct
    {
        const char* szShading;
        CValues vecValues;
        const char* szExpected; // emission | ambient | diffuse | specular | shininess | opacity | flags
    } CASES[] = {
        {"phong", {}, "0 0 0|0 0 0|0.8 0.8 0.8|0 0 0|0|1|0"},
        {"phong",
         {"DiffuseColor 0.25,0.5,0.75", "EmissiveColor 1,0.5,0.25", "AmbientColor 0.125,0.25,0.5",
          "SpecularColor 1,0.5,0.25", "SpecularFactor 0.5", "ShininessExponent 32"},
         "1 0.5 0.25|0.125 0.25 0.5|0.25 0.5 0.75|0.5 0.25 0.125|32|1|0"},
        // Factors are not used, but nothing is left of a colour at 0.
        {"phong",
         {"DiffuseColor 0.5,0.5,0.5", "DiffuseFactor 0.5", "EmissiveColor 1,1,1", "EmissiveFactor 0",
          "AmbientColor 1,1,1", "AmbientFactor 0"},
         "0 0 0|0 0 0|0.5 0.5 0.5|0 0 0|0|1|0"},
        {"Lambert",
         {"SpecularColor 1,1,1", "ShininessExponent 32", "Shininess 5"},
         "0 0 0|0 0 0|0.8 0.8 0.8|0 0 0|0|1|0"},
        {"phong", {"Shininess 5"}, "0 0 0|0 0 0|0.8 0.8 0.8|0 0 0|5|1|0"},
        // What is let through, as the tools write it.
        {"phong", {"TransparencyFactor 0.25"}, "0 0 0|0 0 0|0.8 0.8 0.8|0 0 0|0|0.75|2"},
        {"phong",
         {"TransparencyFactor 1", "TransparentColor 0,0,0", "Opacity 1"},
         "0 0 0|0 0 0|0.8 0.8 0.8|0 0 0|0|1|0"},
        {"phong",
         {"TransparencyFactor 0.5", "TransparentColor 0.5,0.25,0.75", "Opacity 1"},
         "0 0 0|0 0 0|0.8 0.8 0.8|0 0 0|0|0.75|2"},
        {"phong",
         {"TransparencyFactor 0.5", "TransparentColor 0.5,0.5,0.5", "Opacity 0.5"},
         "0 0 0|0 0 0|0.8 0.8 0.8|0 0 0|0|0.5|2"},
        // Shaders of the tools' own.
        {"unknown",
         {"DiffuseColor 0.5,0.5,0.5", "Maya|baseColor 0.125,0.25,0.5", "Maya|emission 0",
          "Maya|emissionColor 1,1,1"},
         "0 0 0|0 0 0|0.125 0.25 0.5|0 0 0|0|1|0"},
    };
    for (const auto& rCase : CASES)
    {
        SCOPED_TRACE(&rCase - CASES);
        const CTempFile objFile("a.fbx", Scene(Material(rCase.vecValues, rCase.szShading)));
        const CMaterialGraph objMaterials(objFile);
        const CSGMaterial* pMaterial = objMaterials.Get();
        ASSERT_NE(pMaterial, nullptr);
        char arrText[64];
        std::snprintf(arrText, sizeof(arrText), "%g|%g|%d",
                      static_cast<double>(pMaterial->GetFloatValue(CSGMaterial::PARAM_SHININESS)),
                      static_cast<double>(pMaterial->GetTotalTransparency()), pMaterial->GetMaterialFlags());
        EXPECT_EQ(DescribeColor(*pMaterial, CSGMaterial::PARAM_EMISSION) +
                      DescribeColor(*pMaterial, CSGMaterial::PARAM_AMBIENT) +
                      DescribeColor(*pMaterial, CSGMaterial::PARAM_DIFFUSE) +
                      DescribeColor(*pMaterial, CSGMaterial::PARAM_SPECULAR) + arrText,
                  rCase.szExpected);
        EXPECT_EQ(objMaterials.m_objLog.Contains("Decided to alphasort material 'm' because it had a "
                                                 "transparency value of 0."),
                  pMaterial->GetTotalTransparency() < 1);
    }
}

TEST(FBXMaterials, ImagesAreFoundWhereTheyTravelledTo)
{
    const struct
    {
        const char* szFile;
        const char* szRelative;
        const char* szExisting; // below the scene's folder; empty: none
        const char* szLine;     // '@': that folder
    } CASES[] = {
        {"@a.tga", "b.tga", "a.tga", "7 Loading '@a.tga' for image 'v'"},
        {"textures\\a.tga", "", "textures/a.tga", "7 Loading '@textures/a.tga' for image 'v'"},
        {"C:\\art\\a.tga", "tex\\a.tga", "tex/a.tga",
         "7 Loading '@tex/a.tga' instead of nonexistent 'C:\\art\\a.tga'"},
        {"C:\\art\\a.tga", "..\\art\\a.tga", "a.tga",
         "4 Loading '@a.tga' instead of 'C:\\art\\a.tga' (found in same directory as fbx)"},
        {"/art/a.tga", "", "scene.fbm/a.tga",
         "4 Loading '@scene.fbm/a.tga' instead of nonexistent '/art/a.tga'"},
        {"", "tex/a.tga", "tex/a.tga", "7 Loading '@tex/a.tga' for image 'v'"},
        {"C:\\art\\a.tga", "a.tga", "", "1 Did not find 'C:\\art\\a.tga' or '@a.tga'"},
        {"", "", "", "4 Ignoring texture 't' for property 'DiffuseColor' of material 'm': it has no image"},
    };
    for (const auto& rCase : CASES)
    {
        SCOPED_TRACE(rCase.szLine);
        const CTempFile objFile("scene.fbx");
        const fs::path objFolder = fs::path(objFile.GetName()).parent_path();
        const auto Expand = [&](std::string strText) {
            const size_t nAt = strText.find('@');
            return nAt == std::string::npos ? strText : strText.replace(nAt, 1, objFolder.string() + "/");
        };
        objFile.WriteBytes(
            Scene(Material({}) + Texture(4, "t", Expand(rCase.szFile), rCase.szRelative) + Video(5, "v"),
                  {"4,3,DiffuseColor", "5,4"}));
        const fs::path objImage = objFolder / rCase.szExisting;
        const bool bExists = *rCase.szExisting != '\0';
        if (bExists)
        {
            fs::create_directories(objImage.parent_path());
            std::ofstream(objImage, std::ios::binary) << TGA;
        }
        const CMaterialGraph objMaterials(objFile);
        EXPECT_TRUE(objMaterials.m_objLog.HasLine(Expand(rCase.szLine)));
        EXPECT_EQ(objMaterials.GetImage(CSGMaterial::PARAM_DIFFUSE), bExists ? objImage.string()
                                                                     : *rCase.szFile != '\0'
                                                                         ? "failed to load"
                                                                         : "no texture");
        if (bExists)
        {
            EXPECT_EQ(objMaterials.GetTexture(CSGMaterial::PARAM_DIFFUSE)->GetNumLevels(), 2);
        }
    }
}

TEST(FBXMaterials, EmbeddedImagesAreDecodedFromPieces)
{
    const struct
    {
        std::string strContent;
        bool bDecodes;
        const char* szLine;
    } CASES[] = {
        {"\"" + TGA_BASE64 + "\"", true, "7 Loading embedded content for image 'v'"},
        {"\"" + TGA_BASE64.substr(0, 9) + "\",\n\"" + TGA_BASE64.substr(9) + "\"", true,
         "7 Loading embedded content for image 'v'"},
        {"\"" + TGA_BASE64 + "A\"", false,
         "1 Embedded content of video 'v' ends too early ('Content' at line "},
        {"\"AA==" + TGA_BASE64 + "\"", false,
         "1 Embedded content of video 'v' is not base64 ('Content' at line "},
        {"\"AA!A\"", false, "1 Embedded content of video 'v' is not base64 ('Content' at line "},
        {"\"AAAA\"", false, "1 Failed to load texture \"C:\\x\\a.tga\": "},
    };
    for (const auto& rCase : CASES)
    {
        SCOPED_TRACE(rCase.strContent);
        const CTempFile objFile(
            "a.fbx", Scene(Material({}) + Texture(4, "t", "C:\\x\\a.tga") + Video(5, "v", rCase.strContent),
                           {"4,3,DiffuseColor", "5,4"}));
        const CMaterialGraph objMaterials(objFile);
        EXPECT_TRUE(objMaterials.m_objLog.Contains(rCase.szLine));
        EXPECT_EQ(objMaterials.GetImage(CSGMaterial::PARAM_DIFFUSE),
                  rCase.bDecodes ? "C:\\x\\a.tga" : "failed to load");
        const auto* pTexture =
            static_cast<const CSGTex_2D*>(objMaterials.GetTexture(CSGMaterial::PARAM_DIFFUSE));
        ASSERT_NE(pTexture, nullptr);
        CColor objPixel;
        ASSERT_TRUE(pTexture->GetPixelColor(1, 0, objPixel));
        EXPECT_EQ(objPixel == CColor(1, 0, 0, 1), rCase.bDecodes);
    }
}

TEST(FBXMaterials, ThePoolComesFirst)
{
    const CTempFile objPoolFile("p.tga", TGA);
    const auto spPool = CSGTexturePool::GetPool("fbx");
    spPool->AddTexturePath(fs::path(objPoolFile.GetName()).parent_path());
    const CTempFile objFile("a.fbx",
                            Scene(Material({}) + Texture(4, "t", "C:\\x\\p.tga") + Texture(5, "u", "q.tga") +
                                      Video(6, "v", "\"" + TGA_BASE64 + "\""),
                                  {"4,3,DiffuseColor", "6,4", "5,3,EmissiveColor"}));
    const CMaterialGraph objMaterials(objFile, spPool);
    EXPECT_EQ(objMaterials.GetImage(CSGMaterial::PARAM_DIFFUSE), "p.tga");
    EXPECT_TRUE(objMaterials.m_objLog.HasLine(
        "7 Substituting TexturePool 'fbx' texture 'p.tga' for file 'C:\\x\\p.tga'"));
    EXPECT_EQ(objMaterials.GetImage(CSGMaterial::PARAM_EMISSION), "failed to load");
    EXPECT_TRUE(objMaterials.m_objLog.HasLine(
        "4 Failed to load texture 'q.tga' from pool 'fbx'.  Trying actual file."));
}

TEST(FBXMaterials, TexturesMaskReplaceAndShare)
{
    const CTempFile objFile("a.fbx");
    const std::string strImage = objFile.GetName() + ".tga";
    std::ofstream(strImage, std::ios::binary) << TGA;
    objFile.WriteBytes(
        Scene(Material({"TransparencyFactor 1"}) + Texture(4, "diffuse", strImage) +
                  Texture(5, "mask", strImage, "", {"WrapModeU 1", "UVSet \"two\""}) +
                  Texture(6, "other", "other.tga") +
                  Texture(7, "normal", strImage, "", {"UVSet \"three\"", "Scaling 2,2,1"}) +
                  Texture(8, "shine", "b.tga", "", {"UVSet \"two\""}) +
                  Object("LayeredTexture", 9, "layers") + Video(10, "image"),
              {"4,3,DiffuseColor", "5,3,TransparentColor", "6,3,TransparentColor", "7,3,NormalMap",
               "8,3,SpecularFactor", "9,3,EmissiveColor", "4,3,Bump", "10,4", "10,5", "10,6", "10,7", "10,8"},
              {"vantor_alphablend 1", "vantor_mipmapbias -1.5"}));
    const CMaterialGraph objMaterials(objFile);
    const CSGMaterial* pMaterial = objMaterials.Get();
    ASSERT_NE(pMaterial, nullptr);
    for (const std::string& rLine :
         {"7 Decided to alphamask material 'm' because it has a transparent sampler."s,
          "7 Replacing diffuse sampler with transparency sampler in material 'm'."s,
          "4 Ignoring texture 'other' for property 'TransparentColor' of material 'm': it is not the first"s,
          "4 Ignoring layered textures for property 'EmissiveColor')"s,
          "4 Ignoring texture 'diffuse' for property 'Bump' of material 'm'"s,
          "4 Ignoring the placement of texture 'normal' for property 'NormalMap' of material 'm'"s,
          "4 Image 'image' encountered with different filenames."s, "4 Cached: '" + strImage + "'",
          "4 Second: 'b.tga'"s})
    {
        EXPECT_TRUE(objMaterials.m_objLog.HasLine(rLine)) << rLine;
    }
    EXPECT_EQ(pMaterial->GetMaterialFlags(), CSGMaterial::FLAG_ALPHA_MASK | CSGMaterial::FLAG_ALPHA_BLEND);
    EXPECT_EQ(pMaterial->GetTotalTransparency(), 1.0f);
    EXPECT_EQ(DescribeColor(*pMaterial, CSGMaterial::PARAM_EMISSION), "0 0 0|");
    const CSGSampler* pDiffuse = pMaterial->GetSampler(CSGMaterial::PARAM_DIFFUSE);
    const CSGSampler* pNormal = pMaterial->GetSampler(CSGMaterial::PARAM_NORMALMAP);
    const CSGSampler* pSpecular = pMaterial->GetSampler(CSGMaterial::PARAM_SPECULAR);
    ASSERT_TRUE(pDiffuse != nullptr && pNormal != nullptr && pSpecular != nullptr);
    EXPECT_EQ(pDiffuse->GetSurface(), pNormal->GetSurface());
    EXPECT_EQ(pDiffuse->GetParams().m_eWrapS, CSGSamplerParams::WRAP_CLAMP);
    EXPECT_EQ(pDiffuse->GetParams().m_eWrapT, CSGSamplerParams::WRAP_REPEAT);
    EXPECT_EQ(pNormal->GetParams().m_eWrapS, CSGSamplerParams::WRAP_REPEAT);
    EXPECT_EQ(pNormal->GetParams().m_fMipMapBias, -1.5f);
    EXPECT_EQ(pMaterial->GetTexCoordSet(CSGMaterial::PARAM_DIFFUSE), 1);
    EXPECT_EQ(pMaterial->GetTexCoordSet(CSGMaterial::PARAM_NORMALMAP), 0);
    EXPECT_EQ(pMaterial->GetTexCoordSet(CSGMaterial::PARAM_SPECULAR), 1);
    EXPECT_EQ(pMaterial->GetTexCoordSet(CSGMaterial::PARAM_EMISSION), -1);
}
