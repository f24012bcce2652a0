#include "qdsgloader_collada/CColladaConverter.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

CSGVertexFormat::EMember CColladaConverter::GetVertDataMember(std::string_view strSemantic)
{
    if (strSemantic == "POSITION")
    {
        return CSGVertexFormat::MEMBER_POSITION;
    }
    if (strSemantic == "NORMAL")
    {
        return CSGVertexFormat::MEMBER_NORMAL;
    }
    if (strSemantic == "TEXCOORD")
    {
        return CSGVertexFormat::MEMBER_TEXCOORD;
    }
    if (strSemantic == "COLOR")
    {
        return CSGVertexFormat::MEMBER_COLOR;
    }
    Log(QD_COLLADA, LOG_WARNING, "Unrecognized input semantic %s", CQDString(strSemantic));
    return CSGVertexFormat::MEMBER_NONE;
}

bool CColladaConverter::CheckNumFloats(std::span<const double> arrValues, size_t nExpected)
{
    if (arrValues.size() != nExpected)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in list of floats that had %d instead of %d values.",
            static_cast<int>(arrValues.size()), static_cast<int>(nExpected));
        return false;
    }
    return true;
}

bool CColladaConverter::GetTransform(std::span<const double> arrValues, CTransform3& rTransform)
{
    if (!CheckNumFloats(arrValues, 16))
    {
        return false;
    }
    CMatrix4 objMatrix;
    for (size_t nRow = 0; nRow < 4; ++nRow)
    {
        for (size_t nColumn = 0; nColumn < 4; ++nColumn)
        {
            objMatrix.m[nColumn][nRow] = static_cast<float>(arrValues[nRow * 4 + nColumn]);
        }
    }
    if (!CTransform3::FromMatrix4(objMatrix, rTransform))
    {
        Log(QD_COLLADA, LOG_ERROR, "Tried to get transform from matrix that wasn't an affine transform.");
        return false;
    }
    return true;
}
