#include "qdscenegraph/streaming/CSGStreamableLoadState.h"

#include "qdcommon/CStream.h"

#include <algorithm>

CSGStreamableLoadState::~CSGStreamableLoadState()
{
    if (!m_bComplete)
    {
        for (const CSlot& rSlot : m_vecObjects)
        {
            if (rSlot.m_pObject)
            {
                rSlot.m_pObject->DropLinks();
            }
        }
    }
}

bool CSGStreamableLoadState::SetVersionBeingLoaded(const SGStreamableType* pType, int32_t nVersion)
{
    CTypeHeader* pTypeHeader = DoGetTypeHeader(DoGetTypeIndex(pType, true));
    QD_CHECK_NOT_NULL(pTypeHeader, false);
    QD_CHECK(pTypeHeader->m_nVersionBeingStreamed == -1, false);
    pTypeHeader->m_nVersionBeingStreamed = nVersion;
    return true;
}

int32_t CSGStreamableLoadState::GetVersionBeingLoaded(const SGStreamableType* pType)
{
    const int32_t nTypeIndex = DoGetTypeIndex(pType, false);
    return nTypeIndex >= 0 ? DoGetTypeHeader(nTypeIndex)->m_nVersionBeingStreamed : -1;
}

int32_t CSGStreamableLoadState::DoGetVersionToRead(const SGStreamableType* pType)
{
    const int32_t nVersion = GetVersionBeingLoaded(pType);
    if (nVersion == -1)
    {
        Log(QD_SCENEGRAPH, LOG_WARNING, "Treating version -1 as version 1");
        return 1;
    }
    return nVersion;
}

bool CSGStreamableLoadState::SetNumObjects(int32_t nNumObjects)
{
    QD_CHECK(nNumObjects >= 0, false);
    m_vecObjects.resize(static_cast<size_t>(nNumObjects));
    return true;
}

CSGStreamable* CSGStreamableLoadState::GetOrNeedObject(int32_t nID, CSGStreamable* pObjectToNotify,
                                                       int32_t nCookie)
{
    CSlot& rSlot = m_vecObjects[static_cast<size_t>(nID)];
    if (!rSlot.m_pObject)
    {
        const auto nPending = static_cast<int32_t>(m_vecPending.size());
        m_vecPending.push_back({pObjectToNotify, nCookie, -1});
        (rSlot.m_nLastPending < 0 ? rSlot.m_nFirstPending
                                  : m_vecPending[static_cast<size_t>(rSlot.m_nLastPending)].m_nNext) =
            nPending;
        rSlot.m_nLastPending = nPending;
    }
    return rSlot.m_pObject.get();
}

bool CSGStreamableLoadState::ReadChildID(CStream* pStream, CSGStreamable* pObjectToNotify, int32_t nCookie)
{
    return ReadLink(pStream, pObjectToNotify, nCookie, true);
}

bool CSGStreamableLoadState::ReadWeakChildID(CStream* pStream, CSGStreamable* pObjectToNotify,
                                             int32_t nCookie)
{
    return ReadLink(pStream, pObjectToNotify, nCookie, false);
}

bool CSGStreamableLoadState::ReadLink(CStream* pStream, CSGStreamable* pObjectToNotify, int32_t nCookie,
                                      bool bOwning)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pObjectToNotify, false);
    // The end of the stream would read as the valid id 0.
    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nID = pStream->ReadInt32();
    if (nID == -1)
    {
        return true;
    }
    QD_CHECK((nID >= 0) && (nID < GetNumObjects()), false);
    if (bOwning)
    {
        m_vecLinks.push_back({m_nNumLoaded, nID});
    }
    if (CSGStreamable* pChild = GetOrNeedObject(nID, pObjectToNotify, nCookie))
    {
        QD_CHECK_OR_RETURN(pObjectToNotify->NotifyObjectLoaded(nCookie, pChild, this), "Call %s failed",
                           "pObjectToNotify->NotifyObjectLoaded(nCookie,pChild,this)", false);
    }
    return true;
}

