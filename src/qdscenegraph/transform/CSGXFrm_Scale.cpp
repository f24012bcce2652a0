#include "qdscenegraph/transform/CSGXFrm_Scale.h"

#include "qdscenegraph/streaming/CSGFloatRecord.h"

const CSGTypeInfo<CSGTransform> CSGXFrm_Scale::ms_objTypeInfo(CSGXFrm_Scale::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGXFrm_Scale> s_objRegistration(0x9FAFAC5211A4D2C5, 1, 1);
}

boost::intrusive_ptr<CSGXFrm_Scale> CSGXFrm_Scale::Create(const CSGFloat3& rScale)
{
    boost::intrusive_ptr<CSGXFrm_Scale> spTransform = CSGMem::Construct<CSGXFrm_Scale>();
    if (spTransform)
    {
        spTransform->m_vScale = rScale;
    }
    return spTransform;
}

void CSGXFrm_Scale::SetScale(const CSGFloat3& rScale)
{
    if (m_vScale != rScale)
    {
        m_vScale = rScale;
        MarkDirty();
    }
}

CTransform3 CSGXFrm_Scale::GetTransform() const
{
    CTransform3 objTransform;
    objTransform.m_objMatrix.m[0][0] = m_vScale.x;
    objTransform.m_objMatrix.m[1][1] = m_vScale.y;
    objTransform.m_objMatrix.m[2][2] = m_vScale.z;
    return objTransform;
}

CSGTransform::CTransformPtr CSGXFrm_Scale::CreateCopy(CCopies&) const { return Create(m_vScale); }

bool CSGXFrm_Scale::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_CALL(CSGTransform::ReadFromStream(pStream, pLoadState), false);
    return ReadFloats(pStream, m_vScale);
}

bool CSGXFrm_Scale::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGTransform::WriteToStream(pStream, pSaveState), false);
    return WriteFloats(pStream, m_vScale);
}

void CSGXFrm_Scale::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGXFrm_Scale: 0x%08llX Name: '%s' - Scale: [%.3f %.3f %.3f]", rIndent,
        LogAddress(this), GetName(), m_vScale.x, m_vScale.y, m_vScale.z);
}
