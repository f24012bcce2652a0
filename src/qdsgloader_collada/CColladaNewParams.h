// The named parameters of an effect.
#pragma once

#include "qdcommon/CSGFloat4.h"
#include "qdscenegraph/material/CSGParamSet.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

class CColladaImages;

// The parameters of one element, and behind them those of the element around it.
class CColladaNewParams
{
  public:
    // Null for none around. Both must outlive it.
    CColladaNewParams(CColladaImages& rImages, const CColladaNewParams* pAround);

    // Adds the <newparam> elements of an <effect>, or of its <profile_COMMON> and the technique in it:
    // floats, surfaces and 2D samplers. One that cannot be used is left out (reported); other kinds are read
    // over.
    void AddNewParamsFXCommon(const ColladaDOM141::domEffect& rEffect);
    void AddNewParamsProfileCommon(const ColladaDOM141::domProfile_COMMON& rProfile);

    // The value of the parameter of a name (sid). False (reported) when there is none of that kind. A colour
    // may have three numbers or four.
    bool FindFloat(const char* szName, float& rfValue) const;
    bool FindColor(const char* szName, CSGFloat4& rColor) const;
    // The sampler of a name, or, as older documents and those of COLLADA 1.5 have it, one for the image of
    // that id. Null (reported) when there is neither.
    CSGSamplerPtr FindSampler(const char* szName, DAE& rDAE) const;
    const CSGParamSetPtr& GetParamSet() const { return m_spParamSet; }

  private:
    // Samplers name surfaces, which may stand behind them: they come in a second round.
    enum class ERound
    {
        Values,
        Samplers
    };

    void AddNewParamFXCommon(const ColladaDOM141::domFx_newparam_common& rNewParam, ERound eRound);
    void AddNewParamProfileCommon(const ColladaDOM141::domCommon_newparam_type& rNewParam, ERound eRound);
    template <class KIND>
    void AddNewParam(const char* szName, const KIND& rKind, ERound eRound);
    template <class T, class ELEMENT>
    void AddFloats(const char* szName, const ELEMENT* pElement);
    template <class T>
    void AddParam(const char* szName, const T& rValue);

    CSGSamplerPtr LoadSampler2D(ColladaDOM141::domFx_sampler2D_common& rSampler) const;
    // Null (not reported) when there is none of the type.
    CSGParamPtr FindParam(const char* szName, CSGParam::EType eType) const;
    // That of a parameter, or of an image of the id; null (reported) when there is neither.
    CSGSurfacePtr FindSurface(const char* szName, DAE& rDAE) const;
    // Null when no image has the id, or (reported) when it has no texture.
    CSGSurfacePtr FindImageSurface(const char* szID, DAE& rDAE) const;

    CColladaImages& m_rImages;
    CSGParamSetPtr m_spParamSet;
};
