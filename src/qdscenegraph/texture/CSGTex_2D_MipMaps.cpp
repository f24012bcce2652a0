// The smaller levels of two-dimensional textures.
#include "qdscenegraph/texture/CSGTex_2D.h"

#include <bit>
#include <limits>

namespace
{

// Each byte of the smaller level is the mean of its channel in two by two pixels. An image one pixel wide or
// high gives each of its pixels twice.
template <size_t BYTES>
void HalveLevel(const uint8_t* pSource, size_t nWidth, size_t nHeight, uint8_t* pDest)
{
    const size_t nRowSize = nWidth * BYTES;
    const size_t nRight = nWidth > 1 ? BYTES : 0;
    const size_t nBelow = nHeight > 1 ? nRowSize : 0;
    const size_t nDestWidth = std::max<size_t>(nWidth / 2, 1);
    const size_t nDestHeight = std::max<size_t>(nHeight / 2, 1);
    for (size_t y = 0; y < nDestHeight; ++y)
    {
        const uint8_t* pUpper = pSource + 2 * y * nRowSize;
        const uint8_t* pLower = pUpper + nBelow;
        for (size_t x = 0; x < nDestWidth; ++x)
        {
            for (size_t n = 0; n < BYTES; ++n)
            {
                const unsigned uiSum = pUpper[n] + pUpper[n + nRight] + pLower[n] + pLower[n + nRight];
                pDest[n] = static_cast<uint8_t>((uiSum + 2) / 4);
            }
            pUpper += 2 * BYTES;
            pLower += 2 * BYTES;
            pDest += BYTES;
        }
    }
}

} // namespace

bool CSGTex_2D::GenerateMipMaps()
{
    if (m_nNumLevels > 1)
    {
        Log(QD_SCENEGRAPH, LOG_WARNING, "%d levels already exist. Nothing being done.", m_nNumLevels);
        return true;
    }
    if (ShouldAutoGenMipMapLevels())
    {
        QD_CHECK_FAILED("%s is false", "ShouldAutoGenMipMapLevels() == false");
        Log(QD_SCENEGRAPH, LOG_WARNING, "autogeneration already enabled. Nothing being done.");
        return true;
    }
    if (PixelFormatIsCompressed(GetFormat()))
    {
        Log(QD_SCENEGRAPH, LOG_WARNING, "GenerateMipMaps not implemented here for compressed textures.");
        return true;
    }
    QD_CHECK_NOT_NULL(m_spBuffer, false);
    const size_t nBytesEach = static_cast<size_t>(m_spBuffer->GetBitsPerPixel() / 8);
    const auto fnHalveLevel = nBytesEach == 1   ? HalveLevel<1>
                              : nBytesEach == 3 ? HalveLevel<3>
                              : nBytesEach == 4 ? HalveLevel<4>
                                                : nullptr;
    CColor colSource;
    if (!m_spBuffer->GetColor(0, colSource) || fnHalveLevel == nullptr)
    {
        QD_CHECK_FAILED("Call %s failed",
                        "m_spBuffer->GetColor( CalcPixelOffset(sx, sy, nWidth, nHeight), colSource)");
        return false;
    }

    size_t nWidth = m_uiWidth;
    size_t nHeight = m_uiHeight;
    const auto nLevels = static_cast<size_t>(std::bit_width(std::max(nWidth, nHeight)));
    size_t nPixels = 0;
    for (size_t nLevel = 0; nLevel < nLevels; ++nLevel)
    {
        nPixels += std::max<size_t>(nWidth >> nLevel, 1) * std::max<size_t>(nHeight >> nLevel, 1);
    }
    QD_CHECK(nPixels <= static_cast<size_t>(std::numeric_limits<int32_t>::max()), false);
    const CSGPixelBufferPtr spBuffer = CSGPixelBuffer::Create(GetFormat(), static_cast<int32_t>(nPixels));
    QD_CHECK_CREATED(spBuffer, false);

    uint8_t* pLevel = spBuffer->EditData().data();
    std::copy_n(m_spBuffer->GetData().data(), nWidth * nHeight * nBytesEach, pLevel);
    while (nWidth > 1 || nHeight > 1)
    {
        uint8_t* pNext = pLevel + nWidth * nHeight * nBytesEach;
        fnHalveLevel(pLevel, nWidth, nHeight, pNext);
        pLevel = pNext;
        nWidth = std::max<size_t>(nWidth / 2, 1);
        nHeight = std::max<size_t>(nHeight / 2, 1);
    }
    m_nNumLevels = static_cast<uint8_t>(nLevels);
    TakeBuffer(spBuffer);
    SetHasChanged(true);
    return true;
}
