// Textures of 4096 by 4096 RGBA pixels from the image file to NEST and back, beside bare zlib passes over the
// same bytes.

#include "qdscenegraph/nest/CSGNestReader.h"
#include "qdscenegraph/nest/CSGNestWriter.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"

#include <benchmark/benchmark.h>

#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace
{

constexpr int32_t SIZE = 4096;
const std::string PNG_NAME = (std::filesystem::temp_directory_path() / "qdsg-bench.png").string();
const std::string NEST_NAME = (std::filesystem::temp_directory_path() / "qdsg-bench-texture.nest").string();

// Gradients under a little noise, as photographs have: zlib halves them, more or less.
const std::vector<uint8_t>& GetPixels()
{
    static const std::vector<uint8_t> s_vecPixels = [] {
        std::vector<uint8_t> vecPixels(size_t{SIZE} * SIZE * 4);
        uint32_t uiRandom = 1;
        for (size_t n = 0; n < vecPixels.size(); ++n)
        {
            uiRandom = uiRandom * 1664525 + 1013904223;
            const size_t nPlace = n / 4 % SIZE / 16 + n / 4 / SIZE / 16 * (n % 4);
            vecPixels[n] = n % 4 == 3 ? 255 : static_cast<uint8_t>(nPlace + (uiRandom >> 29));
        }
        return vecPixels;
    }();
    return s_vecPixels;
}

void WritePng()
{
    png_image objImage = {};
    objImage.version = PNG_IMAGE_VERSION;
    objImage.width = SIZE;
    objImage.height = SIZE;
    objImage.format = PNG_FORMAT_RGBA;
    objImage.flags = PNG_IMAGE_FLAG_FAST;
    png_image_write_to_file(&objImage, PNG_NAME.c_str(), 0, GetPixels().data(), 0, nullptr);
}

CSGTex_2DPtr MakeTexture()
{
    const CSGPixelBufferPtr spBuffer = CSGPixelBuffer::Create(PIXEL_FORMAT_R8G8B8A8, SIZE * SIZE);
    std::ranges::copy(GetPixels(), spBuffer->EditData().begin());
    return CSGTex_2D::Create(PIXEL_FORMAT_R8G8B8A8, SIZE, SIZE, 1, SIZE, SIZE, spBuffer);
}

bool SaveNest()
{
    const auto spSet = CSGResourceSet::Create();
    spSet->AddTopLevelNode(MakeTexture().get());
    return CSGNestWriter::Create()->SaveResourceSet(NEST_NAME, spSet.get());
}

void LoadPng(benchmark::State& rState)
{
    WritePng();
    const auto spLoader = CSGTextureLoader::CreateStandardLoader();
    for (auto _ : rState)
    {
        benchmark::DoNotOptimize(spLoader->LoadTexture(PNG_NAME));
    }
}

void GenerateMipMaps(benchmark::State& rState)
{
    for (auto _ : rState)
    {
        rState.PauseTiming();
        const CSGTex_2DPtr spTexture = MakeTexture();
        rState.ResumeTiming();
        spTexture->GenerateMipMaps();
    }
}

void SaveNestFile(benchmark::State& rState)
{
    const auto spSet = CSGResourceSet::Create();
    spSet->AddTopLevelNode(MakeTexture().get());
    for (auto _ : rState)
    {
        CSGNestWriter::Create()->SaveResourceSet(NEST_NAME, spSet.get());
    }
}

void ReadNestFile(benchmark::State& rState)
{
    SaveNest();
    for (auto _ : rState)
    {
        const auto spReader = CSGNestReader::Create();
        spReader->LoadFile(NEST_NAME);
    }
}

std::vector<uint8_t> DeflatePixels()
{
    const std::vector<uint8_t>& rPixels = GetPixels();
    std::vector<uint8_t> vecDeflated(compressBound(rPixels.size()));
    uLongf ulSize = vecDeflated.size();
    compress2(vecDeflated.data(), &ulSize, rPixels.data(), rPixels.size(), 1);
    vecDeflated.resize(ulSize);
    return vecDeflated;
}

void Deflate(benchmark::State& rState)
{
    for (auto _ : rState)
    {
        benchmark::DoNotOptimize(DeflatePixels());
    }
}

void Inflate(benchmark::State& rState)
{
    const std::vector<uint8_t> vecDeflated = DeflatePixels();
    std::vector<uint8_t> vecPixels(GetPixels().size());
    for (auto _ : rState)
    {
        uLongf ulSize = vecPixels.size();
        uncompress(vecPixels.data(), &ulSize, vecDeflated.data(), vecDeflated.size());
    }
}

} // namespace

BENCHMARK(LoadPng)->Unit(benchmark::kMillisecond);
BENCHMARK(GenerateMipMaps)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveNestFile)->Unit(benchmark::kMillisecond);
BENCHMARK(Deflate)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadNestFile)->Unit(benchmark::kMillisecond);
BENCHMARK(Inflate)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
