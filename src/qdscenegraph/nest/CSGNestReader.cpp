#include "qdscenegraph/nest/CSGNestReader.h"

#include "qdcommon/CFileStream.h"
#include "qdscenegraph/nest/NestFile.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"

#include <cstring>
#include <new>

namespace
{

// The type table of the file being read. Runs of objects of one type are the rule, so the last hit is looked
// at first.
class CTypeTable
{
  public:
    void Add(uint64_t uiGUID, const SGStreamableType* pType) { m_vecTypes.push_back({uiGUID, pType}); }
    // Types that are missing in the table are looked up among all registered ones.
    const SGStreamableType* Find(uint64_t uiGUID)
    {
        if (m_nLast < m_vecTypes.size() && m_vecTypes[m_nLast].m_uiGUID == uiGUID)
        {
            return m_vecTypes[m_nLast].m_pType;
        }
        for (m_nLast = 0; m_nLast < m_vecTypes.size(); ++m_nLast)
        {
            if (m_vecTypes[m_nLast].m_uiGUID == uiGUID)
            {
                return m_vecTypes[m_nLast].m_pType;
            }
        }
        return SGStreamableType::FindType(uiGUID);
    }

  private:
    struct CEntry
    {
        uint64_t m_uiGUID;
        const SGStreamableType* m_pType;
    };
    std::vector<CEntry> m_vecTypes;
    size_t m_nLast = 0;
};

constexpr int64_t TYPE_ENTRY_SIZE = 12;
constexpr int64_t SMALLEST_OBJECT_RECORD = 8; // the GUID alone

} // namespace

boost::intrusive_ptr<CSGNestReader> CSGNestReader::Create() { return new (std::nothrow) CSGNestReader; }

