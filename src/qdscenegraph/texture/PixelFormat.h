// How the pixels of a pixel buffer lie in memory.
#pragma once

#include <cstdint>

// The values stand in files. A name gives the channels in the order of their bytes; those of the 16-bit
// formats are packed from the highest bit down into one little-endian word.
enum PixelFormat : int32_t
{
    PIXEL_FORMAT_NONE = 0,
    PIXEL_FORMAT_R8G8B8 = 1,
    PIXEL_FORMAT_A8R8G8B8 = 2,
    PIXEL_FORMAT_R8G8B8A8 = 3,
    PIXEL_FORMAT_L8 = 4,
    PIXEL_FORMAT_RGB_S3TC_DXT1 = 5,
    PIXEL_FORMAT_RGBA_S3TC_DXT1 = 6,
    PIXEL_FORMAT_RGBA_S3TC_DXT3 = 7,
    PIXEL_FORMAT_RGBA_S3TC_DXT5 = 8,
    PIXEL_FORMAT_A8B8G8R8 = 9,
    PIXEL_FORMAT_RGB_PVRTC_2BPP = 10,
    PIXEL_FORMAT_RGBA_PVRTC_2BPP = 11,
    PIXEL_FORMAT_RGB_PVRTC_4BPP = 12,
    PIXEL_FORMAT_RGBA_PVRTC_4BPP = 13,
    PIXEL_FORMAT_R5G6B5 = 14,
    PIXEL_FORMAT_R5G5B5A1 = 15,
    PIXEL_FORMAT_R4G4B4A4 = 16,
    PIXEL_FORMAT_BLOCK4X4 = 17,
    PIXEL_FORMAT_COUNT
};

// A set of formats has the bit 1 << format for each of them.
constexpr uint32_t PixelFormatBit(PixelFormat eFormat)
{
    return eFormat > PIXEL_FORMAT_NONE && eFormat < PIXEL_FORMAT_COUNT ? 1u << eFormat : 0;
}
constexpr uint32_t ALL_PIXEL_FORMATS = (1u << PIXEL_FORMAT_COUNT) - (1u << PIXEL_FORMAT_R8G8B8);

namespace PixelFormatDetail
{
struct CDescription
{
    const char* m_szName;
    int32_t m_nBitsPerPixel;
    bool m_bCompressed;
};

constexpr CDescription DESCRIPTIONS[] = {{"none", 0, false},
                                         {"R8G8B8", 24, false},
                                         {"A8R8G8B8", 32, false},
                                         {"R8G8B8A8", 32, false},
                                         {"L8", 8, false},
                                         {"RGB_S3TC_DXT1", 4, true},
                                         {"RGBA_S3TC_DXT1", 4, true},
                                         {"RGBA_S3TC_DXT3", 8, true},
                                         {"RGBA_S3TC_DXT5", 8, true},
                                         {"A8B8G8R8", 32, false},
                                         {"RGB_PVRTC_2BPP", 2, true},
                                         {"RGBA_PVRTC_2BPP", 2, true},
                                         {"RGB_PVRTC_4BPP", 4, true},
                                         {"RGBA_PVRTC_4BPP", 4, true},
                                         {"R5G6B5", 16, false},
                                         {"R5G5B5A1", 16, false},
                                         {"R4G4B4A4", 16, false},
                                         {"BLOCK4X4", 4, true}};
static_assert(sizeof(DESCRIPTIONS) / sizeof(DESCRIPTIONS[0]) == PIXEL_FORMAT_COUNT);

constexpr const CDescription& Describe(PixelFormat eFormat)
{
    return DESCRIPTIONS[PixelFormatBit(eFormat) != 0 ? eFormat : PIXEL_FORMAT_NONE];
}
} // namespace PixelFormatDetail

// For a value that is no format: "none", 0 bits, not compressed.
constexpr const char* PixelFormatName(PixelFormat eFormat)
{
    return PixelFormatDetail::Describe(eFormat).m_szName;
}
constexpr int32_t PixelFormatBitsPerPixel(PixelFormat eFormat)
{
    return PixelFormatDetail::Describe(eFormat).m_nBitsPerPixel;
}
constexpr bool PixelFormatIsCompressed(PixelFormat eFormat)
{
    return PixelFormatDetail::Describe(eFormat).m_bCompressed;
}
constexpr bool PixelFormatIs16bit(PixelFormat eFormat) { return PixelFormatBitsPerPixel(eFormat) == 16; }
