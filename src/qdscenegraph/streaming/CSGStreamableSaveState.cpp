#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGStreamable.h"

bool CSGStreamableSaveState::AddObject(CSGStreamable* pStreamable)
{
    QD_CHECK_ARG(pStreamable, false);
    const int32_t nObjectID = GetNumObjects();
    if (!m_mapObjectIDs.Add(pStreamable, nObjectID))
    {
        return true;
    }
    QD_CHECK_OR_RETURN(nObjectID >= 0, "%s is false", "nObjectID>=0", false);
    const SGStreamableType* pType = pStreamable->GetSGStreamableType();
    QD_CHECK_NOT_NULL(pType, false);
    CTypeHeader* pHeader = DoGetTypeHeader(DoGetTypeIndex(pType, true));
    QD_CHECK_NOT_NULL(pHeader, false);
    if (pHeader->m_nVersionBeingStreamed == -1)
    {
        pHeader->m_nVersionBeingStreamed = pType->GetLatestVersion();
    }
    QD_CHECK(pHeader->m_nVersionBeingStreamed == pType->GetLatestVersion(), false);
    m_vecObjects.push_back(pStreamable);
    return true;
}

CSGStreamable* CSGStreamableSaveState::GetObject(int32_t nID) const
{
    QD_CHECK((nID >= 0) && (nID < GetNumObjects()), nullptr);
    return m_vecObjects[static_cast<size_t>(nID)];
}

int32_t CSGStreamableSaveState::GetObjectID(const CSGStreamable* pStreamable) const
{
    const int32_t nID = m_mapObjectIDs.Find(pStreamable, -1);
    QD_CHECK(nID >= 0, -1);
    return nID;
}

bool CSGStreamableSaveState::WriteChildID(CStream* pStream, const CSGStreamable* pChild) const
{
    QD_CHECK_ARG(pStream, false);
    int32_t nID = -1;
    if (pChild != nullptr)
    {
        nID = GetObjectID(pChild);
        QD_CHECK_OR_RETURN(nID >= 0, "%s is false", "nID>=0", false);
    }
    pStream->WriteInt32(nID);
    return true;
}

bool CSGStreamableSaveState::WriteWeakChildID(CStream* pStream, const CSGStreamable* pChild) const
{
    return WriteChildID(pStream, HasObject(pChild) ? pChild : nullptr);
}
