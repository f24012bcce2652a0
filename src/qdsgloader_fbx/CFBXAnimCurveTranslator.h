// Makes samplers of the curves of one animated property.
#pragma once

#include "fbxsdk/fbxsdk.h"
#include "qdscenegraph/animation/CSGAnimSampler.h"
#include "qdsgloader_fbx/CFBXCurveKeys.h"

#include <array>

// Of curves with different kinds of pieces one sampler can be made nevertheless: when all pieces of all of
// them are held, it has steps; when all are straight, it is linear; else it is a Bezier sampler, in which
// straight pieces are Bezier curves as well. Where a curve jumps there are two keys, or three.
class CFBXAnimCurveTranslator
{
  public:
    using CSamplerPtr = boost::intrusive_ptr<CSGAnimSampler>;
    static constexpr size_t NUM_CURVES = 3;
    using CCurves = std::array<CFBXCurveKeys, NUM_CURVES>;

    // X, Y and Z of the property. A component that does not change is a constant.
    explicit CFBXAnimCurveTranslator(CCurves arrCurves) : m_arrCurves(std::move(arrCurves)) {}

    // Whether the three can share one sampler: all that change do so at the same times.
    bool Analyze();
    // Values are multiplied by the factor. Null (reported) without memory. Of all three; only after Analyze
    // has said that they can.
    CSamplerPtr CreateSampler(double fFactor) const;
    // Of one.
    CSamplerPtr CreateSampler(size_t nCurve, double fFactor) const;
    // Of all three as the angles (degrees) of one rotation; as CreateSampler. Each key is a rotation: between
    // two of them, the way is the shortest, which the angles need not go.
    CSamplerPtr CreateQuaternionSampler(EFbxRotationOrder eOrder) const;

    // The curves and whether each is constant, to the log.
    void OutputCurves() const;

  private:
    CCurves m_arrCurves;
    size_t m_nTimes = 0; // a curve whose key times are those of all
};
