#include "qdscenegraph/texture/CImageReader_PNG.h"

#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <cstring>

namespace
{

// Deflate at its very best.
constexpr uint64_t MAX_BITS_PER_BYTE = 1032 * 8;

struct CInput
{
    std::span<const uint8_t> m_arrLeft;
    char m_szError[160] = "";
};

[[noreturn]] void OnError(png_structp pPng, png_const_charp szMessage)
{
    auto* pInput = static_cast<CInput*>(png_get_error_ptr(pPng));
    std::snprintf(pInput->m_szError, sizeof(pInput->m_szError), "%s", szMessage);
    png_longjmp(pPng, 1);
}

void OnWarning(png_structp, png_const_charp) {}

void OnRead(png_structp pPng, png_bytep pBytes, size_t nCount)
{
    auto* pInput = static_cast<CInput*>(png_get_io_ptr(pPng));
    if (nCount > pInput->m_arrLeft.size())
    {
        png_error(pPng, "the file ends early");
    }
    std::memcpy(pBytes, pInput->m_arrLeft.data(), nCount);
    pInput->m_arrLeft = pInput->m_arrLeft.subspan(nCount);
}

class CPng
{
  public:
    explicit CPng(CInput& rInput)
        : m_pPng(png_create_read_struct(PNG_LIBPNG_VER_STRING, &rInput, &OnError, &OnWarning)),
          m_pInfo(m_pPng != nullptr ? png_create_info_struct(m_pPng) : nullptr)
    {}
    CPng(const CPng&) = delete;
    CPng& operator=(const CPng&) = delete;
    ~CPng() { png_destroy_read_struct(&m_pPng, &m_pInfo, nullptr); }

    png_structp m_pPng;
    png_infop m_pInfo;
};

// libpng leaves the two functions below by a long jump when the file is damaged: nothing in them may need a
// destructor.

// Everything before the pixels, which are set up to come out as 8 bits of grey, RGB or RGBA.
bool ReadHeader(png_structp pPng, png_infop pInfo, CInput* pInput)
{
    if (setjmp(png_jmpbuf(pPng)) != 0)
    {
        return false;
    }
    png_set_read_fn(pPng, pInput, &OnRead);
    png_set_crc_action(pPng, PNG_CRC_ERROR_QUIT, PNG_CRC_ERROR_QUIT);
    // The size is looked at before memory is taken for it, and texts and colour profiles, which may be bombs
    // of their own, are skipped.
    png_set_user_limits(pPng, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_keep_unknown_chunks(pPng, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_read_info(pPng, pInfo);
    png_set_expand(pPng);
    png_set_scale_16(pPng);
    if ((png_get_color_type(pPng, pInfo) & PNG_COLOR_MASK_ALPHA) != 0 ||
        png_get_valid(pPng, pInfo, PNG_INFO_tRNS) != 0)
    {
        png_set_gray_to_rgb(pPng);
    }
    return true;
}

// Interlaced files come in seven passes over the rows.
bool ReadPixels(png_structp pPng, png_infop pInfo, uint8_t* pRows, size_t nRowSize, uint32_t uiHeight)
{
    if (setjmp(png_jmpbuf(pPng)) != 0)
    {
        return false;
    }
    const int nPasses = png_set_interlace_handling(pPng);
    png_read_update_info(pPng, pInfo);
    if (png_get_rowbytes(pPng, pInfo) != nRowSize)
    {
        png_error(pPng, "rows of an unexpected size");
    }
    for (int nPass = 0; nPass < nPasses; ++nPass)
    {
        for (uint32_t uiRow = 0; uiRow < uiHeight; ++uiRow)
        {
            png_read_row(pPng, pRows + uiRow * nRowSize, nullptr);
        }
    }
    png_read_end(pPng, nullptr);
    return true;
}

PixelFormat GetFormat(png_structp pPng, png_infop pInfo)
{
    const int nColorType = png_get_color_type(pPng, pInfo);
    if ((nColorType & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(pPng, pInfo, PNG_INFO_tRNS) != 0)
    {
        return PIXEL_FORMAT_R8G8B8A8;
    }
    return (nColorType & PNG_COLOR_MASK_COLOR) != 0 ? PIXEL_FORMAT_R8G8B8 : PIXEL_FORMAT_L8;
}

} // namespace

bool CImageReader_PNG::Read(std::span<const uint8_t> arrFile, CImage& rImage, CQDString& rReason)
{
    CInput objInput{arrFile};
    const CPng objPng(objInput);
    if (objPng.m_pInfo == nullptr)
    {
        rReason = "not enough memory";
        return false;
    }
    if (!ReadHeader(objPng.m_pPng, objPng.m_pInfo, &objInput))
    {
        rReason = objInput.m_szError;
        return false;
    }
    const uint64_t uiBits = uint64_t{png_get_bit_depth(objPng.m_pPng, objPng.m_pInfo)} *
                            png_get_channels(objPng.m_pPng, objPng.m_pInfo);
    const uint32_t uiHeight = png_get_image_height(objPng.m_pPng, objPng.m_pInfo);
    if (!rImage.Allocate(GetFormat(objPng.m_pPng, objPng.m_pInfo),
                         png_get_image_width(objPng.m_pPng, objPng.m_pInfo), uiHeight, 1,
                         arrFile.size() * MAX_BITS_PER_BYTE / uiBits, rReason))
    {
        return false;
    }
    if (!ReadPixels(objPng.m_pPng, objPng.m_pInfo, rImage.EditRow(0), rImage.GetRowSize(), uiHeight))
    {
        rReason = objInput.m_szError;
        return false;
    }
    return true;
}
