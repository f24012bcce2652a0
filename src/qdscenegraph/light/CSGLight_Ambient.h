// Light that comes from everywhere alike.
#pragma once

#include "qdscenegraph/light/CSGLight.h"

class CSGLight_Ambient final : public CSGLightInterface<CSGLight_Ambient>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGLight_Ambient";
    static const CSGTypeInfo<CSGLight> ms_objTypeInfo;
};
