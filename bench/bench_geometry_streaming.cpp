// Writing and reading the vertices and indices of a large mesh, beside writing and reading as many plain
// bytes.

#include "qdcommon/CFileStream.h"
#include "qdscenegraph/geometry/CSGIndexBuffer.h"
#include "qdscenegraph/geometry/CSGVertexBuffer.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace
{

constexpr int32_t NUM_VERTICES = 500000;
constexpr int32_t NUM_INDICES = 3000000;

const std::string FILE_NAME = (std::filesystem::temp_directory_path() / "qdsg-bench-geometry.bin").string();

boost::intrusive_ptr<CSGVertexBuffer> MakeVertices()
{
    CSGVertexFormat objFormat;
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_POSITION, 0, 3);
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_NORMAL, 0, 3);
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_TEXCOORD, 0, 2);
    return CSGVertexBuffer::Create(objFormat, NUM_VERTICES);
}

boost::intrusive_ptr<CSGIndexBuffer> MakeIndices()
{
    const auto spIndices = CSGIndexBuffer::Create(NUM_INDICES, NUM_VERTICES - 1);
    for (int32_t i = 0; i < NUM_INDICES; ++i)
    {
        spIndices->SetIndex(i, i % NUM_VERTICES);
    }
    return spIndices;
}

void WriteTo(const std::string& rFilename, CSGStreamable* pObject)
{
    CSGStreamableSaveState saveState;
    CFileStream objStream(rFilename, CFileStream::OPEN_WRITE | CFileStream::OPEN_TRUNCATE);
    pObject->WriteToStream(&objStream, &saveState);
    objStream.Close();
}

void CountBytes(benchmark::State& rState)
{
    const auto nBytes = static_cast<int64_t>(std::filesystem::file_size(FILE_NAME));
    rState.SetBytesProcessed(rState.iterations() * nBytes);
    std::filesystem::remove(FILE_NAME);
}

template <class MAKE>
void WriteObject(benchmark::State& rState, MAKE fnMake)
{
    const auto spObject = fnMake();
    for (auto _ : rState)
    {
        WriteTo(FILE_NAME, spObject.get());
    }
    CountBytes(rState);
}

template <class MAKE>
void ReadObject(benchmark::State& rState, MAKE fnMake)
{
    const auto spObject = fnMake();
    const SGStreamableType* pType = spObject->GetSGStreamableType();
    WriteTo(FILE_NAME, spObject.get());
    for (auto _ : rState)
    {
        CSGStreamableLoadState loadState;
        CFileStream objStream(FILE_NAME, CFileStream::OPEN_READ);
        const auto spLoaded = pType->CreateObject();
        if (!spLoaded->ReadFromStream(&objStream, &loadState))
        {
            rState.SkipWithError("not read");
        }
    }
    CountBytes(rState);
}

using CFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

CFile OpenPlain(const char* szMode) { return {std::fopen(FILE_NAME.c_str(), szMode), &std::fclose}; }

template <class MAKE>
void WritePlain(benchmark::State& rState, MAKE fnMake)
{
    WriteTo(FILE_NAME, fnMake().get());
    const std::vector<char> vecBytes(std::filesystem::file_size(FILE_NAME));
    for (auto _ : rState)
    {
        const CFile spFile = OpenPlain("wb");
        benchmark::DoNotOptimize(std::fwrite(vecBytes.data(), 1, vecBytes.size(), spFile.get()));
    }
    CountBytes(rState);
}

// Into new memory each time, as the loaded object is new.
template <class MAKE>
void ReadPlain(benchmark::State& rState, MAKE fnMake)
{
    WriteTo(FILE_NAME, fnMake().get());
    const auto nBytes = static_cast<size_t>(std::filesystem::file_size(FILE_NAME));
    for (auto _ : rState)
    {
        const CFile spFile = OpenPlain("rb");
        const auto arrBytes = std::make_unique_for_overwrite<char[]>(nBytes);
        benchmark::DoNotOptimize(std::fread(arrBytes.get(), 1, nBytes, spFile.get()));
    }
    CountBytes(rState);
}

BENCHMARK_CAPTURE(WriteObject, vertices, MakeVertices)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WritePlain, vertices, MakeVertices)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadObject, vertices, MakeVertices)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadPlain, vertices, MakeVertices)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadObject, indices, MakeIndices)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadPlain, indices, MakeIndices)->Unit(benchmark::kMillisecond);

// The first request for bounds after a change.
void ComputeBounds(benchmark::State& rState)
{
    const auto spVertices = MakeVertices();
    for (auto _ : rState)
    {
        spVertices->EditData();
        benchmark::DoNotOptimize(spVertices->GetBounds());
    }
}
BENCHMARK(ComputeBounds)->Unit(benchmark::kMillisecond);

} // namespace
