// Textures: levels, drawing, records, and textures that are kept by name.

#include "qdscenegraph/texture/CSGPixBuff_Bytes.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureFromPool.h"
#include "support/NestTestFile.h"

#include <cmath>
#include <cstring>
#include <numeric>

namespace
{

using namespace std::string_literals;

CSGTex_2DPtr MakeTexture(PixelFormat eFormat, int32_t nWidth, int32_t nHeight)
{
    const CSGPixelBufferPtr spBuffer = CSGPixelBuffer::Create(eFormat, nWidth * nHeight);
    const CSGTex_2DPtr spTexture = CSGTex_2D::Create(eFormat, nWidth, nHeight, 1, nWidth, nHeight, spBuffer);
    spTexture->SetChangeFrequency(CSGTexture::CHANGE_FREQ_OFTEN);
    return spTexture;
}

// The pixels of a texture in the format L8, a row of letters each: 0 is '.', the values 1 to 26 'a' to 'z'.
std::string Draw(const CSGTex_2D& rTexture)
{
    std::string strText;
    for (int32_t n = 0; n < rTexture.GetTotalSize(); ++n)
    {
        const uint8_t uiPixel = rTexture.GetDataPtr()[n];
        strText += n > 0 && n % rTexture.GetWidth() == 0 ? "/" : "";
        strText += uiPixel == 0 ? '.' : static_cast<char>('a' - 1 + uiPixel);
    }
    return strText;
}

CColor Letter(char c)
{
    const float f = static_cast<float>(c - 'a' + 1) / 255.0f;
    return {f, f, f, 1.0f};
}

const auto TEXTURE = TypeOf<CSGTexture>(), TEX_2D = TypeOf<CSGTex_2D>(), BUFFER_L8 = TypeOf<CSGPixBuff_L8>(),
           BUFFER = TypeOf<CSGPixelBuffer>();

// A texture of the given base record, and its buffer of 6 pixels without compression.
std::string MakeTextureFile(int32_t nVersion, const std::string& rBase, const std::string& rSize)
{
    return MakeNest({TEX_2D, {TEXTURE, nVersion}, BUFFER_L8, BUFFER},
                    {{TEX_2D, rBase + I({1}) + rSize},
                     {BUFFER_L8, I({PIXEL_FORMAT_L8, 6, 1}) + "\x01\x02\x03\x04\x05\x06"}});
}

} // namespace

TEST(CSGTex_2D, MakesLevelsOfTheMeansOfFourPixels)
{
    const struct
    {
        PixelFormat eFormat;
        int32_t nWidth, nHeight, nLevels;
    } arrCases[] = {{PIXEL_FORMAT_R8G8B8, 7, 5, 3},   {PIXEL_FORMAT_R8G8B8A8, 16, 16, 5},
                    {PIXEL_FORMAT_A8R8G8B8, 9, 1, 4}, {PIXEL_FORMAT_L8, 1, 6, 3},
                    {PIXEL_FORMAT_A8B8G8R8, 1, 1, 1}, {PIXEL_FORMAT_L8, 3, 130, 8}};
    for (const auto& [eFormat, nWidth, nHeight, nLevels] : arrCases)
    {
        const CSGTex_2DPtr spTexture = MakeTexture(eFormat, nWidth, nHeight);
        for (uint32_t n = 0; uint8_t & rByte : spTexture->GetBuffer()->EditData())
        {
            rByte = static_cast<uint8_t>((n++ * 2654435761u) >> 24);
        }
        ASSERT_TRUE(spTexture->GenerateMipMaps());
        ASSERT_EQ(spTexture->GetNumLevels(), nLevels);
        EXPECT_EQ(spTexture->GetDataPtr()[1], 2654435761u >> 24) << "level 0 is kept";
        const int32_t nBytes = PixelFormatBitsPerPixel(eFormat) / 8;
        for (int32_t nLevel = 1; nLevel < nLevels; ++nLevel)
        {
            const uint8_t* pAbove = spTexture->GetLevelDataPtr(nLevel - 1);
            const uint8_t* pLevel = spTexture->GetLevelDataPtr(nLevel);
            const int32_t nAboveWidth = std::max(nWidth >> (nLevel - 1), 1);
            const int32_t nAboveHeight = std::max(nHeight >> (nLevel - 1), 1);
            const int32_t nLevelWidth = std::max(nWidth >> nLevel, 1);
            for (int32_t n = 0; n < spTexture->GetLevelSize(nLevel); ++n)
            {
                const int32_t x = n / nBytes % nLevelWidth * 2;
                const int32_t y = n / nBytes / nLevelWidth * 2;
                float fSum = 0.0f;
                for (const auto& [dx, dy] : {std::pair{0, 0}, {0, 1}, {1, 0}, {1, 1}})
                {
                    const int32_t sx = std::min(x + dx, nAboveWidth - 1);
                    const int32_t sy = std::min(y + dy, nAboveHeight - 1);
                    fSum += pAbove[(sy * nAboveWidth + sx) * nBytes + n % nBytes];
                }
                ASSERT_EQ(pLevel[n], std::floor(fSum / 4.0f + 0.5f)) << eFormat << " " << nLevel << " " << n;
            }
        }
        EXPECT_EQ(spTexture->GetLevelDataPtr(nLevels), nullptr);
        const int32_t nTotal = spTexture->GetTotalSize();
        EXPECT_EQ(spTexture->GetLevelDataPtr(nLevels - 1) + nBytes, spTexture->GetDataPtr() + nTotal);
        spTexture->ReleaseBuffer();
        EXPECT_TRUE(spTexture->GetTotalSize() == 0 && spTexture->GetLastTotalSize() == nTotal);
    }
}