int32_t CSGStreamableLoadState::FindID(const CSGStreamable* pStreamable) const
{
    const auto it = std::ranges::find(m_vecObjects, pStreamable,
                                      [](const CSlot& rSlot) { return rSlot.m_pObject.get(); });
    return it != m_vecObjects.end() ? static_cast<int32_t>(it - m_vecObjects.begin()) : -1;
}

bool CSGStreamableLoadState::NotifyObjectLoaded(CSGStreamable* pStreamable, int32_t nID)
{
    QD_CHECK_ARG(pStreamable, false);
    const int32_t nNumObjects = GetNumObjects();
    QD_CHECK_OR_RETURN(nID >= 0 && nID < nNumObjects, "%s is false", "(nID>=0) && (nID < nNumObjects)",
                       false);
    // An object that its maker alone holds cannot be here already.
    const int32_t nExistingID = pStreamable->GetRefCount() > 1 ? FindID(pStreamable) : -1;
    QD_CHECK(nExistingID < 0, false);
    CSlot* pLoadState = &m_vecObjects[static_cast<size_t>(nID)];
    QD_CHECK(pLoadState->m_pObject == 0, false);
    pLoadState->m_pObject = pStreamable;
    m_nNumLoaded = nID + 1;
    for (int32_t n = pLoadState->m_nFirstPending; n >= 0;)
    {
        const CNotification nn = m_vecPending[static_cast<size_t>(n)];
        QD_CHECK_NOT_NULL(nn.m_pObjectToNotify, false);
        QD_CHECK_CALL(nn.m_pObjectToNotify->NotifyObjectLoaded(nn.m_nCookie, pStreamable, this), false);
        n = nn.m_nNext;
    }
    return true;
}

CSGStreamable* CSGStreamableLoadState::GetLoadedObject(int32_t nID) const
{
    QD_CHECK((nID >= 0) && (nID < (int)m_vecObjects.size()), nullptr);
    return m_vecObjects[static_cast<size_t>(nID)].m_pObject.get();
}

bool CSGStreamableLoadState::VerifyLinks() const
{
    // Topological order: an object is taken when all links to it have been followed. What is never taken
    // stands in a circle.
    const size_t nNumObjects = m_vecObjects.size();
    std::vector<int32_t> vecLinksTo(nNumObjects, 0);
    std::vector<int32_t> vecFirstLink(nNumObjects + 1, 0);
    for (const CLink& rLink : m_vecLinks)
    {
        ++vecLinksTo[static_cast<size_t>(rLink.m_nTo)];
        ++vecFirstLink[static_cast<size_t>(rLink.m_nFrom) +
                       1]; // links stand in the order of the objects they come from
    }
    for (size_t n = 0; n < nNumObjects; ++n)
    {
        vecFirstLink[n + 1] += vecFirstLink[n];
    }
    std::vector<int32_t> vecNesting(nNumObjects, 0);
    std::vector<int32_t> vecReady;
    vecReady.reserve(nNumObjects);
    for (size_t n = 0; n < nNumObjects; ++n)
    {
        if (vecLinksTo[n] == 0)
        {
            vecReady.push_back(static_cast<int32_t>(n));
        }
    }
    for (size_t nTaken = 0; nTaken < vecReady.size(); ++nTaken)
    {
        const auto nFrom = static_cast<size_t>(vecReady[nTaken]);
        const int32_t nNesting = m_vecObjects[nFrom].m_pObject->MayNestWithoutBound() ? 0 : vecNesting[nFrom];
        if (nNesting > MAX_NESTING)
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Object %d is nested more than %d objects deep.",
                static_cast<int>(nFrom), MAX_NESTING);
            return false;
        }
        for (auto n = static_cast<size_t>(vecFirstLink[nFrom]);
             n < static_cast<size_t>(vecFirstLink[nFrom + 1]); ++n)
        {
            const auto nTo = static_cast<size_t>(m_vecLinks[n].m_nTo);
            vecNesting[nTo] = std::max(vecNesting[nTo], nNesting + 1);
            if (--vecLinksTo[nTo] == 0)
            {
                vecReady.push_back(static_cast<int32_t>(nTo));
            }
        }
    }
    if (vecReady.size() != nNumObjects)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "The links of %d objects run in a circle.",
            static_cast<int>(nNumObjects - vecReady.size()));
        return false;
    }
    return true;
}
