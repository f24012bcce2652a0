// Pixel buffers with one byte for each channel.
#pragma once

#include "qdscenegraph/texture/CSGPixBuffName.h"
#include "qdscenegraph/texture/CSGPixelBuffer.h"

// The channels lie in the order in which the format's name has them.
template <PixelFormat FORMAT>
class CSGPixBuff_Bytes final : public SGStreamableDerivedInterface<CSGPixBuff_Bytes<FORMAT>, CSGPixelBuffer>
{
  public:
    static constexpr const char* SG_TYPE_NAME = PIX_BUFF_NAME<FORMAT>.data();

    bool GetColor(int32_t nPixel, CColor& rObjColor) const override;
    bool SetColor(int32_t nPixel, const CColor& rObjColor) override;

  protected:
    bool VerifyFormat(PixelFormat eFormat, int32_t) const override
    {
        QD_CHECK(eFormat == FORMAT, false);
        return true;
    }

  private:
    static constexpr size_t NO_CHANNEL = std::string_view::npos;
    static constexpr size_t BYTES = PixelFormatBitsPerPixel(FORMAT) / 8;

    // The place of a channel's byte in a pixel; each channel is a letter and a digit in the name.
    static constexpr size_t PlaceOf(char cChannel)
    {
        const size_t nPlace = std::string_view(PixelFormatName(FORMAT)).find(cChannel);
        return nPlace != NO_CHANNEL ? nPlace / 2 : NO_CHANNEL;
    }

    static constexpr float ToFloat(uint8_t uiValue) { return static_cast<float>(uiValue) / 255.0f; }
    static constexpr uint8_t ToByte(float fValue)
    {
        // Also right for what is not a number: it is not above 0.
        return fValue > 0.0f ? static_cast<uint8_t>(std::min(fValue, 1.0f) * 255.0f + 0.5f) : uint8_t{0};
    }
};

using CSGPixBuff_R8G8B8 = CSGPixBuff_Bytes<PIXEL_FORMAT_R8G8B8>;
using CSGPixBuff_A8R8G8B8 = CSGPixBuff_Bytes<PIXEL_FORMAT_A8R8G8B8>;
using CSGPixBuff_R8G8B8A8 = CSGPixBuff_Bytes<PIXEL_FORMAT_R8G8B8A8>;
using CSGPixBuff_L8 = CSGPixBuff_Bytes<PIXEL_FORMAT_L8>;
using CSGPixBuff_A8B8G8R8 = CSGPixBuff_Bytes<PIXEL_FORMAT_A8B8G8R8>;

template <PixelFormat FORMAT>
bool CSGPixBuff_Bytes<FORMAT>::GetColor(int32_t nPixel, CColor& rObjColor) const
{
    if (!this->VerifyPixel(nPixel))
    {
        return false;
    }
    const uint8_t* pPixel = this->GetBlock() + static_cast<size_t>(nPixel) * BYTES;
    if constexpr (PlaceOf('L') != NO_CHANNEL)
    {
        const float fLuma = ToFloat(pPixel[PlaceOf('L')]);
        rObjColor = {fLuma, fLuma, fLuma, 1.0f};
    }
    else
    {
        rObjColor = {ToFloat(pPixel[PlaceOf('R')]), ToFloat(pPixel[PlaceOf('G')]),
                     ToFloat(pPixel[PlaceOf('B')]), 1.0f};
        if constexpr (PlaceOf('A') != NO_CHANNEL)
        {
            rObjColor.a = ToFloat(pPixel[PlaceOf('A')]);
        }
    }
    return true;
}

template <PixelFormat FORMAT>
bool CSGPixBuff_Bytes<FORMAT>::SetColor(int32_t nPixel, const CColor& rObjColor)
{
    if (!this->VerifyPixel(nPixel))
    {
        return false;
    }
    uint8_t* pPixel = this->EditBlock() + static_cast<size_t>(nPixel) * BYTES;
    if constexpr (PlaceOf('L') != NO_CHANNEL)
    {
        pPixel[PlaceOf('L')] = ToByte(0.299f * rObjColor.r + 0.587f * rObjColor.g + 0.114f * rObjColor.b);
    }
    else
    {
        pPixel[PlaceOf('R')] = ToByte(rObjColor.r);
        pPixel[PlaceOf('G')] = ToByte(rObjColor.g);
        pPixel[PlaceOf('B')] = ToByte(rObjColor.b);
        if constexpr (PlaceOf('A') != NO_CHANNEL)
        {
            pPixel[PlaceOf('A')] = ToByte(rObjColor.a);
        }
    }
    return true;
}
