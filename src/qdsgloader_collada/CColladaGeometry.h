// The geometry made of one primitive element.
#pragma once

#include "qdscenegraph/geometry/CSGGeomBinding.h"
#include "qdsgloader_collada/CDeindexedVertexBuffer.h"

class CColladaGeometry : public CRefObject
{
  public:
    using CBindingPtr = boost::intrusive_ptr<CSGGeomBinding>;
    using CDeindexedVertexBufferPtr = boost::intrusive_ptr<CDeindexedVertexBuffer>;

    // Null (reported) when either is missing. The symbol is the one by which an instance gives the element
    // its material; may be empty.
    static boost::intrusive_ptr<CColladaGeometry> Create(const CBindingPtr& spBinding,
                                                         const CDeindexedVertexBufferPtr& spVertexBuffer,
                                                         const CQDString& rStrMaterialSymbol);

    const CBindingPtr& GetBinding() const { return m_spBinding; }
    // What the binding's vertices were made from.
    const CDeindexedVertexBuffer& GetDeindexedVertexBuffer() const { return *m_spVertexBuffer; }
    const CQDString& GetMaterialSymbol() const { return m_strMaterialSymbol; }

  private:
    CBindingPtr m_spBinding;
    CDeindexedVertexBufferPtr m_spVertexBuffer;
    CQDString m_strMaterialSymbol;
};
