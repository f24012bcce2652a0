// What transforms made of other transforms have in common.
#pragma once

#include "qdscenegraph/transform/CSGTransformLink.h"

#include <vector>

// The product T0 * T1 * ... of its transforms, in their order: the last one is applied to a point first, and
// the first one last. That is the order in which COLLADA writes the transforms of a node. The product is
// cached. Without transforms it is the identity.
class CSGTransformProduct : public CSGTransform
{
  public:
    int32_t GetNumTransforms() const { return static_cast<int32_t>(m_vecLinks.size()); }
    // Null for an index that is out of range.
    CSGTransform* GetTransformObject(int32_t nIndex) const;

    CTransform3 GetTransform() const override;
    void MarkDirty() override;

    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    // A loaded product has a transform in every place.
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override { m_vecLinks.clear(); }
    // Everything below, each product once.
    void OutputDebugInfo(const CQDString& rIndent) const override;

  protected:
    // False (reported) for a null transform, and for this one or one that contains it.
    bool Append(CSGTransform* pTransform);
    // Appends copies of all transforms of another product.
    bool AppendCopies(const CSGTransformProduct& rOriginal, CCopies& rCopies);
    // The ids of the transforms; the cookie of each is its index.
    bool ReadTransforms(int32_t nCount, CStream* pStream, CSGStreamableLoadState* pLoadState);
    bool WriteTransforms(CStream* pStream, CSGStreamableSaveState* pSaveState) const;

  private:
    bool IsOrContains(const CSGTransform* pTransform) const;

    std::vector<CSGTransformLink> m_vecLinks;
    mutable CTransform3 m_objProduct;
    mutable bool m_bDirty = true;
};
