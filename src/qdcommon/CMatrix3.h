// The matrix of a linear map of space.
#pragma once

#include "qdcommon/CSGFloat3.h"

// Maps row vectors: v' = v * M, so that row n is what becomes of axis n. Stored row by row; the identity by
// default.
struct CMatrix3
{
    float m[3][3] = {{1.0f, 0.0f, 0.0f}, {0.0f, 1.0f, 0.0f}, {0.0f, 0.0f, 1.0f}};

    bool operator==(const CMatrix3&) const = default;

    // v * M
    CSGFloat3 Transform(const CSGFloat3& v) const;
};

// The map that applies b first, then a. Summed in double, so that each element is rounded once.
CMatrix3 operator*(const CMatrix3& a, const CMatrix3& b);
