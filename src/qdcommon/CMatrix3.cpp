#include "qdcommon/CMatrix3.h"

CSGFloat3 CMatrix3::Transform(const CSGFloat3& v) const
{
    const double x = v.x;
    const double y = v.y;
    const double z = v.z;
    return {static_cast<float>(x * m[0][0] + y * m[1][0] + z * m[2][0]),
            static_cast<float>(x * m[0][1] + y * m[1][1] + z * m[2][1]),
            static_cast<float>(x * m[0][2] + y * m[1][2] + z * m[2][2])};
}

CMatrix3 operator*(const CMatrix3& a, const CMatrix3& b)
{
    // Row n of the product is what a makes of row n of b.
    CMatrix3 objProduct;
    for (int n = 0; n < 3; ++n)
    {
        const CSGFloat3 vRow = a.Transform({b.m[n][0], b.m[n][1], b.m[n][2]});
        objProduct.m[n][0] = vRow.x;
        objProduct.m[n][1] = vRow.y;
        objProduct.m[n][2] = vRow.z;
    }
    return objProduct;
}
