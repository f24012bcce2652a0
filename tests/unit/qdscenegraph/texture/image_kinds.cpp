// What comes out of image files of every kind, and what is said about those that are refused.
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"
#include "support/MakeImageFile.h"

#include <gtest/gtest.h>

namespace
{

using namespace std::string_literals;

CSGTexturePtr LoadFile(const CBytes& rFile, const std::string& rName = "image")
{
    return CSGTextureLoader::CreateStandardLoader()->TryLoadTextureFromMemory(
        {reinterpret_cast<const uint8_t*>(rFile.data()), rFile.size()}, rName);
}

CBytes GetBytes(const CSGTexture* pTexture)
{
    return {reinterpret_cast<const char*>(pTexture->GetDataPtr()),
            static_cast<size_t>(pTexture->GetTotalSize())};
}

struct CKindRow
{
    const char* m_szName;
    CBytes m_strFile;
    CSGTextureLayout m_objLayout;
    CBytes m_strPixels;
};

void ExpectImages(const std::vector<CKindRow>& rRows)
{
    for (const CKindRow& r : rRows)
    {
        SCOPED_TRACE(r.m_szName);
        const CSGTexturePtr spTexture = LoadFile(r.m_strFile);
        ASSERT_TRUE(spTexture);
        EXPECT_EQ(spTexture->GetLayout(), r.m_objLayout) << PixelFormatName(spTexture->GetFormat());
        EXPECT_EQ(GetBytes(spTexture.get()), r.m_strPixels);
        EXPECT_EQ(spTexture->GetChangeFrequency(), CSGTexture::CHANGE_FREQ_NEVER);
        EXPECT_FALSE(spTexture->ShouldAutoGenMipMapLevels());
    }
}

// Every value once, so that a pixel in the wrong place shows.
CBytes Count(size_t nBytes)
{
    CBytes strBytes;
    for (size_t n = 0; n < nBytes; ++n)
    {
        strBytes += static_cast<char>(n);
    }
    return strBytes;
}

constexpr PixelFormat L8 = PIXEL_FORMAT_L8;
constexpr PixelFormat RGB = PIXEL_FORMAT_R8G8B8;
constexpr PixelFormat RGBA = PIXEL_FORMAT_R8G8B8A8;
constexpr PixelFormat DXT1 = PIXEL_FORMAT_RGB_S3TC_DXT1;
constexpr PixelFormat DXT1A = PIXEL_FORMAT_RGBA_S3TC_DXT1;
constexpr PixelFormat DXT3 = PIXEL_FORMAT_RGBA_S3TC_DXT3;
constexpr PixelFormat DXT5 = PIXEL_FORMAT_RGBA_S3TC_DXT5;

TEST(Image, PngKeepsEveryColourTypeAndDepth)
{
    const std::vector<png_color> vecPalette = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    ExpectImages({
        {"grey 1", MakePng(8, 1, 1, 0, "\xA5"), {8, 1, 1, L8}, "\xFF\0\xFF\0\0\xFF\0\xFF"s},
        {"grey 16 is rounded", MakePng(2, 1, 16, 0, "\0\xFF\x80\x00"s), {2, 1, 1, L8}, "\x01\x80"},
        {"grey with a clear value",
         MakePng(2, 1, 8, 0, "\x07\x08", {}, "", 8),
         {2, 1, 1, RGBA},
         "\7\7\7\xFF\x8\x8\x8\0"s},
        {"grey and alpha", MakePng(2, 1, 8, 4, "\1\2\3\4"), {2, 1, 1, RGBA}, "\1\1\1\2\3\3\3\4"},
        {"palette 2", MakePng(3, 1, 2, 3, "\x18", vecPalette), {3, 1, 1, RGB}, "\1\2\3\4\5\6\7\x8\x9"},
        {"palette with alpha",
         MakePng(3, 1, 8, 3, "\2\0\1"s, vecPalette, "\x80\x40"),
         {3, 1, 1, RGBA},
         "\7\x8\x9\xFF\1\2\3\x80\4\5\6\x40"},
        {"rgb 16", MakePng(1, 1, 16, 2, "\1\1\2\2\3\3"), {1, 1, 1, RGB}, "\1\2\3"},
        {"rgb interlaced",
         MakePng(5, 7, 8, 2, Count(105), {}, "", 0, PNG_INTERLACE_ADAM7),
         {5, 7, 1, RGB},
         Count(105)},
    });
}

TEST(Image, TgaTurnsItsOriginAndUnpacks)
{
    const CBytes strFour = "\1\2\3\4\5\6\7\x8\x9\xA\xB\xC"; // blue, green, red
    ExpectImages({
        {"bottom left", MakeTga(2, 24, 0x00, 2, 2, strFour), {2, 2, 1, RGB}, "\x9\x8\7\xC\xB\xA\3\2\1\6\5\4"},
        {"top right", MakeTga(2, 24, 0x30, 2, 2, strFour), {2, 2, 1, RGB}, "\6\5\4\3\2\1\xC\xB\xA\x9\x8\7"},
        {"32 bits", MakeTga(2, 32, 0x28, 1, 1, "\1\2\3\4"), {1, 1, 1, RGBA}, "\3\2\1\4"},
        {"16 bits",
         MakeTga(2, 16, 0x20, 2, 1, Words({0xFC00, 0x0210}, 2)),
         {2, 1, 1, RGB},
         "\xFF\0\0\0\x84\x84"s},
        {"16 bits with alpha",
         MakeTga(2, 16, 0x21, 2, 1, Words({0xFC00, 0x001F}, 2)),
         {2, 1, 1, RGBA},
         "\xFF\0\0\xFF\0\0\xFF\0"s},
        {"grey", MakeTga(3, 8, 0x20, 3, 1, "\1\2\3"), {3, 1, 1, L8}, "\1\2\3"},
        {"grey and alpha", MakeTga(3, 16, 0x28, 1, 1, "\1\2"), {1, 1, 1, RGBA}, "\1\1\1\2"},
        {"packets across rows", MakeTga(11, 8, 0x20, 2, 3, "\x82\7\2\1\2\3"), {2, 3, 1, L8}, "\7\7\7\1\2\3"},
        {"palette",
         MakeTga(1, 8, 0x20, 3, 1, "\1\2\3\4\5\6\1\0\1"s, 2, 24),
         {3, 1, 1, RGB},
         "\6\5\4\3\2\1\6\5\4"},
        {"compressed palette",
         MakeTga(9, 8, 0x20, 2, 1, "\1\2\3\4\x81\0"s, 1, 32),
         {2, 1, 1, RGBA},
         "\3\2\1\4\3\2\1\4"},
    });
}

TEST(Image, BmpOfEveryHeaderAndDepth)
{
    const CBytes strTwo = "\1\2\3\0\4\5\6\0"s; // a palette: blue, green, red, unused
    const CBytes strV5 = Words({0xFF0000, 0xFF00, 0xFF, 0xFF000000}, 4) + CBytes(68, '\0');
    ExpectImages({
        {"1 bit, bottom row first",
         MakeBmp(40, 2, 2, 1, 0, 2, strTwo, "\x40\0\0\0\x80\0\0\0"s),
         {2, 2, 1, RGB},
         "\6\5\4\3\2\1\3\2\1\6\5\4"},
        {"4 bits", MakeBmp(40, 3, 1, 4, 0, 2, strTwo, "\x10\x10\0\0"s), {3, 1, 1, RGB}, "\6\5\4\3\2\1\6\5\4"},
        {"8 bits, top row first",
         MakeBmp(40, 1, 0xFFFFFFFE, 8, 0, 2, strTwo, "\0\0\0\0\1\0\0\0"s),
         {1, 2, 1, RGB},
         "\3\2\1\6\5\4"},
        {"OS/2", MakeBmp(12, 1, 1, 1, 0, 0, "\1\2\3\4\5\6", "\x80\0\0\0"s), {1, 1, 1, RGB}, "\6\5\4"},
        {"16 bits", MakeBmp(40, 1, 1, 16, 0, 0, "", Words({0x7C01}, 4)), {1, 1, 1, RGB}, "\xFF\0\x8"s},
        {"16 bits in fields",
         MakeBmp(40, 1, 1, 16, 3, 0, Words({0xF800, 0x7E0, 0x1F}, 4), Words({0x8410}, 4)),
         {1, 1, 1, RGB},
         "\x84\x82\x84"},
        {"24 bits, last row not filled up",
         MakeBmp(40, 1, 1, 24, 0, 0, "", "\1\2\3"),
         {1, 1, 1, RGB},
         "\3\2\1"},
        {"32 bits", MakeBmp(40, 1, 1, 32, 0, 0, "", "\1\2\3\4"), {1, 1, 1, RGB}, "\3\2\1"},
        {"32 bits with alpha", MakeBmp(124, 1, 1, 32, 3, 0, strV5, "\1\2\3\4"), {1, 1, 1, RGBA}, "\3\2\1\4"},
    });
}

TEST(Image, DdsKeepsBlocksAndLevels)
{
    const CBytes strOpaque = "\2\0\1\0\xFF\xFF\xFF\xFF"s; // four colours
    const CBytes strClear = "\1\0\2\0\0\0\0\xC0"s;        // three, and a clear last pixel
    const CBytes strChain =
        strOpaque + strOpaque + strOpaque + strOpaque + "\x8\0\1\0last"s + strOpaque + "\x9\0\1\0tiny"s;
    const CBytes strDX10 = Words({71, 3, 0, 1, 0}, 4);
    ExpectImages({
        {"DXT1, all levels", MakeDds(8, 6, 4, "DXT1", strChain), {8, 6, 4, DXT1}, strChain},
        {"DXT1 with clear pixels", MakeDds(4, 4, 0, "DXT1", strClear), {4, 4, 1, DXT1A}, strClear},
        {"DXT3", MakeDds(1, 1, 1, "DXT3", Count(16)), {1, 1, 1, DXT3}, Count(16)},
        {"DXT5", MakeDds(5, 1, 1, "DXT5", Count(32)), {5, 1, 1, DXT5}, Count(32)},
        {"BC1 behind DX10", MakeDds(4, 4, 1, "DX10", strDX10 + strOpaque), {4, 4, 1, DXT1}, strOpaque},
        {"ARGB, two levels",
         MakeDds(2, 1, 2, 0x41, 32, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}, Count(12)),
         {2, 1, 2, RGBA},
         "\2\1\0\3\6\5\4\7\xA\x9\x8\xB"s},
        {"565",
         MakeDds(1, 1, 1, 0x40, 16, {0xF800, 0x7E0, 0x1F, 0}, Words({0xF81F}, 2)),
         {1, 1, 1, RGB},
         "\xFF\0\xFF"s},
        {"10 bits",
         MakeDds(1, 1, 1, 0x40, 32, {0x3FF, 0xFFC00, 0x3FF00000, 0}, Words({0x200}, 4)),
         {1, 1, 1, RGB},
         "\x80\0\0"s},
        {"grey", MakeDds(2, 1, 1, 0x20000, 8, {0xFF, 0, 0, 0}, "\1\2"), {2, 1, 1, L8}, "\1\2"},
        {"grey and alpha",
         MakeDds(1, 1, 1, 0x20001, 16, {0xFF, 0, 0, 0xFF00}, "\1\2"),
         {1, 1, 1, RGBA},
         "\1\1\1\2"},
    });
}

