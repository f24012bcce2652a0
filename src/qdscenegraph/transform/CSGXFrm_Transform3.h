// A transform given by its matrix and translation.
#pragma once

#include "qdscenegraph/transform/CSGTransform.h"

class CSGXFrm_Transform3 : public CSGTransformInterface<CSGXFrm_Transform3>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGXFrm_Transform3";
    static const CSGTypeInfo<CSGTransform> ms_objTypeInfo;

    static boost::intrusive_ptr<CSGXFrm_Transform3> Create(const CTransform3& rTransform);

    void SetTransform(const CTransform3& rTransform);

    CTransform3 GetTransform() const override { return m_objTransform; }
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    CTransformPtr CreateCopy(CCopies& rCopies) const override;

    CTransform3 m_objTransform;
};
