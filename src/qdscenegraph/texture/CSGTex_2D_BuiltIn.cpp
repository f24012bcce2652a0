// Textures that need no file.
#include "qdscenegraph/texture/CSGTex_2D.h"

#include <limits>

namespace
{

constexpr CColor BLACK = {0.0f, 0.0f, 0.0f, 1.0f};
constexpr CColor WHITE = {1.0f, 1.0f, 1.0f, 1.0f};
constexpr CColor MAGENTA = {1.0f, 0.0f, 1.0f, 1.0f};
constexpr CColor YELLOW = {1.0f, 1.0f, 0.0f, 1.0f};

constexpr int32_t MARKER_SIZE = 8;

// The best of the formats whose pixels can be set.
PixelFormat ChooseFormat(uint32_t nSupportedFormatBits)
{
    for (const PixelFormat eFormat : {PIXEL_FORMAT_R8G8B8A8, PIXEL_FORMAT_A8R8G8B8, PIXEL_FORMAT_A8B8G8R8,
                                      PIXEL_FORMAT_R8G8B8, PIXEL_FORMAT_L8})
    {
        if (CSGPixelBuffer::DoesRendererSupportFormat(eFormat, nSupportedFormatBits))
        {
            return eFormat;
        }
    }
    Log(QD_SCENEGRAPH, LOG_ERROR, "Renderer doesn't support any known pixel formats.");
    return PIXEL_FORMAT_NONE;
}

} // namespace

CSGTex_2DPtr CSGTex_2D::CreateCheckerTexture(int32_t nSize, const CColor& rFirst, const CColor& rSecond,
                                             uint32_t nSupportedFormatBits)
{
    QD_CHECK(nSize > 0 && nSize <= std::numeric_limits<uint16_t>::max() / 2, nullptr);
    const PixelFormat eFormat = ChooseFormat(nSupportedFormatBits);
    if (eFormat == PIXEL_FORMAT_NONE)
    {
        return nullptr;
    }
    const CSGPixelBufferPtr spBuffer = CSGPixelBuffer::Create(eFormat, nSize * nSize);
    QD_CHECK_CREATED(spBuffer, nullptr);
    for (int32_t nPixel = 0; nPixel < spBuffer->GetNumPixels(); ++nPixel)
    {
        const bool bSecond = (nPixel / nSize / 2 + nPixel % nSize / 2) % 2 != 0;
        spBuffer->SetColor(nPixel, bSecond ? rSecond : rFirst);
    }
    // Never changes: textures begin that way.
    return Create(eFormat, nSize, nSize, 1, nSize, nSize, spBuffer);
}

CSGTex_2DPtr CSGTex_2D::GetTextureFailedToLoad()
{
    static const CSGTex_2DPtr s_spTexture = CreateCheckerTexture(MARKER_SIZE, MAGENTA, BLACK);
    return s_spTexture;
}

CSGTex_2DPtr CSGTex_2D::GetTextureNonPowerOfTwo()
{
    static const CSGTex_2DPtr s_spTexture = CreateCheckerTexture(MARKER_SIZE, YELLOW, BLACK);
    return s_spTexture;
}

CSGTex_2DPtr CSGTex_2D::GetTextureSinglePixel()
{
    static const CSGTex_2DPtr s_spTexture = CreateCheckerTexture(1, WHITE, WHITE);
    return s_spTexture;
}
