// Deforming the vertices of a character, beside a plain loop over arrays of single components that is written
// for four joints on every vertex.

#include "qdscenegraph/geometry/CSGGeom_Triangles.h"
#include "qdscenegraph/skin/CSGSkinBinding.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

namespace
{

constexpr int32_t NUM_VERTICES = 20000;
constexpr int32_t NUM_JOINTS = 60;
constexpr int32_t JOINTS_PER_VERTEX = 4;

// Positions and normals at random, weights over four joints at random: nothing near each other helps.
struct CCharacter
{
    CCharacter()
    {
        std::mt19937 objRandom(1);
        std::uniform_real_distribution<float> objNumber(-1.0f, 1.0f);
        std::uniform_int_distribution<int32_t> objJoint(0, NUM_JOINTS - 1);
        CSGVertexFormat objFormat;
        objFormat.AddMemberN(CSGVertexFormat::MEMBER_POSITION, 0, 3);
        objFormat.AddMemberN(CSGVertexFormat::MEMBER_NORMAL, 0, 3);
        objFormat.AddMemberN(CSGVertexFormat::MEMBER_TEXCOORD, 0, 2);
        const auto spVertices = CSGVertexBuffer::Create(objFormat, NUM_VERTICES);
        std::ranges::generate(spVertices->EditData(), [&] { return objNumber(objRandom); });
        const auto spWeights = CSGSkinVertexWeights::Create();
        for (int32_t nVertex = 0; nVertex < NUM_VERTICES; ++nVertex)
        {
            std::vector<CSGSkinWeight> vecWeights;
            for (int32_t n = 0; n < JOINTS_PER_VERTEX; ++n)
            {
                vecWeights.push_back({objJoint(objRandom), objNumber(objRandom) + 1.1f});
            }
            CSGSkinVertexWeights::Normalize(vecWeights);
            spWeights->AddVertex(vecWeights);
        }
        std::vector<CSGSkin::CJointPtr> vecJoints(NUM_JOINTS, CSGJoint::Create("", {}));
        spBinding = CSGSkinBinding::Create(
            CSGSkin::Create({}, vecJoints, spWeights),
            CSGGeomBinding::Create(CSGGeom_Triangles::Create(CSGIndexBuffer::Create(0, 0)), spVertices));
        vecPalette.resize(NUM_JOINTS + 1);
        for (CTransform3& rTransform : vecPalette)
        {
            rTransform.m_objTranslation = {objNumber(objRandom), objNumber(objRandom), objNumber(objRandom)};
        }
    }

    boost::intrusive_ptr<CSGSkinBinding> spBinding;
    std::vector<CTransform3> vecPalette;
};

void CountVertices(benchmark::State& rState) { rState.SetItemsProcessed(rState.iterations() * NUM_VERTICES); }

void Positions(benchmark::State& rState)
{
    const CCharacter objCharacter;
    std::vector<float> vecPositions(3 * NUM_VERTICES);
    for (auto _ : rState)
    {
        objCharacter.spBinding->SkinPositions(objCharacter.vecPalette, vecPositions);
        benchmark::DoNotOptimize(vecPositions.data());
    }
    CountVertices(rState);
}

void PositionsAndNormals(benchmark::State& rState)
{
    const CCharacter objCharacter;
    std::vector<float> vecPositions;
    std::vector<float> vecNormals;
    for (auto _ : rState)
    {
        objCharacter.spBinding->ComputeSkinnedVertices(vecPositions, vecNormals);
        benchmark::DoNotOptimize(vecNormals.data());
    }
    CountVertices(rState);
}

// One array for each component of each input and output.
void PlainPositions(benchmark::State& rState)
{
    const CCharacter objCharacter;
    const CSGSkinVertexWeights& rWeights = *objCharacter.spBinding->GetSkin()->GetWeights();
    const CSGVertexBuffer& rVertices = *objCharacter.spBinding->GetGeomBinding()->GetVertexBuffer();
    std::vector<float> arrPositions[3];
    std::vector<float> arrResults[3];
    std::vector<uint16_t> arrJoints[JOINTS_PER_VERTEX];
    std::vector<float> arrWeights[JOINTS_PER_VERTEX];
    for (int32_t nVertex = 0; nVertex < NUM_VERTICES; ++nVertex)
    {
        const float* pPosition = rVertices.GetVertMemberData(nVertex, CSGVertexFormat::MEMBER_POSITION, 0);
        const auto [arrRowJoints, arrRowWeights] = rWeights.GetWeights(nVertex);
        for (size_t n = 0; n < 3; ++n)
        {
            arrPositions[n].push_back(pPosition[n]);
            arrResults[n].push_back(0.0f);
        }
        for (size_t n = 0; n < JOINTS_PER_VERTEX; ++n)
        {
            arrJoints[n].push_back(arrRowJoints[n]);
            arrWeights[n].push_back(arrRowWeights[n]);
        }
    }
    for (auto _ : rState)
    {
        for (size_t nVertex = 0; nVertex < NUM_VERTICES; ++nVertex)
        {
            const float x = arrPositions[0][nVertex];
            const float y = arrPositions[1][nVertex];
            const float z = arrPositions[2][nVertex];
            CSGFloat3 objSum;
            for (size_t n = 0; n < JOINTS_PER_VERTEX; ++n)
            {
                const auto& [objMatrix, t] = objCharacter.vecPalette[arrJoints[n][nVertex]];
                const auto& m = objMatrix.m;
                const float w = arrWeights[n][nVertex];
                objSum.x += w * (x * m[0][0] + y * m[1][0] + z * m[2][0] + t.x);
                objSum.y += w * (x * m[0][1] + y * m[1][1] + z * m[2][1] + t.y);
                objSum.z += w * (x * m[0][2] + y * m[1][2] + z * m[2][2] + t.z);
            }
            arrResults[0][nVertex] = objSum.x;
            arrResults[1][nVertex] = objSum.y;
            arrResults[2][nVertex] = objSum.z;
        }
        benchmark::DoNotOptimize(arrResults[0].data());
        benchmark::DoNotOptimize(arrResults[1].data());
        benchmark::DoNotOptimize(arrResults[2].data());
    }
    CountVertices(rState);
}

BENCHMARK(Positions);
BENCHMARK(PlainPositions);
BENCHMARK(PositionsAndNormals);

} // namespace
