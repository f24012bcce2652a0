// The state of one load: which objects are there, and which links wait for objects that are not.
#pragma once

#include "qdscenegraph/streaming/CSGStreamable.h"
#include "qdscenegraph/streaming/CSGStreamableState.h"

class CSGTextureLoader;
class CStream;

class CSGStreamableLoadState : public CSGStreamableState
{
  public:
    // How deep objects may be nested in each other between two nodes.
    static constexpr int32_t MAX_NESTING = 256;

    CSGStreamableLoadState() = default;
    CSGStreamableLoadState(const CSGStreamableLoadState&) = delete;
    CSGStreamableLoadState& operator=(const CSGStreamableLoadState&) = delete;
    // Gives up its objects; those of a load that did not come to its end lose their links first.
    ~CSGStreamableLoadState();

    // Records the version of a type; allowed once per type.
    bool SetVersionBeingLoaded(const SGStreamableType* pType, int32_t nVersion);
    // Negative when the type has no header or no version.
    int32_t GetVersionBeingLoaded(const SGStreamableType* pType);
    // The version in which the records of a class are read: a header without one counts as version 1 (noted
    // in the log).
    template <class T>
    int32_t GetVersionToRead()
    {
        return DoGetVersionToRead(T::GetStaticSGStreamableType());
    }

    // The caller has held the count against the size of the file.
    bool SetNumObjects(int32_t nNumObjects);
    // Reads the id of a link. The object it names is delivered to pObjectToNotify->NotifyObjectLoaded with
    // the cookie: at once when it is loaded, else as soon as it is. -1 names nothing and delivers nothing.
    bool ReadChildID(CStream* pStream, CSGStreamable* pObjectToNotify, int32_t nCookie);
    // The same for a link that does not own the object: it may lead back to where it came from, and whoever
    // asks holds the object weakly.
    bool ReadWeakChildID(CStream* pStream, CSGStreamable* pObjectToNotify, int32_t nCookie);
    // An object is loaded: keeps it and delivers it to those who wait for it, in the order in which they
    // asked.
    bool NotifyObjectLoaded(CSGStreamable* pStreamable, int32_t nID);
    // Null when the object is not loaded; reported when there is no such id.
    CSGStreamable* GetLoadedObject(int32_t nID) const;
    int32_t GetNumObjects() const { return static_cast<int32_t>(m_vecObjects.size()); }

    // After all objects are loaded: false (reported) when links run in a circle or nest too deeply.
    bool VerifyLinks() const;
    // The load has come to its end: the objects keep their links when the state goes.
    void SetComplete() { m_bComplete = true; }

    // What textures that are kept by name are loaded with; borrowed, null when there is none.
    void SetTextureLoader(CSGTextureLoader* pTextureLoader) { m_pTextureLoader = pTextureLoader; }
    CSGTextureLoader* GetTextureLoader() const { return m_pTextureLoader; }

  private:
    struct CNotification
    {
        CSGStreamable* m_pObjectToNotify;
        int32_t m_nCookie;
        int32_t m_nNext; // the next for the same object, -1 at the end
    };
    struct CSlot
    {
        boost::intrusive_ptr<CSGStreamable> m_pObject;
        int32_t m_nFirstPending = -1;
        int32_t m_nLastPending = -1;
    };
    struct CLink
    {
        int32_t m_nFrom;
        int32_t m_nTo;
    };

    int32_t DoGetVersionToRead(const SGStreamableType* pType);
    bool ReadLink(CStream* pStream, CSGStreamable* pObjectToNotify, int32_t nCookie, bool bOwning);
    int32_t FindID(const CSGStreamable* pStreamable) const;
    CSGStreamable* GetOrNeedObject(int32_t nID, CSGStreamable* pObjectToNotify, int32_t nCookie);

    std::vector<CSlot> m_vecObjects;
    std::vector<CNotification> m_vecPending;
    std::vector<CLink> m_vecLinks; // the owning ones
    int32_t m_nNumLoaded = 0;      // objects load in the order of their ids
    bool m_bComplete = false;
    CSGTextureLoader* m_pTextureLoader = nullptr;
};
