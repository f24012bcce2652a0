// Pixel buffers and the formats that a renderer takes.
#include "qdscenegraph/texture/CSGPixelBuffer.h"

#include <array>
#include <string_view>

namespace
{

constexpr PixelFormat FORMATS_32BIT[] = {PIXEL_FORMAT_R8G8B8A8, PIXEL_FORMAT_A8R8G8B8, PIXEL_FORMAT_A8B8G8R8};

bool Is32BitRGBA(PixelFormat eFormat) { return PixelFormatBitsPerPixel(eFormat) == 32; }

// Behaviours of the renderer, by their values. Without graphics the bytes lie as image files have them.
constexpr int32_t BEHAVIOR_NO_GRAPHICS = 0;

PixelFormat GetPreferredPixelFormat(int32_t nRendererBehavior, PixelFormat eWithoutGraphics)
{
    if (nRendererBehavior != BEHAVIOR_NO_GRAPHICS)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Unknown renderer behavior %d", nRendererBehavior);
        return PIXEL_FORMAT_NONE;
    }
    return eWithoutGraphics;
}

} // namespace

PixelFormat CSGPixelBuffer::GetPreferredPixelFormatWithColor(int32_t nRendererBehavior)
{
    return GetPreferredPixelFormat(nRendererBehavior, PIXEL_FORMAT_R8G8B8);
}

PixelFormat CSGPixelBuffer::GetPreferredPixelFormatWithColorAndAlpha(int32_t nRendererBehavior)
{
    return GetPreferredPixelFormat(nRendererBehavior, PIXEL_FORMAT_R8G8B8A8);
}

bool CSGPixelBuffer::DoesRendererSupportFormat(PixelFormat eFormat, uint32_t nSupportedFormatBits)
{
    if (nSupportedFormatBits == 0)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "nSupportedFormatBits was not specified.");
        return false;
    }
    return (nSupportedFormatBits & PixelFormatBit(eFormat)) != 0;
}

CSGPixelBufferPtr CSGPixelBuffer::ConvertToSupportedFormat(CSGPixelBuffer* pPixelBuffer,
                                                           uint32_t nSupportedFormatBits)
{
    QD_CHECK_ARG(pPixelBuffer, nullptr);
    if (DoesRendererSupportFormat(pPixelBuffer->GetFormat(), nSupportedFormatBits))
    {
        return pPixelBuffer;
    }
    for (const PixelFormat eFormat : FORMATS_32BIT)
    {
        if (Is32BitRGBA(pPixelBuffer->GetFormat()) && (nSupportedFormatBits & PixelFormatBit(eFormat)) != 0)
        {
            return Convert32BitRGBABuffer(pPixelBuffer, eFormat);
        }
    }
    Log(QD_SCENEGRAPH, LOG_ERROR, "Don't know how to convert pixel format %d to a valid format.",
        pPixelBuffer->GetFormat());
    return nullptr;
}

CSGPixelBufferPtr CSGPixelBuffer::Convert32BitRGBABuffer(const CSGPixelBuffer* pPixelBuffer,
                                                         PixelFormat eFormat)
{
    QD_CHECK_ARG(pPixelBuffer, nullptr);
    QD_CHECK(Is32BitRGBA(pPixelBuffer->GetFormat()), nullptr);
    QD_CHECK(Is32BitRGBA(eFormat), nullptr);
    const CSGPixelBufferPtr spBuffer = Create(eFormat, pPixelBuffer->GetNumPixels());
    QD_CHECK_CREATED(spBuffer, nullptr);
    // Where the channel of each byte stands in the source; a channel is a letter and a digit of the name.
    const std::string_view strFrom = PixelFormatName(pPixelBuffer->GetFormat());
    const std::string_view strTo = PixelFormatName(eFormat);
    std::array<size_t, 4> arrFrom;
    for (size_t n = 0; n < 4; ++n)
    {
        arrFrom[n] = strFrom.find(strTo[2 * n]) / 2;
    }
    const uint8_t* pSource = pPixelBuffer->GetBlock();
    uint8_t* pDest = spBuffer->EditBlock();
    for (int32_t nPixel = 0; nPixel < spBuffer->GetNumPixels(); ++nPixel, pSource += 4, pDest += 4)
    {
        pDest[0] = pSource[arrFrom[0]];
        pDest[1] = pSource[arrFrom[1]];
        pDest[2] = pSource[arrFrom[2]];
        pDest[3] = pSource[arrFrom[3]];
    }
    return spBuffer;
}
