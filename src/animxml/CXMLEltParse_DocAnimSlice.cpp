#include "animxml/CXMLEltParse_DocAnimSlice.h"

#include "animxml/AnimXMLLog.h"
#include "animxml/CXMLEltParse_animations.h"
#include "qdcommon/CLog.h"

namespace
{

bool RefuseCall()
{
    Log(ANIM_XML, LOG_ERROR, "This top level parser should never be called here.");
    return false;
}

} // namespace

CXMLEltParse_DocAnimSlice::CXMLEltParse_DocAnimSlice(CAnimationSliceData& rSliceData)
    : CXMLElementParser(CQDString(), nullptr),
      m_rSliceData(rSliceData)
{}

CXMLElementParserPtr CXMLEltParse_DocAnimSlice::Create(CAnimationSliceData& rSliceData)
{
    return new CXMLEltParse_DocAnimSlice(rSliceData);
}

bool CXMLEltParse_DocAnimSlice::HandleStart(const CXMLAttributeList&) { return RefuseCall(); }

bool CXMLEltParse_DocAnimSlice::HandleEnd() { return RefuseCall(); }

bool CXMLEltParse_DocAnimSlice::HandleChildElement(const CQDString& rStrChildName,
                                                   CXMLElementParserPtr& rspChildParser)
{
    if (rStrChildName != CXMLEltParse_animations::ELEMENT_NAME)
    {
        Log(ANIM_XML, LOG_ERROR, "<%s> is not a valid top level element", rStrChildName);
        return false;
    }
    rspChildParser = CXMLEltParse_animations::Create(this, m_rSliceData);
    return true;
}
