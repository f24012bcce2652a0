#include "qdscenegraph/texture/CImageReader_JPEG.h"

#include <cstddef>
#include <cstdio> // before jpeglib.h, which needs it

#include <jerror.h>
#include <jpeglib.h>

#include <csetjmp>
#include <cstring>

namespace
{

// A block of 8 by 8 pixels takes one bit at least, that of its mean value.
constexpr uint64_t MAX_PIXELS_PER_BYTE = 512;
// Progressive files have a dozen scans. Each goes over the whole image and may take next to no bytes.
constexpr int MAX_SCANS = 64;

struct CErrors
{
    jpeg_error_mgr m_objBase; // first: libjpeg hands this one around
    jmp_buf m_objJump;
    char m_szError[JMSG_LENGTH_MAX];
};

[[noreturn]] void Fail(j_common_ptr pJpeg)
{
    auto* pErrors = reinterpret_cast<CErrors*>(pJpeg->err);
    std::longjmp(pErrors->m_objJump, 1);
}

[[noreturn]] void OnError(j_common_ptr pJpeg)
{
    pJpeg->err->format_message(pJpeg, reinterpret_cast<CErrors*>(pJpeg->err)->m_szError);
    Fail(pJpeg);
}

// Warnings stand for lost pixels, but for a few that are common in sound files.
void OnMessage(j_common_ptr pJpeg, int nLevel)
{
    const jpeg_error_mgr& rError = *pJpeg->err;
    const bool bHarmless = rError.msg_code == JWRN_ADOBE_XFORM || rError.msg_code == JWRN_JFIF_MAJOR ||
                           rError.msg_code == JWRN_TOO_MUCH_DATA ||
                           (rError.msg_code == JWRN_EXTRANEOUS_DATA && rError.msg_parm.i[1] == JPEG_EOI);
    if (nLevel < 0 && !bHarmless)
    {
        OnError(pJpeg);
    }
}

void OnOutput(j_common_ptr) {}

void OnProgress(j_common_ptr pJpeg)
{
    if (reinterpret_cast<j_decompress_ptr>(pJpeg)->input_scan_number > MAX_SCANS)
    {
        auto* pErrors = reinterpret_cast<CErrors*>(pJpeg->err);
        std::snprintf(pErrors->m_szError, sizeof(pErrors->m_szError), "more than %d scans", MAX_SCANS);
        Fail(pJpeg);
    }
}

class CJpeg
{
  public:
    CJpeg()
    {
        m_objJpeg.err = jpeg_std_error(&m_objErrors.m_objBase);
        m_objErrors.m_objBase.error_exit = &OnError;
        m_objErrors.m_objBase.emit_message = &OnMessage;
        m_objErrors.m_objBase.output_message = &OnOutput;
        m_objProgress.progress_monitor = &OnProgress;
    }
    CJpeg(const CJpeg&) = delete;
    CJpeg& operator=(const CJpeg&) = delete;
    ~CJpeg() { jpeg_destroy_decompress(&m_objJpeg); }

    jpeg_decompress_struct m_objJpeg = {};
    jpeg_progress_mgr m_objProgress = {};
    CErrors m_objErrors = {};
};

// libjpeg leaves the two functions below by a long jump when the file is damaged: nothing in them may need a
// destructor.

bool ReadHeader(CJpeg* pOwner, const uint8_t* pFile, size_t nSize)
{
    if (setjmp(pOwner->m_objErrors.m_objJump) != 0)
    {
        return false;
    }
    jpeg_decompress_struct& rJpeg = pOwner->m_objJpeg;
    jpeg_create_decompress(&rJpeg);
    rJpeg.progress = &pOwner->m_objProgress;
    jpeg_mem_src(&rJpeg, pFile, static_cast<unsigned long>(nSize));
    jpeg_read_header(&rJpeg, TRUE);
    switch (rJpeg.jpeg_color_space)
    {
    case JCS_GRAYSCALE:
        rJpeg.out_color_space = JCS_GRAYSCALE;
        break;
    case JCS_CMYK:
    case JCS_YCCK:
        rJpeg.out_color_space = JCS_CMYK;
        break;
    default:
        rJpeg.out_color_space = JCS_RGB;
        break;
    }
    return true;
}

// Each colour of light is what its ink and black leave over. Adobe's files store the light, not the ink.
void ConvertCmyk(const uint8_t* pCmyk, uint8_t* pRgb, uint32_t uiPixels, uint8_t uiInvert)
{
    for (; uiPixels > 0; --uiPixels, pCmyk += 4, pRgb += 3)
    {
        const int nLight = pCmyk[3] ^ uiInvert;
        for (int n = 0; n < 3; ++n)
        {
            pRgb[n] = static_cast<uint8_t>(((pCmyk[n] ^ uiInvert) * nLight + 127) / 255);
        }
    }
}

bool ReadPixels(CJpeg* pOwner, uint8_t* pRows, size_t nRowSize)
{
    if (setjmp(pOwner->m_objErrors.m_objJump) != 0)
    {
        return false;
    }
    jpeg_decompress_struct& rJpeg = pOwner->m_objJpeg;
    jpeg_start_decompress(&rJpeg);
    const bool bCmyk = rJpeg.out_color_space == JCS_CMYK;
    JSAMPARRAY arrScratch = bCmyk ? rJpeg.mem->alloc_sarray(reinterpret_cast<j_common_ptr>(&rJpeg),
                                                            JPOOL_IMAGE, rJpeg.output_width * 4, 1)
                                  : nullptr;
    while (rJpeg.output_scanline < rJpeg.output_height)
    {
        uint8_t* pRow = pRows + rJpeg.output_scanline * nRowSize;
        jpeg_read_scanlines(&rJpeg, bCmyk ? arrScratch : &pRow, 1);
        if (bCmyk)
        {
            ConvertCmyk(arrScratch[0], pRow, rJpeg.output_width, rJpeg.saw_Adobe_marker ? 0 : 0xFF);
        }
    }
    jpeg_finish_decompress(&rJpeg);
    return true;
}

} // namespace

bool CImageReader_JPEG::Read(std::span<const uint8_t> arrFile, CImage& rImage, CQDString& rReason)
{
    CJpeg objJpeg;
    const jpeg_decompress_struct& rJpeg = objJpeg.m_objJpeg;
    if (!ReadHeader(&objJpeg, arrFile.data(), arrFile.size()))
    {
        rReason = objJpeg.m_objErrors.m_szError;
        return false;
    }
    if (!rImage.Allocate(rJpeg.out_color_space == JCS_GRAYSCALE ? PIXEL_FORMAT_L8 : PIXEL_FORMAT_R8G8B8,
                         rJpeg.image_width, rJpeg.image_height, 1, arrFile.size() * MAX_PIXELS_PER_BYTE,
                         rReason))
    {
        return false;
    }
    if (!ReadPixels(&objJpeg, rImage.EditRow(0), rImage.GetRowSize()))
    {
        rReason = objJpeg.m_objErrors.m_szError;
        return false;
    }
    return true;
}
