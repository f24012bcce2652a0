#include "qdscenegraph/geometry/CSGGeom_Quads.h"

#include <array>

CSGTypeInfo<CSGGeom> CSGGeom_Quads::ms_objTypeInfo(CSGGeom_Quads::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGGeom_Quads> s_objRegistration(0x6508053ED16BCC36, 1, 1);
}

boost::intrusive_ptr<CSGGeom_Quads> CSGGeom_Quads::Create(
    const boost::intrusive_ptr<CSGIndexBuffer>& spIndexBuffer)
{
    return CreateKind<CSGGeom_Quads>(spIndexBuffer);
}

bool CSGGeom_Quads::AddQuad(int32_t a, int32_t b, int32_t c, int32_t d)
{
    return AddElement(std::array{a, b, c, d});
}

void CSGGeom_Quads::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGGeom_Quads: 0x%08llX - Quads: %d", rIndent, LogAddress(this),
        GetNumQuads());
    GetIndexBuffer()->OutputDebugInfo(rIndent + "    ");
}
