// The byte stream of a file.
#pragma once

#include "qdcommon/CStream.h"

#include <vector>

class CFileStream : public CStream
{
  public:
    enum EOpenMode : int32_t
    {
        OPEN_READ = 1,
        OPEN_WRITE = 2,
        OPEN_TRUNCATE = 4,
        OPEN_AT_END = 8
    };

    // Opens the file (name in UTF-8, mode made of EOpenMode bits, always binary); IsOpen says whether that
    // worked.
    CFileStream(const CQDString& rFilename, int32_t nOpenMode);
    ~CFileStream() override;

    bool IsOpen() const { return HasBuffer(); }
    // Writes out what is buffered and closes. False when any byte could not be written.
    bool Close();
    void Dump() const override;

  private:
    CQDString m_strFilename;
    bool m_bInput;
    std::vector<char> m_vecFileBuffer; // the stream's buffer; larger than the standard one
};
