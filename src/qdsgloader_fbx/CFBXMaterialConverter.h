// Makes a scene graph's material of one of an FBX file.
#pragma once

#include "qdscenegraph/material/CSGMaterial.h"

#include <array>
#include <string_view>

class CFBXImages;
class FbxFileTexture;
class FbxSurfaceMaterial;

class CFBXMaterialConverter
{
  public:
    struct CResult
    {
        CSGMaterialPtr spMaterial; // null (reported): failed
        // The texture coordinates of each slot with a sampler, borrowed from the scene; empty: the mesh's
        // first.
        std::array<std::string_view, CSGMaterial::PARAM_COUNT> arrUVSets;
    };

    CFBXMaterialConverter(const FbxSurfaceMaterial& rMaterial, CFBXImages& rImages)
        : m_rMaterial(rMaterial),
          m_rImages(rImages)
    {}

    CResult PreprocessFBXMaterial();

  private:
    void LoadColors();
    void LoadSpecular();
    void LoadShininess();
    void LogIgnored() const;

    // The first texture of the property that has an image; the others are named in the log.
    const FbxFileTexture* FindTexture(std::string_view strProperty) const;
    // False when the property has no texture, or none can be made of it.
    bool LoadTexture(CSGMaterial::EParam eParam, std::string_view strProperty);
    void SetColor(CSGMaterial::EParam eParam, const std::array<double, 3>& rColor);
    CSGParamPtr& GetParam(CSGMaterial::EParam eParam) { return m_arrParams[static_cast<size_t>(eParam)]; }

    const FbxSurfaceMaterial& m_rMaterial;
    CFBXImages& m_rImages;
    std::array<CSGParamPtr, CSGMaterial::PARAM_COUNT> m_arrParams; // null: the slot's default
    CResult m_objResult;
};
