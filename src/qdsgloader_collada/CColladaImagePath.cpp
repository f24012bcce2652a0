#include "qdsgloader_collada/CColladaImagePath.h"

#include "daedom/CDaeUri.h"
#include "qdcommon/CFileName.h"
#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <algorithm>
#include <cctype>

namespace
{

bool IsLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }

// The length of "http:" and the like; 0 without one. A single letter is a drive.
size_t GetSchemeLength(std::string_view strName)
{
    const size_t nColon = strName.find(':');
    const bool bScheme =
        nColon != std::string_view::npos && nColon > 1 && IsLetter(strName[0]) &&
        std::all_of(strName.begin(), strName.begin() + static_cast<ptrdiff_t>(nColon), [](char c) {
            return IsLetter(c) || std::isdigit(c) || c == '+' || c == '-' || c == '.';
        });
    return bScheme ? nColon + 1 : 0;
}

bool IsFileScheme(std::string_view strScheme)
{
    return std::ranges::equal(strScheme, std::string_view("file:"), [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) == b;
    });
}

// Takes "//host" off the rest of a file URI. False when that is another machine. "file://C:/x" is written for
// "file:///C:/x".
bool RemoveAuthority(std::string_view& rstrName)
{
    if (!rstrName.starts_with("//"))
    {
        return true;
    }
    const std::string_view strAuthority = rstrName.substr(2, rstrName.substr(2).find('/'));
    if (CFileName::StartsWithDrive(strAuthority))
    {
        rstrName.remove_prefix(2);
        return true;
    }
    rstrName.remove_prefix(2 + strAuthority.size());
    return strAuthority.empty() || strAuthority == "localhost";
}

} // namespace

CColladaImagePath::CColladaImagePath(std::string_view strReference, const std::filesystem::path& rFolder)
    : m_objFolder(rFolder)
{
    std::string_view strName = strReference;
    if (const size_t nScheme = GetSchemeLength(strName))
    {
        m_bLocal = IsFileScheme(strName.substr(0, nScheme));
        strName.remove_prefix(nScheme);
        m_bLocal = m_bLocal && RemoveAuthority(strName);
        if (strName.starts_with('/') && CFileName::StartsWithDrive(strName.substr(1)))
        {
            strName.remove_prefix(1);
        }
    }
    m_strAsWritten = strName;
    m_strDecoded = DecodeDaeReference(strName);
    m_strBaseName = CFileName::GetBaseName(m_strDecoded);
}

CQDString CColladaImagePath::InFolder(const CQDString& rName) const
{
    return CFileName::StartsWithDrive(rName) ? rName : (m_objFolder / rName).string();
}

CQDString CColladaImagePath::FindFile() const
{
    const CQDString strNamed = InFolder(m_strDecoded);
    for (const CQDString& rFile : {InFolder(m_strAsWritten), strNamed})
    {
        if (CFileName::IsFile(rFile))
        {
            return rFile;
        }
    }
    for (const CQDString& rBaseName : {CFileName::GetBaseName(m_strAsWritten), m_strBaseName})
    {
        const CQDString strBeside = InFolder(rBaseName);
        if (CFileName::IsFile(strBeside))
        {
            Log(QD_COLLADA, LOG_WARNING, "Loading '%s' instead of nonexistent '%s'", strBeside, strNamed);
            return strBeside;
        }
    }
    return strNamed;
}
