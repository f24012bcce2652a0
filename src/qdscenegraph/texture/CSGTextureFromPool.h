// Textures that are kept by name and shared through a texture pool.
#pragma once

#include "qdscenegraph/texture/CSGTexture.h"

class CSGTexturePool;
class CSGTextureFromPool;
using CSGTextureFromPoolPtr = boost::intrusive_ptr<CSGTextureFromPool>;

// Only the names of the pool and of the texture are saved, nothing of CSGTexture. The texture itself is found
// when the names are loaded, if the process has such a pool by then, or later when it is asked for; until
// then every question about its pixels is an error that is reported.
class CSGTextureFromPool final : public SGStreamableDerivedInterface<CSGTextureFromPool, CSGTexture>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGTextureFromPool";
    static CSGTypeInfo<CSGTexture> ms_objTypeInfo;

    // Not resolved yet.
    static CSGTextureFromPoolPtr Create(const CQDString& rPoolName, const CQDString& rTextureName);

    const CQDString& GetPoolName() const { return m_strPoolName; }
    const CQDString& GetTextureName() const { return m_strTextureName; }
    // The shared texture, null while it is not resolved.
    CSGTexture* GetTexture() const { return m_spTexture.get(); }
    // The shared texture; unless it is resolved, the pool is asked for it. Null (reported) when the pool does
    // not have it and cannot load it.
    CSGTexture* GetOrLoadSharedTexture(CSGTextureLoader* pTextureLoader, CSGTexturePool* pTexturePool);

    const CSGTypeInfo<CSGTexture>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    CSGTextureLayout GetLayout() const override;
    PixelFormat GetFormat() const override;
    const uint8_t* GetDataPtr() const override;
    int32_t GetTotalSize() const override;
    int32_t GetNumLevels() const override;
    int32_t GetLevelSize(int32_t nLevel) const override;
    const uint8_t* GetLevelDataPtr(int32_t nLevel) const override;
    CRefObject* GetRendererData() const override;
    void SetRendererData(const boost::intrusive_ptr<CRefObject>& spRendererData) override;
    // Loads the shared texture anew, or for the first time.
    bool Reload(CSGTextureLoader* pTextureLoader) override;
    const CQDString& GetSourceName() const override { return m_strTextureName; }

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    // Resolves the names. A pool or texture that is not there is noted in the log and does not fail the load.
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    CQDString m_strPoolName;
    CQDString m_strTextureName;
    CSGTexturePtr m_spTexture;
};
