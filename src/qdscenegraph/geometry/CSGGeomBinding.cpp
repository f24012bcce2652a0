#include "qdscenegraph/geometry/CSGGeomBinding.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGLoadedLink.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

namespace
{
const SGStreamableRegistration<CSGGeomBinding> s_objRegistration(0x6F182FE015A8FFF4, 1, 1);
}

boost::intrusive_ptr<CSGGeomBinding> CSGGeomBinding::Create(
    const boost::intrusive_ptr<CSGGeom>& spGeom, const boost::intrusive_ptr<CSGVertexBuffer>& spVertexBuffer)
{
    QD_CHECK_ARG(spGeom, nullptr);
    QD_CHECK_ARG(spVertexBuffer, nullptr);
    boost::intrusive_ptr<CSGGeomBinding> spBinding = CSGMem::Construct<CSGGeomBinding>();
    QD_CHECK_CREATED(spBinding, nullptr);
    spBinding->m_spGeom = spGeom;
    spBinding->m_spVertexBuffer = spVertexBuffer;
    return spBinding->Verify() ? spBinding : nullptr;
}

bool CSGGeomBinding::Verify() const
{
    QD_CHECK_NOT_NULL(m_spGeom, false);
    QD_CHECK_NOT_NULL(m_spVertexBuffer, false);
    const int32_t nMaxIndex = m_spGeom->GetMaxIndex();
    if (nMaxIndex >= m_spVertexBuffer->GetNumVertices())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "A %s has vertex index %d, but its vertex buffer has only %d vertices.",
            m_spGeom->GetTypeInfo()->GetName(), nMaxIndex, m_spVertexBuffer->GetNumVertices());
        return false;
    }
    return true;
}

bool CSGGeomBinding::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, COOKIE_GEOMETRY), false);
    QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, COOKIE_VERTEX_BUFFER), false);
    return true;
}

bool CSGGeomBinding::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    QD_CHECK_CALL(pSaveState->WriteChildID(pStream, m_spGeom.get()), false);
    QD_CHECK_CALL(pSaveState->WriteChildID(pStream, m_spVertexBuffer.get()), false);
    return true;
}

bool CSGGeomBinding::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    switch (nCookie)
    {
    case COOKIE_GEOMETRY:
        return SetLoadedLink(m_spGeom, pChild);
    case COOKIE_VERTEX_BUFFER:
        return SetLoadedLink(m_spVertexBuffer, pChild);
    default:
        Log(QD_SCENEGRAPH, LOG_ERROR, "Bad cookie %d", nCookie);
        return false;
    }
}

bool CSGGeomBinding::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(Verify(), false);
    QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
    QD_CHECK_CALL(m_spGeom->PreWrite(pSaveState), false);
    QD_CHECK_CALL(m_spVertexBuffer->PreWrite(pSaveState), false);
    return true;
}

bool CSGGeomBinding::PostRead(CSGStreamableLoadState*) { return Verify(); }

void CSGGeomBinding::DropLinks()
{
    m_spGeom.reset();
    m_spVertexBuffer.reset();
}

void CSGGeomBinding::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGGeomBinding: 0x%08llX", rIndent, LogAddress(this));
    const CQDString strIndent = rIndent + "    ";
    m_spGeom->OutputDebugInfo(strIndent);
    m_spVertexBuffer->OutputDebugInfo(strIndent);
}
