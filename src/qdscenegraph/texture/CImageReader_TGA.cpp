#include "qdscenegraph/texture/CImageReader_TGA.h"

#include "qdscenegraph/texture/CPackedPixels.h"

#include <SOIL/SOIL.h>

#include <algorithm>
#include <memory>
#include <new>

namespace
{

constexpr size_t HEADER_SIZE = 18;
constexpr uint8_t FLAG_RIGHT_TO_LEFT = 0x10;
constexpr uint8_t FLAGS_INTERLEAVED = 0xC0;
// A packet of two bytes repeats a grey pixel so often.
constexpr uint64_t MAX_PIXELS_PER_BYTE = 64;

enum EType : uint8_t
{
    TYPE_PALETTE = 1,
    TYPE_COLOR = 2,
    TYPE_GREY = 3,
    TYPE_FLAG_COMPRESSED = 8
};

struct CHeader
{
    explicit CHeader(const uint8_t* p)
        : m_nIdSize(p[0]),
          m_bPalette(p[1] == 1),
          m_eType(static_cast<uint8_t>(p[2] & ~TYPE_FLAG_COMPRESSED)),
          m_bCompressed((p[2] & TYPE_FLAG_COMPRESSED) != 0),
          m_nPaletteFirst(CPackedPixels::ReadWord(p + 3, 2)),
          m_nPaletteCount(CPackedPixels::ReadWord(p + 5, 2)),
          m_nPaletteBits(p[7]),
          m_nWidth(CPackedPixels::ReadWord(p + 12, 2)),
          m_nHeight(CPackedPixels::ReadWord(p + 14, 2)),
          m_nBits(p[16]),
          m_uiFlags(p[17])
    {}

    // Of the colours, which a palette holds in the place of the pixels.
    size_t GetColorBits() const { return m_eType == TYPE_PALETTE ? m_nPaletteBits : m_nBits; }
    size_t GetPixelsOffset() const
    {
        return HEADER_SIZE + m_nIdSize + (m_bPalette ? m_nPaletteCount * m_nPaletteBits / 8 : 0);
    }

    size_t m_nIdSize;
    bool m_bPalette;
    uint8_t m_eType;
    bool m_bCompressed;
    size_t m_nPaletteFirst;
    size_t m_nPaletteCount;
    size_t m_nPaletteBits;
    uint32_t m_nWidth;
    uint32_t m_nHeight;
    size_t m_nBits;
    uint8_t m_uiFlags;
};

// SOIL believes everything that the file says about itself. What it is handed has been looked through: the
// header is of a kind that it reads rightly, and every pixel and palette entry that it will touch is there.

bool VerifyHeader(const CHeader& rHeader, CQDString& rReason)
{
    const auto IsOneOf = [](size_t nValue, std::initializer_list<size_t> lstValues) {
        return std::ranges::find(lstValues, nValue) != lstValues.end();
    };
    const bool bPaletteType = rHeader.m_eType == TYPE_PALETTE;
    const bool bBits = bPaletteType                   ? rHeader.m_nBits == 8
                       : rHeader.m_eType == TYPE_GREY ? IsOneOf(rHeader.m_nBits, {8, 16})
                                                      : IsOneOf(rHeader.m_nBits, {16, 24, 32});
    if (!IsOneOf(rHeader.m_eType, {TYPE_PALETTE, TYPE_COLOR, TYPE_GREY}) || !bBits)
    {
        rReason = "type " + std::to_string(rHeader.m_eType) + " with " + std::to_string(rHeader.m_nBits) +
                  " bits per pixel is not supported";
        return false;
    }
    if (rHeader.m_bPalette != bPaletteType ||
        (bPaletteType && (rHeader.m_nPaletteFirst != 0 || rHeader.m_nPaletteCount == 0 ||
                          !IsOneOf(rHeader.m_nPaletteBits, {16, 24, 32}))))
    {
        rReason = "this kind of palette is not supported";
        return false;
    }
    if ((rHeader.m_uiFlags & FLAGS_INTERLEAVED) != 0)
    {
        rReason = "interleaved rows are not supported";
        return false;
    }
    return true;
}

bool VerifyIndices(const CHeader& rHeader, std::span<const uint8_t> arrIndices, CQDString& rReason)
{
    const uint8_t uiLargest = arrIndices.empty() ? 0 : *std::ranges::max_element(arrIndices);
    if (uiLargest >= rHeader.m_nPaletteCount)
    {
        rReason = "color " + std::to_string(uiLargest) + " of a palette of " +
                  std::to_string(rHeader.m_nPaletteCount);
        return false;
    }
    return true;
}

bool VerifyPixels(const CHeader& rHeader, std::span<const uint8_t> arrFile, CQDString& rReason)
{
    rReason = "the file ends early";
    if (rHeader.GetPixelsOffset() > arrFile.size())
    {
        return false;
    }
    const bool bPalette = rHeader.m_bPalette;
    const size_t nBytes = rHeader.m_nBits / 8;
    size_t nMissing = size_t{rHeader.m_nWidth} * rHeader.m_nHeight;
    std::span<const uint8_t> arrLeft = arrFile.subspan(rHeader.GetPixelsOffset());
    if (!rHeader.m_bCompressed)
    {
        return nMissing <= arrLeft.size() / nBytes &&
               (!bPalette || VerifyIndices(rHeader, arrLeft.first(nMissing), rReason));
    }
    while (nMissing > 0)
    {
        if (arrLeft.empty())
        {
            return false;
        }
        const size_t nPixels = size_t{arrLeft[0] & 0x7Fu} + 1;
        const bool bRepeated = (arrLeft[0] & 0x80) != 0;
        // The last packet may hold more than the image needs.
        const size_t nNeeded = std::min(nPixels, nMissing);
        const size_t nSize = (bRepeated ? 1 : nNeeded) * nBytes;
        if (nSize > arrLeft.size() - 1 ||
            (bPalette && !VerifyIndices(rHeader, arrLeft.subspan(1, nSize), rReason)))
        {
            return false;
        }
        arrLeft = arrLeft.subspan(1 + nSize);
        nMissing -= nNeeded;
    }
    return true;
}

// How SOIL gives the colours back: red first, but words of 16 bits as they stand in the file.
CPackedPixels::CMasks GetMasks(const CHeader& rHeader)
{
    switch (rHeader.GetColorBits())
    {
    case 8:
        return {0xFF, 0xFF, 0xFF, 0};
    case 16:
        return rHeader.m_eType == TYPE_GREY
                   ? CPackedPixels::CMasks{0xFF, 0xFF, 0xFF, 0xFF00}
                   : CPackedPixels::CMasks{0x7C00, 0x03E0, 0x001F,
                                           (rHeader.m_uiFlags & 0xF) != 0 ? 0x8000u : 0};
    case 24:
        return {0xFF, 0xFF00, 0xFF0000, 0};
    default:
        return {0xFF, 0xFF00, 0xFF0000, 0xFF000000};
    }
}

void MirrorRows(const CImage& rImage)
{
    const auto nPixelSize = static_cast<size_t>(rImage.m_spPixels->GetBitsPerPixel() / 8);
    for (int32_t nRow = 0; nRow < rImage.m_nHeight; ++nRow)
    {
        uint8_t* pLeft = rImage.EditRow(nRow);
        uint8_t* pRight = pLeft + rImage.GetRowSize();
        for (; pRight - pLeft > static_cast<ptrdiff_t>(nPixelSize); pLeft += nPixelSize)
        {
            pRight -= nPixelSize;
            std::swap_ranges(pLeft, pLeft + nPixelSize, pRight);
        }
    }
}

} // namespace