TEST(Image, JpegOfEveryColourSpaceWithinItsLoss)
{
    constexpr int SIZE = 24;
    constexpr int TOLERANCE = 6;
    struct CRow
    {
        const char* m_szName;
        int m_nChannels;
        J_COLOR_SPACE m_ePixels, m_eStored;
        bool m_bProgressive, m_bAdobe;
    };
    for (const CRow& r :
         {CRow{"grey", 1, JCS_GRAYSCALE, JCS_GRAYSCALE, false, false},
          CRow{"YCbCr", 3, JCS_RGB, JCS_YCbCr, false, false},
          CRow{"progressive", 3, JCS_RGB, JCS_YCbCr, true, false},
          CRow{"RGB", 3, JCS_RGB, JCS_RGB, false, true}, CRow{"CMYK", 4, JCS_CMYK, JCS_CMYK, false, false},
          CRow{"CMYK of Adobe", 4, JCS_CMYK, JCS_CMYK, false, true},
          CRow{"YCCK of Adobe", 4, JCS_CMYK, JCS_YCCK, true, true}})
    {
        SCOPED_TRACE(r.m_szName);
        CBytes strPixels;
        CBytes strExpected;
        for (int n = 0; n < SIZE * SIZE; ++n)
        {
            const int arrValues[4] = {n % SIZE * 10, n / SIZE * 10, 240 - n % SIZE * 5, 55 + n / SIZE * 8};
            for (int nChannel = 0; nChannel < r.m_nChannels; ++nChannel)
            {
                strPixels += static_cast<char>(arrValues[nChannel]);
            }
            for (int nChannel = 0; nChannel < std::min(r.m_nChannels, 3); ++nChannel)
            {
                const int nInk = r.m_bAdobe ? 0 : 255;
                const int nValue = std::abs(nInk - arrValues[nChannel]) * std::abs(nInk - arrValues[3]) / 255;
                strExpected += static_cast<char>(r.m_nChannels == 4 ? nValue : arrValues[nChannel]);
            }
        }
        const CSGTexturePtr spTexture =
            LoadFile(MakeJpeg(SIZE, SIZE, r.m_ePixels, r.m_eStored, strPixels, r.m_bProgressive, r.m_bAdobe));
        ASSERT_TRUE(spTexture);
        EXPECT_EQ(spTexture->GetLayout(), (CSGTextureLayout{SIZE, SIZE, 1, r.m_nChannels == 1 ? L8 : RGB}));
        const CBytes strActual = GetBytes(spTexture.get());
        ASSERT_EQ(strActual.size(), strExpected.size());
        int nWorst = 0;
        for (size_t n = 0; n < strActual.size(); ++n)
        {
            nWorst = std::max(
                nWorst, std::abs(static_cast<uint8_t>(strActual[n]) - static_cast<uint8_t>(strExpected[n])));
        }
        EXPECT_LE(nWorst, TOLERANCE);
    }
}

