// The standard line of the log: time, level, file, line, function, message, in columns of fixed width.
#pragma once

#include "qdcommon/CQDString.h"

#include <cstdint>
#include <string_view>

class CLogFormat_Std
{
  public:
    // Widths in characters; a column that is too narrow for its separators is left out. The first formatter
    // ever made chooses between elapsed and absolute time stamps for all of them.
    CLogFormat_Std(int32_t nLevelWidth, int32_t nFileWidth, int32_t nLineWidth, int32_t nFunctionWidth,
                   bool bElapsedTime);

    // Appends one line with its line end. The time stamp is in microseconds: since the logger's start with
    // elapsed time, since 1970 (UTC) with absolute time.
    void FormatLogMessage(CQDString& rOutput, uint64_t uiTimeStamp, int nLevel, std::string_view strFunction,
                          std::string_view strFile, int nLine, std::string_view strMessage) const;

    static bool UsesElapsedTime();

  private:
    int32_t m_nLevelWidth;
    int32_t m_nFileWidth;
    int32_t m_nLineWidth;
    int32_t m_nFunctionWidth;
};
