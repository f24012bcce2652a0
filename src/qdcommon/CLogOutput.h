// Where accepted messages go.
#pragma once

#include "qdcommon/CLogFormat_Std.h"

class CLogOutput
{
  public:
    explicit CLogOutput(const CLogFormat_Std& rFormat) : m_objFormat(rFormat) {}
    CLogOutput(const CLogOutput&) = delete;
    CLogOutput& operator=(const CLogOutput&) = delete;
    virtual ~CLogOutput() = default;

    const CLogFormat_Std& GetFormat() const { return m_objFormat; }
    // Writes one whole line, its line end included.
    virtual void WriteLine(std::string_view strLine, int nLevel) = 0;

  private:
    CLogFormat_Std m_objFormat;
};
