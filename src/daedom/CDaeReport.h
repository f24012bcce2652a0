// What reading one document has to say: the fault that makes it unusable, and what was left out of it.
#pragma once

#include "qdcommon/CQDString.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string_view>
#include <utility>

class CLogSource;

// The log source of reading COLLADA documents.
extern CLogSource QD_COLLADA_READER;

class CDaeReport
{
  public:
    // Line and column of the place that is being read, both as Expat counts them: from 1 and from 0.
    using CLocator = std::function<std::pair<int64_t, int64_t>()>;

    CDaeReport(CQDString strFileName, CLocator fnLocator);

    // The document cannot be used. The first fault is logged at the error level with its place and kept; what
    // follows from it is not.
    void Fail(std::string_view strText);
    // Something was left out. Each text is logged once, whatever its place; a document has so many kinds at
    // most.
    void Notice(int nLevel, std::string_view strText);

    bool HasFailed() const { return !m_strError.empty(); }
    // "file(line:column) - text" of the fault; empty without one.
    const CQDString& GetErrorText() const { return m_strError; }

    // A text from a document as it may stand in a message: shortened, control characters replaced.
    static CQDString Quote(std::string_view strText);

  private:
    CQDString Locate(std::string_view strText) const;

    CQDString m_strFileName;
    CLocator m_fnLocator;
    CQDString m_strError;
    std::set<CQDString, std::less<>> m_setNotices;
};
