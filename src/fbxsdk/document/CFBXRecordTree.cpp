// Gathering records.
#include "fbxsdk/document/CFBXRecordTree.h"

#include <algorithm>
#include <limits>
#include <utility>

CFBXRecordTree::CFBXRecordTree()
{
    m_vecRecords.push_back(CFBXRecord());
    m_vecOpen.push_back(0);
}

void CFBXRecordTree::Reserve(size_t nFileBytes)
{
    // Less than what files have that are all names and single numbers; larger files are large by their
    // arrays.
    constexpr size_t BYTES_PER_RECORD = 32;
    constexpr size_t BYTES_PER_VALUE = 8;
    constexpr size_t MOST_BYTES = 1 << 25;

    m_vecRecords.reserve(std::min(nFileBytes, MOST_BYTES) / BYTES_PER_RECORD);
    m_vecValues.reserve(std::min(nFileBytes, MOST_BYTES) / BYTES_PER_VALUE);
}

bool CFBXRecordTree::Open(std::string_view strName, uint64_t uiPlace, bool bLines)
{
    if (m_vecOpen.size() > MAX_DEPTH || m_vecRecords.size() == MAX_RECORDS)
    {
        return false;
    }
    CFBXRecord objRecord;
    objRecord.m_pName = strName.data();
    objRecord.m_uiNameLength = static_cast<uint8_t>(strName.size());
    objRecord.m_uiPlace = uiPlace;
    objRecord.m_bLines = bLines;
    m_vecOpen.push_back(m_vecRecords.size());
    m_vecRecords.push_back(std::move(objRecord));
    return true;
}

bool CFBXRecordTree::AddValue(const CFBXValue& rValue)
{
    CFBXRecord& rRecord = m_vecRecords[m_vecOpen.back()];
    if (rRecord.m_uiValues == std::numeric_limits<uint32_t>::max())
    {
        return false;
    }
    ++rRecord.m_uiValues;
    m_vecValues.push_back(rValue);
    return true;
}

void CFBXRecordTree::RemoveValues()
{
    CFBXRecord& rRecord = m_vecRecords[m_vecOpen.back()];
    m_vecValues.resize(m_vecValues.size() - rRecord.m_uiValues);
    rRecord.m_uiValues = 0;
}

void CFBXRecordTree::Close()
{
    CFBXRecord& rRecord = m_vecRecords[m_vecOpen.back()];
    rRecord.m_uiSpan = static_cast<uint32_t>(m_vecRecords.size() - m_vecOpen.back());
    m_vecOpen.pop_back();
}

void CFBXRecordTree::Finish()
{
    while (!m_vecOpen.empty())
    {
        Close();
    }
    // A record's values come before those of the records inside of it, so they have the records' order.
    const CFBXValue* pValues = m_vecValues.data();
    for (CFBXRecord& rRecord : m_vecRecords)
    {
        rRecord.m_pValues = pValues;
        pValues += rRecord.m_uiValues;
    }
}
