#include "qdscenegraph/geometry/CSGGeom_Lines.h"

#include <array>

CSGTypeInfo<CSGGeom> CSGGeom_Lines::ms_objTypeInfo(CSGGeom_Lines::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGGeom_Lines> s_objRegistration(0xCAFF0758BDE911E8, 1, 1);
}

boost::intrusive_ptr<CSGGeom_Lines> CSGGeom_Lines::Create(
    const boost::intrusive_ptr<CSGIndexBuffer>& spIndexBuffer)
{
    return CreateKind<CSGGeom_Lines>(spIndexBuffer);
}

bool CSGGeom_Lines::AddLine(int32_t a, int32_t b) { return AddElement(std::array{a, b}); }

void CSGGeom_Lines::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGGeom_Lines: 0x%08llX - Lines: %d", rIndent, LogAddress(this),
        GetNumLines());
    GetIndexBuffer()->OutputDebugInfo(rIndent + "    ");
}
