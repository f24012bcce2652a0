// The geometry of a node: a list of bindings.
#pragma once

#include "qdscenegraph/geometry/CSGGeomBinding.h"

#include <vector>

class CSGGeomList final : public SGStreamableInterface<CSGGeomList>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGGeomList";

    // Without bindings.
    static boost::intrusive_ptr<CSGGeomList> Create();

    bool AddBinding(const boost::intrusive_ptr<CSGGeomBinding>& spBinding);
    // The first place where the binding stands; false (reported) when it does not.
    bool RemoveBinding(const CSGGeomBinding* pBinding);
    int32_t GetNumBindings() const { return static_cast<int32_t>(m_vecBindings.size()); }
    // Null for a binding that is not there.
    CSGGeomBinding* GetBinding(int32_t nBinding) const;
    // The vertex buffers of all bindings, each once, in the order of their first use.
    std::vector<CSGVertexBuffer*> GetVertexBuffers() const;

    // Of all vertices of all vertex buffers (CSGVertexBuffer::GetBounds). Kept until something changes: many
    // nodes may share the list.
    const CSGBounds& GetBounds() const;
    // The newest stamp of the list and its vertex buffers: it changes with everything that may change the
    // bounds.
    uint64_t GetNewestStamp() const;

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    CSGBounds ComputeBounds() const;

    std::vector<boost::intrusive_ptr<CSGGeomBinding>> m_vecBindings;
    CSGEditStamp m_objEditStamp;
    mutable CSGBounds m_objBounds;
    mutable uint64_t m_uiBoundsStamp = 0; // the newest stamp they were made at
    mutable uint64_t m_uiNewestStamp = 0;
    mutable uint64_t m_uiNewestStampMadeAt = 0; // CSGEditStamp::GetLast()
};
