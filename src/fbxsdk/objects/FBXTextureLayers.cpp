// Texture layers of meshes.
#include "fbxsdk/objects/FBXTextureLayers.h"

#include "fbxsdk/document/CFBXRecord.h"

#include <algorithm>

namespace
{

// Each layer is on each material: many of both would make too many uses. Real files have one of each kind,
// and some more where textures are blended.
constexpr size_t MOST_LAYERS = 32;

constexpr std::string_view DIFFUSE = "DiffuseColor";

// LayerElementTexture, LayerElementBumpTextures, LayerElementEmissive_Textures: what stands before "Texture".
constexpr struct
{
    std::string_view strLayer;
    std::string_view strProperty;
} LAYERS[] = {
    {"", DIFFUSE},
    {"DiffuseFactor", "DiffuseFactor"},
    {"Emissive", "EmissiveColor"},
    {"EmissiveFactor", "EmissiveFactor"},
    {"Ambient", "AmbientColor"},
    {"AmbientFactor", "AmbientFactor"},
    {"Specular", "SpecularColor"},
    {"SpecularFactor", "SpecularFactor"},
    {"Shininess", "ShininessExponent"},
    {"Bump", "Bump"},
    {"NormalMap", "NormalMap"},
    {"Transparent", "TransparentColor"},
    {"TransparencyFactor", "TransparencyFactor"},
    {"Reflection", "ReflectionColor"},
    {"ReflectionFactor", "ReflectionFactor"},
    {"Displacement", "DisplacementColor"},
};

// Empty when the record is no texture layer, or of a kind that materials have no property for.
std::string_view FindProperty(std::string_view strRecord)
{
    constexpr std::string_view PREFIX = "LayerElement";
    const size_t uiEnd = strRecord.find("Texture");
    if (!strRecord.starts_with(PREFIX) || uiEnd == std::string_view::npos)
    {
        return {};
    }
    std::string_view strLayer = strRecord.substr(PREFIX.size(), uiEnd - PREFIX.size());
    if (strLayer.ends_with('_'))
    {
        strLayer.remove_suffix(1);
    }
    for (const auto& rLayer : LAYERS)
    {
        if (rLayer.strLayer == strLayer)
        {
            return rLayer.strProperty;
        }
    }
    return {};
}

// One number for each polygon, or one for all of them; damaged layers have none.
class CPolygonNumbers
{
  public:
    CPolygonNumbers(const CFBXRecord& rLayer, std::string_view strNumbers)
    {
        const CFBXRecord* pNumbers = rLayer.FindChild(strNumbers);
        const std::string_view strMapping = rLayer.GetChildString("MappingInformationType");
        m_bAllSame = strMapping == "AllSame";
        if (pNumbers != nullptr && (m_bAllSame || strMapping == "ByPolygon"))
        {
            pNumbers->ReadInts(m_vecNumbers);
        }
    }

    bool IsEmpty() const { return m_vecNumbers.empty(); }
    bool IsAllSame() const { return m_bAllSame; }
    // -1 when there is none.
    int32_t Get(size_t uiPolygon) const
    {
        const size_t uiNumber = m_bAllSame ? 0 : uiPolygon;
        return uiNumber < m_vecNumbers.size() ? m_vecNumbers[uiNumber] : -1;
    }
    size_t GetCount() const { return m_vecNumbers.size(); }

  private:
    std::vector<int32_t> m_vecNumbers;
    bool m_bAllSame = false;
};

CPolygonNumbers ReadMaterials(const CFBXRecord& rMesh)
{
    const CFBXRecord* pLayer = rMesh.FindChild("LayerElementMaterial");
    return CPolygonNumbers(pLayer != nullptr ? *pLayer : rMesh, "Materials");
}

} // namespace

std::vector<SFBXTextureUse> ReadFBXTextureLayers(const CFBXRecord& rMesh, size_t uiMaterials,
                                                 size_t uiTextures)
{
    std::vector<SFBXTextureUse> vecUses;
    const auto Wear = [&](size_t uiMaterial, size_t uiTexture, std::string_view strProperty) {
        vecUses.push_back({uiMaterial, uiTexture, strProperty});
    };

    const CPolygonNumbers objMaterials = ReadMaterials(rMesh);
    size_t uiLayers = 0;
    for (const CFBXRecord& rLayer : rMesh.GetChildren())
    {
        const std::string_view strProperty = FindProperty(rLayer.GetName());
        if (strProperty.empty() || ++uiLayers > MOST_LAYERS)
        {
            continue;
        }
        const CPolygonNumbers objTextures(rLayer, "TextureId");
        // Which material is on the polygons does not matter when all wear the same texture.
        const size_t uiPolygons = objTextures.IsAllSame() ? uiMaterials : objTextures.GetCount();
        std::vector<bool> vecWears(uiMaterials, false);
        for (size_t uiPolygon = 0; uiPolygon < uiPolygons; ++uiPolygon)
        {
            const size_t uiTexture = static_cast<size_t>(objTextures.Get(uiPolygon));
            const size_t uiMaterial = objTextures.IsAllSame() ? uiPolygon
                                      : objMaterials.IsEmpty()
                                          ? 0
                                          : static_cast<size_t>(objMaterials.Get(uiPolygon));
            if (uiTexture < uiTextures && uiMaterial < uiMaterials && !vecWears[uiMaterial])
            {
                vecWears[uiMaterial] = true;
                Wear(uiMaterial, uiTexture, strProperty);
            }
        }
    }
    for (size_t uiMaterial = 0; uiLayers == 0 && uiTextures > 0 && uiMaterial < uiMaterials; ++uiMaterial)
    {
        Wear(uiMaterial, 0, DIFFUSE);
    }
    return vecUses;
}
