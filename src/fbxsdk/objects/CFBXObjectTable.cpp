// The table of objects: what it holds, and how it is looked through. The readers fill it.
#include "fbxsdk/objects/CFBXObjectTable.h"

#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/objects/FBXObjects5.h"
#include "fbxsdk/objects/FBXObjects6.h"
#include "fbxsdk/objects/FBXObjects7.h"
#include "qdcommon/CLog.h"

#include <algorithm>

namespace
{

void LimitName(CFBXObject& rObject)
{
    const std::string_view strName = LimitFBXName(rObject.strName);
    if (strName.size() != rObject.strName.size())
    {
        Log(FBXSDK, LOG_WARNING, "The name of a %s has %llu bytes, and is cut to '%s'",
            CQDString(rObject.strClass), static_cast<unsigned long long>(rObject.strName.size()),
            CQDString(strName));
        rObject.strName = strName;
    }
}

} // namespace

std::unique_ptr<CFBXObjectTable> CFBXObjectTable::Create(std::unique_ptr<CFBXDocument> spDocument,
                                                         CQDString& rError)
{
    std::unique_ptr<CFBXObjectTable> spTable(new CFBXObjectTable);
    spTable->m_spDocument = std::move(spDocument);
    spTable->ReadHeader();
    // What an encrypted file holds besides its header is not to be understood.
    if (!spTable->IsPasswordProtected() && !spTable->ReadObjects(rError))
    {
        return nullptr;
    }
    spTable->SortConnections();
    return spTable;
}

void CFBXObjectTable::ReadHeader()
{
    const CFBXRecord& rRoot = m_spDocument->GetRoot();
    m_strCreator = rRoot.GetChildString("Creator");
    if (const CFBXRecord* pHeader = rRoot.FindChild("FBXHeaderExtension"))
    {
        m_bPasswordProtected = pHeader->GetChildInt64("EncryptionType") != 0;
        // Older headers may hold a number that means nothing.
        constexpr int64_t FIRST_WITH_DEFINITION = 1004;
        const CFBXRecord* pFlags = pHeader->FindChild("OtherFlags");
        if (pFlags != nullptr && pHeader->GetChildInt64("FBXHeaderVersion") >= FIRST_WITH_DEFINITION)
        {
            m_nTicksDefinition = pFlags->GetChildInt64("TCDefinition", USUAL_TICKS);
        }
        if (m_strCreator.empty())
        {
            m_strCreator = pHeader->GetChildString("Creator");
        }
    }
}

bool CFBXObjectTable::ReadObjects(CQDString& rError)
{
    if (m_spDocument->GetVersion() >= 7000)
    {
        return ReadFBXObjects7(*this, rError);
    }
    if (m_spDocument->GetRoot().FindChild("Objects") != nullptr)
    {
        ReadFBXObjects6(*this);
        return true;
    }
    return ReadFBXObjects5(*this, rError);
}

const CFBXObject* CFBXObjectTable::FindObject(int64_t nId) const
{
    const auto it = m_mapObjects.find(nId);
    return it != m_mapObjects.end() ? it->second : nullptr;
}

const CFBXObject* CFBXObjectTable::FindObject(const CFBXValue& rReference) const
{
    if (rReference.IsNumber())
    {
        return FindObject(rReference.GetInt64());
    }
    const auto it = m_mapNames.find(rReference.GetString());
    return it != m_mapNames.end() ? it->second : nullptr;
}

bool CFBXObjectTable::AddName(std::string_view strFullName, CFBXObject& rObject)
{
    return m_mapNames.emplace(strFullName, &rObject).second;
}

CFBXObject* CFBXObjectTable::FindObjectByName(std::string_view strFullName)
{
    const auto it = m_mapNames.find(strFullName);
    return it != m_mapNames.end() ? it->second : nullptr;
}

CFBXObject* CFBXObjectTable::AddObject(const CFBXObject& rObject)
{
    CFBXObject& rAdded = m_listObjects.emplace_back(rObject);
    LimitName(rAdded);
    if (rObject.nId == ROOT_ID || !m_mapObjects.emplace(rObject.nId, &rAdded).second)
    {
        Log(FBXSDK, LOG_WARNING, "Ignoring the %s '%s': its id %lld is that of another object.",
            CQDString(rObject.strClass), CQDString(rObject.strName), static_cast<long long>(rObject.nId));
        m_listObjects.pop_back();
        return nullptr;
    }
    return &rAdded;
}

CFBXObject& CFBXObjectTable::AddUnnumberedObject(const CFBXObject& rObject)
{
    while (m_mapObjects.contains(m_nNextId))
    {
        ++m_nNextId;
    }
    CFBXObject& rAdded = m_listObjects.emplace_back(rObject);
    LimitName(rAdded);
    rAdded.nId = m_nNextId++;
    m_mapObjects.emplace(rAdded.nId, &rAdded);
    return rAdded;
}

std::string_view CFBXObjectTable::KeepText(std::string_view strText)
{
    return m_listTexts.emplace_back(strText);
}

std::span<const CFBXValue> CFBXObjectTable::KeepValues(std::span<const CFBXValue> spanValues)
{
    return m_listValues.emplace_back(spanValues.begin(), spanValues.end());
}

bool CFBXObjectTable::HasEnds(const CFBXConnection& rConnection) const
{
    return rConnection.nSource != rConnection.nDestination && m_mapObjects.contains(rConnection.nSource) &&
           (rConnection.nDestination == ROOT_ID || m_mapObjects.contains(rConnection.nDestination));
}

// Keeps the order of the file among the connections of one object.
void CFBXObjectTable::SortConnections()
{
    const size_t uiAll = m_vecBySource.size();
    std::erase_if(m_vecBySource, [this](const CFBXConnection& rConnection) { return !HasEnds(rConnection); });
    if (m_vecBySource.size() != uiAll)
    {
        Log(FBXSDK, LOG_INFO, "Ignoring %llu connections of objects that the file does not have.",
            static_cast<unsigned long long>(uiAll - m_vecBySource.size()));
    }
    m_vecByDestination = m_vecBySource;
    std::ranges::stable_sort(m_vecBySource, {}, &CFBXConnection::nSource);
    std::ranges::stable_sort(m_vecByDestination, {}, &CFBXConnection::nDestination);
}

std::span<const CFBXConnection> CFBXObjectTable::GetSources(int64_t nId) const
{
    return std::ranges::equal_range(m_vecByDestination, nId, {}, &CFBXConnection::nDestination);
}

std::span<const CFBXConnection> CFBXObjectTable::GetDestinations(int64_t nId) const
{
    return std::ranges::equal_range(m_vecBySource, nId, {}, &CFBXConnection::nSource);
}
