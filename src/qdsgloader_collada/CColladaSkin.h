// The skin made for one piece of a geometry.
#pragma once

#include "qdscenegraph/skin/CSGSkin.h"
#include "qdsgloader_collada/CDeindexedVertexBuffer.h"

class CColladaSkin : public CRefObject
{
  public:
    // Null (reported) when either is missing. The skin has the weights of the buffer's vertices.
    static boost::intrusive_ptr<CColladaSkin> Create(
        const boost::intrusive_ptr<CSGSkin>& spSkin,
        const boost::intrusive_ptr<const CDeindexedVertexBuffer>& spVertexBuffer);

    const boost::intrusive_ptr<CSGSkin>& GetSkin() const { return m_spSkin; }
    const CDeindexedVertexBuffer& GetDeindexedVertexBuffer() const { return *m_spVertexBuffer; }

  private:
    boost::intrusive_ptr<CSGSkin> m_spSkin;
    boost::intrusive_ptr<const CDeindexedVertexBuffer> m_spVertexBuffer;
};
