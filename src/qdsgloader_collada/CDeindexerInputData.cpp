#include "qdsgloader_collada/CDeindexerInputData.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaConverter.h"
#include "qdsgloader_collada/CColladaDataSourceCache.h"

bool CDeindexerInputData::Setup(int32_t nOffset, const CQDString& rStrSemantic, int32_t nSet,
                                ColladaDOM141::domSource* pSource, CColladaDataSourceCache& rDataSources)
{
    if (nOffset < 0)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in invalid offset %d", nOffset);
        return false;
    }
    if (nSet < 0)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in invalid set %d", nSet);
        return false;
    }
    if (pSource == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in NULL source.");
        return false;
    }
    m_nOffset = nOffset;
    m_strSemantic = rStrSemantic;
    m_nSet = nSet;
    m_eVertexMember = CColladaConverter::GetVertDataMember(rStrSemantic);
    if (m_eVertexMember == CSGVertexFormat::MEMBER_NONE)
    {
        Log(QD_COLLADA, LOG_WARNING, "Unrecognized semantic %s.  Data from this <input> will be ignored.",
            rStrSemantic);
    }
    const boost::intrusive_ptr<CColladaDataSource> spDataSource = rDataSources.GetDataSource(*pSource);
    if (!spDataSource)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create a data source.");
        return false;
    }
    if (!spDataSource->InstanceOf(&CCDS_FloatArray::ms_objType))
    {
        Log(QD_COLLADA, LOG_ERROR, "Data source wasn't a float array.");
        return false;
    }
    m_spDataSource = static_cast<CCDS_FloatArray*>(spDataSource.get());
    return true;
}
