#include "animxml/CXMLEltParse_animations_fps.h"

#include "animxml/AnimXMLLog.h"
#include "animxml/CAnimationSliceData.h"
#include "qdcommon/CLogChecks.h"

#include <charconv>
#include <cmath>

CXMLEltParse_animations_fps::CXMLEltParse_animations_fps(const CXMLElementParserPtr& spParentParser,
                                                         CAnimationSliceData& rSliceData)
    : CXMLEltParse_Text(ELEMENT_NAME, spParentParser),
      m_rSliceData(rSliceData)
{}

CXMLElementParserPtr CXMLEltParse_animations_fps::Create(const CXMLElementParserPtr& spParentParser,
                                                         CAnimationSliceData& rSliceData)
{
    QD_ASSERT(spParentParser, nullptr);
    return new CXMLEltParse_animations_fps(spParentParser, rSliceData);
}

bool CXMLEltParse_animations_fps::StoreValue()
{
    float fFPS = 0;
    const char* pEnd = m_strValue.data() + m_strValue.size();
    const auto objResult = std::from_chars(m_strValue.data(), pEnd, fFPS);
    if (objResult.ec != std::errc() || objResult.ptr != pEnd || !std::isfinite(fFPS))
    {
        Log(ANIM_XML, LOG_ERROR, "Invalid value '%s' for <%s>", m_strValue, GetElementName());
        return false;
    }
    QD_ASSERT(m_rSliceData.SetFPS(fFPS), false);
    return true;
}
