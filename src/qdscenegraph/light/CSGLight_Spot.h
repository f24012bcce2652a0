// Light that shines from one place within a cone.
#pragma once

#include "qdscenegraph/light/CSGLight.h"
#include "qdscenegraph/light/CSGLightAttenuation.h"

class CSGLight_Spot final : public CSGLightInterface<CSGLight_Spot>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGLight_Spot";
    static const CSGTypeInfo<CSGLight> ms_objTypeInfo;

    // How the light fills its cone.
    struct CCone
    {
        // The whole angle at the tip, in degrees; by default the half space in front of the light.
        float m_fFalloffAngle = 180.0f;
        // From the axis outwards the light is multiplied by the cosine of the angle to the axis, raised to
        // this power; 0 fills the cone evenly.
        float m_fFalloffExponent = 0.0f;

        bool operator==(const CCone&) const = default;
    };

    using CSGLightInterface::Create;
    static boost::intrusive_ptr<CSGLight_Spot> Create(const CQDCompactString& rName, const CColor& rColor,
                                                      const CSGLightAttenuation& rAttenuation,
                                                      const CCone& rCone);

    const CSGLightAttenuation& GetAttenuation() const { return m_objAttenuation; }
    float GetFalloffAngle() const { return m_objCone.m_fFalloffAngle; }
    float GetFalloffExponent() const { return m_objCone.m_fFalloffExponent; }

    void SetupLightState(CSGLightState& rState, const CTransform3& rWorld) const override;
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    CSGLightAttenuation m_objAttenuation;
    CCone m_objCone;
};
