// A reference that an animation can write through.
#pragma once

#include "qdscenegraph/reference/CSGRef.h"

class CSGATFRef : public SGStreamableDerivedInterface<CSGATFRef, CSGRef>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGATFRef";

    // What writes the part that is meant of the object that is found from pFrom. Null when the object is not
    // there, which is not reported, and when it has no such part (reported).
    virtual CSGATFPtr ResolveTarget(CSGStreamable* pFrom, CSGRefContext* pContext = nullptr) const;
};
