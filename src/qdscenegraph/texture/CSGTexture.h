// The images that surfaces show.
#pragma once

#include "qdcommon/CRefObject.h"
#include "qdscenegraph/object/CSGTombstone.h"
#include "qdscenegraph/object/CSGTypeInfo.h"
#include "qdscenegraph/streaming/CSGStreamable.h"
#include "qdscenegraph/texture/PixelFormat.h"

class CSGTextureLoader;
class CSGTexture;
using CSGTexturePtr = boost::intrusive_ptr<CSGTexture>;

// The shape of a texture: pixels of the largest level, number of levels.
struct CSGTextureLayout
{
    int32_t m_nWidth = 0;
    int32_t m_nHeight = 0;
    int32_t m_nNumLevels = 0;
    PixelFormat m_eFormat = PIXEL_FORMAT_NONE;

    bool operator==(const CSGTextureLayout&) const = default;
};

class CSGTexture : public SGStreamableInterface<CSGTexture>, public CEnableSGObjectWPtr
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGTexture";

    // How often the pixels change; tells a renderer where to keep them. The values stand in files.
    enum EChangeFrequency : int32_t
    {
        CHANGE_FREQ_NEVER = 0,
        CHANGE_FREQ_SOMETIMES = 1,
        CHANGE_FREQ_OFTEN = 2
    };

    // The record of the concrete kind: T::ms_objTypeInfo.
    virtual const CSGTypeInfo<CSGTexture>* GetTypeInfo() const = 0;
    // False, also (reported) for a null type.
    bool InstanceOf(const CSGTypeInfo<CSGTexture>* pType) const;

    EChangeFrequency GetChangeFrequency() const { return m_eChangeFrequency; }
    void SetChangeFrequency(EChangeFrequency eFrequency) { m_eChangeFrequency = eFrequency; }
    // Whether the renderer makes the smaller levels by itself.
    bool ShouldAutoGenMipMapLevels() const { return m_bAutoGenMipMapLevels; }
    void SetShouldAutoGenMipMapLevels(bool bAutoGen) { m_bAutoGenMipMapLevels = bAutoGen; }
    // Whether the pixels have changed since the renderer last took them; not saved.
    bool HasChanged() const { return m_bHasChanged; }
    void SetHasChanged(bool bHasChanged) { m_bHasChanged = bHasChanged; }

    // Level 0 is the largest; sizes are in bytes, rows run from top to bottom. What is not there is 0, null
    // or an empty layout.
    virtual CSGTextureLayout GetLayout() const = 0;
    virtual PixelFormat GetFormat() const = 0;
    virtual const uint8_t* GetDataPtr() const = 0;
    virtual int32_t GetTotalSize() const = 0;
    virtual int32_t GetNumLevels() const = 0;
    virtual int32_t GetLevelSize(int32_t nLevel) const = 0;
    virtual const uint8_t* GetLevelDataPtr(int32_t nLevel) const = 0;

    // What the renderer made of the texture.
    virtual CRefObject* GetRendererData() const = 0;
    virtual void SetRendererData(const boost::intrusive_ptr<CRefObject>& spRendererData) = 0;

    // Loads the pixels anew from where they came from; false (reported) when that fails, the pixels being
    // kept.
    virtual bool Reload(CSGTextureLoader* pTextureLoader) = 0;
    // The name of the image: its file, or its name in the pool. Empty for pixels that came without one.
    virtual const CQDString& GetSourceName() const = 0;

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    // The shape, written to the log (level 7), each line behind the indent.
    virtual void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    EChangeFrequency m_eChangeFrequency = CHANGE_FREQ_NEVER;
    bool m_bAutoGenMipMapLevels = false;
    bool m_bHasChanged = false;
};