bool CSGNestReader::LoadFile(const CQDString& rFilename)
{
    CFileStream objStream(rFilename, CFileStream::OPEN_READ);
    if (!objStream.IsOpen())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Failed to open file \"%s\".", rFilename);
        return false;
    }
    // A count is believed only when the rest of the file can hold as many records.
    const auto ReadCount = [&](const char* szWhat, int64_t nBytesEach, int32_t& rCount) {
        const bool bThere = objStream.CanRead(1, sizeof(int32_t));
        rCount = bThere ? objStream.ReadInt32() : -1;
        if (!objStream.CanRead(rCount, nBytesEach))
        {
            Log(QD_SCENEGRAPH, LOG_ERROR,
                "The %s count %d of \"%s\" does not fit the %lld bytes that are left.", szWhat, rCount,
                rFilename, static_cast<long long>(objStream.GetBytesLeft()));
            return false;
        }
        return true;
    };

    const boost::intrusive_ptr<CSGTextureLoader> spTextureLoader = CSGTextureLoader::CreateStandardLoader();
    CSGStreamableLoadState loadState;
    loadState.SetTextureLoader(spTextureLoader.get());
    char buff[4] = {};
    objStream.Read(buff, sizeof(buff));
    const int32_t nFileVersion = objStream.ReadInt32();
    if (std::memcmp(buff, NEST_SIGNATURE, sizeof(buff)) != 0)
    {
        QD_CHECK_FAILED("%s is false", "memcmp(buff,\"NEST\",4) == 0");
        Log(QD_SCENEGRAPH, LOG_ERROR, "Did not find expected NEST signature in \"%s\".", rFilename);
        return false;
    }
    if (nFileVersion < NEST_VERSION_UTF16_STRINGS || nFileVersion > NEST_VERSION_8_BIT_STRINGS)
    {
        QD_CHECK_FAILED("%s is false", "(nFileVersion >= 1) && (nFileVersion <= 2)");
        Log(QD_SCENEGRAPH, LOG_ERROR, "Unsupported NEST version %d found in \"%s\".", nFileVersion,
            rFilename);
        return false;
    }
    if (nFileVersion == NEST_VERSION_UTF16_STRINGS)
    {
        objStream.SetStringMode(CStream::STRINGS_UTF16);
    }
    m_spResourceSet = CSGResourceSet::Create();
    QD_CHECK_CREATED(m_spResourceSet, false);

    CTypeTable objTypes;
    int32_t nNumTypes = 0;
    if (!ReadCount("type", TYPE_ENTRY_SIZE, nNumTypes))
    {
        return false;
    }
    for (int32_t n = 0; n < nNumTypes; ++n)
    {
        const int64_t nGUID = objStream.ReadInt64();
        const int32_t nTypeVersion = objStream.ReadInt32();
        const SGStreamableType* pType = SGStreamableType::FindType(static_cast<uint64_t>(nGUID));
        if (pType == nullptr)
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Unknown GUID %lld", static_cast<long long>(nGUID));
            return false;
        }
        QD_CHECK_OR_RETURN(loadState.SetVersionBeingLoaded(pType, nTypeVersion), "Call %s failed",
                           "loadState.SetVersionBeingLoaded(pType,nTypeVersion)", false);
        objTypes.Add(static_cast<uint64_t>(nGUID), pType);
    }

    int32_t nNumTopLevelNodes = 0;
    if (!ReadCount("top-level object", sizeof(int32_t), nNumTopLevelNodes))
    {
        return false;
    }
    std::vector<int32_t> vecTopLevelIDs(static_cast<size_t>(nNumTopLevelNodes));
    objStream.Read(vecTopLevelIDs.data(), vecTopLevelIDs.size() * sizeof(int32_t));

    int32_t nNumObjects = 0;
    if (!ReadCount("object", SMALLEST_OBJECT_RECORD, nNumObjects))
    {
        return false;
    }
    QD_CHECK_CALL(loadState.SetNumObjects(nNumObjects), false);
    for (int32_t nID = 0; nID < nNumObjects; ++nID)
    {
        QD_CHECK(!objStream.EndOfFile(), false);
        const int64_t nGUID = objStream.ReadInt64();
        const auto nLogGUID = static_cast<long long>(nGUID);
        const SGStreamableType* pType = objTypes.Find(static_cast<uint64_t>(nGUID));
        if (pType == nullptr)
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Unknown GUID %lld encountered for object ID %d", nLogGUID, nID);
            return false;
        }
        const int32_t nVersion = loadState.GetVersionBeingLoaded(pType);
        if (nVersion < 0)
        {
            Log(QD_SCENEGRAPH, LOG_ERROR,
                "Encountered Type %s GUID %lld for object ID %d with no version specified in header",
                pType->GetName(), nLogGUID, nID);
            return false;
        }
        if (nVersion < pType->GetOldestVersion() || nVersion > pType->GetLatestVersion())
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Type %s GUID %lld for object ID %d has unsupported version %d",
                pType->GetName(), nLogGUID, nID, nVersion);
            return false;
        }
        const boost::intrusive_ptr<CSGStreamable> spObject = pType->CreateObject();
        if (!spObject)
        {
            Log(QD_SCENEGRAPH, LOG_ERROR,
                "Failed to create object of Type %s GUID %lld for object ID %d version %d", pType->GetName(),
                nLogGUID, nID, nVersion);
            return false;
        }
        if (!spObject->ReadFromStream(&objStream, &loadState))
        {
            QD_CHECK_FAILED("Call %s failed", "spObject->ReadFromStream(&objStream,&loadState)");
            Log(QD_SCENEGRAPH, LOG_INFO, "ReadFromStream failed for (CStreamableType*)0x%08llx name=%s",
                LogAddress(pType), pType->GetName());
            // It may be linked to what is loaded already, and waits in the load state for what is not.
            spObject->DropLinks();
            return false;
        }
        QD_CHECK_CALL(loadState.NotifyObjectLoaded(spObject.get(), nID), false);
    }
    QD_CHECK_CALL(loadState.VerifyLinks(), false);

    for (int32_t nID = 0; nID < nNumObjects; ++nID)
    {
        CSGStreamable* pObject = loadState.GetLoadedObject(nID);
        QD_CHECK_NOT_NULL(pObject, false);
        QD_CHECK_CALL(pObject->PostRead(&loadState), false);
    }
    for (const int32_t nTopID : vecTopLevelIDs)
    {
        CSGStreamable* pStreamable = loadState.GetLoadedObject(nTopID);
        QD_CHECK_NOT_NULL(pStreamable, false);
        QD_CHECK_CALL(m_spResourceSet->AddTopLevelNode(pStreamable), false);
    }
    loadState.SetComplete();
    return true;
}
