// The type records of streamable classes: what a NEST file knows of a class.
#pragma once

#include "qdcommon/CQDString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>
#include <vector>

class CSGStreamable;

// One static record per streamable class: its name, its GUID, the record versions it can read, a factory and
// its parent type.
class SGStreamableType
{
  public:
    static constexpr uint64_t NO_GUID = ~uint64_t(0);

    explicit SGStreamableType(const char* szName) : m_strName(szName) {}
    SGStreamableType(const SGStreamableType&) = delete;
    SGStreamableType& operator=(const SGStreamableType&) = delete;

    // A new object of the type; null for an abstract one.
    virtual boost::intrusive_ptr<CSGStreamable> CreateObject() const = 0;
    // Null for a root type.
    virtual const SGStreamableType* GetParentType() const = 0;
    virtual ~SGStreamableType() = default;

    const CQDString& GetName() const { return m_strName; }
    // False (reported) for a type that was never registered.
    bool GetGUID(uint64_t& rGUID) const;
    int32_t GetOldestVersion() const { return m_nOldestVersion; }
    // The version in which objects are written.
    int32_t GetLatestVersion() const { return m_nLatestVersion; }
    bool IsRegistered() const { return m_bRegistered; }

    // Enters the type in the process's map. A GUID that another type holds stays with that type (reported).
    bool Register(uint64_t uiGUID, int32_t nOldestVersion, int32_t nLatestVersion);

    // Null for an unknown GUID.
    static const SGStreamableType* FindType(uint64_t uiGUID);
    // Every registered type, in the order of their GUIDs.
    static std::vector<const SGStreamableType*> GetAllTypes();

  private:
    bool VerifyRegistration() const;

    CQDString m_strName;
    uint64_t m_uiGUID = NO_GUID;
    int32_t m_nOldestVersion = -1;
    int32_t m_nLatestVersion = -1;
    int32_t m_arrReserved[2] = {-1, -1};
    bool m_bRegistered = false;
};

// Written as a static object beside a class, registers the class's type while the program starts.
template <class T>
class SGStreamableRegistration
{
  public:
    SGStreamableRegistration(uint64_t uiGUID, int32_t nOldestVersion, int32_t nLatestVersion)
    {
        T::GetStaticSGStreamableType()->Register(uiGUID, nOldestVersion, nLatestVersion);
    }
};
