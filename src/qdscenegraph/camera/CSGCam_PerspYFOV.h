// A camera that sees what is farther away smaller.
#pragma once

#include "qdscenegraph/camera/CSGCamera.h"

class CSGCam_PerspYFOV final : public SGStreamableDerivedInterface<CSGCam_PerspYFOV, CSGCamera>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGCam_PerspYFOV";
    static const CSGTypeInfo<CSGCamera> ms_objTypeInfo;

    // The vertical field of view is in degrees. Null (reported) without memory.
    static boost::intrusive_ptr<CSGCam_PerspYFOV> Create(const CQDCompactString& rName, float fYFOV,
                                                         const CFrame& rFrame);

    // The whole angle between the lower and the upper edge of the picture, in degrees.
    float GetYFOV() const { return m_fYFOV; }

    const CSGTypeInfo<CSGCamera>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    float m_fYFOV = 45.0f;
};
