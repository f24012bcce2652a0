// Registries of the kinds of object below a common base: a small integer id and a name for each kind.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdscenegraph/object/CSGAllocator.h"

#include <map>

// The record of one kind below the base T, one static record per concrete class. It registers itself during
// static initialisation and unregisters when it is destroyed.
template <class T>
class CSGTypeInfo
{
  public:
    class CTypeMap
    {
      public:
        static constexpr int32_t MIN_CAPACITY = 8;

        // Gives the record an id; false (reported) when it has one or its name is taken.
        bool Register(CSGTypeInfo* lpObjDataType);
        void Unregister(CSGTypeInfo* lpObjDataType);

        // Null when there is no such kind.
        const CSGTypeInfo* Find(int32_t nTypeID) const
        {
            return m_setTypes.IsInUse(nTypeID) ? m_setTypes[nTypeID] : nullptr;
        }
        const CSGTypeInfo* Find(const CQDString& rName) const
        {
            const auto it = m_mapNames.find(rName);
            return it != m_mapNames.end() ? Find(it->second) : nullptr;
        }
        int32_t GetHighWaterMark() const { return m_setTypes.GetSize(); }
        int32_t GetCapacity() const { return m_setTypes.GetCapacity(); }

      private:
        CSGListSet<CSGTypeInfo*, MIN_CAPACITY> m_setTypes; // slot = id
        std::map<CQDString, int32_t> m_mapNames;
    };

    // A record that registers itself with the registry of the base.
    explicit CSGTypeInfo(const char* szName) : CSGTypeInfo(szName, &GetTypeMap()) {}
    // A record for a registry of one's own; it is registered by hand.
    CSGTypeInfo(const char* szName, std::nullptr_t) : m_strName(szName) {}
    CSGTypeInfo(const CSGTypeInfo&) = delete;
    CSGTypeInfo& operator=(const CSGTypeInfo&) = delete;
    ~CSGTypeInfo()
    {
        if (m_pTypeMap != nullptr && m_nTypeID >= 0)
        {
            m_pTypeMap->Unregister(this);
        }
    }

    // -1 while the kind is not registered.
    int32_t GetTypeID() const { return m_nTypeID; }
    const CQDString& GetName() const { return m_strName; }

    static CTypeMap& GetTypeMap()
    {
        // Never destroyed: records of other translation units unregister in an order that nobody controls.
        static CTypeMap& s_rMap = *std::make_unique<CTypeMap>().release();
        return s_rMap;
    }

  private:
    CSGTypeInfo(const char* szName, CTypeMap* pTypeMap) : m_strName(szName), m_pTypeMap(pTypeMap)
    {
        m_pTypeMap->Register(this);
    }

    int32_t m_nTypeID = -1;
    CQDString m_strName;
    CTypeMap* m_pTypeMap = nullptr;
};

template <class T>
bool CSGTypeInfo<T>::CTypeMap::Register(CSGTypeInfo* lpObjDataType)
{
    QD_CHECK_ARG(lpObjDataType, false);
    const CQDString& rName = lpObjDataType->m_strName;
    if (lpObjDataType->m_nTypeID >= 0)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Data type %d %s was already registered.", lpObjDataType->m_nTypeID,
            rName);
        return false;
    }
    if (m_mapNames.contains(rName))
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Already had data type named %s registered.", rName);
        return false;
    }
    const int32_t nTypeID = m_setTypes.Add(lpObjDataType);
    if (nTypeID < 0)
    {
        return false;
    }
    m_mapNames.emplace(rName, nTypeID);
    lpObjDataType->m_nTypeID = nTypeID;
    return true;
}

template <class T>
void CSGTypeInfo<T>::CTypeMap::Unregister(CSGTypeInfo* lpObjDataType)
{
    QD_CHECK_ARG(lpObjDataType, );
    const CQDString& rName = lpObjDataType->m_strName;
    const int32_t nTypeID = lpObjDataType->m_nTypeID;
    if (!m_setTypes.IsInUse(nTypeID) || m_setTypes[nTypeID] != lpObjDataType)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Data type %d %s was not registered.", nTypeID, rName);
        return;
    }
    if (m_mapNames.erase(rName) == 0)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Data type %d %s was not in type name map.", nTypeID, rName);
        return;
    }
    m_setTypes.Remove(nTypeID);
    lpObjDataType->m_nTypeID = -1;
}
