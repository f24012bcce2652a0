// A camera that sees everything in the same size, however far away it is.
#pragma once

#include "qdscenegraph/camera/CSGCamera.h"

class CSGCam_OrthoYMag final : public SGStreamableDerivedInterface<CSGCam_OrthoYMag, CSGCamera>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGCam_OrthoYMag";
    static const CSGTypeInfo<CSGCamera> ms_objTypeInfo;

    // The magnification is in units of the node's space. Null (reported) without memory.
    static boost::intrusive_ptr<CSGCam_OrthoYMag> Create(const CQDCompactString& rName, float fYMag,
                                                         const CFrame& rFrame);

    // Half of the height that the picture shows.
    float GetYMag() const { return m_fYMag; }

    const CSGTypeInfo<CSGCamera>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    float m_fYMag = 1.0f;
};