TEST(CSGTex_2D, SaysWhyItMakesNoLevels)
{
    const CSGTex_2DPtr spLevels = MakeTexture(PIXEL_FORMAT_L8, 4, 2);
    spLevels->GenerateMipMaps();
    const CSGTex_2DPtr spAuto = MakeTexture(PIXEL_FORMAT_L8, 4, 2);
    spAuto->SetShouldAutoGenMipMapLevels(true);
    const std::pair<CSGTex_2DPtr, const char*> arrCases[] = {
        {spLevels, "4 3 levels already exist. Nothing being done."},
        {spAuto, "4 autogeneration already enabled. Nothing being done."},
        {MakeTexture(PIXEL_FORMAT_RGB_S3TC_DXT1, 4, 4),
         "4 GenerateMipMaps not implemented here for compressed textures."},
        {MakeTexture(PIXEL_FORMAT_R4G4B4A4, 4, 4), "1 GetColor not implemented for this format."},
    };
    for (const auto& [spTexture, szMessage] : arrCases)
    {
        CLogCapture objLog;
        const int32_t nLevels = spTexture->GetNumLevels();
        EXPECT_EQ(spTexture->GenerateMipMaps(), szMessage[0] == '4') << szMessage;
        EXPECT_TRUE(objLog.HasLine(szMessage));
        EXPECT_EQ(spTexture->GetNumLevels(), nLevels);
    }
}

TEST(CSGTex_2D, DrawsWithinItsBoundsUnlessItNeverChanges)
{
    const CSGTex_2DPtr spTexture = MakeTexture(PIXEL_FORMAT_L8, 4, 3);
    const CSGTex_2DPtr spStamp = MakeTexture(PIXEL_FORMAT_L8, 2, 2);
    std::iota(spStamp->GetBuffer()->EditData().begin(), spStamp->GetBuffer()->EditData().end(), uint8_t{1});
    const CSGTex_2DPtr spColors = MakeTexture(PIXEL_FORMAT_R8G8B8, 2, 2);
    ASSERT_TRUE(spColors->DrawTexture(0, 0, spStamp.get()));
    const struct
    {
        int32_t nU, nV;
        const char* szExpected;
    } arrCases[] = {{-1, -1, "dxxx/xxxx/xxxx"}, {3, 1, "xxxx/xxxa/xxxc"}, {INT32_MIN, 4, "xxxx/xxxx/xxxx"}};
    for (const auto& [nU, nV, szExpected] : arrCases)
    {
        for (const CSGTex_2DPtr& spSource : {spStamp, spColors})
        {
            ASSERT_TRUE(spTexture->Fill(Letter('x')));
            EXPECT_TRUE(spTexture->DrawTexture(nU, nV, spSource.get()));
            EXPECT_EQ(Draw(*spTexture), szExpected);
        }
    }
    const uint8_t arrCoverage[] = {0, 255, 128, 255};
    spTexture->Fill({0, 0, 0, 1});
    EXPECT_TRUE(spTexture->DrawGlyph(-1, 1, arrCoverage, 2, 2, Letter('t')));
    EXPECT_FALSE(spTexture->DrawGlyph(0, 0, arrCoverage, 3, 1, Letter('t'))) << "a mask of 4 bytes";
    EXPECT_TRUE(spTexture->DrawGlyph(1, 1, {arrCoverage + 2, 1}, 1, 1, Letter('t')));
    EXPECT_EQ(Draw(*spTexture), "..../tj../t...") << "20 * 128 / 255";

    CColor objColor;
    ASSERT_TRUE(spTexture->SetPixelColor(3, 2, Letter('q')) && spTexture->GetPixelColor(3, 2, objColor));
    EXPECT_EQ(objColor, Letter('q'));
    EXPECT_FALSE(spTexture->GetPixelColor(4, 0, objColor) || spTexture->GetPixelColor(3, -1, objColor));
    spTexture->SetChangeFrequency(CSGTexture::CHANGE_FREQ_NEVER);
    CLogCapture objLog;
    EXPECT_FALSE(spTexture->SetPixelColor(0, 0, objColor) || spTexture->Fill(objColor) ||
                 spTexture->DrawTexture(0, 0, spStamp.get()));
    EXPECT_TRUE(objLog.HasLine("1 GetChangeFrequency() != CHANGE_FREQ_NEVER is false"));
}

