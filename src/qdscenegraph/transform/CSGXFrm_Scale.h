// A scale along the three axes.
#pragma once

#include "qdscenegraph/transform/CSGTransform.h"

class CSGXFrm_Scale : public CSGTransformInterface<CSGXFrm_Scale>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGXFrm_Scale";
    static const CSGTypeInfo<CSGTransform> ms_objTypeInfo;

    static boost::intrusive_ptr<CSGXFrm_Scale> Create(const CSGFloat3& rScale);

    const CSGFloat3& GetScale() const { return m_vScale; }
    void SetScale(const CSGFloat3& rScale);

    CTransform3 GetTransform() const override;
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    CTransformPtr CreateCopy(CCopies& rCopies) const override;

    CSGFloat3 m_vScale{1.0f, 1.0f, 1.0f};
};
