#include "animxml/CXMLEltParse_animations.h"

#include "animxml/AnimXMLLog.h"
#include "animxml/CAnimationSliceData.h"
#include "animxml/CXMLEltParse_animations_animation.h"
#include "animxml/CXMLEltParse_animations_channelSet.h"
#include "animxml/CXMLEltParse_animations_dae.h"
#include "animxml/CXMLEltParse_animations_fps.h"
#include "qdcommon/CLogChecks.h"

#include <string_view>
#include <utility>

CXMLEltParse_animations::CXMLEltParse_animations(const CXMLElementParserPtr& spParentParser,
                                                 CAnimationSliceData& rSliceData)
    : CXMLElementParser(ELEMENT_NAME, spParentParser),
      m_rSliceData(rSliceData)
{}

CXMLElementParserPtr CXMLEltParse_animations::Create(const CXMLElementParserPtr& spParentParser,
                                                     CAnimationSliceData& rSliceData)
{
    QD_ASSERT(spParentParser, nullptr);
    return new CXMLEltParse_animations(spParentParser, rSliceData);
}

bool CXMLEltParse_animations::HandleStart(const CXMLAttributeList& rListAttributes)
{
    return CheckNoAttributes(rListAttributes);
}

// Without a scene there is nothing to cut: better said here than as a file that cannot be opened.
bool CXMLEltParse_animations::HandleEnd()
{
    if (m_rSliceData.GetDAEFilename().empty())
    {
        Log(ANIM_XML, LOG_ERROR, "<%s> names no file in a <%s>", GetElementName(),
            CXMLEltParse_animations_dae::ELEMENT_NAME);
        return false;
    }
    return true;
}

bool CXMLEltParse_animations::HandleChildElement(const CQDString& rStrChildName,
                                                 CXMLElementParserPtr& rspChildParser)
{
    using CCreate = CXMLElementParserPtr (*)(const CXMLElementParserPtr&, CAnimationSliceData&);
    static constexpr std::pair<std::string_view, CCreate> CHILDREN[] = {
        {CXMLEltParse_animations_dae::ELEMENT_NAME, CXMLEltParse_animations_dae::Create},
        {CXMLEltParse_animations_fps::ELEMENT_NAME, CXMLEltParse_animations_fps::Create},
        {CXMLEltParse_animations_animation::ELEMENT_NAME, CXMLEltParse_animations_animation::Create},
        {CXMLEltParse_animations_channelSet::ELEMENT_NAME, CXMLEltParse_animations_channelSet::Create}};
    for (const auto& [strName, fnCreate] : CHILDREN)
    {
        if (strName == rStrChildName)
        {
            rspChildParser = fnCreate(this, m_rSliceData);
            return true;
        }
    }
    return RefuseChildElement(rStrChildName);
}
