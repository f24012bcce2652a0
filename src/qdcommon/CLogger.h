// The process-wide logger: hands accepted messages to the installed outputs.
#pragma once

#include "qdcommon/CLog.h"

#include <memory>

class CLogOutput;
class CLoggerImpl;

class CLogger
{
  public:
    // The first logger made becomes the instance; a further one says so in the log and stays without effect.
    CLogger();
    ~CLogger();
    CLogger(const CLogger&) = delete;
    CLogger& operator=(const CLogger&) = delete;

    // Null until a logger was made.
    static CLogger* GetInstance();
    // Makes the logger that lives as long as the process, when there is none yet.
    static void CreateInstance();

    // The output is borrowed and must outlive the logger or be removed before it goes.
    void AddOutput(CLogOutput* pOutput);
    void RemoveOutput(CLogOutput* pOutput);
    void LogMessage(int nLevel, const CLogSite& rSite, std::string_view strMessage);

  private:
    std::unique_ptr<CLoggerImpl> m_spImpl;
};
