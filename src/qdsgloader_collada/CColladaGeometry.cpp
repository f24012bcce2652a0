#include "qdsgloader_collada/CColladaGeometry.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

boost::intrusive_ptr<CColladaGeometry> CColladaGeometry::Create(
    const CBindingPtr& spBinding, const CDeindexedVertexBufferPtr& spVertexBuffer,
    const CQDString& rStrMaterialSymbol)
{
    if (!spBinding)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in NULL binding object.");
        return nullptr;
    }
    if (!spVertexBuffer)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in NULL deindexed vertex buffer object.");
        return nullptr;
    }
    const boost::intrusive_ptr<CColladaGeometry> spGeometry = new CColladaGeometry;
    spGeometry->m_spBinding = spBinding;
    spGeometry->m_spVertexBuffer = spVertexBuffer;
    spGeometry->m_strMaterialSymbol = rStrMaterialSymbol;
    return spGeometry;
}