TEST(CSGTex_2D, MarksWhatDidNotLoadInMagentaAndBlack)
{
    const CSGTex_2DPtr spFailed = CSGTex_2D::GetTextureFailedToLoad();
    EXPECT_EQ(spFailed->GetLayout(), (CSGTextureLayout{8, 8, 1, PIXEL_FORMAT_R8G8B8A8}));
    const std::string strRow = "\xFF\x00\xFF\xFF\xFF\x00\xFF\xFF\x00\x00\x00\xFF\x00\x00\x00\xFF"s;
    EXPECT_EQ(std::memcmp(spFailed->GetDataPtr(), (strRow + strRow).data(), 32), 0);
}

TEST(CSGTex_2D, ReadsRecordsOfEveryVersionAndWritesTheLatest)
{
    const std::string strSize = I({3, 2, 1});
    const std::string strBase2 = "\x01" + I({2});
    const auto spTexture = Load<CSGTex_2D>(MakeTextureFile(1, I({7, 2}), strSize));
    ASSERT_TRUE(spTexture);
    EXPECT_TRUE(spTexture->ShouldAutoGenMipMapLevels() && !spTexture->HasChanged());
    EXPECT_EQ(spTexture->GetChangeFrequency(), CSGTexture::CHANGE_FREQ_OFTEN);
    EXPECT_EQ(Draw(*spTexture), "abc/def");
    const std::string strSaved = Save(spTexture.get());
    EXPECT_NE(strSaved.find(G(TEX_2D) + strBase2 + I({1}) + strSize + G(BUFFER_L8)), std::string::npos);
    EXPECT_EQ(strSaved, Save(Load<CSGTex_2D>(strSaved).get()));

    CLogCapture objLog;
    EXPECT_TRUE(Load<CSGTex_2D>(MakeTextureFile(-1, I({0, 0}), strSize)));
    EXPECT_TRUE(objLog.HasLine("4 Treating version -1 as version 1"));
    ExpectRefused(MakeTextureFile(3, strBase2, strSize), "1 Unexpected version 3 of CSGTexture.");
    const struct
    {
        std::string strSize, strMessage;
    } arrRefused[] = {{I({7, 1, 1}), "1 A buffer of 6 bytes is too small for 7 x 1 pixels and levels: 1."},
                      {I({3, 2, 2}), "1 A buffer of 6 bytes is too small for 3 x 2 pixels and levels: 2."},
                      {I({65537, 1, 1}), "nWidth"},
                      {I({3, 0, 1}), "nHeight"},
                      {I({3, 2, 257}), "nLevels"}};
    for (const auto& [strRefused, strMessage] : arrRefused)
    {
        ExpectRefused(MakeTextureFile(2, strBase2, strRefused), strMessage);
    }
    ExpectRefused(MakeNest({TEX_2D, {TEXTURE, 2}}, {{TEX_2D, strBase2 + I({-1, 3, 2, 1})}}),
                  "1 m_spBuffer is NULL");
}

TEST(CSGTextureFromPool, SavesItsNamesAndLoadsWithoutThePool)
{
    const auto spTexture = CSGTextureFromPool::Create("no such pool", "walls/brick.png");
    const std::string strSaved = Save(spTexture.get());
    EXPECT_EQ(strSaved, MakeNest({TypeOf<CSGTextureFromPool>(), {TEXTURE, 2}},
                                 {{TypeOf<CSGTextureFromPool>(), S("no such pool") + S("walls/brick.png")}}));
    for (const size_t nCut : {1, 15, 19, 20})
    {
        ExpectRefused(strSaved.substr(0, strSaved.size() - nCut), "1 Call pStream->ReadString(");
    }
    CLogCapture objLog;
    auto spLoaded = Load<CSGTextureFromPool>(strSaved);
    ASSERT_TRUE(spLoaded);
    EXPECT_TRUE(
        objLog.HasLine("4 There is no texture pool 'no such pool' for the texture 'walls/brick.png'."));
    EXPECT_TRUE(spLoaded->GetSourceName() == "walls/brick.png" &&
                spLoaded->GetLayout() == CSGTextureLayout());
    EXPECT_TRUE(objLog.HasLine("1 m_spTexture is NULL"));
    const CSGWeakPtr<CSGTexture> wpTexture(spLoaded.get());
    EXPECT_EQ(wpTexture.Lock(), spLoaded);
    spLoaded.reset();
    EXPECT_EQ(wpTexture.Lock(), nullptr);
}
