#include "qdscenegraph/texture/CImage.h"

#include <limits>

namespace
{

// Width and height are 16-bit fields of a texture.
constexpr uint32_t MAX_SIDE = std::numeric_limits<uint16_t>::max();

} // namespace

bool CImage::Allocate(PixelFormat eFormat, uint32_t uiWidth, uint32_t uiHeight, int32_t nLevels,
                      uint64_t uiMaxPixels, CQDString& rReason)
{
    const CQDString strSize = std::to_string(uiWidth) + " by " + std::to_string(uiHeight) + " pixels";
    if (uiWidth == 0 || uiHeight == 0 || uiWidth > MAX_SIDE || uiHeight > MAX_SIDE)
    {
        rReason = strSize + ", sides of 1 to " + std::to_string(MAX_SIDE) + " are supported";
        return false;
    }
    if (uint64_t{uiWidth} * uiHeight > uiMaxPixels)
    {
        rReason = strSize + " are more than the file can hold";
        return false;
    }
    m_nWidth = static_cast<int32_t>(uiWidth);
    m_nHeight = static_cast<int32_t>(uiHeight);
    m_nLevels = nLevels;
    const int32_t nBits = PixelFormatBitsPerPixel(eFormat);
    int64_t nSize = 0;
    for (int32_t nLevel = 0; nLevel < nLevels; ++nLevel)
    {
        int32_t nLevelSize = 0;
        nSize += CSGPixelBuffer::CalcLevelSize(eFormat, m_nWidth, m_nHeight, nLevel, nBits, nLevelSize)
                     ? nLevelSize
                     : std::numeric_limits<int32_t>::max();
    }
    if (nSize >= std::numeric_limits<int32_t>::max())
    {
        rReason = strSize + " take more than 2 GB";
        return false;
    }
    m_spPixels = CSGPixelBuffer::Create(eFormat, static_cast<int32_t>(nSize * 8 / nBits));
    if (!m_spPixels)
    {
        rReason = "not enough memory for " + strSize;
    }
    return m_spPixels != nullptr;
}

size_t CImage::GetRowSize() const
{
    return static_cast<size_t>(m_nWidth) * static_cast<size_t>(m_spPixels->GetBitsPerPixel()) / 8;
}

uint8_t* CImage::EditRow(int32_t nRow) const
{
    return m_spPixels->EditData().data() + static_cast<size_t>(nRow) * GetRowSize();
}
