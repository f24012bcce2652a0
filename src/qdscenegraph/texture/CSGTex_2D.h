// Textures with pixels of their own.
#pragma once

#include "qdscenegraph/texture/CSGPixelBuffer.h"
#include "qdscenegraph/texture/CSGTexture.h"
#include "qdscenegraph/texture/CSGTextureReloadHandler.h"

class CSGTex_2D;
using CSGTex_2DPtr = boost::intrusive_ptr<CSGTex_2D>;

// An image of up to 65535 by 65535 pixels and 255 levels, all in one pixel buffer.
class CSGTex_2D final : public SGStreamableDerivedInterface<CSGTex_2D, CSGTexture>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGTex_2D";
    static CSGTypeInfo<CSGTexture> ms_objTypeInfo;

    // An image whose buffer may have rows and columns of padding on the right and below: the texture has the
    // padded size, where one of the two is 0 there is no padding that way. Null (reported) when the buffer is
    // of another format or too small for all levels.
    static CSGTex_2DPtr Create(PixelFormat eFormat, int32_t nWidth, int32_t nHeight, int32_t nLevels,
                               int32_t nPaddedWidth, int32_t nPaddedHeight,
                               const CSGPixelBufferPtr& spBuffer);
    // Another image in place of this one, which has changed then; false (reported) as for Create, with the
    // image as it was.
    bool SetPixels(int32_t nWidth, int32_t nHeight, int32_t nLevels, const CSGPixelBufferPtr& spBuffer);
    // Gives up the pixels once a renderer has its own; sizes are still answered by GetLastTotalSize.
    void ReleaseBuffer() { m_spBuffer.reset(); }
    CSGPixelBuffer* GetBuffer() const { return m_spBuffer.get(); }

    int32_t GetWidth() const { return m_uiWidth; }
    int32_t GetHeight() const { return m_uiHeight; }
    // The bytes of a row of level 0; blocks of compressed formats are not counted.
    int32_t GetRowSize() const;
    // The bytes of all levels, also after the buffer was released.
    int32_t GetLastTotalSize() const;

    // A pixel of level 0: nU from the left, nV from the top. Pixels of textures that never change are not
    // set.
    bool GetPixelColor(int32_t nU, int32_t nV, CColor& rObjColor) const;
    bool SetPixelColor(int32_t nU, int32_t nV, const CColor& rObjColor);
    // Gives every pixel of every level the colour.
    bool Fill(const CColor& rObjColor);
    // Copies level 0 of another texture onto level 0 of this one, its top left pixel at (nU, nV), which may
    // lie outside; what falls outside is left out. Nothing is blended.
    bool DrawTexture(int32_t nU, int32_t nV, const CSGTex_2D* pTexture);
    // Blends a colour into level 0, by its own opacity and that of a mask of nGlyphWidth by nGlyphHeight
    // bytes (0 leaves a pixel, 255 covers it), placed and clipped like a texture. False (reported) for a mask
    // of another size.
    bool DrawGlyph(int32_t nU, int32_t nV, std::span<const uint8_t> arrCoverage, int32_t nGlyphWidth,
                   int32_t nGlyphHeight, const CColor& rObjColor);

    // Adds all smaller levels down to 1 by 1, each pixel the mean of the 2 by 2 above it, rounded to nearest
    // (a last odd row or column drops out). True without doing anything (noted in the log) when there are
    // levels, when the renderer makes them and for compressed formats; false (reported) for 16-bit formats
    // and when there is not enough memory.
    bool GenerateMipMaps();

    void SetReloadHandler(const boost::intrusive_ptr<CSGTextureReloadHandler>& spReloadHandler)
    {
        m_spReloadHandler = spReloadHandler;
    }
    CSGTextureReloadHandler* GetReloadHandler() const { return m_spReloadHandler.get(); }

    // Textures that need no file. Null (reported) when no known format is among those of the renderer.
    // Squares of two pixels in alternating colours, nSize by nSize pixels.
    static CSGTex_2DPtr CreateCheckerTexture(int32_t nSize, const CColor& rFirst, const CColor& rSecond,
                                             uint32_t nSupportedFormatBits = ALL_PIXEL_FORMATS);
    // Shown in place of what did not load: magenta and black. Made on first use and shared.
    static CSGTex_2DPtr GetTextureFailedToLoad();
    // Shown where a renderer insists on powers of two: yellow and black. Made on first use and shared.
    static CSGTex_2DPtr GetTextureNonPowerOfTwo();
    // One white pixel. Made on first use and shared.
    static CSGTex_2DPtr GetTextureSinglePixel();

    const CSGTypeInfo<CSGTexture>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    CSGTextureLayout GetLayout() const override;
    PixelFormat GetFormat() const override
    {
        return m_spBuffer ? m_spBuffer->GetFormat() : PIXEL_FORMAT_NONE;
    }
    const uint8_t* GetDataPtr() const override { return m_spBuffer ? m_spBuffer->GetData().data() : nullptr; }
    int32_t GetTotalSize() const override;
    int32_t GetNumLevels() const override { return m_nNumLevels; }
    int32_t GetLevelSize(int32_t nLevel) const override;
    const uint8_t* GetLevelDataPtr(int32_t nLevel) const override;
    CRefObject* GetRendererData() const override { return m_spRendererData.get(); }
    void SetRendererData(const boost::intrusive_ptr<CRefObject>& spRendererData) override
    {
        m_spRendererData = spRendererData;
    }
    bool Reload(CSGTextureLoader* pTextureLoader) override;
    // The file of the reload handler.
    const CQDString& GetSourceName() const override;

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    // Takes the pixel buffer, in a format that the textures of this load may have.
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override { m_spBuffer.reset(); }
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    enum ECookie : int32_t
    {
        COOKIE_BUFFER = 0
    };

    // Where an image of nWidth by nHeight at (nU, nV) meets level 0.
    struct CClip;
    CClip Clip(int32_t nU, int32_t nV, int32_t nWidth, int32_t nHeight) const;

    bool SetLayout(int32_t nWidth, int32_t nHeight, int32_t nLevels);
    void TakeBuffer(const CSGPixelBufferPtr& spBuffer);
    // Whether the buffer holds all levels; reported where not.
    bool VerifyBuffer() const;
    // Whether there are pixels to draw on.
    bool VerifyCanDraw() const;
    bool VerifyPixel(int32_t nU, int32_t nV) const;
    int32_t CalcPixelOffset(int32_t nU, int32_t nV) const
    {
        return static_cast<int32_t>(static_cast<uint32_t>(nV) * m_uiWidth + static_cast<uint32_t>(nU));
    }

    CSGPixelBufferPtr m_spBuffer;
    uint16_t m_uiWidth = 0;
    uint16_t m_uiHeight = 0;
    uint8_t m_nNumLevels = 0;
    PixelFormat m_eLastFormat = PIXEL_FORMAT_NONE; // those of the last buffer
    int32_t m_nLastBPP = 0;
    boost::intrusive_ptr<CSGTextureReloadHandler> m_spReloadHandler;
    boost::intrusive_ptr<CRefObject> m_spRendererData;
};
