// A translation.
#pragma once

#include "qdscenegraph/transform/CSGTransform.h"

class CSGXFrm_Translate : public CSGTransformInterface<CSGXFrm_Translate>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGXFrm_Translate";
    static const CSGTypeInfo<CSGTransform> ms_objTypeInfo;

    static boost::intrusive_ptr<CSGXFrm_Translate> Create(const CSGFloat3& rTranslation);

    const CSGFloat3& GetTranslation() const { return m_vTranslation; }
    void SetTranslation(const CSGFloat3& rTranslation);

    CTransform3 GetTransform() const override;
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    CTransformPtr CreateCopy(CCopies& rCopies) const override;

    CSGFloat3 m_vTranslation;
};
