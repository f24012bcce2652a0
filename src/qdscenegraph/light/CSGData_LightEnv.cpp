#include "qdscenegraph/light/CSGData_LightEnv.h"

[[gnu::init_priority(CSGDataTypeInfo::ORDER_LIGHT_ENV)]] CSGDataTypeInfo CSGData_LightEnv::ms_objDataTypeInfo(
    CSGData_LightEnv::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGData_LightEnv> s_objRegistration(0xA131D3BEDB6BFD20, 1, 1);
}
