#include "qdscenegraph/texture/CSGTex_2D.h"

#include <limits>

CSGTypeInfo<CSGTexture> CSGTex_2D::ms_objTypeInfo(CSGTex_2D::SG_TYPE_NAME);

namespace
{

// The bytes of all levels; negative when there are no such levels.
int64_t CalcTotalSize(PixelFormat eFormat, int32_t nWidth, int32_t nHeight, int32_t nLevels,
                      int32_t nBitsPerPixel)
{
    int64_t nTotal = 0;
    for (int32_t nLevel = 0; nLevel < nLevels; ++nLevel)
    {
        int32_t nSize = 0;
        if (!CSGPixelBuffer::CalcLevelSize(eFormat, nWidth, nHeight, nLevel, nBitsPerPixel, nSize))
        {
            return -1;
        }
        nTotal += nSize;
    }
    return nTotal;
}

} // namespace

CSGTex_2DPtr CSGTex_2D::Create(PixelFormat eFormat, int32_t nWidth, int32_t nHeight, int32_t nLevels,
                               int32_t nPaddedWidth, int32_t nPaddedHeight, const CSGPixelBufferPtr& spBuffer)
{
    QD_CHECK(eFormat != PIXEL_FORMAT_NONE, nullptr);
    QD_CHECK(nWidth > 0, nullptr);
    QD_CHECK(nHeight > 0, nullptr);
    QD_CHECK(nLevels > 0, nullptr);
    QD_CHECK(nPaddedWidth || nPaddedHeight, nullptr);
    QD_CHECK_ARG(spBuffer, nullptr);
    QD_CHECK(nPaddedWidth == 0 || nPaddedWidth >= nWidth, nullptr);
    QD_CHECK(nPaddedHeight == 0 || nPaddedHeight >= nHeight, nullptr);
    QD_CHECK(spBuffer->GetFormat() == eFormat, nullptr);
    const CSGTex_2DPtr spTexture = CSGMem::Construct<CSGTex_2D>();
    QD_CHECK_CREATED(spTexture, nullptr);
    if (!spTexture->SetLayout(nPaddedWidth != 0 ? nPaddedWidth : nWidth,
                              nPaddedHeight != 0 ? nPaddedHeight : nHeight, nLevels))
    {
        return nullptr;
    }
    spTexture->TakeBuffer(spBuffer);
    return spTexture->VerifyBuffer() ? spTexture : nullptr;
}

bool CSGTex_2D::SetPixels(int32_t nWidth, int32_t nHeight, int32_t nLevels, const CSGPixelBufferPtr& spBuffer)
{
    QD_CHECK_ARG(spBuffer, false);
    const CSGTex_2DPtr spNew =
        Create(spBuffer->GetFormat(), nWidth, nHeight, nLevels, nWidth, nHeight, spBuffer);
    QD_CHECK_CREATED(spNew, false);
    m_uiWidth = spNew->m_uiWidth;
    m_uiHeight = spNew->m_uiHeight;
    m_nNumLevels = spNew->m_nNumLevels;
    TakeBuffer(spBuffer);
    SetHasChanged(true);
    return true;
}

bool CSGTex_2D::SetLayout(int32_t nWidth, int32_t nHeight, int32_t nLevels)
{
    QD_CHECK(nWidth > 0 && nWidth <= std::numeric_limits<uint16_t>::max(), false);
    QD_CHECK(nHeight > 0 && nHeight <= std::numeric_limits<uint16_t>::max(), false);
    QD_CHECK(nLevels > 0 && nLevels <= std::numeric_limits<uint8_t>::max(), false);
    m_uiWidth = static_cast<uint16_t>(nWidth);
    m_uiHeight = static_cast<uint16_t>(nHeight);
    m_nNumLevels = static_cast<uint8_t>(nLevels);
    return true;
}

void CSGTex_2D::TakeBuffer(const CSGPixelBufferPtr& spBuffer)
{
    m_spBuffer = spBuffer;
    m_eLastFormat = spBuffer->GetFormat();
    m_nLastBPP = spBuffer->GetBitsPerPixel();
}

