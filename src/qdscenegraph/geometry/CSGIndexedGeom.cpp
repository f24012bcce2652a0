#include "qdscenegraph/geometry/CSGIndexedGeom.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGLoadedLink.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

bool CSGIndexedGeom::HasWholeElements(const CSGIndexBuffer& rIndexBuffer) const
{
    if (rIndexBuffer.GetNumIndices() % m_nIndicesEach != 0)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "The number of indices %d of a %s is not a multiple of %d.",
            rIndexBuffer.GetNumIndices(), GetTypeInfo()->GetName(), m_nIndicesEach);
        return false;
    }
    return true;
}

bool CSGIndexedGeom::SetIndexBuffer(const boost::intrusive_ptr<CSGIndexBuffer>& spIndexBuffer)
{
    QD_CHECK_ARG(spIndexBuffer, false);
    if (!HasWholeElements(*spIndexBuffer))
    {
        return false;
    }
    m_spIndexBuffer = spIndexBuffer;
    return true;
}

int32_t CSGIndexedGeom::GetMaxIndex() const { return m_spIndexBuffer ? m_spIndexBuffer->GetMaxIndex() : -1; }

int32_t CSGIndexedGeom::GetNumElements() const
{
    return m_spIndexBuffer ? m_spIndexBuffer->GetNumIndices() / m_nIndicesEach : 0;
}

bool CSGIndexedGeom::GetElement(int32_t nElement, std::span<int32_t> arrIndices) const
{
    if (nElement < 0 || nElement >= GetNumElements())
    {
        return false;
    }
    int32_t i = nElement * m_nIndicesEach;
    for (int32_t& rIndex : arrIndices)
    {
        rIndex = m_spIndexBuffer->GetIndex(i++);
    }
    return true;
}

bool CSGIndexedGeom::AddElement(std::span<const int32_t> arrIndices)
{
    QD_CHECK_NOT_NULL(m_spIndexBuffer, false);
    return m_spIndexBuffer->AddIndices(arrIndices);
}

bool CSGIndexedGeom::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, COOKIE_INDEX_BUFFER), false);
    return true;
}

bool CSGIndexedGeom::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    QD_CHECK_CALL(pSaveState->WriteChildID(pStream, m_spIndexBuffer.get()), false);
    return true;
}

bool CSGIndexedGeom::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    if (nCookie != COOKIE_INDEX_BUFFER)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Bad cookie %d", nCookie);
        return false;
    }
    return SetLoadedLink(m_spIndexBuffer, pChild) && HasWholeElements(*m_spIndexBuffer);
}

bool CSGIndexedGeom::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGGeom::PreWrite(pSaveState), false);
    QD_CHECK_NOT_NULL(m_spIndexBuffer, false);
    QD_CHECK_CALL(HasWholeElements(*m_spIndexBuffer), false);
    QD_CHECK_CALL(m_spIndexBuffer->PreWrite(pSaveState), false);
    return true;
}

bool CSGIndexedGeom::PostRead(CSGStreamableLoadState*)
{
    QD_CHECK_NOT_NULL(m_spIndexBuffer, false);
    return true;
}

void CSGIndexedGeom::DropLinks() { m_spIndexBuffer.reset(); }
