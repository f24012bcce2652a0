#include "qdsgloader_collada/CColladaDataSourceType.h"

#include "qdcommon/CLogChecks.h"
#include "qdsgloader_collada/CColladaDataSource.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <map>

namespace
{

struct CRegistry
{
    std::map<int32_t, CColladaDataSourceType*> mapByID;
    std::map<CQDString, CColladaDataSourceType*> mapByName;
};

// Made by the first type's construction, so that it outlives all types.
CRegistry& GetRegistry()
{
    static CRegistry s_objRegistry;
    return s_objRegistry;
}

} // namespace

CColladaDataSourceType::CColladaDataSourceType(int32_t nTypeID, const CQDString& rStrName, TCreate pfnCreate,
                                               TMatches pfnMatches)
    : m_nTypeID(nTypeID),
      m_strName(rStrName),
      m_pfnCreate(pfnCreate),
      m_pfnMatches(pfnMatches)
{
    GetRegistry();
}

CColladaDataSourceType::~CColladaDataSourceType()
{
    if (FindType(m_nTypeID) == this)
    {
        Log(QD_COLLADA, LOG_ERROR, "DataSource type %d %s was still registered at destructor time.",
            m_nTypeID, m_strName);
        UnregisterDataSourceType(this);
    }
}

bool CColladaDataSourceType::RegisterDataSourceType(CColladaDataSourceType* pType)
{
    QD_CHECK_ARG(pType, false);
    CRegistry& rRegistry = GetRegistry();
    if (rRegistry.mapByID.contains(pType->m_nTypeID))
    {
        Log(QD_COLLADA, LOG_ERROR, "DataSource type %d %s was already registered.", pType->m_nTypeID,
            pType->m_strName);
        return false;
    }
    if (rRegistry.mapByName.contains(pType->m_strName))
    {
        Log(QD_COLLADA, LOG_ERROR, "Already had geometry type named %s registered.", pType->m_strName);
        return false;
    }
    rRegistry.mapByID.emplace(pType->m_nTypeID, pType);
    rRegistry.mapByName.emplace(pType->m_strName, pType);
    return true;
}

bool CColladaDataSourceType::UnregisterDataSourceType(CColladaDataSourceType* pType)
{
    QD_CHECK_ARG(pType, false);
    CRegistry& rRegistry = GetRegistry();
    const bool bHadID = FindType(pType->m_nTypeID) == pType;
    const bool bHadName = FindType(pType->m_strName) == pType;
    if (!bHadID && !bHadName)
    {
        Log(QD_COLLADA, LOG_ERROR, "DataSource type %d %s was not registered.", pType->m_nTypeID,
            pType->m_strName);
        return false;
    }
    if (bHadID)
    {
        rRegistry.mapByID.erase(pType->m_nTypeID);
    }
    else
    {
        Log(QD_COLLADA, LOG_ERROR, "DataSource type %d %s was not stored for that type ID.", pType->m_nTypeID,
            pType->m_strName);
    }
    if (bHadName)
    {
        rRegistry.mapByName.erase(pType->m_strName);
    }
    else
    {
        Log(QD_COLLADA, LOG_ERROR, "DataSource type %d %s was not in type name map.", pType->m_nTypeID,
            pType->m_strName);
    }
    return bHadID && bHadName;
}

CColladaDataSourceType* CColladaDataSourceType::FindType(int32_t nTypeID)
{
    const auto& rMap = GetRegistry().mapByID;
    const auto it = rMap.find(nTypeID);
    return it != rMap.end() ? it->second : nullptr;
}

CColladaDataSourceType* CColladaDataSourceType::FindType(const CQDString& rStrName)
{
    const auto& rMap = GetRegistry().mapByName;
    const auto it = rMap.find(rStrName);
    return it != rMap.end() ? it->second : nullptr;
}

CColladaDataSourceType::CDataSourcePtr CColladaDataSourceType::CreateDataSource(
    ColladaDOM141::domSource& rSource)
{
    const CColladaDataSourceType* pMatching = nullptr;
    for (const auto& [nTypeID, pType] : GetRegistry().mapByID)
    {
        if (pType->MatchesDOMSource(rSource))
        {
            pMatching = pType;
            break;
        }
    }
    if (pMatching == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Couldn't find matching type for <source>");
        return nullptr;
    }
    if (pMatching->m_pfnCreate == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Matching type for <source> had NULL create function");
        return nullptr;
    }
    CDataSourcePtr spDataSource = pMatching->m_pfnCreate(rSource);
    if (!spDataSource)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create data source with matching type for <source>");
    }
    return spDataSource;
}
