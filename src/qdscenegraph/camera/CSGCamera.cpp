#include "qdscenegraph/camera/CSGCamera.h"

#include "qdscenegraph/streaming/CSGFloatRecord.h"

namespace
{
const SGStreamableRegistration<CSGCamera> s_objRegistration(0x89F4581D71127688, 1, 1);
}

bool CSGCamera::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    pStream->ReadString(m_strName);
    return ReadFloats(pStream, m_objFrame);
}

bool CSGCamera::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    pStream->WriteString(m_strName);
    return WriteFloats(pStream, m_objFrame);
}
