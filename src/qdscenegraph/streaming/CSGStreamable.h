// The base of every object that can be saved to a NEST file.
#pragma once

#include "qdscenegraph/object/CSGMem.h"
#include "qdscenegraph/object/CSGObject.h"
#include "qdscenegraph/streaming/SGStreamableType.h"

class CStream;
class CSGStreamableLoadState;
class CSGStreamableSaveState;

class CSGStreamable : public CSGObject
{
  public:
    // Reads the record that WriteToStream wrote; links are asked for with pLoadState->ReadChildID.
    virtual bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) = 0;
    // Writes the record of the latest version; links go through pSaveState->WriteChildID.
    virtual bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) = 0;
    // A linked object is there: store it in the member that the cookie names. Every class that reads child
    // ids overrides it.
    virtual bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                                    CSGStreamableLoadState* pLoadState);
    // Adds the object to the save state. A class with links overrides it, calls this one, then the linked
    // objects' own.
    virtual bool PreWrite(CSGStreamableSaveState* pSaveState);
    // Runs on every object once all links are in place.
    virtual bool PostRead(CSGStreamableLoadState* pLoadState);
    virtual const SGStreamableType* GetSGStreamableType() const = 0;

    // Drops every link to other objects, when a load is given up: what a damaged file has linked in a circle
    // or in a chain without end goes away without recursion. A class with links overrides it.
    virtual void DropLinks() {}
    // True for objects whose links may be nested without bound: they take care that nothing recurses over
    // them (nodes).
    virtual bool MayNestWithoutBound() const { return false; }
};

// The type record of T.
template <class T, class PARENT>
class SGStreamableTypeOf : public SGStreamableType
{
  public:
    SGStreamableTypeOf() : SGStreamableType(T::SG_TYPE_NAME) {}

    boost::intrusive_ptr<CSGStreamable> CreateObject() const override
    {
        if constexpr (std::is_abstract_v<T>)
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Invalid call of abstract Create");
            return nullptr;
        }
        else
        {
            return CSGMem::Construct<T>();
        }
    }
    const SGStreamableType* GetParentType() const override
    {
        if constexpr (std::is_same_v<PARENT, CSGStreamable>)
        {
            return nullptr;
        }
        else
        {
            return PARENT::GetStaticSGStreamableType();
        }
    }
};

// Base of a streamable class T whose parent class is the streamable class PARENT. T defines `static constexpr
// const char* SG_TYPE_NAME`, its class name, and registers its type in its .cpp with a
// SGStreamableRegistration<T>.
template <class T, class PARENT>
class SGStreamableDerivedInterface : public PARENT
{
  public:
    using PARENT::PARENT;

    static SGStreamableType* GetStaticSGStreamableType()
    {
        static SGStreamableTypeOf<T, PARENT> s_objType;
        return &s_objType;
    }
    const SGStreamableType* GetSGStreamableType() const override { return GetStaticSGStreamableType(); }
    size_t GetObjectSize() const override { return sizeof(T); }
};

// The object as a T, or null when it is none: a walk up the type records, which are quicker to compare than
// classes.
template <class T>
T* SGStreamableCast(CSGStreamable* pStreamable)
{
    const SGStreamableType* pType = pStreamable != nullptr ? pStreamable->GetSGStreamableType() : nullptr;
    while (pType != nullptr && pType != T::GetStaticSGStreamableType())
    {
        pType = pType->GetParentType();
    }
    return pType != nullptr ? static_cast<T*>(pStreamable) : nullptr;
}

// Base of a streamable class without a streamable parent class.
template <class T>
using SGStreamableInterface = SGStreamableDerivedInterface<T, CSGStreamable>;
