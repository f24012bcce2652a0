// Makes materials of <material> elements.
#pragma once

#include "qdscenegraph/material/CSGData_Material.h"
#include "qdsgloader_collada/CColladaEffectWithTextures.h"
#include "qdsgloader_collada/CColladaImages.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

#include <map>
#include <unordered_map>
#include <utility>

// The materials of a document. Each material and each effect is converted once, when it is first asked for.
// Materials of one effect share its parameters, and instances of a material that read the same texture
// coordinates share one attachment.
class CColladaMaterials
{
  public:
    // As for CColladaImages.
    CColladaMaterials(const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader,
                      const boost::intrusive_ptr<CSGTexturePool>& spTexturePool,
                      const CQDString& rStrDocument)
        : m_objImages(spTextureLoader, spTexturePool, rStrDocument)
    {}

    // Converts all of a document. One that fails is reported, and what uses it does without.
    void LoadLibraryMaterials(ColladaDOM141::domCOLLADA& rRoot);
    void LoadLibraryEffects(ColladaDOM141::domCOLLADA& rRoot);

    // What a node needs to be drawn with a material, given the set of texture coordinates for each semantic
    // of its textures; those that are not given are read from set 0. Null when the material failed.
    boost::intrusive_ptr<CSGData_Material> GetMaterialData(
        ColladaDOM141::domMaterial& rMaterial, const CColladaEffectWithTextures::CSetOfSemantic& rSets);

    // Names of materials: the id, else the name.
    static CQDCompactString GetGlobalName(const ColladaDOM141::domMaterial& rMaterial);

  private:
    struct CMaterial
    {
        CSGMaterialPtr spMaterial; // null: failed
        CColladaEffectWithTexturesPtr spEffect;
    };
    using CDataKey = std::pair<const ColladaDOM141::domMaterial*, CColladaEffectWithTextures::CTexCoordSets>;

    CColladaEffectWithTexturesPtr LoadEffect(ColladaDOM141::domEffect& rEffect);
    const CMaterial& LoadMaterial(ColladaDOM141::domMaterial& rMaterial);
    CMaterial ConvertMaterial(ColladaDOM141::domMaterial& rMaterial);

    CColladaImages m_objImages;
    std::unordered_map<const ColladaDOM141::domEffect*, CColladaEffectWithTexturesPtr> m_mapEffects;
    std::unordered_map<const ColladaDOM141::domMaterial*, CMaterial> m_mapMaterials;
    std::map<CDataKey, boost::intrusive_ptr<CSGData_Material>> m_mapData;
};
