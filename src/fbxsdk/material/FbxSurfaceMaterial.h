// How a surface is shaded, by named properties; textures are connected to these.
#pragma once

#include "fbxsdk/base/FbxObject.h"

#include <memory>

class CFBXObjectTable;

//     rMaterial.FindProperty(FbxSurfaceMaterial::sDiffuse).GetDouble3()
//     rMaterial.GetSrcObjects<FbxTexture>(FbxSurfaceMaterial::sDiffuse)
class FbxSurfaceMaterial final : public FbxObject
{
  public:
    static constexpr const char* sShadingModel = "ShadingModel";
    static constexpr const char* sEmissive = "EmissiveColor";
    static constexpr const char* sEmissiveFactor = "EmissiveFactor";
    static constexpr const char* sAmbient = "AmbientColor";
    static constexpr const char* sAmbientFactor = "AmbientFactor";
    static constexpr const char* sDiffuse = "DiffuseColor";
    static constexpr const char* sDiffuseFactor = "DiffuseFactor";
    static constexpr const char* sSpecular = "SpecularColor";
    static constexpr const char* sSpecularFactor = "SpecularFactor";
    static constexpr const char* sShininess = "ShininessExponent";
    static constexpr const char* sBump = "Bump";
    static constexpr const char* sNormalMap = "NormalMap";
    static constexpr const char* sTransparentColor = "TransparentColor";
    static constexpr const char* sTransparencyFactor = "TransparencyFactor";
    static constexpr const char* sReflection = "ReflectionColor";
    static constexpr const char* sReflectionFactor = "ReflectionFactor";

    static std::unique_ptr<FbxSurfaceMaterial> Create(const CFBXObjectTable& rTable,
                                                      const CFBXObject& rObject);

    // "phong", "lambert", in any case of letters; "unknown" for shaders of a tool's own.
    const CQDString& GetShadingModel() const { return m_strShadingModel; }
    // 1 for opaque. What the transparent colour and its factor let pass is not seen; but a file that says the
    // opacity itself knows better, as not all tools mean the same by those two.
    double GetOpacity() const;
    // Whether a texture is connected to it.
    bool HasNormalMap() const { return m_bHasNormalMap; }

  protected:
    void OnConnected() override;

  private:
    using FbxObject::FbxObject;

    CQDString m_strShadingModel;
    bool m_bHasNormalMap = false;
};
