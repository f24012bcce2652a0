#include "qdscenegraph/target/CSGATF_XFrmTransform3.h"

bool CSGATF_XFrmTransform3::SetValue(std::span<const float, 16> arrValue)
{
    QD_CHECK_NOT_NULL(m_spObjTransform, false);
    CMatrix3 objMatrix;
    for (size_t nRow = 0; nRow < 3; ++nRow)
    {
        for (size_t nColumn = 0; nColumn < 3; ++nColumn)
        {
            objMatrix.m[nRow][nColumn] = arrValue[4 * nColumn + nRow];
        }
    }
    const CSGFloat3 vTranslation = {arrValue[12], arrValue[13], arrValue[14]};
    m_spObjTransform->SetTransform(CTransform3(objMatrix, vTranslation));
    return true;
}
