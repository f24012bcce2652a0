// Pixels that are packed into little-endian words, as BMP, DDS and TGA files hold them.
#pragma once

#include "qdscenegraph/texture/PixelFormat.h"

#include <array>
#include <cstddef>
#include <cstdint>

class CPackedPixels
{
  public:
    // The bits of red, green, blue and alpha in a word; 0 for a channel that is not there. Grey has the same
    // bits for all three colours.
    using CMasks = std::array<uint32_t, 4>;

    // A number of 1 to 4 bytes at the start of a block.
    static uint32_t ReadWord(const uint8_t* pBytes, size_t nBytes)
    {
        uint32_t uiWord = 0;
        for (size_t n = 0; n < nBytes; ++n)
        {
            uiWord |= uint32_t{pBytes[n]} << (8 * n);
        }
        return uiWord;
    }

    // Words of 1 to 4 bytes. False when a mask is not one run of bits within them.
    bool Init(const CMasks& rMasks, size_t nBytesPerPixel);

    // L8 for grey, R8G8B8A8 for anything with alpha, R8G8B8 for the rest.
    PixelFormat GetFormat() const { return m_eFormat; }
    // Writes pixels of that format. Channels of fewer than 8 bits are stretched to 0 to 255, of longer ones
    // the upper 8 bits count; colours that are not there are 0.
    void Unpack(const uint8_t* pPacked, size_t nPixels, uint8_t* pPixels) const;

  private:
    struct CChannel
    {
        uint32_t m_uiMask = 0;
        int m_nShift = 0;
        std::array<uint8_t, 256> m_arrValues = {};
    };

    template <size_t BYTES>
    void UnpackWords(const uint8_t* pPacked, size_t nPixels, uint8_t* pPixels) const;
    template <size_t BYTES, size_t CHANNELS>
    void UnpackChannels(const uint8_t* pPacked, size_t nPixels, uint8_t* pPixels) const;

    PixelFormat m_eFormat = PIXEL_FORMAT_NONE;
    size_t m_nBytesPerPixel = 0;
    bool m_bWholeBytes = false; // every channel is one byte
    std::array<CChannel, 4> m_arrChannels;
};
