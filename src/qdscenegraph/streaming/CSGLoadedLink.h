// What NotifyObjectLoaded does with an object that a link names.
#pragma once

#include "qdscenegraph/streaming/CSGStreamable.h"

// Stores a loaded object in the member of its link. False (reported) for an object of another class, and for
// a second object.
template <class T>
bool SetLoadedLink(boost::intrusive_ptr<T>& rspLink, CSGStreamable* pChild)
{
    QD_CHECK_ARG(pChild, false);
    auto* pLoaded = SGStreamableCast<T>(pChild);
    if (pLoaded == nullptr)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Unexpected (CSGStreamable*)0x%08llx type %s", LogAddress(pChild),
            pChild->GetSGStreamableType()->GetName());
        return false;
    }
    QD_CHECK(rspLink == 0, false);
    rspLink = pLoaded;
    return true;
}
