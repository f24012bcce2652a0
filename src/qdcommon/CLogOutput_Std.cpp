#include "qdcommon/CLogOutput_Std.h"

#include "qdcommon/CLogSource.h"
#include "qdcommon/CLogger.h"

#include <cstdio>

CLogOutput_Std CLogOutput_Std::ms_spObjSingleton;

CLogOutput_Std::CLogOutput_Std() : CLogOutput(CLogFormat_Std(10, 0, 6, 50, true)) {}

bool CLogOutput_Std::InstallStdOut()
{
    CLogger* pLogger = CLogger::GetInstance();
    if (pLogger == nullptr)
    {
        return false;
    }
    if (ms_spObjSingleton.IncInstallCount() == 1)
    {
        pLogger->AddOutput(&ms_spObjSingleton);
    }
    return true;
}

void CLogOutput_Std::WriteLine(std::string_view strLine, int nLevel)
{
    std::fwrite(strLine.data(), 1, strLine.size(), stdout);
    if (nLevel <= LOG_ERROR)
    {
        // What went wrong must be seen before what the program says about it.
        std::fflush(stdout);
    }
}
