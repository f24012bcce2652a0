// A rotation as a unit quaternion.
#pragma once

#include "fbxsdk/base/FbxRotationOrder.h"
#include "fbxsdk/base/FbxVector.h"

struct FbxQuaternion
{
    double x = 0;
    double y = 0;
    double z = 0;
    double w = 1;

    // Of angles in degrees about X, Y and Z.
    static FbxQuaternion FromEuler(const FbxDouble3& rDegrees, EFbxRotationOrder eOrder = eEulerXYZ);

    // The opposite rotation.
    FbxQuaternion Inverse() const { return {-x, -y, -z, w}; }
    bool operator==(const FbxQuaternion&) const = default;
};

// The right one is applied first.
FbxQuaternion operator*(const FbxQuaternion& a, const FbxQuaternion& b);
