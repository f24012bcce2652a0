// Optimising the transforms of scenes in which one node out of ten is animated, and of such without
// animations.

#include "qdscenegraph/animation/CSGAnimation.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/optimize/CSGOptimizer.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGXFrm_List.h"
#include "qdscenegraph/transform/CSGXFrm_Rotate.h"
#include "qdscenegraph/transform/CSGXFrm_Scale.h"
#include "qdscenegraph/transform/CSGXFrm_Translate.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace
{

// The five transforms that exporters write for a node.
CSGTransform::CTransformPtr MakeTransform()
{
    const CSGTransform::CTransformPtr arrTransforms[] = {
        CSGXFrm_Translate::Create({1, 2, 3}), CSGXFrm_Rotate::Create({0, 0, 1}, 0.1f),
        CSGXFrm_Rotate::Create({0, 1, 0}, 0.2f), CSGXFrm_Rotate::Create({1, 0, 0}, 0.3f),
        CSGXFrm_Scale::Create({1, 1, 1})};
    const char* szName = "TZYXS";
    for (const CSGTransform::CTransformPtr& spTransform : arrTransforms)
    {
        spTransform->SetName(std::string(1, *szName++));
    }
    return CSGXFrm_List::Create(arrTransforms);
}

// A tree with eight children to a node.
std::vector<CSGNode::CNodePtr> MakeNodes(int64_t nCount)
{
    std::vector<CSGNode::CNodePtr> vecNodes;
    for (int64_t n = 0; n < nCount; ++n)
    {
        const std::string strName = "node" + std::to_string(n);
        vecNodes.push_back(CSGNode::Create(strName, strName));
        vecNodes.back()->AddData(CSGData_LocalTransform::Create(MakeTransform()).get());
        if (n > 0)
        {
            vecNodes[static_cast<size_t>(n - 1) / 8]->AddChild(vecNodes.back().get());
        }
    }
    return vecNodes;
}

void OptimizeNodes(benchmark::State& rState)
{
    const bool bAnimated = rState.range(1) != 0;
    const auto spSampler = CSGAnimSampler::Create(1, 1, CSGAnimSampler::INTERP_LINEAR);
    CSGAnimation::CChannelList vecChannels;
    for (int64_t n = 0; bAnimated && n < rState.range(0); n += 10)
    {
        const std::string strNode = "node" + std::to_string(n);
        for (const char* szName : {"X", "Y", "Z"})
        {
            vecChannels.push_back(CSGAnimChannel::Create(
                strNode, spSampler, CSGRefPath::ForTransform(strNode, szName, TARGET_ANGLE)));
        }
    }
    const auto spAnimation = bAnimated ? CSGAnimation::Create(vecChannels) : nullptr;
    for (auto _ : rState)
    {
        rState.PauseTiming();
        auto vecNodes = MakeNodes(rState.range(0));
        rState.ResumeTiming();
        CSGOptimizer::OptimizeNonTargetTransforms(vecNodes.front().get(), {spAnimation.get()});
        rState.PauseTiming();
        vecNodes.clear();
        rState.ResumeTiming();
    }
    rState.SetItemsProcessed(rState.iterations() * rState.range(0));
}

} // namespace

BENCHMARK(OptimizeNodes)
    ->ArgNames({"nodes", "animated"})
    ->ArgsProduct({{20000, 200000}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
