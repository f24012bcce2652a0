// Light that shines from one place to all sides.
#pragma once

#include "qdscenegraph/light/CSGLight.h"
#include "qdscenegraph/light/CSGLightAttenuation.h"

class CSGLight_Point final : public CSGLightInterface<CSGLight_Point>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGLight_Point";
    static const CSGTypeInfo<CSGLight> ms_objTypeInfo;

    using CSGLightInterface::Create;
    static boost::intrusive_ptr<CSGLight_Point> Create(const CQDCompactString& rName, const CColor& rColor,
                                                       const CSGLightAttenuation& rAttenuation);

    const CSGLightAttenuation& GetAttenuation() const { return m_objAttenuation; }

    void SetupLightState(CSGLightState& rState, const CTransform3& rWorld) const override;
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    CSGLightAttenuation m_objAttenuation;
};
