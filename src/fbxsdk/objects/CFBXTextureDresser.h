// Dresses materials of files before version 7 with the textures that those files put on models.
#pragma once

#include "fbxsdk/objects/CFBXObjectTable.h"

#include <compare>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

// Collects what models wear, in the order of the connections, and then makes the connections of version 7. A
// material that wears other textures on another model becomes a material of its own there.
class CFBXTextureDresser
{
  public:
    explicit CFBXTextureDresser(CFBXObjectTable& rTable) : m_rTable(rTable) {}

    // The geometry is null for a model without any. Objects are borrowed until Connect.
    void AddTexture(int64_t nModel, const CFBXObject* pGeometry, const CFBXObject& rTexture);
    void AddMaterial(int64_t nModel, const CFBXObject* pGeometry, const CFBXObject& rMaterial);
    void Connect();

  private:
    // A texture on a property of the material.
    struct SLayer
    {
        std::string_view strProperty;
        int64_t nTexture;

        auto operator<=>(const SLayer&) const = default;
    };
    using Layers = std::vector<SLayer>;

    struct SModel
    {
        int64_t nId;
        const CFBXObject* pGeometry;
        std::vector<const CFBXObject*> vecTextures;
        std::vector<const CFBXObject*> vecMaterials;
    };

    SModel& GetModel(int64_t nModel, const CFBXObject* pGeometry);
    std::vector<Layers> ReadLayers(const SModel& rModel) const;
    int64_t Dress(const CFBXObject& rMaterial, const Layers& rLayers);

    CFBXObjectTable& m_rTable;
    std::vector<SModel> m_vecModels; // in the order in which they came
    std::unordered_map<int64_t, size_t> m_mapModels;
    // For each material the materials that it has become, by what those wear
    std::unordered_map<int64_t, std::map<Layers, int64_t>> m_mapDressed;
};
