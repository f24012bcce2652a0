// The lights by which a node and everything below it is seen.
#pragma once

#include "qdscenegraph/light/CSGLightList.h"

// For trees that bring their own lighting with them: the lights shine on that tree alone, from the place of
// the node that holds the environment. A light environment nearer to a node counts instead of those above.
class CSGData_LightEnv final : public CSGLightListData<CSGData_LightEnv>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_LightEnv";
    static CSGDataTypeInfo ms_objDataTypeInfo;
};
