// An affine transform of space: a linear map, then a translation.
#pragma once

#include "qdcommon/CMatrix3.h"
#include "qdcommon/CMatrix4.h"

// For row vectors. The identity by default.
struct CTransform3
{
    CMatrix3 m_objMatrix;
    CSGFloat3 m_objTranslation;

    bool operator==(const CTransform3&) const = default;

    // False, and no result, for a matrix that is not affine: its column 3 must be 0 0 0 1, each within 1e-5.
    static bool FromMatrix4(const CMatrix4& rMatrix, CTransform3& rTransform);

    // v * M + t
    CSGFloat3 TransformPoint(const CSGFloat3& v) const;
    // v * M: a direction has no place, so the translation does not move it.
    CSGFloat3 TransformDir(const CSGFloat3& v) const { return m_objMatrix.Transform(v); }
    // False, and no result, for a transform that cannot be undone, because it flattens space or its inverse
    // is beyond the range of a float.
    bool Inverse(CTransform3& rInverse) const;
    bool IsIdentity() const { return *this == CTransform3(); }
};

// The transform that applies b first, then a: with a node's local transform L and the world transform P of
// its parent, its world transform is P * L. Summed in double, so that each element is rounded once.
CTransform3 operator*(const CTransform3& a, const CTransform3& b);
