#include "qdscenegraph/animation/CSGAnimation.h"

#include "qdcommon/CStream.h"

namespace
{
const SGStreamableRegistration<CSGAnimation> s_objRegistration(0x46CECCBFB6257147, 2, 2);
}

bool CSGAnimation::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    pStream->ReadString(m_strName);
    QD_CHECK(pStream->CanRead(3, sizeof(float)), false);
    m_fBeginTime = pStream->ReadFloat();
    m_fEndTime = pStream->ReadFloat();
    const int32_t nNumChannels = pStream->ReadInt32();
    if (nNumChannels != 0)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR,
            "Animation '%s' has %d channels: reading channels is not supported yet.", m_strName,
            nNumChannels);
        return false;
    }
    return true;
}

bool CSGAnimation::WriteToStream(CStream* pStream, CSGStreamableSaveState*)
{
    QD_CHECK_ARG(pStream, false);
    pStream->WriteString(m_strName);
    pStream->WriteFloat(m_fBeginTime);
    pStream->WriteFloat(m_fEndTime);
    pStream->WriteInt32(0);
    return true;
}
