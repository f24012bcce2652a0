#include "qdcommon/CLogFormat_Std.h"

#include "qdcommon/CInt.h"
#include "qdcommon/CLogChecks.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <optional>

namespace
{

// Unset until the first formatter is made.
std::optional<bool>& ElapsedTime()
{
    static std::optional<bool> s_objElapsed;
    return s_objElapsed;
}

const char* GetLevelName(int nLevel)
{
    return nLevel < 0     ? "????"
           : nLevel == 0  ? "FAIL"
           : nLevel <= 3  ? "ERROR"
           : nLevel <= 6  ? "WARN"
           : nLevel <= 14 ? "INFO"
                          : "DEBUG";
}

void AppendPadding(CQDString& rOutput, int64_t nCount)
{
    rOutput.append(static_cast<size_t>(std::max<int64_t>(nCount, 0)), ' ');
}

void AppendLeftAligned(CQDString& rOutput, std::string_view strText, int64_t nWidth)
{
    rOutput.append(strText);
    AppendPadding(rOutput, nWidth - static_cast<int64_t>(strText.size()));
}

void AppendTimeStamp(CQDString& rOutput, uint64_t uiTimeStamp)
{
    char arrText[64];
    if (CLogFormat_Std::UsesElapsedTime())
    {
        const auto Part = [uiTimeStamp](uint64_t uiUnit, uint64_t uiModulus) {
            return static_cast<unsigned>((uiTimeStamp / uiUnit) % uiModulus);
        };
        std::snprintf(arrText, sizeof(arrText), "%02u:%2.2u:%2.2u.%3.3u",
                      static_cast<unsigned>(uiTimeStamp / 3600000000u), Part(60000000, 60), Part(1000000, 60),
                      Part(1000, 1000));
    }
    else
    {
        const std::time_t nSeconds = static_cast<std::time_t>(uiTimeStamp / 1000000);
        std::tm objTime{};
        gmtime_r(&nSeconds, &objTime);
        std::strftime(arrText, sizeof(arrText), "%Y-%m-%d %H:%M:%S", &objTime);
    }
    rOutput.append(arrText);
}

} // namespace

CLogFormat_Std::CLogFormat_Std(int32_t nLevelWidth, int32_t nFileWidth, int32_t nLineWidth,
                               int32_t nFunctionWidth, bool bElapsedTime)
    : m_nLevelWidth(nLevelWidth),
      m_nFileWidth(nFileWidth),
      m_nLineWidth(nLineWidth),
      m_nFunctionWidth(nFunctionWidth)
{
    if (!ElapsedTime())
    {
        ElapsedTime() = bElapsedTime;
    }
}

bool CLogFormat_Std::UsesElapsedTime() { return ElapsedTime().value_or(true); }

void CLogFormat_Std::FormatLogMessage(CQDString& rOutput, uint64_t uiTimeStamp, int nLevel,
                                      std::string_view strFunction, std::string_view strFile, int nLine,
                                      std::string_view strMessage) const
{
    AppendTimeStamp(rOutput, uiTimeStamp);
    rOutput += ' ';
    if (m_nLevelWidth > 1)
    {
        char arrLevel[32];
        std::snprintf(arrLevel, sizeof(arrLevel), "%s(%d)", GetLevelName(nLevel), nLevel);
        const auto nWidth = static_cast<size_t>(m_nLevelWidth - 1);
        AppendLeftAligned(rOutput, std::string_view(arrLevel).substr(0, nWidth), m_nLevelWidth - 1);
        rOutput += ' ';
    }
    if (!strFile.empty() && m_nFileWidth > 2)
    {
        AppendLeftAligned(rOutput, strFile, m_nFileWidth - 2);
        rOutput += "  ";
    }
    if (m_nLineWidth > 1)
    {
        CQDString strLineNumber;
        if (CInt::ToString(nLine, strLineNumber))
        {
            AppendPadding(rOutput, m_nLineWidth - 2 - static_cast<int64_t>(strLineNumber.size()));
            rOutput += strLineNumber;
            rOutput += ' ';
        }
        else
        {
            QD_CHECK_FAILED("Call %s failed", "CInt::ToString(nLineNumber, strLineNumber)");
        }
    }
    if (!strFunction.empty() && m_nFunctionWidth > 3)
    {
        AppendLeftAligned(rOutput, strFunction, m_nFunctionWidth - 3);
        rOutput += "   ";
    }
    rOutput += strMessage;
    rOutput += '\n';
}
