// Collects what is logged while it lives, one entry a line: the message behind its level, "1 Handed in NULL
// pChild".
#pragma once

#include "qdcommon/CLogOutput.h"
#include "qdcommon/CLogger.h"

#include <algorithm>
#include <string>
#include <vector>

class CLogCapture : public CLogOutput
{
  public:
    // Without columns a line is the time stamp, a blank, and the message.
    CLogCapture() : CLogOutput(CLogFormat_Std(0, 0, 0, 0, true))
    {
        CLogger::CreateInstance();
        CLogger::GetInstance()->AddOutput(this);
    }
    ~CLogCapture() override { CLogger::GetInstance()->RemoveOutput(this); }

    void WriteLine(std::string_view strLine, int nLevel) override
    {
        strLine.remove_suffix(1);
        m_vecLines.push_back(std::to_string(nLevel) + std::string(strLine.substr(strLine.find(' '))));
    }

    const std::vector<std::string>& GetLines() const { return m_vecLines; }
    bool HasLine(const std::string& rLine) const
    {
        return std::ranges::find(m_vecLines, rLine) != m_vecLines.end();
    }
    // Whether some line contains the text.
    bool Contains(const std::string& rText) const
    {
        return std::ranges::any_of(m_vecLines,
                                   [&](const std::string& r) { return r.find(rText) != std::string::npos; });
    }
    void Clear() { m_vecLines.clear(); }

  private:
    std::vector<std::string> m_vecLines;
};
