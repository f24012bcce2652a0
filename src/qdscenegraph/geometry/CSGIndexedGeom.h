// What triangles, quads and lines have in common: elements of as many indices each, one after the other in an
// index buffer.
#pragma once

#include "qdscenegraph/geometry/CSGGeom.h"
#include "qdscenegraph/geometry/CSGIndexBuffer.h"

#include <span>

// Several geometries may share an index buffer; an element added to one is then an element of all. In files
// the class does not show: a kind's record is the id of its index buffer.
class CSGIndexedGeom : public CSGGeom
{
  public:
    // Never null in geometry that was created or loaded.
    CSGIndexBuffer* GetIndexBuffer() const { return m_spIndexBuffer.get(); }

    int32_t GetMaxIndex() const override;
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;

  protected:
    explicit CSGIndexedGeom(int32_t nIndicesEach) : m_nIndicesEach(nIndicesEach) {}

    template <class T>
    static boost::intrusive_ptr<T> CreateKind(const boost::intrusive_ptr<CSGIndexBuffer>& spIndexBuffer)
    {
        boost::intrusive_ptr<T> spGeom = CSGMem::Construct<T>();
        return spGeom && spGeom->SetIndexBuffer(spIndexBuffer) ? spGeom : nullptr;
    }
    int32_t GetNumElements() const;
    // False for an element that is not there.
    bool GetElement(int32_t nElement, std::span<int32_t> arrIndices) const;
    bool AddElement(std::span<const int32_t> arrIndices);

  private:
    enum ECookie : int32_t
    {
        COOKIE_INDEX_BUFFER = 0
    };

    bool SetIndexBuffer(const boost::intrusive_ptr<CSGIndexBuffer>& spIndexBuffer);
    bool HasWholeElements(const CSGIndexBuffer& rIndexBuffer) const;

    boost::intrusive_ptr<CSGIndexBuffer> m_spIndexBuffer;
    int32_t m_nIndicesEach;
};
