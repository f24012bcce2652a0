// The words of COLLADA for what happens between two keys of a curve.
#pragma once

#include <cstdint>

// The first three have the numbers of CSGAnimSampler::EInterpType; curves cannot have the others.
enum EColladaInterpolation : int32_t
{
    COLLADA_STEP = 1,
    COLLADA_LINEAR = 2,
    COLLADA_BEZIER = 3,
    COLLADA_CARDINAL = 4,
    COLLADA_HERMITE = 5,
    COLLADA_BSPLINE = 6,
};
