#include "qdscenegraph/texture/CSGTextureNameReloadHandler.h"

#include "qdcommon/CLog.h"
#include "qdscenegraph/object/CSGMem.h"

bool CSGTextureNameReloadHandler::Reload(CSGTextureLoader*, CSGTex_2D*)
{
    Log(QD_SCENEGRAPH, LOG_ERROR, "Texture \"%s\" was part of another file and cannot be loaded anew",
        m_strName);
    return false;
}
