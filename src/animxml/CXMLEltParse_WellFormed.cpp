#include "animxml/CXMLEltParse_WellFormed.h"

#include "animxml/AnimXMLLog.h"
#include "qdcommon/CLog.h"

CXMLElementParserPtr CXMLEltParse_WellFormed::CreateTopLevel()
{
    return new CXMLEltParse_WellFormed(CQDString(), nullptr);
}

CXMLElementParserPtr CXMLEltParse_WellFormed::Create(const CXMLElementParserPtr& spParentParser,
                                                     const CQDString& rStrElementName)
{
    if (!spParentParser)
    {
        Log(ANIM_XML, LOG_ERROR, "Handed in NULL parent parser.");
        return nullptr;
    }
    return new CXMLEltParse_WellFormed(rStrElementName, spParentParser);
}

bool CXMLEltParse_WellFormed::HandleStart(const CXMLAttributeList&) { return true; }

bool CXMLEltParse_WellFormed::HandleChildElement(const CQDString& rStrChildName,
                                                 CXMLElementParserPtr& rspChildParser)
{
    rspChildParser = Create(this, rStrChildName);
    return true;
}
