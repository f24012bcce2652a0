// A reference: how to find one object from another, by what can be saved.
#pragma once

#include "qdscenegraph/object/CSGTypeInfo.h"
#include "qdscenegraph/streaming/CSGStreamable.h"
#include "qdscenegraph/target/CSGATFTarget.h"

class CSGRefContext;

// Holds names and numbers, never the objects that it finds. Several paths may share it.
class CSGRef : public SGStreamableInterface<CSGRef>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGRef";

    // The object that is found from pFrom; null when it is not there, which is not reported. With the context
    // of pFrom's tree no tree is searched.
    virtual CSGStreamable* Resolve(CSGStreamable* pFrom, CSGRefContext* pContext = nullptr) const = 0;
    // Which part of that object is meant.
    virtual ETarget GetTarget() const { return TARGET_ALL; }
    virtual const CSGTypeInfo<CSGRef>* GetTypeInfo() const = 0;
    // Written to the log at level 7, behind the indent.
    virtual void OutputDebugInfo(const CQDString& rIndent) const = 0;
};

using CSGRefPtr = boost::intrusive_ptr<CSGRef>;
