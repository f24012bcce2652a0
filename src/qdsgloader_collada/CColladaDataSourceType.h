// The kinds of data sources, found by id, by name, or by the DOM source that they can read.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>

class CColladaDataSource;

// One kind; an object with static storage. It is known between its registration and its unregistration.
class CColladaDataSourceType
{
  public:
    using CDataSourcePtr = boost::intrusive_ptr<CColladaDataSource>;
    // Null (reported) when the source cannot be read.
    using TCreate = CDataSourcePtr (*)(ColladaDOM141::domSource&);
    // Whether the source is of the kind.
    using TMatches = bool (*)(ColladaDOM141::domSource&);

    CColladaDataSourceType(int32_t nTypeID, const CQDString& rStrName, TCreate pfnCreate,
                           TMatches pfnMatches);
    CColladaDataSourceType(const CColladaDataSourceType&) = delete;
    CColladaDataSourceType& operator=(const CColladaDataSourceType&) = delete;
    ~CColladaDataSourceType();

    int32_t GetTypeID() const { return m_nTypeID; }
    const CQDString& GetName() const { return m_strName; }
    bool MatchesDOMSource(ColladaDOM141::domSource& rSource) const { return m_pfnMatches(rSource); }

    // False (reported) when the id or the name is taken.
    static bool RegisterDataSourceType(CColladaDataSourceType* pType);
    static bool UnregisterDataSourceType(CColladaDataSourceType* pType);
    // Null for one that is not registered.
    static CColladaDataSourceType* FindType(int32_t nTypeID);
    static CColladaDataSourceType* FindType(const CQDString& rStrName);

    // Reads a source by the first kind, in the order of ids, that it matches; null (reported) on failure.
    static CDataSourcePtr CreateDataSource(ColladaDOM141::domSource& rSource);

  private:
    int32_t m_nTypeID;
    CQDString m_strName;
    TCreate m_pfnCreate;
    TMatches m_pfnMatches;
};
