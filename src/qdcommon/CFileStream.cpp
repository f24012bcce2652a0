#include "qdcommon/CFileStream.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace
{
constexpr size_t FILE_BUFFER_SIZE = 256 * 1024;

std::ios_base::openmode ToStandardMode(int32_t nOpenMode)
{
    std::ios_base::openmode eMode = std::ios_base::binary;
    if ((nOpenMode & CFileStream::OPEN_READ) != 0)
    {
        eMode |= std::ios_base::in;
    }
    if ((nOpenMode & CFileStream::OPEN_WRITE) != 0)
    {
        eMode |= std::ios_base::out;
    }
    if ((nOpenMode & CFileStream::OPEN_TRUNCATE) != 0)
    {
        eMode |= std::ios_base::trunc;
    }
    else if (nOpenMode & CFileStream::OPEN_WRITE)
    {
        eMode |= std::ios_base::in; // writing alone would empty the file
    }
    return eMode;
}

} // namespace

CFileStream::CFileStream(const CQDString& rFilename, int32_t nOpenMode)
    : m_strFilename(rFilename),
      m_bInput((nOpenMode & OPEN_READ) != 0),
      m_vecFileBuffer(FILE_BUFFER_SIZE)
{
    auto spFile = std::make_unique<std::filebuf>();
    spFile->pubsetbuf(m_vecFileBuffer.data(), static_cast<std::streamsize>(m_vecFileBuffer.size()));
    const std::ios_base::openmode eMode = ToStandardMode(nOpenMode);
    bool bOpen = spFile->open(rFilename, eMode) != nullptr;
    if (!bOpen && (nOpenMode & OPEN_WRITE) != 0)
    {
        bOpen = spFile->open(rFilename, (eMode & ~std::ios_base::in) | std::ios_base::out) != nullptr;
    }
    std::error_code objError;
    if (!bOpen || std::filesystem::is_directory(rFilename, objError)) // a directory opens for reading
    {
        return;
    }
    SetBuffer(std::move(spFile));
    if ((nOpenMode & OPEN_AT_END) != 0)
    {
        SeekToEnd();
    }
}

CFileStream::~CFileStream() { CloseBuffer(); }

bool CFileStream::Close()
{
    CloseBuffer();
    return IsGood();
}

void CFileStream::Dump() const
{
    std::printf("Serialized Object File - name: \"%s\" input=%d\n", m_strFilename.c_str(), m_bInput ? 1 : 0);
}
