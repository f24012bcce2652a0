// The lights that stand on a node.
#pragma once

#include "qdscenegraph/light/CSGLightList.h"

class CSGData_LightSet final : public CSGLightListData<CSGData_LightSet>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_LightSet";
    static CSGDataTypeInfo ms_objDataTypeInfo;
};
