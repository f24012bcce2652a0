#include "animxml/CXMLEltParse_animations_dae.h"

#include "animxml/CAnimationSliceData.h"
#include "qdcommon/CLogChecks.h"

CXMLEltParse_animations_dae::CXMLEltParse_animations_dae(const CXMLElementParserPtr& spParentParser,
                                                         CAnimationSliceData& rSliceData)
    : CXMLEltParse_Text(ELEMENT_NAME, spParentParser),
      m_rSliceData(rSliceData)
{}

CXMLElementParserPtr CXMLEltParse_animations_dae::Create(const CXMLElementParserPtr& spParentParser,
                                                         CAnimationSliceData& rSliceData)
{
    QD_ASSERT(spParentParser, nullptr);
    return new CXMLEltParse_animations_dae(spParentParser, rSliceData);
}

bool CXMLEltParse_animations_dae::StoreValue()
{
    QD_ASSERT(m_rSliceData.SetDAEFilename(m_strValue), false);
    return true;
}
