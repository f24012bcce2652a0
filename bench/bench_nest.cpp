// Saving and loading a NEST file of many nodes, beside writing and reading as many bytes.

#include "qdscenegraph/nest/CSGNestReader.h"
#include "qdscenegraph/nest/CSGNestWriter.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace
{

const std::string FILE_NAME = (std::filesystem::temp_directory_path() / "qdsg-bench.nest").string();

// Nodes with eight children each, as many as asked for.
boost::intrusive_ptr<CSGResourceSet> MakeSet(int64_t nCount)
{
    std::vector<CSGNode::CNodePtr> vecNodes{CSGNode::Create("root", "root")};
    while (static_cast<int64_t>(vecNodes.size()) < nCount)
    {
        const std::string strName = "node" + std::to_string(vecNodes.size());
        const auto spNode = CSGNode::Create(strName, strName);
        vecNodes[(vecNodes.size() - 1) / 8]->AddChild(spNode.get());
        vecNodes.push_back(spNode);
    }
    const auto spSet = CSGResourceSet::Create();
    spSet->AddTopLevelNode(vecNodes.front().get());
    return spSet;
}

void SaveNodes(benchmark::State& rState)
{
    const auto spSet = MakeSet(rState.range(0));
    for (auto _ : rState)
    {
        CSGNestWriter::Create()->SaveResourceSet(FILE_NAME, spSet.get());
    }
    rState.SetItemsProcessed(rState.iterations() * rState.range(0));
}

void LoadNodes(benchmark::State& rState)
{
    CSGNestWriter::Create()->SaveResourceSet(FILE_NAME, MakeSet(rState.range(0)).get());
    for (auto _ : rState)
    {
        const auto spReader = CSGNestReader::Create();
        spReader->LoadFile(FILE_NAME);
        rState.PauseTiming();
        spReader->m_spResourceSet.reset();
        rState.ResumeTiming();
    }
    rState.SetItemsProcessed(rState.iterations() * rState.range(0));
}

void WriteBytes(benchmark::State& rState)
{
    CSGNestWriter::Create()->SaveResourceSet(FILE_NAME, MakeSet(rState.range(0)).get());
    const std::vector<char> vecBytes(std::filesystem::file_size(FILE_NAME));
    for (auto _ : rState)
    {
        std::FILE* pFile = std::fopen(FILE_NAME.c_str(), "wb");
        std::fwrite(vecBytes.data(), 1, vecBytes.size(), pFile);
        std::fclose(pFile);
    }
}

void ReadBytes(benchmark::State& rState)
{
    CSGNestWriter::Create()->SaveResourceSet(FILE_NAME, MakeSet(rState.range(0)).get());
    std::vector<char> vecBytes(std::filesystem::file_size(FILE_NAME));
    for (auto _ : rState)
    {
        std::FILE* pFile = std::fopen(FILE_NAME.c_str(), "rb");
        benchmark::DoNotOptimize(std::fread(vecBytes.data(), 1, vecBytes.size(), pFile));
        std::fclose(pFile);
    }
}

} // namespace

BENCHMARK(SaveNodes)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteBytes)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadNodes)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadBytes)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
