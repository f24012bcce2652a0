#include "fbxsdk/base/FbxAMatrix.h"

#include "fbxsdk/document/CFBXRecord.h"

#include <algorithm>
#include <cmath>

std::optional<FbxAMatrix> FbxAMatrix::FromRecord(const CFBXRecord& rRecord)
{
    std::vector<double> vecRows;
    if (!rRecord.ReadDoubles(vecRows) || vecRows.size() != 16 ||
        !std::ranges::all_of(vecRows, [](double d) { return std::isfinite(d); }))
    {
        return std::nullopt;
    }
    FbxAMatrix objMatrix;
    for (size_t nRow = 0; nRow < 4; ++nRow)
    {
        for (size_t nColumn = 0; nColumn < 3; ++nColumn)
        {
            objMatrix.m_arrRows[nRow][nColumn] = vecRows[nRow * 4 + nColumn];
        }
    }
    return objMatrix;
}

FbxAMatrix FbxAMatrix::FromTranslation(const FbxDouble3& rTranslation)
{
    FbxAMatrix objMatrix;
    objMatrix.SetT(rTranslation);
    return objMatrix;
}

FbxAMatrix FbxAMatrix::FromScaling(const FbxDouble3& rScaling)
{
    FbxAMatrix objMatrix;
    for (size_t n = 0; n < 3; ++n)
    {
        objMatrix.m_arrRows[n][n] = rScaling[n];
    }
    return objMatrix;
}

FbxAMatrix FbxAMatrix::FromQuaternion(const FbxQuaternion& q)
{
    FbxAMatrix objMatrix;
    auto& m = objMatrix.m_arrRows;
    m[0][0] = 1 - 2 * (q.y * q.y + q.z * q.z);
    m[0][1] = 2 * (q.x * q.y + q.z * q.w);
    m[0][2] = 2 * (q.x * q.z - q.y * q.w);
    m[1][0] = 2 * (q.x * q.y - q.z * q.w);
    m[1][1] = 1 - 2 * (q.x * q.x + q.z * q.z);
    m[1][2] = 2 * (q.y * q.z + q.x * q.w);
    m[2][0] = 2 * (q.x * q.z + q.y * q.w);
    m[2][1] = 2 * (q.y * q.z - q.x * q.w);
    m[2][2] = 1 - 2 * (q.x * q.x + q.y * q.y);
    return objMatrix;
}

FbxAMatrix FbxAMatrix::FromEuler(const FbxDouble3& rDegrees, EFbxRotationOrder eOrder)
{
    return FromQuaternion(FbxQuaternion::FromEuler(rDegrees, eOrder));
}

void FbxAMatrix::SetT(const FbxDouble3& rTranslation)
{
    for (size_t n = 0; n < 3; ++n)
    {
        m_arrRows[3][n] = rTranslation[n];
    }
}

double FbxAMatrix::GetDeterminant() const
{
    const auto& m = m_arrRows;
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
           m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

FbxAMatrix FbxAMatrix::Inverse() const
{
    const double dDeterminant = GetDeterminant();
    FbxAMatrix objInverse;
    if (dDeterminant == 0 || !std::isfinite(1 / dDeterminant))
    {
        return objInverse;
    }
    for (size_t nRow = 0; nRow < 3; ++nRow)
    {
        for (size_t nColumn = 0; nColumn < 3; ++nColumn)
        {
            // The cofactor of the transposed place; the indices run around, which gives the signs.
            const size_t r1 = (nColumn + 1) % 3;
            const size_t r2 = (nColumn + 2) % 3;
            const size_t c1 = (nRow + 1) % 3;
            const size_t c2 = (nRow + 2) % 3;
            objInverse.m_arrRows[nRow][nColumn] =
                (m_arrRows[r1][c1] * m_arrRows[r2][c2] - m_arrRows[r1][c2] * m_arrRows[r2][c1]) /
                dDeterminant;
        }
    }
    objInverse.SetT(objInverse.MultDirection(GetT()) * -1.0);
    return objInverse;
}

FbxAMatrix FbxAMatrix::GetLinear() const
{
    FbxAMatrix objLinear = *this;
    objLinear.SetT({});
    return objLinear;
}

bool FbxAMatrix::IsIdentity(double dTolerance) const
{
    for (size_t nRow = 0; nRow < 4; ++nRow)
    {
        for (size_t nColumn = 0; nColumn < 3; ++nColumn)
        {
            if (!(std::abs(m_arrRows[nRow][nColumn] - (nRow == nColumn ? 1.0 : 0.0)) <= dTolerance))
            {
                return false;
            }
        }
    }
    return true;
}

FbxDouble3 FbxAMatrix::MultT(const FbxDouble3& rPoint) const { return MultDirection(rPoint) + GetT(); }

FbxDouble3 FbxAMatrix::MultDirection(const FbxDouble3& d) const
{
    FbxDouble3 objResult;
    for (size_t n = 0; n < 3; ++n)
    {
        objResult[n] = d[0] * m_arrRows[0][n] + d[1] * m_arrRows[1][n] + d[2] * m_arrRows[2][n];
    }
    return objResult;
}

FbxAMatrix operator*(const FbxAMatrix& a, const FbxAMatrix& b)
{
    FbxAMatrix objProduct;
    for (size_t nRow = 0; nRow < 4; ++nRow)
    {
        for (size_t nColumn = 0; nColumn < 3; ++nColumn)
        {
            objProduct.At(nRow, nColumn) =
                b.Get(nRow, 0) * a.Get(0, nColumn) + b.Get(nRow, 1) * a.Get(1, nColumn) +
                b.Get(nRow, 2) * a.Get(2, nColumn) + (nRow == 3 ? a.Get(3, nColumn) : 0.0);
        }
    }
    return objProduct;
}
