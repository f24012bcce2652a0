#include "qdcommon/CLog.h"

#include "qdcommon/CLogger.h"

#include <cstdarg>
#include <cstdio>

void LogMessage(int nLevel, const CLogSite& rSite, std::string_view strMessage)
{
    if (CLogger* pLogger = CLogger::GetInstance())
    {
        pLogger->LogMessage(nLevel, rSite, strMessage);
    }
}

void LogFormatted(int nLevel, const CLogSite& rSite, const char* szFormat, ...)
{
    char arrShort[512];
    va_list args;
    va_start(args, szFormat);
    va_list argsAgain;
    va_copy(argsAgain, args);
    const int nLength = std::vsnprintf(arrShort, sizeof(arrShort), szFormat, args);
    va_end(args);
    if (nLength >= 0 && static_cast<size_t>(nLength) < sizeof(arrShort))
    {
        LogMessage(nLevel, rSite, {arrShort, static_cast<size_t>(nLength)});
    }
    else if (nLength >= 0)
    {
        std::string strLong(static_cast<size_t>(nLength) + 1, '\0');
        std::vsnprintf(strLong.data(), strLong.size(), szFormat, argsAgain);
        strLong.resize(static_cast<size_t>(nLength));
        LogMessage(nLevel, rSite, strLong);
    }
    va_end(argsAgain);
}
