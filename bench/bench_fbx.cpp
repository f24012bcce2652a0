// What reading a large FBX mesh spends its time on: unpacking arrays, and finding the corners that are one
// vertex.

#include "fbxsdk/document/CFBXArrayReader.h"
#include "fbxsdk/import/CFBXSceneBuilder.h"
#include "fbxsdk/objects/CFBXObjectTable.h"
#include "qdsgloader_fbx/CFBXVertexSet.h"

#include <benchmark/benchmark.h>

#include <zlib.h>

#include <cmath>
#include <string>

namespace
{

// An array of smooth doubles, as meshes have them, into floats.
void UnpackDoubles(benchmark::State& rState)
{
    std::vector<double> vecNumbers(static_cast<size_t>(rState.range(0)));
    for (size_t n = 0; n < vecNumbers.size(); ++n)
    {
        vecNumbers[n] = std::sin(0.001 * static_cast<double>(n / 3));
    }
    uLongf uiPacked = compressBound(vecNumbers.size() * sizeof(double));
    std::string strPacked(uiPacked, '\0');
    compress2(reinterpret_cast<Bytef*>(strPacked.data()), &uiPacked,
              reinterpret_cast<const Bytef*>(vecNumbers.data()), vecNumbers.size() * sizeof(double), 1);
    strPacked.resize(uiPacked);
    const CFBXValue objArray(EFBXType::DOUBLE_ARRAY, strPacked,
                             {static_cast<uint32_t>(vecNumbers.size()), true, false, false});
    for (auto _ : rState)
    {
        std::vector<float> vecFloats;
        CQDString strError;
        if (!CFBXArrayReader::Read(objArray, vecFloats, strError))
        {
            rState.SkipWithError(strError.c_str());
        }
        benchmark::DoNotOptimize(vecFloats.data());
    }
    rState.SetItemsProcessed(rState.iterations() * rState.range(0));
}

// A strip of squares whose corners have a normal each, alike around a point.
std::string MakeStrip(int nSquares)
{
    std::string strPoints = "0,0,0,0,1,0";
    std::string strCorners;
    std::string strNormals;
    for (int n = 0; n < nSquares; ++n)
    {
        const std::string strNext = std::to_string(n + 1);
        const std::string strNormal = std::to_string(n) + ",1,0,";
        const std::string strNextNormal = strNext + ",1,0,";
        const int nPoint = 2 * n;
        strPoints += "," + strNext + ",0,0," + strNext + ",1,0";
        for (const int nCorner : {nPoint, nPoint + 2, ~(nPoint + 1), nPoint + 1, nPoint + 2, ~(nPoint + 3)})
        {
            strCorners += std::to_string(nCorner) + ",";
        }
        strNormals += strNormal + strNextNormal + strNormal + strNormal + strNextNormal + strNextNormal;
    }
    strCorners.pop_back();
    strNormals.pop_back();
    return "FBXHeaderExtension: {\nFBXVersion: 7400\n}\nObjects: {\nGeometry: 1, \"Geometry::\", \"Mesh\" {\n"
           "Vertices: " +
           strPoints + "\nPolygonVertexIndex: " + strCorners +
           "\nLayerElementNormal: 0 {\nMappingInformationType: \"ByPolygonVertex\"\n"
           "ReferenceInformationType: \"Direct\"\nNormals: " +
           strNormals + "\n}\n}\n}\n";
}

void NumberVertices(benchmark::State& rState)
{
    const std::string strFile = MakeStrip(static_cast<int>(rState.range(0)) / 6);
    CQDString strError;
    const auto spManager = FbxManager::Create();
    FbxScene& rScene = *FbxScene::Create(spManager.get(), "strip");
    CFBXSceneBuilder(
        rScene, CFBXObjectTable::Create(CFBXDocument::FromBytes({strFile.begin(), strFile.end()}, strError),
                                        strError))
        .Build();
    const FbxMesh& rMesh = *rScene.GetObjects<FbxMesh>().front();
    for (auto _ : rState)
    {
        CFBXVertexSet objVertexSet(rMesh, {rMesh.GetElementNormal()});
        for (int32_t n = 0; n < rMesh.GetPolygonVertexCount(); ++n)
        {
            benchmark::DoNotOptimize(objVertexSet.Insert(n));
        }
    }
    rState.SetItemsProcessed(rState.iterations() * rMesh.GetPolygonVertexCount());
}

} // namespace

BENCHMARK(UnpackDoubles)->Arg(3000)->Arg(3000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(NumberVertices)->Arg(6000)->Arg(1500000)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
