#include "qdscenegraph/geometry/CSGData_Geometry.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/node/CSGGeomStats.h"
#include "qdscenegraph/streaming/CSGLoadedLink.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

[[gnu::init_priority(CSGDataTypeInfo::ORDER_GEOMETRY)]] CSGDataTypeInfo CSGData_Geometry::ms_objDataTypeInfo(
    CSGData_Geometry::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGData_Geometry> s_objRegistration(0xCAACC261C2BE3E03, 1, 1);
}

boost::intrusive_ptr<CSGData_Geometry> CSGData_Geometry::Create(
    const boost::intrusive_ptr<CSGGeomList>& spGeomList)
{
    QD_CHECK_ARG(spGeomList, nullptr);
    boost::intrusive_ptr<CSGData_Geometry> spGeometry = CSGMem::Construct<CSGData_Geometry>();
    QD_CHECK_CREATED(spGeometry, nullptr);
    spGeometry->m_spGeomList = spGeomList;
    return spGeometry;
}

bool CSGData_Geometry::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, COOKIE_GEOM_LIST), false);
    return true;
}

bool CSGData_Geometry::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    QD_CHECK_CALL(pSaveState->WriteChildID(pStream, m_spGeomList.get()), false);
    return true;
}

bool CSGData_Geometry::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    if (nCookie != COOKIE_GEOM_LIST)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Bad cookie %d", nCookie);
        return false;
    }
    return SetLoadedLink(m_spGeomList, pChild);
}

bool CSGData_Geometry::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGData::PreWrite(pSaveState), false);
    QD_CHECK_NOT_NULL(m_spGeomList, false);
    QD_CHECK_CALL(m_spGeomList->PreWrite(pSaveState), false);
    return true;
}

bool CSGData_Geometry::PostRead(CSGStreamableLoadState*)
{
    QD_CHECK_NOT_NULL(m_spGeomList, false);
    return true;
}

void CSGData_Geometry::DropLinks() { m_spGeomList.reset(); }

void CSGData_Geometry::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGData_Geometry: 0x%08llX", rIndent, LogAddress(this));
    m_spGeomList->OutputDebugInfo(rIndent + "    ");
}

void CSGData_Geometry::AddGeomStats(CSGGeomStats& rStats) const
{
    for (const CSGVertexBuffer* pBuffer : m_spGeomList->GetVertexBuffers())
    {
        CSGGeomStats::AddCount(rStats.m_nVertexBuffers, 1);
        CSGGeomStats::AddCount(rStats.m_nVertices, pBuffer->GetNumVertices());
        rStats.m_setVertexFormats.insert(pBuffer->GetFormat().GetDescription());
    }
    for (int32_t nBinding = 0; nBinding < m_spGeomList->GetNumBindings(); ++nBinding)
    {
        const CSGGeom* pGeom = m_spGeomList->GetBinding(nBinding)->GetGeom();
        CSGGeomStats::AddCount(rStats.m_nGeoms, 1);
        CSGGeomStats::AddCount(rStats.m_nTriangles, pGeom->CountTriangles());
        CSGGeomStats::AddCount(rStats.m_nLines, pGeom->CountLines());
    }
}
