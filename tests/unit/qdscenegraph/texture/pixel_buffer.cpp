// Pixel buffers: sizes, colours, formats, and their records in every version.

#include "qdscenegraph/texture/CSGPixBuff_Bytes.h"
#include "qdscenegraph/texture/CSGPixBuff_PVR.h"
#include "qdscenegraph/texture/CSGPixBuff_S3TC.h"
#include "support/NestTestFile.h"

#include <cmath>
#include <cstring>
#include <numeric>
#include <random>
#include <zlib.h>

namespace
{

using CBytes = std::vector<int>;

CBytes DataOf(const CSGPixelBuffer& rBuffer) { return {rBuffer.GetData().begin(), rBuffer.GetData().end()}; }

template <class T>
std::string MakeFile(int32_t nVersion, const std::string& rBody)
{
    return MakeNest({TypeOf<T>(), {TypeOf<CSGPixelBuffer>(), nVersion}}, {{TypeOf<T>(), rBody}});
}

// The zlib stream, with one stored block, of the bytes 1 to 8. A chunk of it looks like a string in the file.
const std::string STREAM("\x78\x01\x01\x08\x00\xF7\xFF\x01\x02\x03\x04\x05\x06\x07\x08\x00\x80\x00\x25", 19);
const std::string RGBA_2 = I({PIXEL_FORMAT_R8G8B8A8, 2, 32});

} // namespace

TEST(CSGPixelBuffer, CalculatesTheSizesOfLevels)
{
    constexpr int32_t NO_SIZE = -1;
    const struct
    {
        PixelFormat eFormat;
        int32_t nWidth, nHeight, nLevel, nBits, nExpected;
    } arrCases[] = {
        {PIXEL_FORMAT_R8G8B8, 1, 1, 0, 24, 3},
        {PIXEL_FORMAT_R8G8B8, 7, 5, 1, 24, 18},
        {PIXEL_FORMAT_L8, 7, 5, 40, 8, 1},
        {PIXEL_FORMAT_RGB_S3TC_DXT1, 256, 256, 8, 4, 8},
        {PIXEL_FORMAT_RGBA_S3TC_DXT1, 256, 256, 9, 4, 8},
        {PIXEL_FORMAT_RGBA_S3TC_DXT5, 1, 1, 0, 8, 16},
        {PIXEL_FORMAT_BLOCK4X4, 1, 5, 0, 4, 16},
        {PIXEL_FORMAT_RGB_PVRTC_2BPP, 1, 1, 0, 2, 32},
        {PIXEL_FORMAT_RGBA_PVRTC_2BPP, 64, 2, 0, 2, 128},
        {PIXEL_FORMAT_RGB_PVRTC_4BPP, 1, 1, 0, 4, 32},
        {PIXEL_FORMAT_RGBA_PVRTC_4BPP, 16, 4, 1, 4, 32},
        {PIXEL_FORMAT_R8G8B8A8, 8192, 8192, 0, 32, 268435456},
        {PIXEL_FORMAT_R8G8B8A8, 32768, 16384, 0, 32, NO_SIZE},
        {PIXEL_FORMAT_RGBA_S3TC_DXT3, INT32_MAX, INT32_MAX, 0, INT32_MAX, NO_SIZE},
        {PIXEL_FORMAT_L8, 0, 4, 0, 8, NO_SIZE},
    };
    for (const auto& [eFormat, nWidth, nHeight, nLevel, nBits, nExpected] : arrCases)
    {
        int32_t nSize = 77;
        const bool bSize = CSGPixelBuffer::CalcLevelSize(eFormat, nWidth, nHeight, nLevel, nBits, nSize);
        EXPECT_EQ(bSize ? nSize : NO_SIZE, nExpected) << eFormat << ": " << nWidth << " x " << nHeight;
    }
}

