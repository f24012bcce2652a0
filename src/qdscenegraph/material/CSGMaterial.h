// How a surface is shaded: eight parameters, each a colour, a factor or a texture.
#pragma once

#include "qdscenegraph/material/CSGMaterialState.h"
#include "qdscenegraph/material/CSGParam.h"

#include <array>
#include <vector>

class CSGSampler;

// Colours are RGBA. A parameter may stand in several materials: a change of its value is seen by all of them.
// A slot that was read from a file may be empty, or hold a parameter of a type that SetParam would refuse;
// what does not fit counts as not there.
class CSGMaterial final : public SGStreamableInterface<CSGMaterial>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGMaterial";
    using CMaterialPtr = boost::intrusive_ptr<CSGMaterial>;
    using CSamplerPtr = boost::intrusive_ptr<CSGSampler>;

    enum EParam : int32_t
    {
        PARAM_EMISSION = 0,
        PARAM_AMBIENT = 1,
        PARAM_DIFFUSE = 2,
        PARAM_SPECULAR = 3,
        PARAM_SHININESS = 4,    // a float, the exponent of the highlight
        PARAM_TRANSPARENT = 5,  // a colour, never a texture
        PARAM_TRANSPARENCY = 6, // a float
        PARAM_NORMALMAP = 7,
        PARAM_COUNT = 8
    };
    // What in the transparent colour makes the opacity.
    enum ETransparentMode : int32_t
    {
        TRANSPARENT_RGB_ZERO = 0, // 1 - the largest of red, green and blue
        TRANSPARENT_A_ONE = 1     // alpha
    };
    // The bits of the flags; files bring others along.
    enum EFlag : int32_t
    {
        FLAG_ALPHA_MASK = 1,
        FLAG_ALPHA_BLEND = 2
    };

    CSGMaterial() { m_arrTexCoordSets.fill(-1); }

    // A null parameter becomes the default of its slot: opaque black, shininess 0, transparency 1. Null
    // (reported) when a slot does not take its parameter.
    static CMaterialPtr Create(const CSGParamPtr& spObjEmission, const CSGParamPtr& spObjAmbient,
                               const CSGParamPtr& spObjDiffuse, const CSGParamPtr& spObjSpecular,
                               const CSGParamPtr& spObjNormalMap, const CSGParamPtr& spObjShininess,
                               const CSGParamPtr& spObjTransparent, const CSGParamPtr& spObjTransparency,
                               const CQDCompactString& rGlobalName, int32_t eTransparentMode,
                               int32_t nMaterialFlags);
    // A material of the same name and settings with the very same parameters.
    CMaterialPtr CreateCopy() const;

    // The name by which references find the material.
    const CQDCompactString& GetGlobalName() const { return m_strGlobalName; }
    void SetGlobalName(const CQDCompactString& rName) { m_strGlobalName = rName; }
    int32_t GetTransparentMode() const { return m_eTransparentMode; }
    void SetTransparentMode(int32_t eTransparentMode) { m_eTransparentMode = eTransparentMode; }
    int32_t GetMaterialFlags() const { return m_nMaterialFlags; }
    void SetMaterialFlags(int32_t nMaterialFlags) { m_nMaterialFlags = nMaterialFlags; }

    // Null for an empty slot and for a number that is none of a slot.
    CSGParam* GetParam(EParam eParam) const;
    // Emission, ambient, diffuse, specular and normal map take a colour or a sampler, transparent a colour,
    // shininess and transparency a float; anything else is refused (reported).
    bool SetParam(EParam eParam, const CSGParamPtr& spObjParam);

    bool HasFloatValue(EParam eParam) const { return HasType(eParam, CSGParam::PARAM_TYPE_FLOAT); }
    bool HasColorValue(EParam eParam) const { return HasType(eParam, CSGParam::PARAM_TYPE_FLOAT4); }
    bool HasSamplerValue(EParam eParam) const { return HasType(eParam, CSGParam::PARAM_TYPE_SAMPLER); }
    // 0, and opaque black, for a slot that holds something else.
    float GetFloatValue(EParam eParam) const;
    CSGFloat4 GetColorValue(EParam eParam) const;
    // Null for a slot that holds something else.
    CSGSampler* GetSampler(EParam eParam) const;
    // Set the value of the slot's parameter, or replace a parameter of another type with a new one.
    bool SetFloatValue(EParam eParam, float fValue);
    bool SetColorValue(EParam eParam, const CSGFloat4& objFloat4);
    // The set is the number of the texture coordinates among the geometry's, from 0 on.
    bool SetSamplerValue(EParam eParam, const CSamplerPtr& spObjSampler, int32_t nTexCoordSet);

    // Gives the slots that have one a sampler of their own, with the bias. False (reported) when that fails.
    bool SetMipMapBias(float fBias);

    // Appends the samplers in the order of their slots.
    bool GetSamplers(std::vector<CSamplerPtr>& rListOutput) const;
    // The texture coordinates for a slot, or for the first slot with the sampler; -1 for none.
    int32_t GetTexCoordSet(EParam eParam) const;
    int32_t GetTexCoordSet(const CSamplerPtr& spObjSampler) const;
    bool SetTexCoordSet(EParam eParam, int32_t nTexCoordSet);

    // The opacity, 1 for opaque: what the mode makes of the transparent colour, times transparency. 1
    // (reported) in an unknown mode.
    float GetTotalTransparency() const;
    CSGMaterialState GetMaterialState() const;

    // "emission", "emissionSampler" and so on; "UNKNOWN" for a number that is none of a slot.
    static const char* GetParamName(EParam eParam);
    static const char* GetSamplerName(EParam eParam);

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    void DropLinks() override;
    // Written to the log at level 7, each line behind the indent.
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    bool HasType(EParam eParam, CSGParam::EType eType) const;

    CQDCompactString m_strGlobalName;
    std::array<CSGParamPtr, PARAM_COUNT> m_arrParams;
    std::array<int32_t, PARAM_COUNT> m_arrTexCoordSets;
    int32_t m_eTransparentMode = TRANSPARENT_A_ONE;
    int32_t m_nMaterialFlags = 0;
};

using CSGMaterialPtr = CSGMaterial::CMaterialPtr;
