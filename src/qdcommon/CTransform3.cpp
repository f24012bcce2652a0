#include "qdcommon/CTransform3.h"

#include <cmath>

bool CTransform3::FromMatrix4(const CMatrix4& rMatrix, CTransform3& rTransform)
{
    constexpr float TOLERANCE = 1e-5f;
    for (int n = 0; n < 4; ++n)
    {
        const float fAffine = n == 3 ? 1.0f : 0.0f;
        if (!(std::abs(rMatrix.m[n][3] - fAffine) <= TOLERANCE)) // not a number is not affine either
        {
            return false;
        }
    }
    for (int nRow = 0; nRow < 3; ++nRow)
    {
        for (int nColumn = 0; nColumn < 3; ++nColumn)
        {
            rTransform.m_objMatrix.m[nRow][nColumn] = rMatrix.m[nRow][nColumn];
        }
    }
    rTransform.m_objTranslation = {rMatrix.m[3][0], rMatrix.m[3][1], rMatrix.m[3][2]};
    return true;
}

CSGFloat3 CTransform3::TransformPoint(const CSGFloat3& v) const
{
    const auto& m = m_objMatrix.m;
    const double x = v.x;
    const double y = v.y;
    const double z = v.z;
    return {static_cast<float>(x * m[0][0] + y * m[1][0] + z * m[2][0] + m_objTranslation.x),
            static_cast<float>(x * m[0][1] + y * m[1][1] + z * m[2][1] + m_objTranslation.y),
            static_cast<float>(x * m[0][2] + y * m[1][2] + z * m[2][2] + m_objTranslation.z)};
}

bool CTransform3::Inverse(CTransform3& rInverse) const
{
    // The adjugate over the determinant: element (i, j) is the cofactor of (j, i). Indices taken around the
    // cycle 0 1 2 give each cofactor its sign.
    const auto& m = m_objMatrix.m;
    double arrAdjugate[3][3];
    for (int i = 0; i < 3; ++i)
    {
        for (int j = 0; j < 3; ++j)
        {
            const int r0 = (j + 1) % 3;
            const int r1 = (j + 2) % 3;
            const int c0 = (i + 1) % 3;
            const int c1 = (i + 2) % 3;
            arrAdjugate[i][j] = double(m[r0][c0]) * m[r1][c1] - double(m[r0][c1]) * m[r1][c0];
        }
    }
    const double fDeterminant =
        m[0][0] * arrAdjugate[0][0] + m[0][1] * arrAdjugate[1][0] + m[0][2] * arrAdjugate[2][0];
    const double arrTranslation[3] = {m_objTranslation.x, m_objTranslation.y, m_objTranslation.z};
    float arrInverse[4][3]; // the translation in row 3
    for (int j = 0; j < 3; ++j)
    {
        double fTranslation = 0.0;
        for (int i = 0; i < 3; ++i)
        {
            const double fElement = arrAdjugate[i][j] / fDeterminant;
            arrInverse[i][j] = static_cast<float>(fElement);
            fTranslation -= arrTranslation[i] * fElement;
        }
        arrInverse[3][j] = static_cast<float>(fTranslation);
    }
    for (const auto& rRow : arrInverse)
    {
        for (const float fElement : rRow)
        {
            if (!std::isfinite(fElement))
            {
                return false;
            }
        }
    }
    for (int i = 0; i < 3; ++i)
    {
        for (int j = 0; j < 3; ++j)
        {
            rInverse.m_objMatrix.m[i][j] = arrInverse[i][j];
        }
    }
    rInverse.m_objTranslation = {arrInverse[3][0], arrInverse[3][1], arrInverse[3][2]};
    return true;
}

CTransform3 operator*(const CTransform3& a, const CTransform3& b)
{
    return {a.m_objMatrix * b.m_objMatrix, a.TransformPoint(b.m_objTranslation)};
}
