// Finds out which kind of file it is and has it read.
#include "fbxsdk/document/CFBXDocument.h"

#include "fbxsdk/document/CFBXBinaryParser.h"
#include "fbxsdk/document/CFBXTextParser.h"
#include "fbxsdk/document/FBXNumbers.h"

#include <filesystem>
#include <fstream>
#include <ios>
#include <new>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

namespace
{

// Files before this version keep their true one in a record.
constexpr int FIRST_TRUE_VERSION = 6000;

bool ReadWholeFile(const CQDString& rFilename, std::vector<uint8_t>& rvecBytes, CQDString& rError)
{
    std::error_code objCode;
    const std::filesystem::path objPath(rFilename);
    if (!std::filesystem::is_regular_file(objPath, objCode))
    {
        rError = objCode ? objCode.message() : "it is not a regular file";
        return false;
    }
    const std::uintmax_t uiSize = std::filesystem::file_size(objPath, objCode);
    if (objCode)
    {
        rError = objCode.message();
        return false;
    }
    rvecBytes.resize(static_cast<size_t>(uiSize));
    std::ifstream objFile(objPath, std::ios::binary);
    objFile.read(reinterpret_cast<char*>(rvecBytes.data()), static_cast<std::streamsize>(uiSize));
    if (!objFile)
    {
        rError = "it cannot be read";
        return false;
    }
    return true;
}

} // namespace

std::unique_ptr<CFBXDocument> CFBXDocument::Load(const CQDString& rFilename, CQDString& rError)
{
    try
    {
        std::vector<uint8_t> vecBytes;
        return ReadWholeFile(rFilename, vecBytes, rError) ? FromBytes(std::move(vecBytes), rError) : nullptr;
    }
    catch (const std::exception& rException) // the file is larger than memory, or its name is no path
    {
        rError = rException.what();
        return nullptr;
    }
}

std::unique_ptr<CFBXDocument> CFBXDocument::FromBytes(std::vector<uint8_t>&& vecBytes, CQDString& rError)
{
    try
    {
        std::unique_ptr<CFBXDocument> spDocument(new CFBXDocument);
        spDocument->m_vecBytes = std::move(vecBytes);
        return spDocument->Parse(rError) ? std::move(spDocument) : nullptr;
    }
    catch (const std::bad_alloc&)
    {
        rError = "out of memory";
        return nullptr;
    }
}

bool CFBXDocument::Parse(CQDString& rError)
{
    const std::string_view strBytes(reinterpret_cast<const char*>(m_vecBytes.data()), m_vecBytes.size());
    bool bParsed = false;
    m_objTree.Reserve(strBytes.size());
    if (CFBXBinaryParser::IsBinary(strBytes))
    {
        CFBXBinaryParser objParser(strBytes, m_objTree);
        bParsed = objParser.Parse(rError);
        m_nVersion = objParser.GetVersion();
    }
    else if (CFBXTextParser::IsText(strBytes))
    {
        CFBXTextParser objParser(strBytes, m_objTree, m_listTexts);
        bParsed = objParser.Parse(rError);
        m_nVersion = objParser.GetVersion();
        m_bASCII = true;
    }
    else
    {
        rError = strBytes.empty() ? "the file is empty"
                                  : "this is not an FBX file, neither a binary nor an ASCII one";
        return false;
    }
    m_objTree.Finish();
    if (!bParsed)
    {
        return false;
    }
    const CFBXRecord* pHeader = GetRoot().FindChild("FBXHeaderExtension");
    const CFBXRecord* pVersion = pHeader != nullptr ? pHeader->FindChild("FBXVersion") : nullptr;
    if (pVersion != nullptr && (m_bASCII || m_nVersion < FIRST_TRUE_VERSION))
    {
        m_nVersion = ConvertFBXNumber<int>(pVersion->GetInt64(0, m_nVersion));
        if (!CFBXBinaryParser::IsKnownVersion(m_nVersion))
        {
            rError = pVersion->Describe() + ": FBX of the unknown version " + std::to_string(m_nVersion);
            return false;
        }
    }
    return true;
}
