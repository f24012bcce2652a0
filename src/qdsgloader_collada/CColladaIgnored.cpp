#include "qdsgloader_collada/CColladaIgnored.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

void CColladaIgnored::LogAll() const
{
    for (const auto& [strKind, nCount] : m_mapCounts)
    {
        Log(QD_COLLADA, LOG_WARNING, "Ignoring %d %s", static_cast<int>(nCount), std::string(strKind));
    }
}
