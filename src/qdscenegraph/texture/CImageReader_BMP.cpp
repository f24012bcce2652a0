#include "qdscenegraph/texture/CImageReader_BMP.h"

#include "qdscenegraph/texture/CPackedPixels.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr size_t FILE_HEADER_SIZE = 14;
constexpr uint32_t CORE_HEADER_SIZE = 12; // that of OS/2, with fields of 16 bits
constexpr uint32_t INFO_HEADER_SIZE = 40;
constexpr uint32_t ALPHA_HEADER_SIZE = 56; // this and later ones have a mask of alpha
constexpr uint32_t HEADER_SIZES[] = {CORE_HEADER_SIZE, INFO_HEADER_SIZE, 52, ALPHA_HEADER_SIZE, 64, 108, 124};

enum ECompression : uint32_t
{
    COMPRESSION_NONE = 0,
    COMPRESSION_BIT_FIELDS = 3,
    COMPRESSION_BIT_FIELDS_ALPHA = 6
};

struct CHeader
{
    uint32_t m_uiSize = 0; // of the second header
    uint32_t m_uiPixels = 0;
    uint32_t m_uiWidth = 0;
    uint32_t m_uiHeight = 0;
    bool m_bTopDown = false;
    uint32_t m_uiBits = 0;
    uint32_t m_uiCompression = COMPRESSION_NONE;
    uint32_t m_uiColors = 0;

    bool IsPalette() const { return m_uiBits <= 8; }
    bool HasBitFields() const { return m_uiCompression != COMPRESSION_NONE; }
    // The masks of the oldest header with bit fields stand behind it.
    size_t GetMasksSize() const
    {
        return m_uiSize != INFO_HEADER_SIZE || !HasBitFields()   ? 0
               : m_uiCompression == COMPRESSION_BIT_FIELDS_ALPHA ? 16
                                                                 : 12;
    }
    size_t GetPaletteOffset() const { return FILE_HEADER_SIZE + m_uiSize + GetMasksSize(); }
    size_t GetPaletteEntrySize() const { return m_uiSize == CORE_HEADER_SIZE ? 3 : 4; }
    // Rows are filled up to 32 bits.
    uint64_t GetRowSize() const { return (uint64_t{m_uiWidth} * m_uiBits + 31) / 32 * 4; }
};

bool ReadHeader(std::span<const uint8_t> arrFile, CHeader& rHeader, CQDString& rReason)
{
    const auto Word = [&](size_t nOffset, size_t nBytes = 4) {
        return CPackedPixels::ReadWord(arrFile.data() + nOffset, nBytes);
    };
    rReason = "the file ends early";
    if (arrFile.size() < FILE_HEADER_SIZE + 4)
    {
        return false;
    }
    rHeader.m_uiPixels = Word(10);
    rHeader.m_uiSize = Word(14);
    if (std::ranges::find(HEADER_SIZES, rHeader.m_uiSize) == std::end(HEADER_SIZES))
    {
        rReason = "a header of " + std::to_string(rHeader.m_uiSize) + " bytes";
        return false;
    }
    if (rHeader.m_uiSize > arrFile.size() - FILE_HEADER_SIZE)
    {
        return false;
    }
    if (rHeader.m_uiSize == CORE_HEADER_SIZE)
    {
        rHeader.m_uiWidth = Word(18, 2);
        rHeader.m_uiHeight = Word(20, 2);
        rHeader.m_uiBits = Word(24, 2);
        return true;
    }
    rHeader.m_uiWidth = Word(18);
    rHeader.m_uiHeight = Word(22);
    rHeader.m_bTopDown = (rHeader.m_uiHeight & 0x80000000) != 0;
    rHeader.m_uiHeight = rHeader.m_bTopDown ? 0u - rHeader.m_uiHeight : rHeader.m_uiHeight;
    rHeader.m_uiBits = Word(28, 2);
    rHeader.m_uiCompression = Word(30);
    rHeader.m_uiColors = Word(46);
    return rHeader.GetPaletteOffset() <= arrFile.size();
}

bool VerifyHeader(const CHeader& rHeader, std::span<const uint8_t> arrFile, CQDString& rReason)
{
    constexpr uint32_t BITS[] = {1, 4, 8, 16, 24, 32};
    if (std::ranges::find(BITS, rHeader.m_uiBits) == std::end(BITS))
    {
        rReason = std::to_string(rHeader.m_uiBits) + " bits per pixel are not supported";
        return false;
    }
    const bool bWords = rHeader.m_uiBits == 16 || rHeader.m_uiBits == 32;
    if (rHeader.HasBitFields() && (!bWords || (rHeader.m_uiCompression != COMPRESSION_BIT_FIELDS &&
                                               rHeader.m_uiCompression != COMPRESSION_BIT_FIELDS_ALPHA)))
    {
        rReason = "compression " + std::to_string(rHeader.m_uiCompression) + " at " +
                  std::to_string(rHeader.m_uiBits) + " bits per pixel is not supported";
        return false;
    }
    // Some writers leave the last row without its filling.
    const uint64_t uiFilling =
        rHeader.GetRowSize() - (uint64_t{rHeader.m_uiWidth} * rHeader.m_uiBits + 7) / 8;
    if (rHeader.m_uiPixels > arrFile.size() ||
        (rHeader.m_uiHeight > 0 && rHeader.GetRowSize() > 0 &&
         (arrFile.size() - rHeader.m_uiPixels + uiFilling) / rHeader.GetRowSize() < rHeader.m_uiHeight))
    {
        rReason = "the file ends early";
        return false;
    }
    return true;
}

