// The surface of a texture.
#pragma once

#include "qdscenegraph/material/CSGSurface.h"

// Answers for its texture; one that was read without a texture gives an empty layout and never changes
// (reported).
class CSGSurf_Texture final : public SGStreamableDerivedInterface<CSGSurf_Texture, CSGSurface>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGSurf_Texture";
    static const CSGTypeInfo<CSGSurface> ms_objTypeInfo;

    // Null (reported) without a texture.
    static boost::intrusive_ptr<CSGSurf_Texture> Create(const boost::intrusive_ptr<CSGTexture>& spObjTexture);

    CSGTexture* GetTexture() const { return m_spObjTexture.get(); }

    const CSGTypeInfo<CSGSurface>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    CSGTextureLayout GetLayout() const override;
    CSGTexture::EChangeFrequency GetChangeFrequency() const override;
    bool HasChanged() const override;

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    void DropLinks() override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    boost::intrusive_ptr<CSGTexture> m_spObjTexture;
};
