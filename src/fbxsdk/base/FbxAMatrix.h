// An affine transform.
#pragma once

#include "fbxsdk/base/FbxQuaternion.h"
#include "fbxsdk/base/FbxRotationOrder.h"
#include "fbxsdk/base/FbxVector.h"

#include <optional>

class CFBXRecord;

// Lies in memory as in the files: four rows for row vectors, p' = p * M, the translation in the last row. But
// a product reads as one of column vectors: of a * b, b is applied first.
class FbxAMatrix
{
  public:
    constexpr FbxAMatrix() = default; // the identity

    // Row by row; none unless the record has 16 finite numbers. The last column is taken as 0, 0, 0, 1
    // whatever they say.
    static std::optional<FbxAMatrix> FromRecord(const CFBXRecord& rRecord);
    static FbxAMatrix FromTranslation(const FbxDouble3& rTranslation);
    static FbxAMatrix FromScaling(const FbxDouble3& rScaling);
    static FbxAMatrix FromQuaternion(const FbxQuaternion& rRotation);
    // Of angles in degrees about X, Y and Z.
    static FbxAMatrix FromEuler(const FbxDouble3& rDegrees, EFbxRotationOrder eOrder = eEulerXYZ);

    double Get(size_t nRow, size_t nColumn) const { return m_arrRows[nRow][nColumn]; }
    double& At(size_t nRow, size_t nColumn) { return m_arrRows[nRow][nColumn]; }
    FbxDouble3 GetT() const { return {m_arrRows[3][0], m_arrRows[3][1], m_arrRows[3][2]}; }
    void SetT(const FbxDouble3& rTranslation);

    // Of the linear part: negative when it mirrors.
    double GetDeterminant() const;
    // The identity when the linear part is singular.
    FbxAMatrix Inverse() const;
    // Without the translation.
    FbxAMatrix GetLinear() const;
    // Whether no number is farther from the identity's than that.
    bool IsIdentity(double dTolerance = 0) const;

    FbxDouble3 MultT(const FbxDouble3& rPoint) const;
    // Without the translation.
    FbxDouble3 MultDirection(const FbxDouble3& rDirection) const;

    bool operator==(const FbxAMatrix&) const = default;

  private:
    double m_arrRows[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
};

FbxAMatrix operator*(const FbxAMatrix& a, const FbxAMatrix& b);
