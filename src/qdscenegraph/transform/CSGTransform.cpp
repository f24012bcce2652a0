#include "qdscenegraph/transform/CSGTransform.h"

#include "qdcommon/CStream.h"

namespace
{
const SGStreamableRegistration<CSGTransform> s_objRegistration(0xC50B1D1B6CA21557, 1, 1);
}

CSGTransform::CTransformPtr CSGTransform::Copy() const
{
    CCopies mapCopies;
    return Copy(mapCopies);
}

CSGTransform::CTransformPtr CSGTransform::Copy(CCopies& rCopies) const
{
    // Most transforms stand in one place, and then nobody asks for their copy again.
    const bool bShared = IsShared();
    if (bShared)
    {
        if (const auto it = rCopies.find(this); it != rCopies.end())
        {
            return it->second;
        }
    }
    CTransformPtr spCopy = CreateCopy(rCopies);
    QD_CHECK_CREATED(spCopy, nullptr);
    spCopy->m_strName = m_strName;
    if (bShared)
    {
        rCopies.emplace(this, spCopy);
    }
    return spCopy;
}

bool CSGTransform::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    pStream->ReadString(m_strName);
    return true;
}

bool CSGTransform::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    pStream->WriteString(m_strName);
    return true;
}

void CSGTransform::OutputRows(const CQDString& rIndent, const CTransform3& rTransform)
{
    for (const auto& rRow : rTransform.m_objMatrix.m)
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%s[%.3f %.3f %.3f]", rIndent, rRow[0], rRow[1], rRow[2]);
    }
    const CSGFloat3& t = rTransform.m_objTranslation;
    Log(QD_SCENEGRAPH, LOG_INFO, "%s[%.3f %.3f %.3f]", rIndent, t.x, t.y, t.z);
}
