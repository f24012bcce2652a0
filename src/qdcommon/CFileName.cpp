#include "qdcommon/CFileName.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

bool CFileName::StartsWithDrive(std::string_view strName)
{
    return strName.size() >= 2 && std::isalpha(static_cast<unsigned char>(strName[0])) != 0 &&
           strName[1] == ':';
}

CQDString CFileName::GetBaseName(std::string_view strName)
{
    const size_t nSlash = strName.find_last_of("/\\");
    return CQDString(nSlash == std::string_view::npos ? strName : strName.substr(nSlash + 1));
}

CQDString CFileName::MakeSlashes(std::string_view strName)
{
    CQDString strSlashes(strName);
    std::ranges::replace(strSlashes, '\\', '/');
    return strSlashes;
}

bool CFileName::IsFile(const CQDString& rName)
{
    std::error_code objError;
    // The system would see the name up to its first zero only.
    return rName.find('\0') == CQDString::npos && std::filesystem::is_regular_file(rName, objError);
}