TEST(CSGPixelBuffer, HasAClassAndASmallestSizeForEachFormat)
{
    const struct
    {
        std::vector<int32_t> vecFormats;
        const char* szClass;
        int32_t nBits, nMinPixels;
    } arrCases[] = {
        {{1}, "CSGPixBuff_R8G8B8", 24, 1},   {{2}, "CSGPixBuff_A8R8G8B8", 32, 1},
        {{3}, "CSGPixBuff_R8G8B8A8", 32, 1}, {{4}, "CSGPixBuff_L8", 8, 1},
        {{9}, "CSGPixBuff_A8B8G8R8", 32, 1}, {{5, 6, 17}, "CSGPixBuff_PVR", 4, 16},
        {{7, 8}, "CSGPixBuff_PVR", 8, 16},   {{10, 11}, "CSGPixBuff_PVR", 2, 128},
        {{12, 13}, "CSGPixBuff_PVR", 4, 64}, {{14, 15, 16}, "CSGPixBuff_16bit", 16, 1},
    };
    for (const auto& [vecFormats, szClass, nBits, nMinPixels] : arrCases)
    {
        for (const int32_t nFormat : vecFormats)
        {
            const auto eFormat = static_cast<PixelFormat>(nFormat);
            const CSGPixelBufferPtr spBuffer = CSGPixelBuffer::Create(eFormat, nMinPixels);
            ASSERT_TRUE(spBuffer) << nFormat;
            EXPECT_EQ(spBuffer->GetSGStreamableType()->GetName(), szClass);
            EXPECT_EQ(spBuffer->GetBitsPerPixel(), nBits);
            EXPECT_EQ(DataOf(*spBuffer), CBytes(static_cast<size_t>(nMinPixels * nBits / 8), 0));
            EXPECT_FALSE(CSGPixelBuffer::Create(eFormat, nMinPixels - 1)) << nFormat;
            CColor objColor;
            EXPECT_EQ(spBuffer->GetDataPtrAtPixel(0) != nullptr, !PixelFormatIsCompressed(eFormat));
            EXPECT_EQ(spBuffer->GetColor(0, objColor), nFormat <= 4 || nFormat == 9) << nFormat;
            EXPECT_EQ(spBuffer->SetColor(0, objColor), nFormat <= 4 || nFormat == 9) << nFormat;
        }
    }
    CLogCapture objLog;
    for (const int32_t nFormat : {0, 18, -1})
    {
        EXPECT_FALSE(CSGPixelBuffer::Create(static_cast<PixelFormat>(nFormat), 16));
        EXPECT_TRUE(objLog.HasLine("1 Unrecognized format " + std::to_string(nFormat)));
    }
    EXPECT_FALSE(CSGPixelBuffer::Create(PIXEL_FORMAT_R8G8B8A8, 1 << 29)) << "2^31 bytes";
}

TEST(CSGPixelBuffer, ReadsAndWritesColorsInTheByteOrderOfTheFormat)
{
    const struct
    {
        PixelFormat eFormat;
        CBytes vecExpected;
    } arrCases[] = {
        {PIXEL_FORMAT_R8G8B8, {0, 0, 0, 255, 128, 51}},
        {PIXEL_FORMAT_A8R8G8B8, {0, 0, 0, 0, 204, 255, 128, 51}},
        {PIXEL_FORMAT_R8G8B8A8, {0, 0, 0, 0, 255, 128, 51, 204}},
        {PIXEL_FORMAT_A8B8G8R8, {0, 0, 0, 0, 204, 51, 128, 255}},
        {PIXEL_FORMAT_L8, {0, 157}}, // 0.299 * 255 + 0.587 * 127.5 + 0.114 * 51 = 156.9
    };
    CColor objColor;
    for (const auto& [eFormat, vecExpected] : arrCases)
    {
        const CSGPixelBufferPtr spBuffer = CSGPixelBuffer::Create(eFormat, 2);
        ASSERT_TRUE(spBuffer->SetColor(1, {1.0f, 0.5f, 0.2f, 0.8f}));
        EXPECT_EQ(DataOf(*spBuffer), vecExpected) << eFormat;
        ASSERT_TRUE(spBuffer->GetColor(1, objColor));
        spBuffer->SetColor(1, objColor);
        EXPECT_EQ(DataOf(*spBuffer), vecExpected) << "what is got is what was set";
        EXPECT_EQ(objColor.a, PixelFormatBitsPerPixel(eFormat) == 32 ? 0.8f : 1.0f);
        EXPECT_FALSE(spBuffer->GetColor(-1, objColor) || spBuffer->SetColor(2, objColor));
    }
    const CSGPixelBufferPtr spBuffer = CSGPixelBuffer::Create(PIXEL_FORMAT_R8G8B8A8, 1);
    spBuffer->SetColor(0, {-1.0f, 1e30f, std::nanf(""), INFINITY});
    EXPECT_EQ(DataOf(*spBuffer), (CBytes{0, 255, 0, 255}));
}

