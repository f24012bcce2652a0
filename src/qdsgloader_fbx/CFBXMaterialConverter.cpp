#include "qdsgloader_fbx/CFBXMaterialConverter.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLog.h"
#include "qdscenegraph/material/CSGParamTmpl.h"
#include "qdsgloader_fbx/CFBXImages.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <algorithm>
#include <cctype>

namespace
{

using EParam = CSGMaterial::EParam;

// The properties that a colour of the material may come from.
struct CColorSource
{
    EParam m_eParam;
    const char* m_szColor;
    const char* m_szTexture;
    const char* m_szFactor;
};

// Those of the tools' own shaders come first: they are in no other material, while the definitions of a file
// give the general ones to all.
constexpr CColorSource COLOR_SOURCES[] = {
    {CSGMaterial::PARAM_EMISSION, "Maya|emissionColor", "Maya|emissionColor", "Maya|emission"},
    {CSGMaterial::PARAM_EMISSION, "3dsMax|Parameters|emit_color", "3dsMax|Parameters|emit_color_map",
     "3dsMax|Parameters|emission"},
    {CSGMaterial::PARAM_EMISSION, FbxSurfaceMaterial::sEmissive, FbxSurfaceMaterial::sEmissive,
     FbxSurfaceMaterial::sEmissiveFactor},
    {CSGMaterial::PARAM_AMBIENT, FbxSurfaceMaterial::sAmbient, FbxSurfaceMaterial::sAmbient,
     FbxSurfaceMaterial::sAmbientFactor},
    {CSGMaterial::PARAM_DIFFUSE, "Maya|baseColor", "Maya|baseColor", "Maya|base"},
    {CSGMaterial::PARAM_DIFFUSE, "Maya|base_color", "Maya|TEX_color_map", nullptr},
    {CSGMaterial::PARAM_DIFFUSE, "3dsMax|Parameters|base_color", "3dsMax|Parameters|base_color_map",
     "3dsMax|Parameters|base_weight"},
    {CSGMaterial::PARAM_DIFFUSE, FbxSurfaceMaterial::sDiffuse, FbxSurfaceMaterial::sDiffuse,
     FbxSurfaceMaterial::sDiffuseFactor},
};

// Textures of these are read, but no parameter of a material holds them.
constexpr const char* IGNORED_PROPERTIES[] = {
    FbxSurfaceMaterial::sDiffuseFactor, FbxSurfaceMaterial::sEmissiveFactor,
    FbxSurfaceMaterial::sAmbientFactor, FbxSurfaceMaterial::sBump,
    FbxSurfaceMaterial::sReflection,    FbxSurfaceMaterial::sReflectionFactor,
    FbxSurfaceMaterial::sShininess,
};

// The colour of Lambert and Phong materials that do not say theirs.
constexpr double DEFAULT_DIFFUSE = 0.8;

bool IsLambert(const FbxSurfaceMaterial& rMaterial)
{
    return std::ranges::equal(rMaterial.GetShadingModel(), std::string_view("lambert"), [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) == b;
    });
}

bool IsPlaced(const FbxTexture& rTexture)
{
    return rTexture.GetTranslation() != FbxDouble3{} || rTexture.GetRotation() != FbxDouble3{} ||
           rTexture.GetScaling() != FbxDouble3{1, 1, 1} || rTexture.GetSwapUV();
}

} // namespace

