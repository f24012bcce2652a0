// Geometry together with the vertices it is made of.
#pragma once

#include "qdscenegraph/geometry/CSGGeom.h"
#include "qdscenegraph/geometry/CSGVertexBuffer.h"

// The same geometry and the same vertices may stand in several bindings. What a binding binds does not
// change.
class CSGGeomBinding final : public SGStreamableInterface<CSGGeomBinding>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGGeomBinding";

    // Null (reported) when either is missing, and when the geometry names a vertex that the buffer does not
    // have.
    static boost::intrusive_ptr<CSGGeomBinding> Create(
        const boost::intrusive_ptr<CSGGeom>& spGeom,
        const boost::intrusive_ptr<CSGVertexBuffer>& spVertexBuffer);

    // Neither is null in a binding that was created or loaded.
    CSGGeom* GetGeom() const { return m_spGeom.get(); }
    CSGVertexBuffer* GetVertexBuffer() const { return m_spVertexBuffer.get(); }

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    // Fails for geometry that has come to name a vertex that is not there: the file would not load.
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    enum ECookie : int32_t
    {
        COOKIE_GEOMETRY = 0,
        COOKIE_VERTEX_BUFFER = 1
    };

    // Both there, and every index within the vertices; reported where not.
    bool Verify() const;

    boost::intrusive_ptr<CSGGeom> m_spGeom;
    boost::intrusive_ptr<CSGVertexBuffer> m_spVertexBuffer;
};