bool CImageReader_TGA::IsPlausible(std::span<const uint8_t> arrFile)
{
    if (arrFile.size() < HEADER_SIZE || arrFile[1] > 1)
    {
        return false;
    }
    const CHeader objHeader(arrFile.data());
    CQDString strReason;
    return objHeader.m_nWidth > 0 && objHeader.m_nHeight > 0 && VerifyHeader(objHeader, strReason);
}

bool CImageReader_TGA::Read(std::span<const uint8_t> arrFile, CImage& rImage, CQDString& rReason)
{
    if (arrFile.size() < HEADER_SIZE)
    {
        rReason = "the file ends early";
        return false;
    }
    const CHeader objHeader(arrFile.data());
    CPackedPixels objPixels;
    if (!VerifyHeader(objHeader, rReason) || !VerifyPixels(objHeader, arrFile, rReason))
    {
        return false;
    }
    const size_t nChannels = objHeader.GetColorBits() / 8;
    objPixels.Init(GetMasks(objHeader), nChannels);
    if (!rImage.Allocate(objPixels.GetFormat(), objHeader.m_nWidth, objHeader.m_nHeight, 1,
                         arrFile.size() * MAX_PIXELS_PER_BYTE, rReason))
    {
        return false;
    }
    // SOIL does not look whether it gets memory: see that there is as much as it is going to ask for.
    const auto nPixels = static_cast<size_t>(rImage.m_spPixels->GetNumPixels());
    if (!std::unique_ptr<uint8_t[]>(new (std::nothrow) uint8_t[nPixels * nChannels]))
    {
        rReason = "not enough memory";
        return false;
    }
    int nWidth = 0;
    int nHeight = 0;
    int nFound = 0;
    const std::unique_ptr<uint8_t, void (*)(uint8_t*)> spDecoded(
        SOIL_load_image_from_memory(arrFile.data(), static_cast<int>(arrFile.size()), &nWidth, &nHeight,
                                    &nFound, SOIL_LOAD_AUTO),
        &SOIL_free_image_data);
    if (!spDecoded || nWidth != rImage.m_nWidth || nHeight != rImage.m_nHeight ||
        static_cast<size_t>(nFound) != nChannels)
    {
        rReason = CQDString("SOIL: ") + SOIL_last_result();
        return false;
    }
    objPixels.Unpack(spDecoded.get(), nPixels, rImage.EditRow(0));
    if ((objHeader.m_uiFlags & FLAG_RIGHT_TO_LEFT) != 0)
    {
        MirrorRows(rImage);
    }
    return true;
}
