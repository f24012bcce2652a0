#include "qdscenegraph/texture/CPackedPixels.h"

#include <algorithm>
#include <bit>

bool CPackedPixels::Init(const CMasks& rMasks, size_t nBytesPerPixel)
{
    m_nBytesPerPixel = nBytesPerPixel;
    m_bWholeBytes = true;
    for (size_t n = 0; n < rMasks.size(); ++n)
    {
        const uint32_t uiMask = rMasks[n];
        const int nLowest = uiMask != 0 ? std::countr_zero(uiMask) : 0;
        const int nBits = std::popcount(uiMask);
        if (uiMask != 0 && (std::popcount((uiMask >> nLowest) + 1) > 1 ||
                            nLowest + nBits > 8 * static_cast<int>(nBytesPerPixel)))
        {
            return false;
        }
        CChannel& rChannel = m_arrChannels[n];
        rChannel.m_uiMask = uiMask;
        rChannel.m_nShift = nLowest + std::max(nBits - 8, 0);
        m_bWholeBytes = m_bWholeBytes && (nBits == 8 || (nBits == 0 && n == 3)) && nLowest % 8 == 0;
        const uint32_t uiMax = (1u << std::min(nBits, 8)) - 1;
        for (uint32_t ui = 1; ui <= uiMax; ++ui)
        {
            rChannel.m_arrValues[ui] = static_cast<uint8_t>((ui * 255 + uiMax / 2) / uiMax);
        }
    }
    const bool bGrey = rMasks[0] != 0 && rMasks[0] == rMasks[1] && rMasks[0] == rMasks[2];
    m_eFormat = rMasks[3] != 0 ? PIXEL_FORMAT_R8G8B8A8 : bGrey ? PIXEL_FORMAT_L8 : PIXEL_FORMAT_R8G8B8;
    return true;
}

void CPackedPixels::Unpack(const uint8_t* pPacked, size_t nPixels, uint8_t* pPixels) const
{
    switch (m_nBytesPerPixel)
    {
    case 1:
        return UnpackWords<1>(pPacked, nPixels, pPixels);
    case 2:
        return UnpackWords<2>(pPacked, nPixels, pPixels);
    case 3:
        return UnpackWords<3>(pPacked, nPixels, pPixels);
    default:
        return UnpackWords<4>(pPacked, nPixels, pPixels);
    }
}

template <size_t BYTES>
void CPackedPixels::UnpackWords(const uint8_t* pPacked, size_t nPixels, uint8_t* pPixels) const
{
    switch (m_eFormat)
    {
    case PIXEL_FORMAT_L8:
        return UnpackChannels<BYTES, 1>(pPacked, nPixels, pPixels);
    case PIXEL_FORMAT_R8G8B8:
        return UnpackChannels<BYTES, 3>(pPacked, nPixels, pPixels);
    default:
        return UnpackChannels<BYTES, 4>(pPacked, nPixels, pPixels);
    }
}

template <size_t BYTES, size_t CHANNELS>
void CPackedPixels::UnpackChannels(const uint8_t* pPacked, size_t nPixels, uint8_t* pPixels) const
{
    if (m_bWholeBytes)
    {
        std::array<size_t, CHANNELS> arrBytes = {};
        for (size_t n = 0; n < CHANNELS; ++n)
        {
            arrBytes[n] = static_cast<size_t>(m_arrChannels[n].m_nShift / 8);
        }
        for (; nPixels > 0; --nPixels, pPacked += BYTES, pPixels += CHANNELS)
        {
            for (size_t n = 0; n < CHANNELS; ++n)
            {
                pPixels[n] = pPacked[arrBytes[n]];
            }
        }
        return;
    }
    for (; nPixels > 0; --nPixels, pPacked += BYTES, pPixels += CHANNELS)
    {
        const uint32_t uiWord = ReadWord(pPacked, BYTES);
        for (size_t n = 0; n < CHANNELS; ++n)
        {
            const CChannel& rChannel = m_arrChannels[n];
            pPixels[n] = rChannel.m_arrValues[(uiWord & rChannel.m_uiMask) >> rChannel.m_nShift];
        }
    }
}
