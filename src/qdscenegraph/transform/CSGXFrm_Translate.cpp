#include "qdscenegraph/transform/CSGXFrm_Translate.h"

#include "qdscenegraph/streaming/CSGFloatRecord.h"

const CSGTypeInfo<CSGTransform> CSGXFrm_Translate::ms_objTypeInfo(CSGXFrm_Translate::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGXFrm_Translate> s_objRegistration(0xFCF3CA18B2438CCC, 1, 1);
}

boost::intrusive_ptr<CSGXFrm_Translate> CSGXFrm_Translate::Create(const CSGFloat3& rTranslation)
{
    boost::intrusive_ptr<CSGXFrm_Translate> spTransform = CSGMem::Construct<CSGXFrm_Translate>();
    if (spTransform)
    {
        spTransform->m_vTranslation = rTranslation;
    }
    return spTransform;
}

void CSGXFrm_Translate::SetTranslation(const CSGFloat3& rTranslation)
{
    if (m_vTranslation != rTranslation)
    {
        m_vTranslation = rTranslation;
        MarkDirty();
    }
}

CTransform3 CSGXFrm_Translate::GetTransform() const { return {CMatrix3(), m_vTranslation}; }

CSGTransform::CTransformPtr CSGXFrm_Translate::CreateCopy(CCopies&) const { return Create(m_vTranslation); }

bool CSGXFrm_Translate::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_CALL(CSGTransform::ReadFromStream(pStream, pLoadState), false);
    return ReadFloats(pStream, m_vTranslation);
}

bool CSGXFrm_Translate::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGTransform::WriteToStream(pStream, pSaveState), false);
    return WriteFloats(pStream, m_vTranslation);
}

void CSGXFrm_Translate::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGXFrm_Translate: 0x%08llX Name: '%s' - Translation: [%.3f %.3f %.3f]",
        rIndent, LogAddress(this), GetName(), m_vTranslation.x, m_vTranslation.y, m_vTranslation.z);
}
