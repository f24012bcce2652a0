#include "qdscenegraph/transform/CSGXFrm_Transform3.h"

#include "qdscenegraph/streaming/CSGFloatRecord.h"

const CSGTypeInfo<CSGTransform> CSGXFrm_Transform3::ms_objTypeInfo(CSGXFrm_Transform3::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGXFrm_Transform3> s_objRegistration(0xCD2AF1C9F5CC50EE, 1, 1);
}

boost::intrusive_ptr<CSGXFrm_Transform3> CSGXFrm_Transform3::Create(const CTransform3& rTransform)
{
    boost::intrusive_ptr<CSGXFrm_Transform3> spTransform = CSGMem::Construct<CSGXFrm_Transform3>();
    if (spTransform)
    {
        spTransform->m_objTransform = rTransform;
    }
    return spTransform;
}

void CSGXFrm_Transform3::SetTransform(const CTransform3& rTransform)
{
    if (m_objTransform != rTransform)
    {
        m_objTransform = rTransform;
        MarkDirty();
    }
}

CSGTransform::CTransformPtr CSGXFrm_Transform3::CreateCopy(CCopies&) const { return Create(m_objTransform); }

bool CSGXFrm_Transform3::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_CALL(CSGTransform::ReadFromStream(pStream, pLoadState), false);
    return ReadFloats(pStream, m_objTransform);
}

bool CSGXFrm_Transform3::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGTransform::WriteToStream(pStream, pSaveState), false);
    return WriteFloats(pStream, m_objTransform);
}

void CSGXFrm_Transform3::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGXFrm_Transform3: 0x%08llX Name: '%s'", rIndent, LogAddress(this),
        GetName());
    OutputRows(rIndent + "  ", m_objTransform);
}
