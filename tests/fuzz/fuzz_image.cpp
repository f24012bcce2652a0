// Damaged image files: no crash, no hang, nothing left behind, no memory beyond what such a file can hold.
//
// fuzz_image [COUNT]: for a small file of each kind, truncations at every byte and COUNT (10 000) mutations.

#include "../unit/support/MakeImageFile.h"
#include "CMutator.h"

#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"

#include <cstdio>
#include <cstdlib>

namespace
{

using namespace std::string_literals;

struct CSeed
{
    const char* m_szName; // TGA files need the extension
    CBytes m_strFile;
};

std::vector<CSeed> MakeSeeds()
{
    CBytes strPixels;
    for (int n = 0; n < 1024; ++n)
    {
        strPixels += static_cast<char>(n * n >> 4);
    }
    const CBytes strPalette = strPixels.substr(0, 64);
    const std::vector<png_color> vecPalette = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}};
    const CBytes strTgaPackets = "\x83\1\2\3\4"s + "\3" + strPixels.substr(0, 16) + "\x87\5\6\7\x8";
    const CBytes strV5 = Words({0xF800, 0x7E0, 0x1F, 0}, 4) + CBytes(68, '\0');
    return {
        {"rgba.png", MakePng(8, 8, 8, PNG_COLOR_TYPE_RGBA, strPixels.substr(0, 256))},
        {"interlaced.png",
         MakePng(9, 9, 16, PNG_COLOR_TYPE_GRAY, strPixels.substr(0, 162), {}, "", 7, PNG_INTERLACE_ADAM7)},
        {"palette.png", MakePng(8, 4, 2, PNG_COLOR_TYPE_PALETTE, strPixels.substr(0, 8), vecPalette, "\1\2")},
        {"baseline.jpg", MakeJpeg(16, 16, JCS_RGB, JCS_YCbCr, strPixels.substr(0, 768), false, false)},
        {"progressive.jpg", MakeJpeg(17, 15, JCS_RGB, JCS_YCbCr, strPixels.substr(0, 765), true, false)},
        {"cmyk.jpg", MakeJpeg(8, 8, JCS_CMYK, JCS_YCCK, strPixels.substr(0, 256), false, true)},
        {"packets.tga", MakeTga(10, 32, 0x18, 4, 4, strTgaPackets)},
        {"palette.tga", MakeTga(1, 8, 0x20, 5, 3, strPixels.substr(0, 48) + CBytes(15, '\3'), 16, 24)},
        {"packed palette.tga", MakeTga(9, 8, 0, 4, 2, strPixels.substr(0, 8) + "\x83\1\3\0\1\2\3"s, 4, 16)},
        {"palette.bmp", MakeBmp(40, 9, 3, 4, 0, 16, strPalette, strPixels.substr(0, 24))},
        {"fields.bmp", MakeBmp(124, 5, 3, 16, 3, 0, strV5, strPixels.substr(0, 36))},
        {"rgb.bmp", MakeBmp(12, 3, 3, 24, 0, 0, "", strPixels.substr(0, 36))},
        {"blocks.dds", MakeDds(8, 8, 4, "DXT1", strPixels.substr(0, 56))},
        {"packed.dds", MakeDds(4, 4, 3, 0x41, 16, {0xF800, 0x7E0, 0x1F, 0}, strPixels.substr(0, 42))},
        {"dx10.dds", MakeDds(4, 4, 3, "DX10", Words({28, 3, 0, 1, 0}, 4) + strPixels.substr(0, 84))},
    };
}

} // namespace

int main(int argc, char** argv)
{
    const int nCount = argc > 1 ? std::atoi(argv[1]) : 10000;
    const auto spLoader = CSGTextureLoader::CreateStandardLoader();
    const int64_t nBlocks = CSGMem::GetPool().GetNumLiveBlocks();
    for (const CSeed& rSeed : MakeSeeds())
    {
        int nTried = 0;
        int nLoaded = 0;
        CMutator(rSeed.m_strFile).ForEach(nCount, [&](CBytes strBytes) {
            if (nTried++ % 2 == 0 && strBytes.starts_with("\x89PNG"))
            {
                RepairPngChecksums(strBytes); // or hardly any would be looked into
            }
            CQDString strReason;
            if (const CSGTexturePtr spTexture = spLoader->ReadTextureFromMemory(
                    {reinterpret_cast<const uint8_t*>(strBytes.data()), strBytes.size()}, rSeed.m_szName,
                    strReason))
            {
                ++nLoaded;
                static_cast<CSGTex_2D*>(spTexture.get())->GenerateMipMaps();
            }
            if (CSGMem::GetPool().GetNumLiveBlocks() != nBlocks)
            {
                std::printf("%s: file %d leaves objects behind\n", rSeed.m_szName, nTried);
                std::exit(1);
            }
        });
        std::printf("fuzz_image: %s: %d files tried, %d of them loaded (seed of %zu bytes)\n", rSeed.m_szName,
                    nTried, nLoaded, rSeed.m_strFile.size());
    }
    return 0;
}
