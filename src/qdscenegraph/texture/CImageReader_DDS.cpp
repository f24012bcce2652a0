#include "qdscenegraph/texture/CImageReader_DDS.h"

#include "qdscenegraph/texture/CPackedPixels.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace
{

// Offsets of 32-bit fields, from the start of the file.
enum EOffset : size_t
{
    OFFSET_HEADER_SIZE = 4,
    OFFSET_HEIGHT = 12,
    OFFSET_WIDTH = 16,
    OFFSET_LEVELS = 28,
    OFFSET_PIXEL_FLAGS = 80,
    OFFSET_FOURCC = 84,
    OFFSET_BITS = 88,
    OFFSET_MASKS = 92,
    OFFSET_CAPS2 = 112,
    HEADER_END = 128,
    // Only behind a header that names DX10.
    OFFSET_DXGI_FORMAT = 128,
    OFFSET_DXGI_DIMENSION = 132,
    OFFSET_DXGI_FLAGS = 136,
    OFFSET_DXGI_COUNT = 140,
    HEADER_DX10_END = 148
};

constexpr uint32_t HEADER_SIZE = 124;
constexpr uint32_t FLAG_HAS_ALPHA = 0x1;
constexpr uint32_t FLAG_ALPHA_ONLY = 0x2;
constexpr uint32_t FLAG_FOURCC = 0x4;
constexpr uint32_t FLAG_RGB = 0x40;
constexpr uint32_t FLAG_GREY = 0x20000;
constexpr uint32_t CAPS2_CUBE_OR_VOLUME = 0x200 | 0x200000;
constexpr uint32_t DXGI_DIMENSION_2D = 3;
constexpr uint32_t DXGI_FLAG_CUBE = 4;

constexpr uint32_t FourCC(const char (&szName)[5])
{
    return uint32_t{static_cast<uint8_t>(szName[0])} | uint32_t{static_cast<uint8_t>(szName[1])} << 8 |
           uint32_t{static_cast<uint8_t>(szName[2])} << 16 | uint32_t{static_cast<uint8_t>(szName[3])} << 24;
}

// How the pixels stand in the file: in blocks, or packed by masks.
struct CLayout
{
    uint32_t m_uiCode; // a four-character code or a format of DXGI
    PixelFormat m_eBlocks;
    size_t m_nBytesPerPixel;
    CPackedPixels::CMasks m_arrMasks;
};

// DXT2 and DXT4 are DXT3 and DXT5 with colours multiplied by alpha.
constexpr CLayout FOURCC_LAYOUTS[] = {{FourCC("DXT1"), PIXEL_FORMAT_RGBA_S3TC_DXT1, 0, {}},
                                      {FourCC("DXT2"), PIXEL_FORMAT_RGBA_S3TC_DXT3, 0, {}},
                                      {FourCC("DXT3"), PIXEL_FORMAT_RGBA_S3TC_DXT3, 0, {}},
                                      {FourCC("DXT4"), PIXEL_FORMAT_RGBA_S3TC_DXT5, 0, {}},
                                      {FourCC("DXT5"), PIXEL_FORMAT_RGBA_S3TC_DXT5, 0, {}}};

constexpr CPackedPixels::CMasks RGBA_MASKS = {0xFF, 0xFF00, 0xFF0000, 0xFF000000};
constexpr CPackedPixels::CMasks BGRA_MASKS = {0xFF0000, 0xFF00, 0xFF, 0xFF000000};
constexpr CPackedPixels::CMasks BGRX_MASKS = {0xFF0000, 0xFF00, 0xFF, 0};
constexpr CPackedPixels::CMasks GREY_MASKS = {0xFF, 0xFF, 0xFF, 0};

constexpr CLayout DXGI_LAYOUTS[] = {
    {28, PIXEL_FORMAT_NONE, 4, RGBA_MASKS},   {29, PIXEL_FORMAT_NONE, 4, RGBA_MASKS},
    {61, PIXEL_FORMAT_NONE, 1, GREY_MASKS},   {71, PIXEL_FORMAT_RGBA_S3TC_DXT1, 0, {}},
    {72, PIXEL_FORMAT_RGBA_S3TC_DXT1, 0, {}}, {74, PIXEL_FORMAT_RGBA_S3TC_DXT3, 0, {}},
    {75, PIXEL_FORMAT_RGBA_S3TC_DXT3, 0, {}}, {77, PIXEL_FORMAT_RGBA_S3TC_DXT5, 0, {}},
    {78, PIXEL_FORMAT_RGBA_S3TC_DXT5, 0, {}}, {87, PIXEL_FORMAT_NONE, 4, BGRA_MASKS},
    {88, PIXEL_FORMAT_NONE, 4, BGRX_MASKS},   {91, PIXEL_FORMAT_NONE, 4, BGRA_MASKS},
    {93, PIXEL_FORMAT_NONE, 4, BGRX_MASKS}};

class CDdsFile
{
  public:
    explicit CDdsFile(std::span<const uint8_t> arrFile) : m_arrFile(arrFile) {}

    bool Read(CImage& rImage, CQDString& rReason);

  private:
    uint32_t Word(size_t nOffset) const { return CPackedPixels::ReadWord(m_arrFile.data() + nOffset, 4); }
    bool VerifyHeader(CQDString& rReason) const;
    bool FindLayout(CQDString& rReason);
    bool FindLayout(std::span<const CLayout> arrLayouts, uint32_t uiCode);
    bool ReadBlocks(CImage& rImage, CQDString& rReason) const;
    bool ReadPacked(CImage& rImage, CQDString& rReason) const;
    bool Allocate(PixelFormat eFormat, size_t nBitsPerPixel, CImage& rImage, CQDString& rReason) const;

    std::span<const uint8_t> m_arrFile;
    std::span<const uint8_t> m_arrPixels; // all levels
    CLayout m_objLayout = {};
};

bool CDdsFile::VerifyHeader(CQDString& rReason) const
{
    if (m_arrFile.size() < HEADER_END)
    {
        rReason = "the file ends early";
        return false;
    }
    if (Word(OFFSET_HEADER_SIZE) != HEADER_SIZE)
    {
        rReason = "a header of " + std::to_string(Word(OFFSET_HEADER_SIZE)) + " bytes";
        return false;
    }
    if ((Word(OFFSET_CAPS2) & CAPS2_CUBE_OR_VOLUME) != 0)
    {
        rReason = "cube maps and volumes are not supported";
        return false;
    }
    return true;
}

bool CDdsFile::FindLayout(std::span<const CLayout> arrLayouts, uint32_t uiCode)
{
    const auto itLayout = std::ranges::find(arrLayouts, uiCode, &CLayout::m_uiCode);
    if (itLayout != arrLayouts.end())
    {
        m_objLayout = *itLayout;
    }
    return itLayout != arrLayouts.end();
}

bool CDdsFile::FindLayout(CQDString& rReason)
{
    const uint32_t uiFlags = Word(OFFSET_PIXEL_FLAGS);
    const uint32_t uiFourCC = Word(OFFSET_FOURCC);
    m_arrPixels = m_arrFile.subspan(HEADER_END);
    if ((uiFlags & FLAG_FOURCC) != 0 && uiFourCC == FourCC("DX10"))
    {
        if (m_arrFile.size() < HEADER_DX10_END)
        {
            rReason = "the file ends early";
            return false;
        }
        m_arrPixels = m_arrFile.subspan(HEADER_DX10_END);
        rReason = "DXGI format " + std::to_string(Word(OFFSET_DXGI_FORMAT)) + " is not supported";
        if (Word(OFFSET_DXGI_DIMENSION) != DXGI_DIMENSION_2D || Word(OFFSET_DXGI_COUNT) != 1 ||
            (Word(OFFSET_DXGI_FLAGS) & DXGI_FLAG_CUBE) != 0)
        {
            rReason = "cube maps, volumes and arrays are not supported";
            return false;
        }
        return FindLayout(DXGI_LAYOUTS, Word(OFFSET_DXGI_FORMAT));
    }
    if ((uiFlags & FLAG_FOURCC) != 0)
    {
        CQDString strCode;
        for (int n = 0; n < 32; n += 8)
        {
            const auto c = static_cast<char>(uiFourCC >> n);
            strCode += c >= ' ' && c <= '~' ? c : '?';
        }
        rReason = "the pixel format '" + strCode + "' is not supported";
        return FindLayout(FOURCC_LAYOUTS, uiFourCC);
    }
    const uint32_t uiBits = Word(OFFSET_BITS);
    if ((uiFlags & (FLAG_RGB | FLAG_GREY | FLAG_ALPHA_ONLY)) == 0 || uiBits % 8 != 0 || uiBits == 0 ||
        uiBits > 32)
    {
        rReason = "the pixel format with flags " + std::to_string(uiFlags) + " and " +
                  std::to_string(uiBits) + " bits is not supported";
        return false;
    }
    m_objLayout.m_nBytesPerPixel = uiBits / 8;
    if ((uiFlags & FLAG_RGB) != 0)
    {
        m_objLayout.m_arrMasks = {Word(OFFSET_MASKS), Word(OFFSET_MASKS + 4), Word(OFFSET_MASKS + 8), 0};
    }
    else if ((uiFlags & FLAG_GREY) != 0)
    {
        std::fill_n(m_objLayout.m_arrMasks.begin(), 3, Word(OFFSET_MASKS));
    }
    if ((uiFlags & (FLAG_HAS_ALPHA | FLAG_ALPHA_ONLY)) != 0)
    {
        m_objLayout.m_arrMasks[3] = Word(OFFSET_MASKS + 12);
    }
    return true;
}

bool CDdsFile::Allocate(PixelFormat eFormat, size_t nBitsPerPixel, CImage& rImage, CQDString& rReason) const
{
    const uint32_t uiWidth = Word(OFFSET_WIDTH);
    const uint32_t uiHeight = Word(OFFSET_HEIGHT);
    const uint32_t uiLevels = std::max(Word(OFFSET_LEVELS), 1u);
    if (uiLevels > static_cast<uint32_t>(std::bit_width(std::max(uiWidth, uiHeight))))
    {
        rReason = std::to_string(uiLevels) + " levels of " + std::to_string(uiWidth) + " by " +
                  std::to_string(uiHeight) + " pixels";
        return false;
    }
    return rImage.Allocate(eFormat, uiWidth, uiHeight, static_cast<int32_t>(uiLevels),
                           m_arrPixels.size() * 8 / nBitsPerPixel, rReason);
}

// Whether any pixel is transparent: the fourth colour of a block whose first colour is not the greater one.
bool HasTransparentPixels(std::span<const uint8_t> arrBlocks)
{
    for (size_t nBlock = 0; nBlock + 8 <= arrBlocks.size(); nBlock += 8)
    {
        const uint8_t* pBlock = arrBlocks.data() + nBlock;
        const uint32_t uiPixels = CPackedPixels::ReadWord(pBlock + 4, 4);
        if (CPackedPixels::ReadWord(pBlock, 2) <= CPackedPixels::ReadWord(pBlock + 2, 2) &&
            (uiPixels & uiPixels >> 1 & 0x55555555) != 0)
        {
            return true;
        }
    }
    return false;
}

bool CDdsFile::ReadBlocks(CImage& rImage, CQDString& rReason) const
{
    PixelFormat eFormat = m_objLayout.m_eBlocks;
    if (eFormat == PIXEL_FORMAT_RGBA_S3TC_DXT1 && (Word(OFFSET_PIXEL_FLAGS) & FLAG_HAS_ALPHA) == 0 &&
        !HasTransparentPixels(m_arrPixels))
    {
        eFormat = PIXEL_FORMAT_RGB_S3TC_DXT1;
    }
    if (!Allocate(eFormat, static_cast<size_t>(PixelFormatBitsPerPixel(eFormat)), rImage, rReason))
    {
        return false;
    }
    const std::span<uint8_t> arrBlocks = rImage.m_spPixels->EditData();
    if (arrBlocks.size() > m_arrPixels.size())
    {
        rReason = "the file ends early";
        return false;
    }
    std::memcpy(arrBlocks.data(), m_arrPixels.data(), arrBlocks.size());
    return true;
}

bool CDdsFile::ReadPacked(CImage& rImage, CQDString& rReason) const
{
    CPackedPixels objPixels;
    if (!objPixels.Init(m_objLayout.m_arrMasks, m_objLayout.m_nBytesPerPixel))
    {
        rReason = "bit masks that are not runs of bits";
        return false;
    }
    if (!Allocate(objPixels.GetFormat(), m_objLayout.m_nBytesPerPixel * 8, rImage, rReason))
    {
        return false;
    }
    const auto nPixels = static_cast<size_t>(rImage.m_spPixels->GetNumPixels());
    if (m_arrPixels.size() / m_objLayout.m_nBytesPerPixel < nPixels)
    {
        rReason = "the file ends early";
        return false;
    }
    objPixels.Unpack(m_arrPixels.data(), nPixels, rImage.EditRow(0));
    return true;
}

bool CDdsFile::Read(CImage& rImage, CQDString& rReason)
{
    if (!VerifyHeader(rReason) || !FindLayout(rReason))
    {
        return false;
    }
    return m_objLayout.m_eBlocks != PIXEL_FORMAT_NONE ? ReadBlocks(rImage, rReason)
                                                      : ReadPacked(rImage, rReason);
}

} // namespace

bool CImageReader_DDS::Read(std::span<const uint8_t> arrFile, CImage& rImage, CQDString& rReason)
{
    return CDdsFile(arrFile).Read(rImage, rReason);
}
