// A list of transforms, applied one after the other.
#pragma once

#include "qdscenegraph/transform/CSGTransformProduct.h"

#include <span>

// The first transform of the list is applied to a point last: translate, rotate, scale in this order scale a
// point first and move it at the end. On the column vectors of COLLADA that is the matrix T * R * S.
class CSGXFrm_List : public CSGTransformInterface<CSGXFrm_List, CSGTransformProduct>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGXFrm_List";
    static const CSGTypeInfo<CSGTransform> ms_objTypeInfo;

    static boost::intrusive_ptr<CSGXFrm_List> Create();
    // Null (reported) when one of the transforms is.
    static boost::intrusive_ptr<CSGXFrm_List> Create(std::span<const CTransformPtr> arrTransforms);

    // Appends at the end. False (reported) for a null transform, and for this list or one that contains it.
    bool AddTransform(CSGTransform* pTransform) { return Append(pTransform); }

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;

  private:
    CTransformPtr CreateCopy(CCopies& rCopies) const override;
};
