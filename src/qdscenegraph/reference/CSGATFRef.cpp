#include "qdscenegraph/reference/CSGATFRef.h"

namespace
{
const SGStreamableRegistration<CSGRef> s_objBaseRegistration(0x660D2A5593CCCA48, 1, 1);
const SGStreamableRegistration<CSGATFRef> s_objRegistration(0x10FEC3647E618F4A, 1, 1);
} // namespace

CSGATFPtr CSGATFRef::ResolveTarget(CSGStreamable* pFrom, CSGRefContext* pContext) const
{
    CSGStreamable* pObject = Resolve(pFrom, pContext);
    return pObject != nullptr ? CSGATFTarget::Create(pObject, GetTarget()) : nullptr;
}
