// The state of one save: which objects are saved, under which ids, and their types.
#pragma once

#include "qdcommon/CPointerMap.h"
#include "qdscenegraph/streaming/CSGStreamableState.h"

class CSGStreamable;
class CStream;

class CSGStreamableSaveState : public CSGStreamableState
{
  public:
    // Gives the object the next id (0, 1, ...) and its type a header; nothing happens for an object that has
    // an id. The object must live as long as the save state.
    bool AddObject(CSGStreamable* pStreamable);
    bool HasObject(const CSGStreamable* pStreamable) const
    {
        return m_mapObjectIDs.Find(pStreamable, -1) >= 0;
    }

    const SGStreamableType* GetType(int32_t nTypeIndex) const { return DoGetType(nTypeIndex); }
    int32_t GetNumObjects() const { return static_cast<int32_t>(m_vecObjects.size()); }
    // Null (reported) for an id that was not given.
    CSGStreamable* GetObject(int32_t nID) const;
    // Negative (reported) for an object that was not added.
    int32_t GetObjectID(const CSGStreamable* pStreamable) const;
    // Writes the id of a link as int32: -1 for a null child, else the child's, which must have been added.
    bool WriteChildID(CStream* pStream, const CSGStreamable* pChild) const;
    // The id of a link that does not own its object, after all objects were added: -1 also for one that is
    // not saved.
    bool WriteWeakChildID(CStream* pStream, const CSGStreamable* pChild) const;

  private:
    std::vector<CSGStreamable*> m_vecObjects;
    CPointerMap<int32_t> m_mapObjectIDs;
};
