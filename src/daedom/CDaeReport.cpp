// What reading one document has to say.
#include "daedom/CDaeReport.h"

#include "qdcommon/CLog.h"

CLogSource QD_COLLADA_READER("QD_COLLADA_READER");

namespace
{

constexpr size_t MAX_NOTICES = 100; // kinds of notices for one document
constexpr size_t MAX_QUOTED = 60;   // bytes

} // namespace

CDaeReport::CDaeReport(CQDString strFileName, CLocator fnLocator)
    : m_strFileName(std::move(strFileName)),
      m_fnLocator(std::move(fnLocator))
{}

void CDaeReport::Fail(std::string_view strText)
{
    if (!HasFailed())
    {
        m_strError = Locate(strText);
        Log(QD_COLLADA_READER, LOG_ERROR, "%s", m_strError);
    }
}

void CDaeReport::Notice(int nLevel, std::string_view strText)
{
    if (m_setNotices.size() >= MAX_NOTICES || m_setNotices.contains(strText))
    {
        return;
    }
    m_setNotices.emplace(strText);
    Log(QD_COLLADA_READER, nLevel, "%s", Locate(strText));
    if (m_setNotices.size() == MAX_NOTICES)
    {
        Log(QD_COLLADA_READER, LOG_WARNING, "%s", Locate("what else is left out from here on is not listed"));
    }
}

CQDString CDaeReport::Quote(std::string_view strText)
{
    CQDString strQuoted(strText.substr(0, MAX_QUOTED));
    for (char& rc : strQuoted)
    {
        if (static_cast<unsigned char>(rc) < ' ' || rc == '\x7f')
        {
            rc = '?';
        }
    }
    if (strText.size() > MAX_QUOTED)
    {
        strQuoted += "...";
    }
    return strQuoted;
}

CQDString CDaeReport::Locate(std::string_view strText) const
{
    const auto [nLine, nColumn] = m_fnLocator();
    return m_strFileName + "(" + std::to_string(nLine) + ":" + std::to_string(nColumn) + ") - " +
           CQDString(strText);
}
