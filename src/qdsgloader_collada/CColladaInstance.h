// What the instances in a node have in common: how they are resolved, and the names of the nodes made for
// them.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

class CColladaInstance
{
  public:
    // The element of the type T that an instance refers to. When there is none, the instance is read over:
    // null (reported).
    template <class T, class INSTANCE>
    static T* GetTarget(INSTANCE& rInstance)
    {
        T* pTarget = CSGLoaderCollada::GetURIElement<T>(rInstance.getUrl());
        if (pTarget == nullptr)
        {
            LogIgnored(rInstance, rInstance.getUrl());
        }
        return pTarget;
    }
    // Reports an instance that is read over.
    static void LogIgnored(daeElement& rInstance, const daeURI& rURL);

    // The name of the child that a node gets for one of several things: "node/thing".
    static CQDCompactString JoinNames(const CQDCompactString& rNodeName, const char* szName);
};
