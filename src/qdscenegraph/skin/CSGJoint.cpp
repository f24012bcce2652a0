#include "qdscenegraph/skin/CSGJoint.h"

#include "qdscenegraph/streaming/CSGFloatRecord.h"

namespace
{
const SGStreamableRegistration<CSGJoint> s_objRegistration(0xE33176A9A60A992F, 1, 1);
}

boost::intrusive_ptr<CSGJoint> CSGJoint::Create(const CQDCompactString& rLocalName,
                                                const CTransform3& rInverseBind)
{
    boost::intrusive_ptr<CSGJoint> spJoint = CSGMem::Construct<CSGJoint>();
    QD_CHECK_CREATED(spJoint, nullptr);
    spJoint->m_strLocalName = rLocalName;
    spJoint->m_objInverseBind = rInverseBind;
    return spJoint;
}

bool CSGJoint::ReadFromStream(CStream* pStream, CSGStreamableLoadState*)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK(pStream->CanRead(1, sizeof(uint32_t)), false);
    pStream->ReadString(m_strLocalName);
    return ReadFloats(pStream, m_objInverseBind);
}

bool CSGJoint::WriteToStream(CStream* pStream, CSGStreamableSaveState*)
{
    QD_CHECK_ARG(pStream, false);
    pStream->WriteString(m_strLocalName);
    return WriteFloats(pStream, m_objInverseBind);
}

void CSGJoint::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGJoint: 0x%08llX Local name: '%s'", rIndent, LogAddress(this),
        m_strLocalName);
}
