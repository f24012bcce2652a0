#include "qdcommon/CLogger.h"

#include "qdcommon/CLogOutput.h"

#include <algorithm>
#include <chrono>
#include <vector>

class CLoggerImpl
{
  public:
    void LogMessage(int nLevel, const CLogSite& rSite, std::string_view strMessage)
    {
        const uint64_t uiTimeStamp = GetTimeStamp();
        for (CLogOutput* pOutput : m_vecOutputs)
        {
            m_strLine.clear();
            pOutput->GetFormat().FormatLogMessage(m_strLine, uiTimeStamp, nLevel, rSite.strFunction,
                                                  rSite.szFile, rSite.nLine, strMessage);
            pOutput->WriteLine(m_strLine, nLevel);
        }
    }

    std::vector<CLogOutput*> m_vecOutputs;

  private:
    uint64_t GetTimeStamp() const
    {
        using std::chrono::duration_cast;
        using std::chrono::microseconds;
        const auto objTime =
            CLogFormat_Std::UsesElapsedTime()
                ? duration_cast<microseconds>(std::chrono::steady_clock::now() - m_objStart)
                : duration_cast<microseconds>(std::chrono::system_clock::now().time_since_epoch());
        return static_cast<uint64_t>(objTime.count());
    }

    std::chrono::steady_clock::time_point m_objStart = std::chrono::steady_clock::now();
    CQDString m_strLine; // kept, so that a line does not allocate
};

namespace
{
CLogger* s_pInstance = nullptr;
} // namespace

CLogger::CLogger()
{
    if (s_pInstance != nullptr)
    {
        Log(QD_DEFAULT, LOG_ERROR, "A CLogger instance already exists.");
        return;
    }
    m_spImpl = std::make_unique<CLoggerImpl>();
    s_pInstance = this;
}

CLogger::~CLogger()
{
    if (s_pInstance == this)
    {
        s_pInstance = nullptr;
    }
}

CLogger* CLogger::GetInstance() { return s_pInstance; }

void CLogger::CreateInstance()
{
    if (s_pInstance == nullptr)
    {
        // Never destroyed: objects with static lifetime may still log while the process ends.
        static CLogger* const s_pForever = std::make_unique<CLogger>().release();
        s_pInstance = s_pForever;
    }
}

void CLogger::AddOutput(CLogOutput* pOutput)
{
    if (m_spImpl)
    {
        m_spImpl->m_vecOutputs.push_back(pOutput);
    }
}

void CLogger::RemoveOutput(CLogOutput* pOutput)
{
    if (m_spImpl)
    {
        std::erase(m_spImpl->m_vecOutputs, pOutput);
    }
}

void CLogger::LogMessage(int nLevel, const CLogSite& rSite, std::string_view strMessage)
{
    if (m_spImpl)
    {
        m_spImpl->LogMessage(nLevel, rSite, strMessage);
    }
}
