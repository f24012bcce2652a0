#include "animxml/CXMLEltParse_animations_animation.h"

#include "animxml/AnimXMLLog.h"
#include "animxml/CAnimationSliceData.h"
#include "qdcommon/CInt.h"
#include "qdcommon/CLogChecks.h"

namespace
{

constexpr const char* NAME = "name";
constexpr const char* START_FRAME = "startFrame";
constexpr const char* END_FRAME = "endFrame";
constexpr const char* USE_CHANNELS = "useChannels";
constexpr const char* IGNORE_CHANNELS = "ignoreChannels";

bool ParseFrame(const CXMLAttribute& rAttribute, std::optional<int>& rFrame)
{
    int nFrame = 0;
    if (!CInt::FromString(rAttribute.m_strValue, nFrame))
    {
        Log(ANIM_XML, LOG_ERROR, "Invalid value '%s' for attribute '%s' in <%s>.", rAttribute.m_strValue,
            rAttribute.m_strName, CXMLEltParse_animations_animation::ELEMENT_NAME);
        return false;
    }
    rFrame = nFrame;
    return true;
}

} // namespace

CXMLEltParse_animations_animation::CXMLEltParse_animations_animation(
    const CXMLElementParserPtr& spParentParser, CAnimationSliceData& rSliceData)
    : CXMLElementParser(ELEMENT_NAME, spParentParser),
      m_rSliceData(rSliceData)
{}

CXMLElementParserPtr CXMLEltParse_animations_animation::Create(const CXMLElementParserPtr& spParentParser,
                                                               CAnimationSliceData& rSliceData)
{
    QD_ASSERT(spParentParser, nullptr);
    return new CXMLEltParse_animations_animation(spParentParser, rSliceData);
}

bool CXMLEltParse_animations_animation::HandleStart(const CXMLAttributeList& rListAttributes)
{
    CQDString strName;
    std::optional<int> objStartFrame;
    std::optional<int> nEndFrame;
    CQDString strChannel;
    bool bHasChannel = false; // its id may be empty
    bool bIgnoreChannel = false;
    for (const CXMLAttribute& rAttribute : rListAttributes)
    {
        const CQDString& rStrAttrName = rAttribute.m_strName;
        if (rStrAttrName == NAME)
        {
            strName = rAttribute.m_strValue;
        }
        else if (rStrAttrName == START_FRAME)
        {
            QD_CHECK_OR_RETURN(ParseFrame(rAttribute, objStartFrame), "Assert '%s' failed",
                               "CInt::FromString(rStrAttrValue, nStartFrame)", false);
        }
        else if (rStrAttrName == END_FRAME)
        {
            QD_CHECK_OR_RETURN(ParseFrame(rAttribute, nEndFrame), "Assert '%s' failed",
                               "CInt::FromString(rStrAttrValue, nEndFrame)", false);
        }
        else if (rStrAttrName == USE_CHANNELS || rStrAttrName == IGNORE_CHANNELS)
        {
            if (bHasChannel)
            {
                Log(ANIM_XML, LOG_ERROR, "Cannot have attribute '%s' and '%s' in <%s>.", USE_CHANNELS,
                    IGNORE_CHANNELS, ELEMENT_NAME);
            }
            QD_CHECK_OR_RETURN(!bHasChannel, "Assert '%s' failed", "strChannel.empty()", false);
            strChannel = rAttribute.m_strValue;
            bHasChannel = true;
            bIgnoreChannel = rStrAttrName == IGNORE_CHANNELS;
        }
        else
        {
            Log(ANIM_XML, LOG_ERROR, "Unknown attribute %s for element <%s>", rStrAttrName, ELEMENT_NAME);
            return false;
        }
    }
    if (strName.empty() || !objStartFrame)
    {
        Log(ANIM_XML, LOG_ERROR, "<%s> missing required attribute '%s'.", ELEMENT_NAME,
            strName.empty() ? NAME : START_FRAME);
        return false;
    }
    const int nStartFrame = *objStartFrame;
    QD_ASSERT(m_rSliceData.AddSlice(strName, nStartFrame, nEndFrame, strChannel, bIgnoreChannel), false);
    return true;
}