bool CSGTex_2D::VerifyBuffer() const
{
    QD_CHECK_NOT_NULL(m_spBuffer, false);
    const int64_t nLevelsSize = CalcTotalSize(m_eLastFormat, m_uiWidth, m_uiHeight, m_nNumLevels, m_nLastBPP);
    if (nLevelsSize < 0 || nLevelsSize > GetTotalSize())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "A buffer of %d bytes is too small for %d x %d pixels and levels: %d.",
            GetTotalSize(), m_uiWidth, m_uiHeight, m_nNumLevels);
        return false;
    }
    return true;
}

CSGTextureLayout CSGTex_2D::GetLayout() const { return {m_uiWidth, m_uiHeight, m_nNumLevels, GetFormat()}; }

int32_t CSGTex_2D::GetTotalSize() const
{
    return m_spBuffer ? static_cast<int32_t>(m_spBuffer->GetData().size()) : 0;
}

int32_t CSGTex_2D::GetLastTotalSize() const
{
    // No more than the buffer had.
    return static_cast<int32_t>(
        std::max<int64_t>(CalcTotalSize(m_eLastFormat, m_uiWidth, m_uiHeight, m_nNumLevels, m_nLastBPP), 0));
}

int32_t CSGTex_2D::GetRowSize() const
{
    return m_spBuffer ? (m_uiWidth * m_spBuffer->GetBitsPerPixel() + 7) / 8 : 0;
}

int32_t CSGTex_2D::GetLevelSize(int32_t nLevel) const
{
    QD_CHECK_NOT_NULL(m_spBuffer, 0);
    int32_t nSize = 0;
    QD_CHECK_CALL(CSGPixelBuffer::CalcLevelSize(GetFormat(), m_uiWidth, m_uiHeight, nLevel,
                                                m_spBuffer->GetBitsPerPixel(), nSize),
                  0);
    return nSize;
}

const uint8_t* CSGTex_2D::GetLevelDataPtr(int32_t nLevel) const
{
    QD_CHECK_NOT_NULL(m_spBuffer, nullptr);
    QD_CHECK(nLevel >= 0, nullptr);
    QD_CHECK(nLevel < m_nNumLevels, nullptr);
    const int64_t nOffset =
        CalcTotalSize(GetFormat(), m_uiWidth, m_uiHeight, nLevel, m_spBuffer->GetBitsPerPixel());
    QD_CHECK(nOffset < GetTotalSize(), nullptr);
    return GetDataPtr() + nOffset;
}

bool CSGTex_2D::VerifyPixel(int32_t nU, int32_t nV) const
{
    const int32_t nWidth = m_uiWidth;
    const int32_t nHeight = m_uiHeight;
    QD_CHECK(nU >= 0, false);
    QD_CHECK(nV >= 0, false);
    QD_CHECK(nU < nWidth, false);
    QD_CHECK(nV < nHeight, false);
    QD_CHECK_NOT_NULL(m_spBuffer, false);
    return true;
}

bool CSGTex_2D::GetPixelColor(int32_t nU, int32_t nV, CColor& rObjColor) const
{
    return VerifyPixel(nU, nV) && m_spBuffer->GetColor(CalcPixelOffset(nU, nV), rObjColor);
}

bool CSGTex_2D::SetPixelColor(int32_t nU, int32_t nV, const CColor& rObjColor)
{
    QD_CHECK(GetChangeFrequency() != CHANGE_FREQ_NEVER, false);
    if (!VerifyPixel(nU, nV) || !m_spBuffer->SetColor(CalcPixelOffset(nU, nV), rObjColor))
    {
        return false;
    }
    SetHasChanged(true);
    return true;
}

bool CSGTex_2D::Reload(CSGTextureLoader* pTextureLoader)
{
    QD_CHECK_NOT_NULL(m_spReloadHandler, false);
    QD_CHECK_OR_RETURN(m_spReloadHandler->Reload(pTextureLoader, this), "Call %s failed",
                       "m_spReloadHandler->Reload(pTextureLoader,this)", false);
    return true;
}

const CQDString& CSGTex_2D::GetSourceName() const
{
    static const CQDString s_strNone;
    return m_spReloadHandler ? m_spReloadHandler->GetFilename() : s_strNone;
}

void CSGTex_2D::OutputDebugInfo(const CQDString& rIndent) const
{
    CSGTexture::OutputDebugInfo(rIndent);
    Log(QD_SCENEGRAPH, LOG_INFO, "%s  Dim: [%d x %d]", rIndent, m_uiWidth, m_uiHeight);
    if (m_spBuffer)
    {
        m_spBuffer->OutputDebugInfo(rIndent + "  ");
    }
}
