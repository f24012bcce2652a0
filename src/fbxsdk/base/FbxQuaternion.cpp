#include "fbxsdk/base/FbxQuaternion.h"

#include <cmath>
#include <numbers>

namespace
{

FbxQuaternion AboutAxis(int nAxis, double dDegrees)
{
    const double dHalf = dDegrees * (std::numbers::pi / 360.0);
    const double dSine = std::sin(dHalf);
    return {nAxis == 0 ? dSine : 0.0, nAxis == 1 ? dSine : 0.0, nAxis == 2 ? dSine : 0.0, std::cos(dHalf)};
}

} // namespace

FbxQuaternion FbxQuaternion::FromEuler(const FbxDouble3& rDegrees, EFbxRotationOrder eOrder)
{
    FbxQuaternion objRotation;
    for (const int nAxis : FbxRotationAxes::Of(eOrder).m_arrAxes)
    {
        objRotation = AboutAxis(nAxis, rDegrees[static_cast<size_t>(nAxis)]) * objRotation;
    }
    return objRotation;
}

FbxQuaternion operator*(const FbxQuaternion& a, const FbxQuaternion& b)
{
    return {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y, a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
            a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w, a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}
