// Drawing on two-dimensional textures.
#include "qdscenegraph/texture/CSGTex_2D.h"

#include <cstring>

// The part of level 0 that an image covers, and where that part begins in the image.
struct CSGTex_2D::CClip
{
    size_t m_nWidth, m_nHeight; // 0 when nothing is covered
    size_t m_nU, m_nV;          // in the texture
    size_t m_nSourceU, m_nSourceV;
};

namespace
{

struct CInterval
{
    size_t m_nLength;
    size_t m_nBegin;
    size_t m_nSourceBegin;
};

CInterval Intersect(int64_t nBegin, int64_t nLength, int64_t nAvailable)
{
    const int64_t nFirst = std::max<int64_t>(nBegin, 0);
    const int64_t nLast = std::min(nBegin + nLength, nAvailable);
    if (nFirst >= nLast)
    {
        return {0, 0, 0};
    }
    return {static_cast<size_t>(nLast - nFirst), static_cast<size_t>(nFirst),
            static_cast<size_t>(nFirst - nBegin)};
}

float Mix(float fUnder, float fOver, float fOpacity) { return fUnder + (fOver - fUnder) * fOpacity; }

} // namespace

CSGTex_2D::CClip CSGTex_2D::Clip(int32_t nU, int32_t nV, int32_t nWidth, int32_t nHeight) const
{
    const CInterval objU = Intersect(nU, nWidth, m_uiWidth);
    const CInterval objV = Intersect(nV, nHeight, m_uiHeight);
    return {objU.m_nLength, objV.m_nLength,      objU.m_nBegin,
            objV.m_nBegin,  objU.m_nSourceBegin, objV.m_nSourceBegin};
}

bool CSGTex_2D::VerifyCanDraw() const
{
    QD_CHECK(GetChangeFrequency() != CHANGE_FREQ_NEVER, false);
    QD_CHECK_NOT_NULL(m_spBuffer, false);
    return true;
}

bool CSGTex_2D::Fill(const CColor& rObjColor)
{
    if (!VerifyCanDraw() || !m_spBuffer->SetColor(0, rObjColor))
    {
        return false;
    }
    // What has been filled is the pattern of the next, twice as long piece.
    const std::span<uint8_t> arrData = m_spBuffer->EditData();
    size_t nFilled = static_cast<size_t>(m_spBuffer->GetBitsPerPixel() / 8);
    while (nFilled < arrData.size())
    {
        const size_t nCount = std::min(nFilled, arrData.size() - nFilled);
        std::memcpy(&arrData[nFilled], arrData.data(), nCount);
        nFilled += nCount;
    }
    SetHasChanged(true);
    return true;
}

bool CSGTex_2D::DrawTexture(int32_t nU, int32_t nV, const CSGTex_2D* pTexture)
{
    QD_CHECK_ARG(pTexture, false);
    QD_CHECK_NOT_NULL(pTexture->m_spBuffer, false);
    if (!VerifyCanDraw())
    {
        return false;
    }
    QD_CHECK(pTexture->m_spBuffer != m_spBuffer, false);
    QD_CHECK(!PixelFormatIsCompressed(GetFormat()), false);
    const CClip objClip = Clip(nU, nV, pTexture->m_uiWidth, pTexture->m_uiHeight);
    const bool bSameFormat = pTexture->GetFormat() == GetFormat();
    const size_t nBytesEach = static_cast<size_t>(m_spBuffer->GetBitsPerPixel() / 8);
    for (size_t y = 0; y < objClip.m_nHeight; ++y)
    {
        const size_t nSource = (objClip.m_nSourceV + y) * pTexture->m_uiWidth + objClip.m_nSourceU;
        const size_t nDest = (objClip.m_nV + y) * m_uiWidth + objClip.m_nU;
        if (bSameFormat)
        {
            if (objClip.m_nWidth > 0)
            {
                std::memcpy(&m_spBuffer->EditData()[nDest * nBytesEach],
                            &pTexture->m_spBuffer->GetData()[nSource * nBytesEach],
                            objClip.m_nWidth * nBytesEach);
            }
            continue;
        }
        for (size_t x = 0; x < objClip.m_nWidth; ++x)
        {
            CColor objColor;
            if (!pTexture->m_spBuffer->GetColor(static_cast<int32_t>(nSource + x), objColor) ||
                !m_spBuffer->SetColor(static_cast<int32_t>(nDest + x), objColor))
            {
                return false;
            }
        }
    }
    SetHasChanged(true);
    return true;
}

bool CSGTex_2D::DrawGlyph(int32_t nU, int32_t nV, std::span<const uint8_t> arrCoverage, int32_t nGlyphWidth,
                          int32_t nGlyphHeight, const CColor& rObjColor)
{
    QD_CHECK(nGlyphWidth >= 0 && nGlyphHeight >= 0, false);
    QD_CHECK(arrCoverage.size() == static_cast<size_t>(nGlyphWidth) * static_cast<size_t>(nGlyphHeight),
             false);
    if (!VerifyCanDraw())
    {
        return false;
    }
    const CClip objClip = Clip(nU, nV, nGlyphWidth, nGlyphHeight);
    for (size_t y = 0; y < objClip.m_nHeight; ++y)
    {
        const uint8_t* pCoverage = &arrCoverage[(objClip.m_nSourceV + y) * static_cast<size_t>(nGlyphWidth)];
        for (size_t x = 0; x < objClip.m_nWidth; ++x)
        {
            const auto nPixel = static_cast<int32_t>((objClip.m_nV + y) * m_uiWidth + objClip.m_nU + x);
            CColor objColor;
            if (!m_spBuffer->GetColor(nPixel, objColor))
            {
                return false;
            }
            const float fOpacity =
                static_cast<float>(pCoverage[objClip.m_nSourceU + x]) / 255.0f * rObjColor.a;
            m_spBuffer->SetColor(
                nPixel, {Mix(objColor.r, rObjColor.r, fOpacity), Mix(objColor.g, rObjColor.g, fOpacity),
                         Mix(objColor.b, rObjColor.b, fOpacity), Mix(objColor.a, 1.0f, fOpacity)});
        }
    }
    SetHasChanged(true);
    return true;
}
