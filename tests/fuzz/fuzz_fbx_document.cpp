// Damaged FBX files through the document reader, in memory.
//
//     fuzz_fbx_document [COUNT [FILE...]]
//
// Truncations at every byte and COUNT (50 000) mutations of each file, or of small ones of its own: binary in
// both widths and byte orders, packed and not, and ASCII. What opens is walked, and every array is read.
#include "../unit/support/FBXTestFile.h"
#include "CMutator.h"

#include "fbxsdk/document/CFBXDocument.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <numeric>
#include <vector>

namespace
{

// Rounds over all of the files that open; kept so that nothing of the walk is left out by the compiler.
volatile double g_dSum = 0;

void Walk(const CFBXRecord& rRecord)
{
    double dSum = static_cast<double>(rRecord.GetName().size());
    bool bArray = false;
    for (const CFBXValue& rValue : rRecord.GetValues())
    {
        bArray = bArray || rValue.IsArray();
        dSum += rValue.GetDouble() + static_cast<double>(rValue.GetInt64());
        for (const char c : rValue.GetString())
        {
            dSum += c;
        }
    }
    if (bArray)
    {
        std::vector<double> vecDoubles;
        std::vector<int32_t> vecInts;
        const bool bDoubles = rRecord.ReadDoubles(vecDoubles);
        if (bDoubles != rRecord.ReadInts(vecInts) || vecDoubles.size() != vecInts.size() ||
            (bDoubles && vecDoubles.size() != rRecord.GetArrayCount()))
        {
            std::printf("%s is not the same twice\n", rRecord.Describe().c_str());
            std::exit(1);
        }
        dSum = std::accumulate(vecDoubles.begin(), vecDoubles.end(), dSum);
    }
    g_dSum = g_dSum + dSum;
    for (const CFBXRecord& rChild : rRecord.GetChildren())
    {
        Walk(rChild);
    }
}

void TryDamagedCopies(const std::string& rSeed, int nCount)
{
    int nLoaded = 0;
    int nTried = 0;
    CMutator(rSeed).ForEach(nCount, [&](const std::string& rBytes) {
        CQDString strError;
        const auto spDocument = CFBXDocument::FromBytes({rBytes.begin(), rBytes.end()}, strError);
        ++nTried;
        if ((spDocument == nullptr) == strError.empty())
        {
            std::printf("try %d fails without an error, or the other way round\n", nTried);
            std::exit(1);
        }
        if (spDocument)
        {
            ++nLoaded;
            Walk(spDocument->GetRoot());
        }
    });
    std::printf("fuzz_fbx_document: %d files tried, %d of them loaded (seed of %zu bytes)\n", nTried, nLoaded,
                rSeed.size());
}

std::string MakeBinary(int nVersion, bool bBigEndian, bool bDeflate)
{
    CFBXTestFile objFile(nVersion, bBigEndian, bDeflate);
    objFile.Open("FBXHeaderExtension").Add("FBXVersion", nVersion).Close();
    objFile.Open("Objects")
        .Open("Geometry", int64_t{1}, "Cube", "Mesh")
        .Add("Vertices", std::vector<double>(40, 0.5));
    objFile.Add("PolygonVertexIndex", std::vector<int32_t>{0, 1, -3})
        .Add("KeyTime", std::vector<int64_t>{0, 1 << 30});
    objFile.Add("Weights", std::vector<float>{0.25f, 0.75f}).Add("Edges", std::vector<char>{0, 1}).Close();
    objFile.Add("Key", int64_t{0}, 1.5, 'U', 's', 0.5f, int16_t{3})
        .Add("Content", CFBXTestFile::SRaw{"bytes"})
        .Close();
    const std::vector<uint8_t> vecBytes = objFile.Finish();
    return {vecBytes.begin(), vecBytes.end()};
}

std::string MakeText()
{
    std::string strText =
        "; FBX 7.5.0 project file\nFBXHeaderExtension: {\n\tFBXVersion: 7500\n}\nObjects: {\n"
        "\tGeometry: 1, \"Geometry::&quot;Cube&quot;\", \"Mesh\" {\n\t\tVertices: *3 {\n\t\t\ta: 0.5,"
        "-1e3,1.#INF ; more\n\t\t}\n\t}\n\tKey: 0,0,U,s,0,-0,a,nan(ind)\n\tContent: ,\"Ynl0ZXM=\"\n\tRow: 0";
    for (int n = 1; n < 40; ++n)
    {
        strText += "," + std::to_string(n);
    }
    return strText + "\n}\n";
}

} // namespace

int main(int argc, char** argv)
{
    const int nCount = argc > 1 ? std::atoi(argv[1]) : 50000;
    std::vector<std::string> vecSeeds;
    for (int n = 2; n < argc; ++n)
    {
        std::ifstream objFile(argv[n], std::ios::binary);
        vecSeeds.emplace_back(std::istreambuf_iterator<char>(objFile), std::istreambuf_iterator<char>());
    }
    if (vecSeeds.empty())
    {
        vecSeeds = {MakeBinary(6100, false, false), MakeBinary(7400, false, true),
                    MakeBinary(7500, true, true), MakeBinary(7700, false, false), MakeText()};
    }
    for (const std::string& rSeed : vecSeeds)
    {
        TryDamagedCopies(rSeed, nCount);
    }
    return 0;
}