CPackedPixels::CMasks GetMasks(const CHeader& rHeader, const uint8_t* pFile)
{
    if (!rHeader.HasBitFields())
    {
        return rHeader.m_uiBits == 16 ? CPackedPixels::CMasks{0x7C00, 0x03E0, 0x001F, 0}
                                      : CPackedPixels::CMasks{0xFF0000, 0x00FF00, 0x0000FF, 0};
    }
    const bool bAlpha = rHeader.m_uiSize >= ALPHA_HEADER_SIZE || rHeader.GetMasksSize() == 16;
    const uint8_t* pMasks = pFile + FILE_HEADER_SIZE + INFO_HEADER_SIZE;
    return {CPackedPixels::ReadWord(pMasks, 4), CPackedPixels::ReadWord(pMasks + 4, 4),
            CPackedPixels::ReadWord(pMasks + 8, 4), bAlpha ? CPackedPixels::ReadWord(pMasks + 12, 4) : 0};
}

// Where each row of the image, counted from its top, begins in the file.
const uint8_t* GetFileRow(const CHeader& rHeader, const uint8_t* pFile, uint32_t uiRow)
{
    return pFile + rHeader.m_uiPixels +
           (rHeader.m_bTopDown ? uiRow : rHeader.m_uiHeight - 1 - uiRow) * rHeader.GetRowSize();
}

bool ReadIndexed(const CHeader& rHeader, std::span<const uint8_t> arrFile, CImage& rImage, CQDString& rReason)
{
    const uint32_t uiMaxColors = 1u << rHeader.m_uiBits;
    const uint32_t uiColors =
        rHeader.m_uiColors == 0 ? uiMaxColors : std::min(rHeader.m_uiColors, uiMaxColors);
    if ((arrFile.size() - rHeader.GetPaletteOffset()) / rHeader.GetPaletteEntrySize() < uiColors)
    {
        rReason = "the file ends early";
        return false;
    }
    uint8_t arrPalette[256 * 3];
    CPackedPixels objEntries;
    objEntries.Init({0xFF0000, 0x00FF00, 0x0000FF, 0}, rHeader.GetPaletteEntrySize());
    objEntries.Unpack(arrFile.data() + rHeader.GetPaletteOffset(), uiColors, arrPalette);
    const uint32_t uiMask = uiMaxColors - 1;
    for (uint32_t uiRow = 0; uiRow < rHeader.m_uiHeight; ++uiRow)
    {
        const uint8_t* pRow = GetFileRow(rHeader, arrFile.data(), uiRow);
        uint8_t* pPixel = rImage.EditRow(static_cast<int32_t>(uiRow));
        for (uint32_t uiBit = 0; uiBit < rHeader.m_uiWidth * rHeader.m_uiBits; uiBit += rHeader.m_uiBits)
        {
            const uint32_t uiIndex = (pRow[uiBit / 8] >> (8 - rHeader.m_uiBits - uiBit % 8)) & uiMask;
            if (uiIndex >= uiColors)
            {
                rReason = "color " + std::to_string(uiIndex) + " of a palette of " + std::to_string(uiColors);
                return false;
            }
            std::memcpy(pPixel, arrPalette + uiIndex * 3, 3);
            pPixel += 3;
        }
    }
    return true;
}

} // namespace

bool CImageReader_BMP::Read(std::span<const uint8_t> arrFile, CImage& rImage, CQDString& rReason)
{
    CHeader objHeader;
    if (!ReadHeader(arrFile, objHeader, rReason) || !VerifyHeader(objHeader, arrFile, rReason))
    {
        return false;
    }
    CPackedPixels objPixels;
    if (!objHeader.IsPalette() &&
        !objPixels.Init(GetMasks(objHeader, arrFile.data()), objHeader.m_uiBits / 8))
    {
        rReason = "bit fields that are not runs of bits";
        return false;
    }
    const PixelFormat eFormat = objHeader.IsPalette() ? PIXEL_FORMAT_R8G8B8 : objPixels.GetFormat();
    if (!rImage.Allocate(eFormat, objHeader.m_uiWidth, objHeader.m_uiHeight, 1, arrFile.size() * 8, rReason))
    {
        return false;
    }
    if (objHeader.IsPalette())
    {
        return ReadIndexed(objHeader, arrFile, rImage, rReason);
    }
    for (uint32_t uiRow = 0; uiRow < objHeader.m_uiHeight; ++uiRow)
    {
        objPixels.Unpack(GetFileRow(objHeader, arrFile.data(), uiRow), objHeader.m_uiWidth,
                         rImage.EditRow(static_cast<int32_t>(uiRow)));
    }
    return true;
}
