// How an object streams a list of links of its own: their number and their ids, the cookie of each being its
// index.
#pragma once

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGLoadedLink.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

#include <vector>

// All places first: an object that is loaded already is delivered while its id is read.
template <class T>
bool ReadLinks(std::vector<boost::intrusive_ptr<T>>& rvecLinks, CStream* pStream,
               CSGStreamableLoadState* pLoadState, CSGStreamable* pOwner)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nCount = pStream->ReadInt32();
    QD_CHECK(pStream->CanRead(nCount, sizeof(int32_t)), false);
    rvecLinks.resize(static_cast<size_t>(nCount));
    for (int32_t n = 0; n < nCount; ++n)
    {
        QD_CHECK_CALL(pLoadState->ReadChildID(pStream, pOwner, n), false);
    }
    return true;
}

template <class T>
bool WriteLinks(const std::vector<boost::intrusive_ptr<T>>& rvecLinks, CStream* pStream,
                CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    pStream->WriteInt32(static_cast<int32_t>(rvecLinks.size()));
    for (const auto& spLink : rvecLinks)
    {
        QD_CHECK_CALL(pSaveState->WriteChildID(pStream, spLink.get()), false);
    }
    return true;
}

template <class T>
bool SetLoadedLink(std::vector<boost::intrusive_ptr<T>>& rvecLinks, int32_t nCookie, CSGStreamable* pChild)
{
    if (nCookie < 0 || static_cast<size_t>(nCookie) >= rvecLinks.size())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Bad cookie %d", nCookie);
        return false;
    }
    return SetLoadedLink(rvecLinks[static_cast<size_t>(nCookie)], pChild);
}

template <class T>
bool PreWriteLinks(const std::vector<boost::intrusive_ptr<T>>& rvecLinks, CSGStreamableSaveState* pSaveState)
{
    for (const auto& spLink : rvecLinks)
    {
        QD_CHECK_NOT_NULL(spLink, false);
        QD_CHECK_CALL(spLink->PreWrite(pSaveState), false);
    }
    return true;
}

// After loading: whether every place has its object.
template <class T>
bool HasAllLinks(const std::vector<boost::intrusive_ptr<T>>& rvecLinks)
{
    for (const auto& spLink : rvecLinks)
    {
        QD_CHECK_NOT_NULL(spLink, false);
    }
    return true;
}
