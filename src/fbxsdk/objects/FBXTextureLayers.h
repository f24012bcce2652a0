// Files before version 7 put textures on the polygons of a mesh; this finds the materials' properties that
// they stand for.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

class CFBXRecord;

// A texture on a property of a material. Both are places in the lists that the model is connected to.
struct SFBXTextureUse
{
    size_t uiMaterial;
    size_t uiTexture;
    std::string_view strProperty; // "DiffuseColor"; a constant

    bool operator==(const SFBXTextureUse&) const = default;
};

// In the order of the texture layers, those of one layer in the order of polygons: a material wears in each
// layer what its first textured polygon wears. A mesh without any texture layer wears its first texture
// everywhere as its colour.
std::vector<SFBXTextureUse> ReadFBXTextureLayers(const CFBXRecord& rMesh, size_t uiMaterials,
                                                 size_t uiTextures);
