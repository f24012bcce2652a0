// Light that comes from infinitely far away, like the sun's.
#pragma once

#include "qdscenegraph/light/CSGLight.h"

class CSGLight_Directional final : public CSGLightInterface<CSGLight_Directional>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGLight_Directional";
    static const CSGTypeInfo<CSGLight> ms_objTypeInfo;

    void SetupLightState(CSGLightState& rState, const CTransform3& rWorld) const override;
};
