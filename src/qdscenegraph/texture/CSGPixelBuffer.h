// The pixels of textures.
#pragma once

#include "qdcommon/CColor.h"
#include "qdscenegraph/streaming/CSGStreamable.h"
#include "qdscenegraph/texture/PixelFormat.h"

#include <memory>
#include <span>

class CSGPixelBuffer;
using CSGPixelBufferPtr = boost::intrusive_ptr<CSGPixelBuffer>;

// A number of pixels of one format in one block, without gaps; the pixels of all levels together, the largest
// level first. A concrete class knows the formats it takes and how a pixel of them becomes a colour.
class CSGPixelBuffer : public SGStreamableInterface<CSGPixelBuffer>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGPixelBuffer";

    // All bytes 0. Null (reported) for an unknown format, for a number of pixels that the format cannot have,
    // for more than 2^31 - 1 bytes and when there is not enough memory.
    static CSGPixelBufferPtr Create(PixelFormat eFormat, int32_t nNumPixels);

    PixelFormat GetFormat() const { return m_eFormat; }
    int32_t GetNumPixels() const { return m_nNumPixels; }
    int32_t GetBitsPerPixel() const { return m_nBitsPerPixel; }
    std::span<const uint8_t> GetData() const { return {m_pData.get(), GetDataSize()}; }
    std::span<uint8_t> EditData() { return {m_pData.get(), GetDataSize()}; }
    // Null (reported) for a pixel that is not there, and for formats whose pixels share their bytes.
    const uint8_t* GetDataPtrAtPixel(int32_t nPixel) const;

    // False (reported) for a pixel that is not there, and for formats whose pixels are not read or written
    // one by one. L8 gives grey, and takes the luma of a colour (ITU-R BT.601); R8G8B8 and L8 are opaque.
    // Values are rounded to the nearest of the 256 levels, those outside of 0 to 1 count as 0 or 1.
    virtual bool GetColor(int32_t nPixel, CColor& rObjColor) const = 0;
    virtual bool SetColor(int32_t nPixel, const CColor& rObjColor) = 0;

    // The bytes of one level of a texture: each level has half of the width and height of the one before it,
    // rounded down, at least 1; compressed formats are rounded up to their smallest block. False, and 0
    // bytes, when there is no such size or it is above 2^31 - 1 bytes.
    static bool CalcLevelSize(PixelFormat eFormat, int32_t nWidth, int32_t nHeight, int32_t nLevel,
                              int32_t nBitsPerPixel, int32_t& rLevelSize);

    // The buffer itself when a renderer of these formats takes it, else a new one of such a format with the
    // same colours. Null (reported) when there is none: only the orders of 32 bits change into each other.
    static CSGPixelBufferPtr ConvertToSupportedFormat(CSGPixelBuffer* pPixelBuffer,
                                                      uint32_t nSupportedFormatBits);
    // The same pixels with their four bytes in the order of another format. Null (reported) unless both
    // formats are of 32 bits.
    static CSGPixelBufferPtr Convert32BitRGBABuffer(const CSGPixelBuffer* pPixelBuffer, PixelFormat eFormat);
    // False, also (reported) when no formats are given.
    static bool DoesRendererSupportFormat(PixelFormat eFormat, uint32_t nSupportedFormatBits);
    // The format in which a renderer of a behaviour likes its pixels best; PIXEL_FORMAT_NONE (reported) for
    // an unknown behaviour.
    static PixelFormat GetPreferredPixelFormatWithColor(int32_t nRendererBehavior);
    static PixelFormat GetPreferredPixelFormatWithColorAndAlpha(int32_t nRendererBehavior);

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    // Everything but the pixels themselves.
    void OutputDebugInfo(const CQDString& rIndent) const;

  protected:
    // Whether the class can hold so many pixels of the format; reported where not.
    virtual bool VerifyFormat(PixelFormat eFormat, int32_t nNumPixels) const = 0;
    bool VerifyPixel(int32_t nPixel) const;
    uint8_t* EditBlock() { return m_pData.get(); }
    const uint8_t* GetBlock() const { return m_pData.get(); }

  private:
    struct CFreeBlock
    {
        size_t m_nSize;
        void operator()(uint8_t* pBlock) const { CSGMem::GetPool().Free(pBlock, m_nSize); }
    };

    size_t GetDataSize() const { return m_pData ? m_pData.get_deleter().m_nSize : 0; }
    // Checks and takes over the description and frees the old block; the new one is taken by Allocate.
    bool SetDescription(PixelFormat eFormat, int32_t nNumPixels, int32_t nBitsPerPixel);
    // The bytes that the description asks for.
    int64_t CalcDataSize() const;
    // Takes the memory; the bytes are left as they are.
    bool Allocate();

    PixelFormat m_eFormat = PIXEL_FORMAT_NONE;
    int32_t m_nNumPixels = 0;
    int32_t m_nBitsPerPixel = 0;
    std::unique_ptr<uint8_t[], CFreeBlock> m_pData;
};
