// Where a document's bytes come from.
#include "daedom/CDaeInput.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace
{

// "http://server/file.dae": such a name could be a file's as well, but never is.
bool IsRemote(std::string_view strName)
{
    const size_t nScheme = strName.find("://");
    return nScheme != std::string_view::npos && strName.find('/') == nScheme + 1;
}

} // namespace

CQDString CDaeInput::OpenFile(const CQDString& rFileName)
{
    if (IsRemote(rFileName))
    {
        return "Failed to open file " + rFileName + ": only local files are read";
    }
    std::error_code objError;
    if (std::filesystem::exists(rFileName, objError) &&
        !std::filesystem::is_regular_file(rFileName, objError))
    {
        return "Failed to open file " + rFileName + ": it is not a regular file";
    }
    m_spFile.reset(std::fopen(rFileName.c_str(), "rb"));
    const std::uintmax_t uiSize = m_spFile ? std::filesystem::file_size(rFileName, objError) : 0;
    if (!m_spFile || objError)
    {
        return "Failed to open file " + rFileName;
    }
    std::setvbuf(m_spFile.get(), nullptr, _IONBF, 0); // it is read in large pieces
    m_uiSize = uiSize;
    return {};
}

CQDString CDaeInput::OpenMemory(std::string_view strDocument)
{
    m_strRest = strDocument;
    m_uiSize = strDocument.size();
    return {};
}

std::optional<size_t> CDaeInput::Read(std::span<char> arrBuffer)
{
    if (m_spFile)
    {
        const size_t nRead = std::fread(arrBuffer.data(), 1, arrBuffer.size(), m_spFile.get());
        return std::ferror(m_spFile.get()) ? std::nullopt : std::optional(nRead);
    }
    const size_t nRead = std::min(arrBuffer.size(), m_strRest.size());
    std::memcpy(arrBuffer.data(), m_strRest.data(), nRead);
    m_strRest.remove_prefix(nRead);
    return nRead;
}
