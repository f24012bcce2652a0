// Small image files for tests: PNG and JPEG by the libraries' writers, the others from their fields.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <jpeglib.h>
#include <png.h>
#include <zlib.h>

using CBytes = std::string;

// Little-endian numbers of two and four bytes, one behind the other.
inline CBytes Words(std::initializer_list<uint32_t> lstWords, int nBytes)
{
    CBytes strBytes;
    for (const uint32_t uiWord : lstWords)
    {
        for (int n = 0; n < nBytes; ++n)
        {
            strBytes += static_cast<char>(uiWord >> (8 * n));
        }
    }
    return strBytes;
}

// rRows as PNG stores them, without filters.
inline CBytes MakePng(uint32_t uiWidth, uint32_t uiHeight, int nDepth, int nColorType, const CBytes& rRows,
                      const std::vector<png_color>& rPalette = {}, const CBytes& rAlphas = {},
                      uint16_t uiClearGrey = 0, int nInterlace = PNG_INTERLACE_NONE)
{
    CBytes strFile;
    png_structp pPng = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop pInfo = png_create_info_struct(pPng);
    png_set_write_fn(
        pPng, &strFile,
        [](png_structp p, png_bytep pBytes, size_t nCount) {
            static_cast<CBytes*>(png_get_io_ptr(p))->append(reinterpret_cast<char*>(pBytes), nCount);
        },
        nullptr);
    png_set_user_limits(pPng, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_IHDR(pPng, pInfo, uiWidth, uiHeight, nDepth, nColorType, nInterlace, 0, 0);
    if (!rPalette.empty())
    {
        png_set_PLTE(pPng, pInfo, rPalette.data(), static_cast<int>(rPalette.size()));
    }
    if (!rAlphas.empty() || uiClearGrey != 0)
    {
        png_color_16 objClear = {};
        objClear.gray = uiClearGrey;
        png_set_tRNS(pPng, pInfo, reinterpret_cast<const png_byte*>(rAlphas.data()),
                     static_cast<int>(rAlphas.size()), &objClear);
    }
    png_write_info(pPng, pInfo);
    std::vector<png_bytep> vecRows(uiHeight);
    for (uint32_t ui = 0; ui < uiHeight; ++ui)
    {
        vecRows[ui] =
            reinterpret_cast<png_bytep>(const_cast<char*>(rRows.data())) + ui * (rRows.size() / uiHeight);
    }
    png_write_image(pPng, vecRows.data());
    png_write_end(pPng, pInfo);
    png_destroy_write_struct(&pPng, &pInfo);
    return strFile;
}

// Gives every chunk the checksum of what it holds now.
inline void RepairPngChecksums(CBytes& rFile)
{
    for (size_t nChunk = 8; nChunk + 12 <= rFile.size();)
    {
        auto* p = reinterpret_cast<uint8_t*>(rFile.data()) + nChunk;
        const size_t nSize = size_t{p[0]} << 24 | size_t{p[1]} << 16 | size_t{p[2]} << 8 | p[3];
        if (nSize > rFile.size() - nChunk - 12)
        {
            return;
        }
        const auto uiSum = static_cast<uint32_t>(crc32(0, p + 4, static_cast<uInt>(nSize + 4)));
        for (int n = 0; n < 4; ++n)
        {
            p[8 + nSize + static_cast<size_t>(n)] = static_cast<uint8_t>(uiSum >> (24 - 8 * n));
        }
        nChunk += 12 + nSize;
    }
}

// Without loss of colour resolution, at the best quality.
inline CBytes MakeJpeg(uint32_t uiWidth, uint32_t uiHeight, J_COLOR_SPACE ePixels, J_COLOR_SPACE eStored,
                       const CBytes& rRows, bool bProgressive, bool bAdobe)
{
    jpeg_compress_struct objJpeg = {};
    jpeg_error_mgr objErrors = {};
    objJpeg.err = jpeg_std_error(&objErrors);
    jpeg_create_compress(&objJpeg);
    unsigned char* pFile = nullptr;
    unsigned long ulSize = 0;
    jpeg_mem_dest(&objJpeg, &pFile, &ulSize);
    objJpeg.image_width = uiWidth;
    objJpeg.image_height = uiHeight;
    objJpeg.input_components = static_cast<int>(rRows.size() / uiWidth / uiHeight);
    objJpeg.in_color_space = ePixels;
    jpeg_set_defaults(&objJpeg);
    jpeg_set_colorspace(&objJpeg, eStored);
    jpeg_set_quality(&objJpeg, 100, TRUE);
    objJpeg.comp_info[0].h_samp_factor = 1;
    objJpeg.comp_info[0].v_samp_factor = 1;
    objJpeg.write_Adobe_marker = bAdobe ? TRUE : FALSE;
    if (bProgressive)
    {
        jpeg_simple_progression(&objJpeg);
    }
    jpeg_start_compress(&objJpeg, TRUE);
    while (objJpeg.next_scanline < uiHeight)
    {
        auto* pRow = reinterpret_cast<JSAMPROW>(const_cast<char*>(rRows.data())) +
                     objJpeg.next_scanline * (rRows.size() / uiHeight);
        jpeg_write_scanlines(&objJpeg, &pRow, 1);
    }
    jpeg_finish_compress(&objJpeg);
    CBytes strFile(reinterpret_cast<char*>(pFile), ulSize);
    jpeg_destroy_compress(&objJpeg);
    std::free(pFile); // libjpeg's, from malloc
    return strFile;
}

inline CBytes MakeTga(int nType, int nBits, int nFlags, uint32_t uiWidth, uint32_t uiHeight,
                      const CBytes& rPixels, uint32_t uiColors = 0, int nPaletteBits = 0)
{
    return CBytes{'\0', uiColors != 0 ? '\1' : '\0', static_cast<char>(nType)} + Words({0, uiColors}, 2) +
           static_cast<char>(nPaletteBits) + Words({0, 0, uiWidth, uiHeight}, 2) + static_cast<char>(nBits) +
           static_cast<char>(nFlags) + rPixels;
}

// rExtra: the rest of the header and the palette.
inline CBytes MakeBmp(uint32_t uiHeaderSize, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiBits,
                      uint32_t uiCompression, uint32_t uiColors, const CBytes& rExtra, const CBytes& rPixels)
{
    const CBytes strHeader = uiHeaderSize == 12
                                 ? Words({12}, 4) + Words({uiWidth, uiHeight, 1, uiBits}, 2)
                                 : Words({uiHeaderSize, uiWidth, uiHeight}, 4) + Words({1, uiBits}, 2) +
                                       Words({uiCompression, 0, 0, 0, uiColors, 0}, 4);
    const auto uiPixels = static_cast<uint32_t>(14 + strHeader.size() + rExtra.size());
    return "BM" + Words({0, 0, uiPixels}, 4) + strHeader + rExtra + rPixels;
}

// Pixels packed by masks; the flags of the pixel format.
inline CBytes MakeDds(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiLevels, uint32_t uiFlags,
                      uint32_t uiBits, std::initializer_list<uint32_t> lstMasks, const CBytes& rPixels,
                      const CBytes& rFourCC = CBytes(4, '\0'), uint32_t uiCaps2 = 0)
{
    return "DDS " + Words({124, 0x1007, uiHeight, uiWidth, 0, 0, uiLevels}, 4) + CBytes(44, '\0') +
           Words({32, uiFlags}, 4) + rFourCC + Words({uiBits}, 4) + Words(lstMasks, 4) +
           Words({0x1000, uiCaps2, 0, 0, 0}, 4) + rPixels;
}
inline CBytes MakeDds(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiLevels, const char* szFourCC,
                      const CBytes& rPixels, uint32_t uiCaps2 = 0)
{
    return MakeDds(uiWidth, uiHeight, uiLevels, 4, 0, {0, 0, 0, 0}, rPixels, szFourCC, uiCaps2);
}
