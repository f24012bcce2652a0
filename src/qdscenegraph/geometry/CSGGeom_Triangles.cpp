#include "qdscenegraph/geometry/CSGGeom_Triangles.h"

#include <array>

CSGTypeInfo<CSGGeom> CSGGeom_Triangles::ms_objTypeInfo(CSGGeom_Triangles::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGGeom_Triangles> s_objRegistration(0x5530EEEF77F97C19, 1, 1);
}

boost::intrusive_ptr<CSGGeom_Triangles> CSGGeom_Triangles::Create(
    const boost::intrusive_ptr<CSGIndexBuffer>& spIndexBuffer)
{
    return CreateKind<CSGGeom_Triangles>(spIndexBuffer);
}

bool CSGGeom_Triangles::AddTriangle(int32_t a, int32_t b, int32_t c)
{
    return AddElement(std::array{a, b, c});
}

void CSGGeom_Triangles::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGGeom_Triangles: 0x%08llX - Triangles: %d", rIndent, LogAddress(this),
        GetNumTriangles());
    GetIndexBuffer()->OutputDebugInfo(rIndent + "    ");
}
