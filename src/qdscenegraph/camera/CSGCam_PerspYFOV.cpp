#include "qdscenegraph/camera/CSGCam_PerspYFOV.h"

#include "qdscenegraph/streaming/CSGFloatRecord.h"

const CSGTypeInfo<CSGCamera> CSGCam_PerspYFOV::ms_objTypeInfo(CSGCam_PerspYFOV::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGCam_PerspYFOV> s_objRegistration(0x3853C3CAE836802B, 1, 1);
}

boost::intrusive_ptr<CSGCam_PerspYFOV> CSGCam_PerspYFOV::Create(const CQDCompactString& rName, float fYFOV,
                                                                const CFrame& rFrame)
{
    boost::intrusive_ptr<CSGCam_PerspYFOV> spCamera = CSGMem::Construct<CSGCam_PerspYFOV>();
    if (spCamera)
    {
        spCamera->SetName(rName);
        spCamera->SetFrame(rFrame);
        spCamera->m_fYFOV = fYFOV;
    }
    return spCamera;
}

bool CSGCam_PerspYFOV::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_CALL(CSGCamera::ReadFromStream(pStream, pLoadState), false);
    return ReadFloats(pStream, m_fYFOV);
}

bool CSGCam_PerspYFOV::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGCamera::WriteToStream(pStream, pSaveState), false);
    return WriteFloats(pStream, m_fYFOV);
}

void CSGCam_PerspYFOV::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO,
        "%sCSGCam_PerspYFOV: 0x%08llX Name: '%s' - YFOV: %.3f - Aspect ratio: %.3f - Near: %.3f - Far: %.3f",
        rIndent, LogAddress(this), GetName(), m_fYFOV, GetAspectRatio(), GetNear(), GetFar());
}
