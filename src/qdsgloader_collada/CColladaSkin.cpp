#include "qdsgloader_collada/CColladaSkin.h"

#include "qdcommon/CLogChecks.h"

boost::intrusive_ptr<CColladaSkin> CColladaSkin::Create(
    const boost::intrusive_ptr<CSGSkin>& spSkin,
    const boost::intrusive_ptr<const CDeindexedVertexBuffer>& spVertexBuffer)
{
    QD_CHECK_ARG(spSkin, nullptr);
    QD_CHECK_ARG(spVertexBuffer, nullptr);
    const boost::intrusive_ptr<CColladaSkin> spColladaSkin = new CColladaSkin;
    spColladaSkin->m_spSkin = spSkin;
    spColladaSkin->m_spVertexBuffer = spVertexBuffer;
    return spColladaSkin;
}
