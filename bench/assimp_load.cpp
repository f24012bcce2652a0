// Times one import with assimp, the peer that bench/compare sets beside ours: no post-processing, so that
// both do the same job. Prints a JSON object: the seconds of the import, by the clock and of
// the processor, and the process' peak memory in KiB.
#include <assimp/Importer.hpp>
#include <assimp/scene.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <string>

namespace
{

// Not ru_maxrss: that one also remembers the memory of the process which started this one.
long PeakKiB()
{
    std::ifstream objStatus("/proc/self/status");
    for (std::string strLine; std::getline(objStatus, strLine);)
    {
        if (strLine.starts_with("VmHWM:"))
        {
            return std::stol(strLine.substr(6));
        }
    }
    return 0;
}

} // namespace

int main(int nArguments, char** aArguments)
{
    if (nArguments > 2)
    {
        std::fputs("usage: assimp_load [FILE]\n", stderr);
        return 2;
    }
    double fSeconds = 0.0;
    double fProcessorSeconds = 0.0;
    Assimp::Importer objImporter;
    if (nArguments == 2)
    {
        const auto objBegin = std::chrono::steady_clock::now();
        const std::clock_t nProcessorBegin = std::clock();
        const aiScene* pScene = objImporter.ReadFile(aArguments[1], 0);
        fSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - objBegin).count();
        fProcessorSeconds = static_cast<double>(std::clock() - nProcessorBegin) / CLOCKS_PER_SEC;
        if (pScene == nullptr)
        {
            std::fprintf(stderr, "%s\n", objImporter.GetErrorString());
            return 1;
        }
    }
    std::printf("{\"seconds\": %.9f, \"cpu_seconds\": %.9f, \"peak_kib\": %ld}\n", fSeconds,
                fProcessorSeconds, PeakKiB());
    return 0;
}
