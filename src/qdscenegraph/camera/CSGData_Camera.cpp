#include "qdscenegraph/camera/CSGData_Camera.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGLoadedLink.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

[[gnu::init_priority(CSGDataTypeInfo::ORDER_CAMERA)]] CSGDataTypeInfo CSGData_Camera::ms_objDataTypeInfo(
    CSGData_Camera::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGData_Camera> s_objRegistration(0x86258FD7991D1DF1, 1, 1);
}

boost::intrusive_ptr<CSGData_Camera> CSGData_Camera::Create(const boost::intrusive_ptr<CSGCamera>& spCamera)
{
    QD_CHECK_ARG(spCamera, nullptr);
    boost::intrusive_ptr<CSGData_Camera> spData = CSGMem::Construct<CSGData_Camera>();
    QD_CHECK_CREATED(spData, nullptr);
    spData->m_spCamera = spCamera;
    return spData;
}

bool CSGData_Camera::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, COOKIE_CAMERA), false);
    return true;
}

bool CSGData_Camera::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    QD_CHECK_CALL(pSaveState->WriteChildID(pStream, m_spCamera.get()), false);
    return true;
}

bool CSGData_Camera::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    if (nCookie != COOKIE_CAMERA)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Bad cookie %d", nCookie);
        return false;
    }
    return SetLoadedLink(m_spCamera, pChild);
}

bool CSGData_Camera::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGData::PreWrite(pSaveState), false);
    QD_CHECK_NOT_NULL(m_spCamera, false);
    QD_CHECK_CALL(m_spCamera->PreWrite(pSaveState), false);
    return true;
}

bool CSGData_Camera::PostRead(CSGStreamableLoadState*)
{
    QD_CHECK_NOT_NULL(m_spCamera, false);
    return true;
}

void CSGData_Camera::DropLinks() { m_spCamera.reset(); }

void CSGData_Camera::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGData_Camera: 0x%08llX", rIndent, LogAddress(this));
    m_spCamera->OutputDebugInfo(rIndent + "    ");
}
