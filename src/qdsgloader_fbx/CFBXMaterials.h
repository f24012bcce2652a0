// The materials of an FBX file.
#pragma once

#include "qdscenegraph/material/CSGData_Material.h"
#include "qdsgloader_fbx/CFBXImages.h"
#include "qdsgloader_fbx/CFBXMaterialConverter.h"

#include <map>
#include <optional>
#include <tuple>
#include <unordered_map>

class CFBXExtraAttributes;
class FbxMesh;

// Each material is converted once, and what draws with it alike shares one attachment. Their FBX materials
// must live as long.
class CFBXMaterials
{
  public:
    // As for CFBXImages.
    CFBXMaterials(const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader,
                  const boost::intrusive_ptr<CSGTexturePool>& spTexturePool, const CQDString& rStrFBXFilename)
        : m_objImages(spTextureLoader, spTexturePool, rStrFBXFilename)
    {}

    void PreprocessFBXMaterial(const FbxSurfaceMaterial& rMaterial);
    // What a node needs to be drawn with a material that was preprocessed: textures are laid over the mesh,
    // and the attributes count for this node alone. Null (reported) without such a material.
    boost::intrusive_ptr<CSGData_Material> CreateMaterialData(const FbxSurfaceMaterial& rMaterial,
                                                              const FbxMesh& rMesh,
                                                              const CFBXExtraAttributes& rAttributes);

  private:
    using CTexCoordSets = std::array<int32_t, CSGMaterial::PARAM_COUNT>;
    // The last is the mip-map bias, bit by bit.
    using CDataKey =
        std::tuple<const CSGMaterial*, CTexCoordSets, std::optional<bool>, std::optional<uint32_t>>;

    CFBXImages m_objImages;
    // Files may have several of one name.
    std::unordered_map<const FbxSurfaceMaterial*, CFBXMaterialConverter::CResult> m_mapMaterials;
    std::map<CDataKey, boost::intrusive_ptr<CSGData_Material>> m_mapData;
};
