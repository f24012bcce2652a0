// Makes materials of <effect> elements.
#pragma once

#include "qdsgloader_collada/CColladaEffectWithTextures.h"
#include "qdsgloader_collada/CColladaNewParams.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

class daeElement;

// Of one effect. Only its <profile_COMMON> is read. A colour, factor or texture that cannot be used is
// reported and its slot of the material keeps the default.
class CColladaEffectConverter
{
  public:
    // Both must outlive it.
    CColladaEffectConverter(ColladaDOM141::domEffect& rEffect, CColladaImages& rImages);

    // Null (reported) for an effect without a technique that makes a material.
    CColladaEffectWithTexturesPtr LoadEffect();

  private:
    struct CShading; // the children of the one element that says how a technique shades

    bool LoadProfileCommon(ColladaDOM141::domProfile_COMMON& rProfile);
    bool LoadProfileCommonTechnique(ColladaDOM141::domProfile_COMMON& rProfile,
                                    const CColladaNewParams& rParams);

    // The parameter for a slot; null where the slot shall have its default.
    template <class ELEMENT>
    CSGParamPtr LoadColorOrTexture(const ELEMENT* pElement, CSGMaterial::EParam eParam,
                                   const CColladaNewParams& rParams);
    CSGParamPtr LoadTransparent(const ColladaDOM141::domCommon_transparent_type* pElement,
                                const CColladaNewParams& rParams);
    CSGParamPtr LoadFloat(const ColladaDOM141::domCommon_float_or_param_type* pElement,
                          CSGMaterial::EParam eParam, const CColladaNewParams& rParams);
    CSGParamPtr LoadTexture(const char* szSampler, const char* szTexCoord, CSGMaterial::EParam eParam,
                            const CColladaNewParams& rParams);
    // Normal maps stand in extra data: <bump bumptype="NORMALMAP">.
    CSGParamPtr LoadNormalMap(ColladaDOM141::domProfile_COMMON& rProfile, const CColladaNewParams& rParams);

    void LogFailedSlot(CSGMaterial::EParam eParam) const;

    ColladaDOM141::domEffect& m_rEffect;
    const char* m_szID;
    const char* m_szShading = ""; // "phong" and the like
    CColladaImages& m_rImages;
    CColladaNewParams m_objParams; // of the effect
    CColladaEffectWithTexturesPtr m_spResult;
    int32_t m_eTransparentMode = CSGMaterial::TRANSPARENT_A_ONE;
    int32_t m_nMaterialFlags = 0;
};