TEST(CSGPixelBuffer, ConvertsOrdersOfFourBytesForARenderer)
{
    const CSGPixelBufferPtr spARGB = CSGPixelBuffer::Create(PIXEL_FORMAT_A8R8G8B8, 2);
    std::iota(spARGB->EditData().begin(), spARGB->EditData().end(), uint8_t{1});
    EXPECT_EQ(CSGPixelBuffer::ConvertToSupportedFormat(spARGB.get(), ALL_PIXEL_FORMATS), spARGB);
    const uint32_t uiBits = PixelFormatBit(PIXEL_FORMAT_A8B8G8R8) | PixelFormatBit(PIXEL_FORMAT_L8);
    const CSGPixelBufferPtr spABGR = CSGPixelBuffer::ConvertToSupportedFormat(spARGB.get(), uiBits);
    ASSERT_TRUE(spABGR && spABGR->GetFormat() == PIXEL_FORMAT_A8B8G8R8);
    EXPECT_EQ(DataOf(*spABGR), (CBytes{1, 4, 3, 2, 5, 8, 7, 6}));
    const CSGPixelBufferPtr spRGB = CSGPixelBuffer::Create(PIXEL_FORMAT_R8G8B8, 1);
    EXPECT_FALSE(CSGPixelBuffer::ConvertToSupportedFormat(spRGB.get(), uiBits));
}

TEST(CSGPixelBuffer, ReadsRecordsOfEveryVersion)
{
    const std::string strBytes = I({PIXEL_FORMAT_R8G8B8A8, 2, 4});
    const std::string strFiles[] = {
        MakeFile<CSGPixBuff_R8G8B8A8>(1, strBytes + "\x01\x02\x03\x04\x05\x06\x07\x08"),
        MakeFile<CSGPixBuff_R8G8B8A8>(2, strBytes + S(STREAM)),
        MakeFile<CSGPixBuff_R8G8B8A8>(3, RGBA_2 + S(STREAM)),
        MakeFile<CSGPixBuff_R8G8B8A8>(4, RGBA_2 + S(STREAM)), // read like version 3
        MakeFile<CSGPixBuff_RGB_S3TC_DXT1>(3, I({5, 16, 4}) + S(STREAM)),
    };
    CLogCapture objLog;
    for (const std::string& rFile : strFiles)
    {
        const auto spBuffer = Load<CSGPixelBuffer>(rFile);
        ASSERT_TRUE(spBuffer);
        EXPECT_EQ(spBuffer->GetBitsPerPixel(), spBuffer->GetFormat() == PIXEL_FORMAT_R8G8B8A8 ? 32 : 4);
        EXPECT_EQ(DataOf(*spBuffer), (CBytes{1, 2, 3, 4, 5, 6, 7, 8}));
        EXPECT_TRUE(Load<CSGPixelBuffer>(Save(spBuffer.get())));
    }
    EXPECT_EQ(objLog.GetLines(), std::vector<std::string>{"1 Unknown stream version 4"});
    // Older records count a byte for each pixel of four bits.
    EXPECT_TRUE(
        Load<CSGPixelBuffer>(MakeFile<CSGPixBuff_RGBA_S3TC_DXT1>(1, I({6, 16, 1}) + std::string(16, 'x'))));
}