TEST(Image, SaysWhatIsWrongInOneLine)
{
    const CBytes strPng = MakePng(4, 4, 8, 2, Count(48));
    CBytes strFlipped = strPng;
    strFlipped[strPng.size() - 13] ^= 1; // of the checksum behind the pixels
    CBytes strHuge = strPng;
    strHuge.replace(16, 8, "\0\0\xEA\x60\0\0\xEA\x60"s); // 60000 by 60000
    RepairPngChecksums(strHuge);
    const CBytes strJpeg = MakeJpeg(16, 16, JCS_RGB, JCS_YCbCr, CBytes(768, 'x'), false, false);
    const CBytes strTga = MakeTga(2, 24, 0, 2, 2, Count(12));
    const CBytes strPalette(16, '\0');
    const struct
    {
        CBytes m_strFile;
        const char* m_szReason;
    } ROWS[] = {
        {"", "the file is empty"},
        {"# not an image", "this is no PNG, JPEG, TGA, BMP or DDS file"},
        {"GIF89a", "GIF files are not supported"},
        {"RIFF1234WEBPVP8 ", "WebP files are not supported"},
        {strPng.substr(0, strPng.size() - 13), "PNG: the file ends early"},
        {strFlipped, "PNG: IDAT: CRC error"},
        {strHuge, "PNG: 60000 by 60000 pixels are more than the file can hold"},
        {MakePng(70000, 1, 1, 0, CBytes(8750, '\0')),
         "PNG: 70000 by 1 pixels, sides of 1 to 65535 are supported"},
        {strJpeg.substr(0, strJpeg.size() - 9), "JPEG: Premature end of JPEG file"},
        {strJpeg.substr(0, 20) + "\xFF\xD9", "JPEG: JPEG datastream contains no image"},
        {strTga.substr(0, strTga.size() - 1), "TGA: the file ends early"},
        {MakeTga(11, 8, 0, 2, 2, "\x80\1\x3\1"), "TGA: the file ends early"},
        {MakeTga(1, 8, 0, 2, 1, "\1\2\3\0\1"s, 1, 24), "TGA: color 1 of a palette of 1"},
        {MakeTga(9, 8, 0, 2, 1, "\1\2\3\x81\1", 1, 24), "TGA: color 1 of a palette of 1"},
        {MakeTga(2, 24, 0xC0, 2, 2, Count(12)), "this is no PNG, JPEG, TGA, BMP or DDS file"},
        {MakeBmp(40, 2, 1, 4, 0, 4, strPalette, "\x34\0\0\0"s), "BMP: color 4 of a palette of 4"},
        {MakeBmp(40, 2, 1, 8, 1, 4, strPalette, "\2\0\0\1"s),
         "BMP: compression 1 at 8 bits per pixel is not supported"},
        {MakeBmp(40, 2, 2, 24, 0, 0, "", Count(13)), "BMP: the file ends early"},
        {MakeBmp(41, 1, 1, 32, 3, 0, Count(12), Count(4)), "BMP: a header of 41 bytes"},
        {MakeDds(4, 4, 1, "ATI2", Count(16)), "DDS: the pixel format 'ATI2' is not supported"},
        {MakeDds(4, 4, 1, "DXT1", Count(48), 0x200), "DDS: cube maps and volumes are not supported"},
        {MakeDds(4, 4, 3, "DXT1", Count(16)), "DDS: the file ends early"},
        {MakeDds(4, 4, 4, "DXT1", Count(32)), "DDS: 4 levels of 4 by 4 pixels"},
    };
    CLogCapture objLog;
    for (const auto& r : ROWS)
    {
        objLog.Clear();
        EXPECT_FALSE(LoadFile(r.m_strFile, "some.image"));
        EXPECT_EQ(objLog.GetLines(),
                  std::vector<std::string>{"1 Failed to load texture \"some.image\": "s + r.m_szReason});
    }
    // The extension alone makes a file a TGA.
    objLog.Clear();
    EXPECT_FALSE(LoadFile(MakeTga(2, 24, 0xC0, 2, 2, Count(12)), "some.TGA"));
    EXPECT_TRUE(
        objLog.HasLine("1 Failed to load texture \"some.TGA\": TGA: interleaved rows are not supported"));
}

TEST(Image, MissingFilesBecomeTheMarker)
{
    const CTempFile objFile("no.png");
    const std::string strFolder = std::filesystem::path(objFile.GetName()).parent_path().string();
    const auto spLoader = CSGTextureLoader::CreateStandardLoader();
    CLogCapture objLog;
    EXPECT_EQ(spLoader->LoadTexture(objFile.GetName()), CSGTex_2D::GetTextureFailedToLoad());
    EXPECT_EQ(spLoader->LoadTexture(strFolder), CSGTex_2D::GetTextureFailedToLoad());
    EXPECT_EQ(objLog.GetLines(), (std::vector<std::string>{
                                     "1 Failed to load texture \"" + objFile.GetName() + "\": no such file",
                                     "1 Failed to load texture \"" + strFolder + "\": this is a directory"}));
}

} // namespace
