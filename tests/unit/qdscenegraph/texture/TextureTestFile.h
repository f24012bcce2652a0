// NEST files written by hand, record by record, and the way of textures through such files.
#pragma once

#include "qdscenegraph/nest/CSGNestReader.h"
#include "qdscenegraph/nest/CSGNestWriter.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"

#include <gtest/gtest.h>

// Words of four bytes each.
inline std::string Words(std::initializer_list<int32_t> arrWords)
{
    return {reinterpret_cast<const char*>(arrWords.begin()), arrWords.size() * sizeof(int32_t)};
}

inline std::string Guid(const SGStreamableType* pType)
{
    uint64_t uiGUID = 0;
    pType->GetGUID(uiGUID);
    return {reinterpret_cast<const char*>(&uiGUID), sizeof(uiGUID)};
}

// A file of types with their versions and of records, the first of them the one top-level object.
inline std::string MakeNest(const std::vector<std::pair<const SGStreamableType*, int32_t>>& rTypes,
                            const std::vector<std::pair<const SGStreamableType*, std::string>>& rRecords)
{
    std::string strFile = "NEST" + Words({2, static_cast<int32_t>(rTypes.size())});
    for (const auto& [pType, nVersion] : rTypes)
    {
        strFile += Guid(pType) + Words({nVersion});
    }
    strFile += Words({1, 0, static_cast<int32_t>(rRecords.size())});
    for (const auto& [pType, strBody] : rRecords)
    {
        strFile += Guid(pType) + strBody;
    }
    return strFile;
}

inline std::string Save(CSGStreamable* pObject)
{
    const CTempFile objFile("saved.nest");
    const auto spSet = CSGResourceSet::Create();
    spSet->AddTopLevelNode(pObject);
    EXPECT_TRUE(CSGNestWriter::Create()->SaveResourceSet(objFile.GetName(), spSet.get()));
    return objFile.ReadBytes();
}

// The first object of the file as a T; null when the file was refused or begins with another class.
template <class T>
boost::intrusive_ptr<T> Load(const std::string& rBytes)
{
    const CTempFile objFile("loaded.nest", rBytes);
    const auto spReader = CSGNestReader::Create();
    return spReader->LoadFile(objFile.GetName())
               ? dynamic_cast<T*>(spReader->m_spResourceSet->GetTopLevelNode(0))
               : nullptr;
}
