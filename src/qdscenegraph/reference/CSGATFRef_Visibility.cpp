#include "qdscenegraph/reference/CSGATFRef_Visibility.h"

#include "qdscenegraph/target/CSGATF_Visible.h"

const CSGTypeInfo<CSGRef> CSGATFRef_Visibility::ms_objTypeInfo(CSGATFRef_Visibility::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGATFRef_Visibility> s_objRegistration(0x4ADBAA04F13BB181, 1, 1);
}

boost::intrusive_ptr<CSGATFRef_Visibility> CSGATFRef_Visibility::Create()
{
    return CSGMem::Construct<CSGATFRef_Visibility>();
}

CSGStreamable* CSGATFRef_Visibility::Resolve(CSGStreamable* pFrom, CSGRefContext*) const
{
    return SGStreamableCast<CSGNode>(pFrom);
}

CSGATFPtr CSGATFRef_Visibility::ResolveTarget(CSGStreamable* pFrom, CSGRefContext*) const
{
    auto* pNode = SGStreamableCast<CSGNode>(pFrom);
    return pNode != nullptr ? CSGATF_Visible::Create(pNode) : nullptr;
}

bool CSGATFRef_Visibility::ReadFromStream(CStream*, CSGStreamableLoadState*) { return true; }

bool CSGATFRef_Visibility::WriteToStream(CStream*, CSGStreamableSaveState*) { return true; }

void CSGATFRef_Visibility::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGATFRef_Visibility: 0x%08llX", rIndent, LogAddress(this));
}
