#include "qdscenegraph/transform/CSGXFrm_LookAt.h"

#include "qdscenegraph/streaming/CSGFloatRecord.h"

#include <array>
#include <cmath>

const CSGTypeInfo<CSGTransform> CSGXFrm_LookAt::ms_objTypeInfo(CSGXFrm_LookAt::SG_TYPE_NAME);

namespace
{

const SGStreamableRegistration<CSGXFrm_LookAt> s_objRegistration(0x5BEA2EBA3EF036B2, 1, 1);

// Sines of smaller angles are the noise of rounded directions.
constexpr double MIN_SINE = 1e-6;

using CDirection = std::array<double, 3>;

CDirection ToDirection(const CSGFloat3& v) { return {v.x, v.y, v.z}; }

CDirection Cross(const CDirection& a, const CDirection& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// Brings a vector to length 1; false, and no change, when it is not longer than the given length or has none.
bool Unitize(CDirection& rVector, double fMinLength)
{
    const double fLength =
        std::sqrt(rVector[0] * rVector[0] + rVector[1] * rVector[1] + rVector[2] * rVector[2]);
    if (!(fLength > fMinLength) || !std::isfinite(fLength))
    {
        return false;
    }
    for (double& rElement : rVector)
    {
        rElement /= fLength;
    }
    return true;
}

} // namespace

boost::intrusive_ptr<CSGXFrm_LookAt> CSGXFrm_LookAt::Create(const CSGFloat3& rEye, const CSGFloat3& rTarget,
                                                            const CSGFloat3& rUp)
{
    boost::intrusive_ptr<CSGXFrm_LookAt> spTransform = CSGMem::Construct<CSGXFrm_LookAt>();
    if (spTransform)
    {
        spTransform->m_objPose = {rEye, rTarget, rUp};
    }
    return spTransform;
}

void CSGXFrm_LookAt::SetLookAt(const CSGFloat3& rEye, const CSGFloat3& rTarget, const CSGFloat3& rUp)
{
    const CPose objPose = {rEye, rTarget, rUp};
    if (m_objPose != objPose)
    {
        m_objPose = objPose;
        MarkDirty();
    }
}

CTransform3 CSGXFrm_LookAt::GetTransform() const
{
    const CDirection vEye = ToDirection(m_objPose.m_vEye);
    const CDirection vTarget = ToDirection(m_objPose.m_vTarget);
    CDirection vZ = {vEye[0] - vTarget[0], vEye[1] - vTarget[1], vEye[2] - vTarget[2]};
    if (!Unitize(vZ, 0.0))
    {
        vZ = {0.0, 0.0, 1.0};
    }
    CDirection vUp = ToDirection(m_objPose.m_vUp);
    const bool bHasUp = Unitize(vUp, 0.0);
    CDirection vX = Cross(vUp, vZ);
    if (!bHasUp || !Unitize(vX, MIN_SINE))
    {
        // The axis in which the line of sight extends least.
        size_t nAxis = 1;
        for (size_t n = 0; n < 3; ++n)
        {
            nAxis = std::abs(vZ[n]) < std::abs(vZ[nAxis]) ? n : nAxis;
        }
        vUp = {0.0, 0.0, 0.0};
        vUp[nAxis] = 1.0;
        vX = Cross(vUp, vZ);
        Unitize(vX, 0.0);
    }
    const CDirection arrRows[3] = {vX, Cross(vZ, vX), vZ};
    CTransform3 objTransform;
    for (size_t nRow = 0; nRow < 3; ++nRow)
    {
        for (size_t nColumn = 0; nColumn < 3; ++nColumn)
        {
            objTransform.m_objMatrix.m[nRow][nColumn] = static_cast<float>(arrRows[nRow][nColumn]);
        }
    }
    objTransform.m_objTranslation = m_objPose.m_vEye;
    return objTransform;
}

CSGTransform::CTransformPtr CSGXFrm_LookAt::CreateCopy(CCopies&) const
{
    return Create(m_objPose.m_vEye, m_objPose.m_vTarget, m_objPose.m_vUp);
}

bool CSGXFrm_LookAt::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_CALL(CSGTransform::ReadFromStream(pStream, pLoadState), false);
    return ReadFloats(pStream, m_objPose);
}

bool CSGXFrm_LookAt::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGTransform::WriteToStream(pStream, pSaveState), false);
    return WriteFloats(pStream, m_objPose);
}

void CSGXFrm_LookAt::OutputDebugInfo(const CQDString& rIndent) const
{
    const auto& [vEye, vTarget, vUp] = m_objPose;
    Log(QD_SCENEGRAPH, LOG_INFO,
        "%sCSGXFrm_LookAt: 0x%08llX Name: '%s' - Eye: [%.3f %.3f %.3f] - Target: [%.3f %.3f %.3f] - Up: "
        "[%.3f %.3f %.3f]",
        rIndent, LogAddress(this), GetName(), vEye.x, vEye.y, vEye.z, vTarget.x, vTarget.y, vTarget.z, vUp.x,
        vUp.y, vUp.z);
}
