// What an effect gives to the materials made of it.
#pragma once

#include "qdscenegraph/material/CSGEffect.h"
#include "qdscenegraph/material/CSGMaterial.h"

#include <array>
#include <map>

// A material whose parameters all materials of the effect share, and which textures it reads with which
// texture coordinates. Those are named by semantics, for which each instance of a material has a set number.
class CColladaEffectWithTextures : public CRefObject
{
  public:
    using CSetOfSemantic = std::map<CQDString, int32_t>;
    using CTexCoordSets = std::array<int32_t, CSGMaterial::PARAM_COUNT>;

    // The named parameters. Allowed once.
    bool SetEffect(const CSGEffectPtr& spEffect);
    CSGEffect* GetEffect() const { return m_spEffect.get(); }
    // Allowed once.
    bool SetMaterial(const CSGMaterialPtr& spMaterial);
    CSGMaterial* GetMaterial() const { return m_spMaterial.get(); }

    // The sampler parameters that are read with the texture coordinates of a semantic.
    std::vector<CSGParamPtr>& GetOrAddSamplerParamList(const CQDString& rStrSemantic)
    {
        return m_mapSamplerParams[rStrSemantic];
    }
    // False (reported) for a parameter that is none of a sampler, or has none.
    bool AddSamplerParam(const CQDString& rStrSemantic, const CSGParamPtr& spSamplerParam);

    // The set for each slot of the material: 0 for a semantic that is not among those given, -1 for slots
    // without a texture.
    CTexCoordSets GetTexCoordSets(const CSetOfSemantic& rSets) const;

  private:
    CSGEffectPtr m_spEffect;
    CSGMaterialPtr m_spMaterial;
    std::map<CQDString, std::vector<CSGParamPtr>> m_mapSamplerParams;
};

using CColladaEffectWithTexturesPtr = boost::intrusive_ptr<CColladaEffectWithTextures>;
