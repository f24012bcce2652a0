#include "qdscenegraph/material/CSGSurface.h"

namespace
{
const SGStreamableRegistration<CSGSurface> s_objRegistration(0x773B7AACD45AE2BF, 1, 1);
}

bool CSGSurface::InstanceOf(const CSGTypeInfo<CSGSurface>* pType) const
{
    if (pType == nullptr)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Handed in NULL type object.");
        return false;
    }
    return GetTypeInfo() == pType;
}

bool CSGSurface::ReadFromStream(CStream*, CSGStreamableLoadState*)
{
    Log(QD_SCENEGRAPH, LOG_ERROR, "Invalid call of abstract base function");
    return false;
}

bool CSGSurface::WriteToStream(CStream*, CSGStreamableSaveState*)
{
    Log(QD_SCENEGRAPH, LOG_ERROR, "Invalid call of abstract base function");
    return false;
}

void CSGSurface::OutputDebugInfo(const CQDString& rIndent) const
{
    const CSGTypeInfo<CSGSurface>* pType = GetTypeInfo();
    Log(QD_SCENEGRAPH, LOG_INFO, "%s%s (%d): 0x%08llX", rIndent, pType->GetName(), pType->GetTypeID(),
        LogAddress(this));
}
