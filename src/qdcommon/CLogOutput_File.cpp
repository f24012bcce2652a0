#include "qdcommon/CLogOutput_File.h"

#include "qdcommon/CLogSource.h"

CLogOutput_File::CLogOutput_File(const CQDString& rFilename)
    : CLogOutput(CLogFormat_Std(10, 40, 6, 53, true)),
      m_spFile(std::fopen(rFilename.c_str(), "wb"))
{}

void CLogOutput_File::WriteLine(std::string_view strLine, int nLevel)
{
    if (!m_spFile)
    {
        return;
    }
    std::fwrite(strLine.data(), 1, strLine.size(), m_spFile.get());
    if (nLevel <= LOG_ERROR)
    {
        // What was going wrong must be on the disk when the process ends badly.
        std::fflush(m_spFile.get());
    }
}