CFBXMaterialConverter::CResult CFBXMaterialConverter::PreprocessFBXMaterial()
{
    LoadColors();
    LoadSpecular();
    LoadShininess();
    LoadTexture(CSGMaterial::PARAM_NORMALMAP, FbxSurfaceMaterial::sNormalMap) ||
        LoadTexture(CSGMaterial::PARAM_NORMALMAP, "Maya|TEX_normal_map") ||
        LoadTexture(CSGMaterial::PARAM_NORMALMAP, "Maya|normalCamera");
    const CQDString& rName = m_rMaterial.GetName();
    const CSGParamPtr spDiffuse = GetParam(CSGMaterial::PARAM_DIFFUSE);
    const double dOpacity = m_rMaterial.GetOpacity();
    int32_t nMaterialFlags = 0;
    if (const FbxProperty objColor = m_rMaterial.FindProperty(FbxSurfaceMaterial::sTransparentColor);
        objColor.IsValid())
    {
        SetColor(CSGMaterial::PARAM_TRANSPARENT, objColor.GetDouble3().m_arrValues);
    }
    if (LoadTexture(CSGMaterial::PARAM_DIFFUSE, FbxSurfaceMaterial::sTransparentColor) ||
        LoadTexture(CSGMaterial::PARAM_DIFFUSE, FbxSurfaceMaterial::sTransparencyFactor))
    {
        Log(QD_FBX, LOG_INFO, "Decided to alphamask material '%s' because it has a transparent sampler.",
            rName);
        if (spDiffuse && spDiffuse->GetType() == CSGParam::PARAM_TYPE_SAMPLER)
        {
            Log(QD_FBX, LOG_INFO, "Replacing diffuse sampler with transparency sampler in material '%s'.",
                rName);
        }
        nMaterialFlags = CSGMaterial::FLAG_ALPHA_MASK;
    }
    else if (dOpacity < 1.0)
    {
        Log(QD_FBX, LOG_INFO, "Decided to alphasort material '%s' because it had a transparency value of %g.",
            rName, 1.0 - dOpacity);
        GetParam(CSGMaterial::PARAM_TRANSPARENCY) = CSGParamTmpl<float>::Create(
            CSGMaterial::GetParamName(CSGMaterial::PARAM_TRANSPARENCY), static_cast<float>(dOpacity));
        nMaterialFlags = CSGMaterial::FLAG_ALPHA_BLEND;
    }
    LogIgnored();
    m_objResult.spMaterial = CSGMaterial::Create(
        GetParam(CSGMaterial::PARAM_EMISSION), GetParam(CSGMaterial::PARAM_AMBIENT),
        GetParam(CSGMaterial::PARAM_DIFFUSE), GetParam(CSGMaterial::PARAM_SPECULAR),
        GetParam(CSGMaterial::PARAM_NORMALMAP), GetParam(CSGMaterial::PARAM_SHININESS),
        GetParam(CSGMaterial::PARAM_TRANSPARENT), GetParam(CSGMaterial::PARAM_TRANSPARENCY), rName,
        CSGMaterial::TRANSPARENT_A_ONE, nMaterialFlags);
    return m_objResult;
}

void CFBXMaterialConverter::LoadColors()
{
    SetColor(CSGMaterial::PARAM_DIFFUSE, {DEFAULT_DIFFUSE, DEFAULT_DIFFUSE, DEFAULT_DIFFUSE});
    std::array<bool, CSGMaterial::PARAM_COUNT> arrFound{};
    for (const CColorSource& rSource : COLOR_SOURCES)
    {
        const FbxProperty objColor = m_rMaterial.FindProperty(rSource.m_szColor);
        bool& rbFound = arrFound[static_cast<size_t>(rSource.m_eParam)];
        if (rbFound ||
            (!objColor.IsValid() && m_rMaterial.GetSrcObjects<FbxTexture>(rSource.m_szTexture).empty()))
        {
            continue;
        }
        rbFound = true;
        // Tools leave a colour as it is, often white, and switch it off by its factor.
        const bool bOff =
            rSource.m_szFactor != nullptr && m_rMaterial.FindProperty(rSource.m_szFactor).GetDouble(1) == 0;
        if (bOff)
        {
            SetColor(rSource.m_eParam, {});
        }
        else if (!LoadTexture(rSource.m_eParam, rSource.m_szTexture) && objColor.IsValid())
        {
            SetColor(rSource.m_eParam, objColor.GetDouble3().m_arrValues);
        }
    }
}