TEST(CSGPixelBuffer, RefusesDamagedRecords)
{
    std::string strBadSum = STREAM;
    strBadSum.back() ^= 1;
    const std::string strShort("\x78\x01\x01\x04\x00\xFB\xFF\x01\x02\x03\x04\x00\x18\x00\x0B", 15);
    using CRGBA = CSGPixBuff_R8G8B8A8;
    const struct
    {
        std::string strFile, strMessage;
    } arrCases[] = {
        {MakeFile<CRGBA>(3, I({2, 2, 32}) + S(STREAM)), "eFormat == FORMAT"},
        {MakeFile<CRGBA>(3, I({3, 0, 32}) + S(STREAM)), "1 nNumPixels > 0 is false"},
        {MakeFile<CRGBA>(3, I({3, 2, 24}) + S(STREAM)), "nBitsPerPixel"},
        {MakeFile<CRGBA>(2, I({3, 2, 1 << 29}) + S(STREAM)), "nPixelSize"},
        {MakeFile<CRGBA>(3, I({3, 1 << 28, 32}) + S(STREAM)), "CanRead"},
        {MakeFile<CRGBA>(3, I({3, INT32_MAX, 32}) + S(STREAM)), "MAX_SIZE"},
        {MakeFile<CRGBA>(1, I({3, 2, 4}) + "1234567"), "CanRead"},
        {MakeFile<CRGBA>(3, RGBA_2 + S(strBadSum)), "1 Got error -3 inflating pixel buffer."},
        {MakeFile<CRGBA>(3, RGBA_2 + S(strShort)), "1 Pixel buffer data ends 4 bytes short."},
        {MakeFile<CRGBA>(3, I({3, 1, 32}) + S(STREAM)), "1 Pixel buffer holds more data than its 4 bytes."},
        {MakeFile<CRGBA>(3, RGBA_2 + S(STREAM + std::string(1006, '\0'))), "CHUNK_SIZE"},
        {MakeFile<CRGBA>(3, RGBA_2 + I({19}) + STREAM.substr(0, 18)), "CanRead"},
        {MakeFile<CSGPixBuff_RGBA_S3TC_DXT5>(3, I({8, 8, 8}) + S(STREAM)),
         "1 Size must be multiple of 16 for this format (Dimensions must be multiples of 4)"},
        {MakeFile<CSGPixBuff_PVR>(3, I({3, 16, 32}) + S(STREAM)), "1 Unexpected eFormat 3"},
        {MakeFile<CSGPixBuff_PVR>(3, I({12, 16, 4}) + S(STREAM)),
         "1 nNumPixels must be at least 64 for this format"},
    };
    for (const auto& [strFile, strMessage] : arrCases)
    {
        ExpectRefused(strFile, strMessage);
    }
}

TEST(CSGPixelBuffer, WritesOneZlibStreamInChunksOf1024Bytes)
{
    // Pixels that do not get smaller: the streams of 1013 and 2037 of them end with a chunk.
    for (const int32_t nPixels : {1, 1012, 1013, 1014, 2037, 2038, 100000})
    {
        const CSGPixelBufferPtr spBuffer = CSGPixelBuffer::Create(PIXEL_FORMAT_L8, nPixels);
        std::minstd_rand objRandom;
        std::ranges::generate(spBuffer->EditData(), [&] { return static_cast<uint8_t>(objRandom() >> 16); });
        const std::string strFile = Save(spBuffer.get());
        const std::string strHeader = MakeFile<CSGPixBuff_L8>(3, I({PIXEL_FORMAT_L8, nPixels, 8}));
        ASSERT_TRUE(strFile.starts_with(strHeader));
        std::string strStream;
        uint32_t uiLength = 0;
        for (size_t nAt = strHeader.size(); nAt < strFile.size(); nAt += 4 + uiLength)
        {
            ASSERT_EQ(strStream.size() % 1024, 0u) << "only the last chunk is not full";
            std::memcpy(&uiLength, &strFile[nAt], 4);
            ASSERT_TRUE(uiLength > 0 && uiLength <= 1024);
            strStream += strFile.substr(nAt + 4, uiLength);
        }
        EXPECT_EQ(strStream.substr(0, 2), "\x78\x01") << "level 1";
        std::vector<uint8_t> vecPixels(static_cast<size_t>(nPixels));
        uLongf nSize = vecPixels.size();
        const auto* pStream = reinterpret_cast<const Bytef*>(strStream.data());
        ASSERT_EQ(uncompress(vecPixels.data(), &nSize, pStream, strStream.size()), Z_OK);
        EXPECT_TRUE(std::ranges::equal(vecPixels, spBuffer->GetData()));
        const auto spLoaded = Load<CSGPixelBuffer>(strFile);
        ASSERT_TRUE(spLoaded) << nPixels;
        EXPECT_TRUE(std::ranges::equal(vecPixels, spLoaded->GetData()));
    }
}
