// Two transforms, applied one after the other.
#pragma once

#include "qdscenegraph/transform/CSGTransformProduct.h"

// The first transform is applied to a point last.
class CSGXFrm_Pair : public CSGTransformInterface<CSGXFrm_Pair, CSGTransformProduct>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGXFrm_Pair";
    static const CSGTypeInfo<CSGTransform> ms_objTypeInfo;

    // Null (reported) when one of the transforms is.
    static boost::intrusive_ptr<CSGXFrm_Pair> Create(const CTransformPtr& spFirst,
                                                     const CTransformPtr& spSecond);

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;

  private:
    CTransformPtr CreateCopy(CCopies& rCopies) const override;
};
