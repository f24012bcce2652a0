#include "qdsgloader_collada/CDAEErrorHandler.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <string_view>

namespace
{

// The DOM ends its messages with a line end; ours are one line.
std::string TrimEnd(daeString szMessage)
{
    std::string strMessage = szMessage != nullptr ? szMessage : "";
    strMessage.erase(strMessage.find_last_not_of("\r\n") + 1);
    return strMessage;
}

} // namespace

CDAEErrorHandler::CDAEErrorHandler() { setErrorHandler(this); }

CDAEErrorHandler::~CDAEErrorHandler()
{
    setErrorHandler(nullptr); // the DOM falls back on its own
}

void CDAEErrorHandler::handleError(daeString szMessage)
{
    Log(QD_COLLADA, LOG_ERROR, "Got DAE Error: %s", TrimEnd(szMessage));
}

void CDAEErrorHandler::handleWarning(daeString szMessage)
{
    Log(QD_COLLADA, LOG_WARNING, "Got DAE Warning: %s", TrimEnd(szMessage));
}
