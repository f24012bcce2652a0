#include "qdscenegraph/geometry/CSGGeom.h"

namespace
{
const SGStreamableRegistration<CSGGeom> s_objRegistration(0x2E93C0EA7C9F0334, 1, 1);
}
