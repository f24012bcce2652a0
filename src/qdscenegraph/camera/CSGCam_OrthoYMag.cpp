#include "qdscenegraph/camera/CSGCam_OrthoYMag.h"

#include "qdscenegraph/streaming/CSGFloatRecord.h"

const CSGTypeInfo<CSGCamera> CSGCam_OrthoYMag::ms_objTypeInfo(CSGCam_OrthoYMag::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGCam_OrthoYMag> s_objRegistration(0xF6FF9F5219C40457, 1, 1);
}

boost::intrusive_ptr<CSGCam_OrthoYMag> CSGCam_OrthoYMag::Create(const CQDCompactString& rName, float fYMag,
                                                                const CFrame& rFrame)
{
    boost::intrusive_ptr<CSGCam_OrthoYMag> spCamera = CSGMem::Construct<CSGCam_OrthoYMag>();
    if (spCamera)
    {
        spCamera->SetName(rName);
        spCamera->SetFrame(rFrame);
        spCamera->m_fYMag = fYMag;
    }
    return spCamera;
}

bool CSGCam_OrthoYMag::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_CALL(CSGCamera::ReadFromStream(pStream, pLoadState), false);
    return ReadFloats(pStream, m_fYMag);
}

bool CSGCam_OrthoYMag::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGCamera::WriteToStream(pStream, pSaveState), false);
    return WriteFloats(pStream, m_fYMag);
}

void CSGCam_OrthoYMag::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO,
        "%sCSGCam_OrthoYMag: 0x%08llX Name: '%s' - YMag: %.3f - Aspect ratio: %.3f - Near: %.3f - Far: %.3f",
        rIndent, LogAddress(this), GetName(), m_fYMag, GetAspectRatio(), GetNear(), GetFar());
}
