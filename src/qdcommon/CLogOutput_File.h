// A log file.
#pragma once

#include "qdcommon/CLogOutput.h"

#include <cstdio>
#include <memory>

// Install with CLogger::AddOutput and remove it there before it goes.
class CLogOutput_File : public CLogOutput
{
  public:
    // Opens the file (name in UTF-8) for writing and empties it; IsOpen says whether that worked.
    explicit CLogOutput_File(const CQDString& rFilename);

    bool IsOpen() const { return m_spFile != nullptr; }
    void WriteLine(std::string_view strLine, int nLevel) override;

  private:
    struct CCloser
    {
        void operator()(std::FILE* pFile) const { std::fclose(pFile); }
    };
    std::unique_ptr<std::FILE, CCloser> m_spFile;
};
