// A surface with the way in which it is read.
#pragma once

#include "qdscenegraph/material/CSGSamplerParams.h"
#include "qdscenegraph/material/CSGSurface.h"
#include "qdscenegraph/object/CSGTombstone.h"

class CSGSampler final : public SGStreamableInterface<CSGSampler>, public CEnableSGObjectWPtr
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGSampler";
    static const CSGTypeInfo<CSGSampler> ms_objTypeInfo;

    // With the default parameters. Null (reported) without a surface.
    static boost::intrusive_ptr<CSGSampler> Create(const CSGSurfacePtr& spObjSurface);

    // Null only in a sampler whose file named none.
    CSGSurface* GetSurface() const { return m_spObjSurface.get(); }
    // False (reported) for a null surface.
    bool SetSurface(const CSGSurfacePtr& spObjSurface);
    const CSGSamplerParams& GetParams() const { return m_objParams; }
    void SetParams(const CSGSamplerParams& rParams) { m_objParams = rParams; }

    // The surface's; without one an empty layout and a surface that never changes (reported).
    CSGTextureLayout GetLayout() const;
    CSGTexture::EChangeFrequency GetChangeFrequency() const;

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    void DropLinks() override;
    // Written to the log at level 7, each line behind the indent.
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    CSGSurfacePtr m_spObjSurface;
    CSGSamplerParams m_objParams;
};

using CSGSamplerPtr = boost::intrusive_ptr<CSGSampler>;
