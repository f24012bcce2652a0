// NEST files written by hand, record by record, and the way of objects through such files.
#pragma once

#include "qdscenegraph/nest/CSGNestReader.h"
#include "qdscenegraph/nest/CSGNestWriter.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"

#include <gtest/gtest.h>

#include <initializer_list>

// What records are made of: a value as it stands, numbers, floats, a string, the GUID of a type.
template <class T>
std::string Bytes(const T& rValue)
{
    return {reinterpret_cast<const char*>(&rValue), sizeof(rValue)};
}
inline std::string I(int32_t nValue) { return Bytes(nValue); }
inline std::string I(std::initializer_list<int32_t> arrValues)
{
    return {reinterpret_cast<const char*>(arrValues.begin()), arrValues.size() * sizeof(int32_t)};
}
inline std::string F(std::initializer_list<float> arrValues)
{
    return {reinterpret_cast<const char*>(arrValues.begin()), arrValues.size() * sizeof(float)};
}
inline std::string S(const std::string& rText) { return I(static_cast<int32_t>(rText.size())) + rText; }
inline std::string G(const SGStreamableType* pType)
{
    uint64_t uiGUID = 0;
    EXPECT_TRUE(pType->GetGUID(uiGUID));
    return Bytes(uiGUID);
}

template <class T>
const SGStreamableType* TypeOf()
{
    return T::GetStaticSGStreamableType();
}
template <class T>
std::string G()
{
    return G(TypeOf<T>());
}

// A line of a file's type table; most types are in their first version.
struct CNestType
{
    CNestType(const SGStreamableType* pType, int32_t nVersion = 1) : m_pType(pType), m_nVersion(nVersion) {}

    const SGStreamableType* m_pType;
    int32_t m_nVersion;
};
using CNestTypes = std::vector<CNestType>;

struct CNestRecord
{
    const SGStreamableType* m_pType;
    std::string m_strBody;
};
using CNestRecords = std::vector<CNestRecord>;

inline std::string Records(const CNestRecords& rRecords)
{
    std::string strBytes;
    for (const auto& [pType, strBody] : rRecords)
    {
        strBytes += G(pType) + strBody;
    }
    return strBytes;
}

// A file of types and records, the first of which is the one top-level object.
inline std::string MakeNest(const CNestTypes& rTypes, const CNestRecords& rRecords)
{
    std::string strBytes = "NEST" + I({2, static_cast<int32_t>(rTypes.size())});
    for (const auto& [pType, nVersion] : rTypes)
    {
        strBytes += G(pType) + I(nVersion);
    }
    return strBytes + I({1, 0, static_cast<int32_t>(rRecords.size())}) + Records(rRecords);
}

// The file of a set, and of a set of one object; empty when it is not saved.
inline std::string SaveSet(CSGResourceSet* pSet)
{
    const CTempFile objFile("saved.nest");
    return CSGNestWriter::Create()->SaveResourceSet(objFile.GetName(), pSet) ? objFile.ReadBytes() : "";
}
inline std::string Save(CSGStreamable* pObject)
{
    const auto spSet = CSGResourceSet::Create();
    spSet->AddTopLevelNode(pObject);
    return SaveSet(spSet.get());
}

// Null when the file is refused.
inline boost::intrusive_ptr<CSGResourceSet> LoadSet(const std::string& rBytes)
{
    const CTempFile objFile("loaded.nest", rBytes);
    const auto spReader = CSGNestReader::Create();
    return spReader->LoadFile(objFile.GetName()) ? spReader->m_spResourceSet : nullptr;
}
// The first top-level object; null also when it is no T.
template <class T = CSGStreamable>
boost::intrusive_ptr<T> Load(const std::string& rBytes)
{
    const auto spSet = LoadSet(rBytes);
    return spSet ? dynamic_cast<T*>(spSet->GetTopLevelNode(0)) : nullptr;
}

// The file is refused with a line that has the text, and nothing of it stays in memory.
inline void ExpectRefused(const std::string& rBytes, const std::string& rText)
{
    SCOPED_TRACE(rText);
    CLogCapture objLog;
    const int64_t nLiveBlocks = CSGMem::GetPool().GetNumLiveBlocks();
    EXPECT_FALSE(LoadSet(rBytes));
    EXPECT_TRUE(objLog.Contains(rText)) << testing::PrintToString(objLog.GetLines());
    EXPECT_EQ(CSGMem::GetPool().GetNumLiveBlocks(), nLiveBlocks);
}
