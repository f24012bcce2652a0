#include "qdscenegraph/light/CSGLight_Ambient.h"

const CSGTypeInfo<CSGLight> CSGLight_Ambient::ms_objTypeInfo(CSGLight_Ambient::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGLight_Ambient> s_objRegistration(0x03E71622DB5FB12F, 1, 1);
}
