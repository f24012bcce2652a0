#include "qdsgloader_collada/CColladaInstance.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

void CColladaInstance::LogIgnored(daeElement& rInstance, const daeURI& rURL)
{
    Log(QD_COLLADA, LOG_WARNING, "Ignoring <%s url=\"%s\"> in <node id=\"%s\">", rInstance.getElementName(),
        rURL.originalStr(), GetIDText(*rInstance.getParentElement()));
}

CQDCompactString CColladaInstance::JoinNames(const CQDCompactString& rNodeName, const char* szName)
{
    return CQDString(rNodeName.GetView()) + "/" + szName;
}
