#include "qdscenegraph/object/CSGDataTypeInfo.h"

#include "qdscenegraph/object/CSGMem.h"

#include <memory>

CSGDataTypeInfo::CSGDataTypeInfo(const char* szName, bool bAllowMultiple)
    : m_strName(szName),
      m_bAllowMultiple(bAllowMultiple),
      m_pTypeMap(&GetTypeMap())
{
    m_pTypeMap->Register(this);
}

CSGDataTypeInfo::CSGDataTypeInfo(const char* szName, bool bAllowMultiple, std::nullptr_t)
    : m_strName(szName),
      m_bAllowMultiple(bAllowMultiple)
{}

CSGDataTypeInfo::~CSGDataTypeInfo()
{
    if (m_pTypeMap != nullptr && m_nTypeID != 0)
    {
        m_pTypeMap->Unregister(this);
    }
}

CSGDataTypeInfo::CTypeMap& CSGDataTypeInfo::GetTypeMap()
{
    // Never destroyed: records of other translation units unregister in an order that nobody controls.
    static CTypeMap& s_rMap = *std::make_unique<CTypeMap>().release();
    return s_rMap;
}

bool CSGDataTypeInfo::CTypeMap::Register(CSGDataTypeInfo* pTypeInfo)
{
    QD_CHECK_ARG(pTypeInfo, false);
    QD_CHECK(pTypeInfo->GetTypeID() == 0, false);
    if ((m_nNextTypeID & ~TYPE_MASK) != 0)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR,
            "Hit maximum number of CSGData types that can be registered while registering %s",
            pTypeInfo->m_strName);
        return false;
    }
    if (m_mapTypeNames.contains(pTypeInfo->m_strName))
    {
        if (pTypeInfo->m_bAllowMultiple)
        {
            return true;
        }
        Log(QD_SCENEGRAPH, LOG_ERROR, "Data type with name %s was already registered", pTypeInfo->m_strName);
        return false;
    }
    pTypeInfo->m_nTypeID = m_nNextTypeID;
    m_mapTypeIDs.emplace(m_nNextTypeID, pTypeInfo);
    m_mapTypeNames.emplace(pTypeInfo->m_strName, pTypeInfo);
    m_nNextTypeID <<= 1;
    return true;
}

void CSGDataTypeInfo::CTypeMap::Unregister(CSGDataTypeInfo* pTypeInfo)
{
    QD_CHECK_ARG(pTypeInfo, );
    const CQDString& rName = pTypeInfo->m_strName;
    if (pTypeInfo->m_nTypeID == 0)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Data type %s was not registered.", rName);
        return;
    }
    const auto itTypeName = m_mapTypeNames.find(rName);
    if (itTypeName == m_mapTypeNames.end())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Data type 0x%08X %s was not in type name map.", pTypeInfo->m_nTypeID,
            rName);
        return;
    }
    QD_CHECK(itTypeName->second == pTypeInfo, );
    const auto itTypeID = m_mapTypeIDs.find(pTypeInfo->m_nTypeID);
    if (itTypeID == m_mapTypeIDs.end())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Data type 0x%08X %s was not in type ID map.", pTypeInfo->m_nTypeID,
            rName);
        return;
    }
    QD_CHECK(itTypeID->second == pTypeInfo, );
    m_mapTypeNames.erase(itTypeName);
    m_mapTypeIDs.erase(itTypeID);
    pTypeInfo->m_nTypeID = 0;
}

const CSGDataTypeInfo* CSGDataTypeInfo::CTypeMap::Find(uint32_t uiTypeID) const
{
    const auto it = m_mapTypeIDs.find(uiTypeID);
    return it != m_mapTypeIDs.end() ? it->second : nullptr;
}

const CSGDataTypeInfo* CSGDataTypeInfo::CTypeMap::Find(const CQDString& rName) const
{
    const auto it = m_mapTypeNames.find(rName);
    return it != m_mapTypeNames.end() ? it->second : nullptr;
}
