#include "qdscenegraph/light/CSGData_LightSet.h"

[[gnu::init_priority(CSGDataTypeInfo::ORDER_LIGHT_SET)]] CSGDataTypeInfo CSGData_LightSet::ms_objDataTypeInfo(
    CSGData_LightSet::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGData_LightSet> s_objRegistration(0x93EA365C3EE68A3A, 1, 1);
}
