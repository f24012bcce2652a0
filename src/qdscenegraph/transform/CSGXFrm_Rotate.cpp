#include "qdscenegraph/transform/CSGXFrm_Rotate.h"

#include "qdscenegraph/streaming/CSGFloatRecord.h"

#include <cmath>

const CSGTypeInfo<CSGTransform> CSGXFrm_Rotate::ms_objTypeInfo(CSGXFrm_Rotate::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGXFrm_Rotate> s_objRegistration(0x4B29A6ACFBDBCAF5, 1, 1);
}

boost::intrusive_ptr<CSGXFrm_Rotate> CSGXFrm_Rotate::Create(const CSGFloat3& rAxis, float fAngleRadians)
{
    boost::intrusive_ptr<CSGXFrm_Rotate> spTransform = CSGMem::Construct<CSGXFrm_Rotate>();
    if (spTransform)
    {
        spTransform->m_vAxis = rAxis;
        spTransform->m_fAngle = fAngleRadians;
    }
    return spTransform;
}

void CSGXFrm_Rotate::SetAxisAngle(const CSGFloat3& rAxis, float fAngleRadians)
{
    if (m_vAxis != rAxis || m_fAngle != fAngleRadians)
    {
        m_vAxis = rAxis;
        m_fAngle = fAngleRadians;
        MarkDirty();
    }
}

void CSGXFrm_Rotate::SetRotation(const CSGFloat4& rQuaternion)
{
    // The imaginary part is sin(angle / 2) * axis, the real one cos(angle / 2).
    const double x = rQuaternion.x;
    const double y = rQuaternion.y;
    const double z = rQuaternion.z;
    const double fSine = std::sqrt(x * x + y * y + z * z);
    if (fSine > 0.0)
    {
        const CSGFloat3 vAxis = {static_cast<float>(x / fSine), static_cast<float>(y / fSine),
                                 static_cast<float>(z / fSine)};
        SetAxisAngle(vAxis, static_cast<float>(2.0 * std::atan2(fSine, rQuaternion.w)));
    }
    else
    {
        SetAngle(0.0f);
    }
}

CTransform3 CSGXFrm_Rotate::GetTransform() const
{
    double arrAxis[3] = {m_vAxis.x, m_vAxis.y, m_vAxis.z};
    const double fLength =
        std::sqrt(arrAxis[0] * arrAxis[0] + arrAxis[1] * arrAxis[1] + arrAxis[2] * arrAxis[2]);
    CTransform3 objTransform;
    if (!(fLength > 0.0))
    {
        return objTransform;
    }
    for (double& rElement : arrAxis)
    {
        rElement /= fLength;
    }
    // cos * I + (1 - cos) * a a^T - sin * [a]x, the transpose of the formula for column vectors. The two
    // indices between which an element of [a]x stands leave the third one, which names the component of the
    // axis.
    const double fSine = std::sin(static_cast<double>(m_fAngle));
    const double fCosine = std::cos(static_cast<double>(m_fAngle));
    for (int nRow = 0; nRow < 3; ++nRow)
    {
        for (int nColumn = 0; nColumn < 3; ++nColumn)
        {
            double fElement = (1.0 - fCosine) * arrAxis[nRow] * arrAxis[nColumn];
            if (nRow == nColumn)
            {
                fElement += fCosine;
            }
            else
            {
                const bool bCyclic = nColumn == (nRow + 1) % 3;
                fElement += (bCyclic ? fSine : -fSine) * arrAxis[3 - nRow - nColumn];
            }
            objTransform.m_objMatrix.m[nRow][nColumn] = static_cast<float>(fElement);
        }
    }
    return objTransform;
}

CSGTransform::CTransformPtr CSGXFrm_Rotate::CreateCopy(CCopies&) const { return Create(m_vAxis, m_fAngle); }

bool CSGXFrm_Rotate::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_CALL(CSGTransform::ReadFromStream(pStream, pLoadState), false);
    return ReadFloats(pStream, m_vAxis) && ReadFloats(pStream, m_fAngle);
}

bool CSGXFrm_Rotate::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGTransform::WriteToStream(pStream, pSaveState), false);
    return WriteFloats(pStream, m_vAxis) && WriteFloats(pStream, m_fAngle);
}

void CSGXFrm_Rotate::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO,
        "%sCSGXFrm_Rotate: 0x%08llX Name: '%s' - Axis: [%.3f %.3f %.3f] - Angle: %.3f", rIndent,
        LogAddress(this), GetName(), m_vAxis.x, m_vAxis.y, m_vAxis.z, m_fAngle);
}