void CFBXMaterialConverter::LoadSpecular()
{
    if (LoadTexture(CSGMaterial::PARAM_SPECULAR, FbxSurfaceMaterial::sSpecular) ||
        LoadTexture(CSGMaterial::PARAM_SPECULAR, FbxSurfaceMaterial::sSpecularFactor))
    {
        return;
    }
    const FbxProperty objColor = m_rMaterial.FindProperty(FbxSurfaceMaterial::sSpecular);
    if (objColor.IsValid() && !IsLambert(m_rMaterial))
    {
        const double dFactor = m_rMaterial.FindProperty(FbxSurfaceMaterial::sSpecularFactor).GetDouble(1);
        SetColor(CSGMaterial::PARAM_SPECULAR, (objColor.GetDouble3() * dFactor).m_arrValues);
    }
}

void CFBXMaterialConverter::LoadShininess()
{
    FbxProperty objShininess = m_rMaterial.FindProperty(FbxSurfaceMaterial::sShininess);
    if (!objShininess.IsValid())
    {
        objShininess = m_rMaterial.FindProperty("Shininess");
    }
    if (objShininess.IsValid() && !IsLambert(m_rMaterial))
    {
        GetParam(CSGMaterial::PARAM_SHININESS) =
            CSGParamTmpl<float>::Create(CSGMaterial::GetParamName(CSGMaterial::PARAM_SHININESS),
                                        static_cast<float>(objShininess.GetDouble()));
    }
}

void CFBXMaterialConverter::LogIgnored() const
{
    for (const char* szProperty : IGNORED_PROPERTIES)
    {
        for (const FbxTexture* pTexture : m_rMaterial.GetSrcObjects<FbxTexture>(szProperty))
        {
            Log(QD_FBX, LOG_WARNING, "Ignoring texture '%s' for property '%s' of material '%s'",
                pTexture->GetName(), szProperty, m_rMaterial.GetName());
        }
    }
}

const FbxFileTexture* CFBXMaterialConverter::FindTexture(std::string_view strProperty) const
{
    const FbxFileTexture* pFirst = nullptr;
    for (const FbxTexture* pTexture : m_rMaterial.GetSrcObjects<FbxTexture>(strProperty))
    {
        const auto* pFileTexture = dynamic_cast<const FbxFileTexture*>(pTexture);
        if (dynamic_cast<const FbxLayeredTexture*>(pTexture) != nullptr)
        {
            Log(QD_FBX, LOG_WARNING, "Ignoring layered textures for property '%s')", CQDString(strProperty));
        }
        else if (pFirst == nullptr && pFileTexture != nullptr && CFBXImages::HasImage(*pFileTexture))
        {
            pFirst = pFileTexture;
        }
        else
        {
            Log(QD_FBX, LOG_WARNING, "Ignoring texture '%s' for property '%s' of material '%s': it %s",
                pTexture->GetName(), CQDString(strProperty), m_rMaterial.GetName(),
                pFirst != nullptr ? "is not the first" : "has no image");
        }
    }
    return pFirst;
}

bool CFBXMaterialConverter::LoadTexture(EParam eParam, std::string_view strProperty)
{
    const FbxFileTexture* pTexture = FindTexture(strProperty);
    const CSGSamplerPtr spSampler = pTexture != nullptr ? m_rImages.GetOrCreateSampler(*pTexture) : nullptr;
    if (!spSampler)
    {
        return false;
    }
    if (IsPlaced(*pTexture))
    {
        Log(QD_FBX, LOG_WARNING, "Ignoring the placement of texture '%s' for property '%s' of material '%s'",
            pTexture->GetName(), CQDString(strProperty), m_rMaterial.GetName());
    }
    GetParam(eParam) = CSGParamTmpl<CSGSamplerPtr>::Create(CSGMaterial::GetParamName(eParam), spSampler);
    m_objResult.arrUVSets[static_cast<size_t>(eParam)] = pTexture->GetUVSet();
    return true;
}

void CFBXMaterialConverter::SetColor(EParam eParam, const std::array<double, 3>& rColor)
{
    GetParam(eParam) = CSGParamTmpl<CSGFloat4>::Create(CSGMaterial::GetParamName(eParam),
                                                       CSGFloat4(static_cast<float>(rColor[0]),
                                                                 static_cast<float>(rColor[1]),
                                                                 static_cast<float>(rColor[2]), 1.0f));
}
