// A rotation about an axis through the origin.
#pragma once

#include "qdcommon/CSGFloat4.h"
#include "qdscenegraph/transform/CSGTransform.h"

// The axis may have any length; an axis of length 0 does not rotate. The angle is in radians,
// counter-clockwise for one who looks against the axis.
class CSGXFrm_Rotate : public CSGTransformInterface<CSGXFrm_Rotate>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGXFrm_Rotate";
    static const CSGTypeInfo<CSGTransform> ms_objTypeInfo;

    static boost::intrusive_ptr<CSGXFrm_Rotate> Create(const CSGFloat3& rAxis, float fAngleRadians);

    const CSGFloat3& GetAxis() const { return m_vAxis; }
    float GetAngle() const { return m_fAngle; }
    void SetAxis(const CSGFloat3& rAxis) { SetAxisAngle(rAxis, m_fAngle); }
    void SetAngle(float fAngleRadians) { SetAxisAngle(m_vAxis, fAngleRadians); }
    void SetAxisAngle(const CSGFloat3& rAxis, float fAngleRadians);
    // The rotation of a quaternion of any length but 0; kept as axis and angle. One without rotation keeps
    // the axis.
    void SetRotation(const CSGFloat4& rQuaternion);

    // Rodrigues' formula, in double.
    CTransform3 GetTransform() const override;
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    CTransformPtr CreateCopy(CCopies& rCopies) const override;

    CSGFloat3 m_vAxis{0.0f, 0.0f, 1.0f};
    float m_fAngle = 0.0f;
};
