// Sampling a curve of each kind at scattered times, beside a plain loop over the same keys that is written
// for that kind alone.

#include "qdscenegraph/animation/CSGAnimSampler.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace
{

constexpr int32_t NUM_KEYS = 300;
constexpr int32_t OUTPUTS = 4;

// Keys of unit quaternions with tangents at the thirds, and times between their ends.
struct CCurve
{
    CCurve()
    {
        std::mt19937 objRandom(1);
        std::uniform_real_distribution<float> objTime(0.0f, NUM_KEYS - 1.0f);
        for (int32_t nKey = 0; nKey < NUM_KEYS; ++nKey)
        {
            const auto fTime = static_cast<float>(nKey);
            vecTimes.push_back(fTime);
            for (int32_t n = 0; n < OUTPUTS; ++n)
            {
                const float fValue = n == 0 ? std::sin(fTime) : n == 3 ? std::cos(fTime) : 0.0f;
                vecValues.push_back(fValue);
                vecIn.insert(vecIn.end(), {fTime - 1.0f / 3.0f, fValue});
                vecOut.insert(vecOut.end(), {fTime + 1.0f / 3.0f, fValue});
            }
        }
        std::generate_n(std::back_inserter(vecSampleTimes), 4096, [&] { return objTime(objRandom); });
    }

    std::vector<float> vecTimes, vecValues, vecIn, vecOut, vecSampleTimes;
};

void Sampler(benchmark::State& rState, CSGAnimSampler::EInterpType eType)
{
    const CCurve objCurve;
    const auto spSampler = CSGAnimSampler::Create(NUM_KEYS, OUTPUTS, eType);
    spSampler->SetKeyData(objCurve.vecTimes, objCurve.vecValues, objCurve.vecIn, objCurve.vecOut);
    for (auto _ : rState)
    {
        for (const float fTime : objCurve.vecSampleTimes)
        {
            float arrValues[OUTPUTS];
            spSampler->SampleAtTime(fTime, arrValues, OUTPUTS);
            benchmark::DoNotOptimize(arrValues);
        }
    }
    rState.SetItemsProcessed(rState.iterations() * static_cast<int64_t>(objCurve.vecSampleTimes.size()));
}

// The curve's four values at u of the way from key A to the next.
template <class BETWEEN>
void Plain(benchmark::State& rState, BETWEEN fnBetween)
{
    const CCurve objCurve;
    for (auto _ : rState)
    {
        for (const float fTime : objCurve.vecSampleTimes)
        {
            const auto itNext = std::ranges::upper_bound(objCurve.vecTimes, fTime);
            const auto nPrev = static_cast<size_t>(itNext - objCurve.vecTimes.begin()) - 1;
            float arrValues[OUTPUTS];
            fnBetween(objCurve, nPrev, fTime, (fTime - itNext[-1]) / (*itNext - itNext[-1]), arrValues);
            benchmark::DoNotOptimize(arrValues);
        }
    }
    rState.SetItemsProcessed(rState.iterations() * static_cast<int64_t>(objCurve.vecSampleTimes.size()));
}

void Step(const CCurve& rCurve, size_t nPrev, float, float, float* arrValues)
{
    std::copy_n(&rCurve.vecValues[nPrev * OUTPUTS], OUTPUTS, arrValues);
}

void Linear(const CCurve& rCurve, size_t nPrev, float, float u, float* arrValues)
{
    const float* pfPrev = &rCurve.vecValues[nPrev * OUTPUTS];
    for (int32_t n = 0; n < OUTPUTS; ++n)
    {
        arrValues[n] = pfPrev[n + OUTPUTS] * u + pfPrev[n] * (1.0f - u);
    }
}

// One parameter for all outputs, by halving the interval and evaluating the whole polynomial each time.
void Bezier(const CCurve& rCurve, size_t nPrev, float fTime, float, float* arrValues)
{
    const auto Evaluate = [](double p0, double p1, double p2, double p3, double s) {
        const double c1 = 3 * (p1 - p0);
        const double c2 = 3 * (p2 - p1);
        return (((p3 - p0 - c2) * s + (c2 - c1)) * s + c1) * s + p0;
    };
    const size_t nFirst = nPrev * OUTPUTS;
    const size_t nNext = nFirst + OUTPUTS;
    double fLow = 0, fHigh = 1, s = 0.5;
    for (int n = 0; n < 100; ++n)
    {
        s = (fLow + fHigh) * 0.5;
        const double fReached = Evaluate(rCurve.vecTimes[nPrev], rCurve.vecOut[2 * nFirst],
                                         rCurve.vecIn[2 * nNext], rCurve.vecTimes[nPrev + 1], s);
        if (std::abs(fReached - fTime) < 1e-9)
        {
            break;
        }
        (fReached < fTime ? fLow : fHigh) = s;
    }
    for (size_t n = 0; n < OUTPUTS; ++n)
    {
        arrValues[n] =
            static_cast<float>(Evaluate(rCurve.vecValues[nFirst + n], rCurve.vecOut[2 * (nFirst + n) + 1],
                                        rCurve.vecIn[2 * (nNext + n) + 1], rCurve.vecValues[nNext + n], s));
    }
}

void Quaternion(const CCurve& rCurve, size_t nPrev, float, float u, float* arrValues)
{
    const float* pfPrev = &rCurve.vecValues[nPrev * OUTPUTS];
    const float* pfNext = pfPrev + OUTPUTS;
    const float fDot =
        pfPrev[0] * pfNext[0] + pfPrev[1] * pfNext[1] + pfPrev[2] * pfNext[2] + pfPrev[3] * pfNext[3];
    const float fAngle = std::acos(std::min(std::abs(fDot), 1.0f));
    const float fScale = 1.0f / std::sin(fAngle);
    const float fPrev = std::sin((1.0f - u) * fAngle) * fScale;
    const float fNext = std::copysign(std::sin(u * fAngle) * fScale, fDot);
    for (int32_t n = 0; n < OUTPUTS; ++n)
    {
        arrValues[n] = pfPrev[n] * fPrev + pfNext[n] * fNext;
    }
}

BENCHMARK_CAPTURE(Sampler, step, CSGAnimSampler::INTERP_STEP);
BENCHMARK_CAPTURE(Plain, step, Step);
BENCHMARK_CAPTURE(Sampler, linear, CSGAnimSampler::INTERP_LINEAR);
BENCHMARK_CAPTURE(Plain, linear, Linear);
BENCHMARK_CAPTURE(Sampler, bezier, CSGAnimSampler::INTERP_BEZIER);
BENCHMARK_CAPTURE(Plain, bezier, Bezier);
BENCHMARK_CAPTURE(Sampler, quaternion, CSGAnimSampler::INTERP_QUATERNION);
BENCHMARK_CAPTURE(Plain, quaternion, Quaternion);

} // namespace
