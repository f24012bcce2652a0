// A transform that stands at one point and looks at another: cameras and lights.
#pragma once

#include "qdscenegraph/transform/CSGTransform.h"

// Places an object, it is not a view matrix: the origin comes to the eye, the local -Z axis points at the
// target, and the local Y axis points up as far as it can. A rotation in every case: an eye at the target
// looks along -Z, and an up direction that is missing or lies along the line of sight gives way to the axis
// that is farthest from that line.
class CSGXFrm_LookAt : public CSGTransformInterface<CSGXFrm_LookAt>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGXFrm_LookAt";
    static const CSGTypeInfo<CSGTransform> ms_objTypeInfo;

    static boost::intrusive_ptr<CSGXFrm_LookAt> Create(const CSGFloat3& rEye, const CSGFloat3& rTarget,
                                                       const CSGFloat3& rUp);

    const CSGFloat3& GetEye() const { return m_objPose.m_vEye; }
    const CSGFloat3& GetTarget() const { return m_objPose.m_vTarget; }
    const CSGFloat3& GetUp() const { return m_objPose.m_vUp; }
    void SetLookAt(const CSGFloat3& rEye, const CSGFloat3& rTarget, const CSGFloat3& rUp);

    CTransform3 GetTransform() const override;
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    // As it stands in the record.
    struct CPose
    {
        CSGFloat3 m_vEye;
        CSGFloat3 m_vTarget{0.0f, 0.0f, -1.0f};
        CSGFloat3 m_vUp{0.0f, 1.0f, 0.0f};

        bool operator==(const CPose&) const = default;
    };

    CTransformPtr CreateCopy(CCopies& rCopies) const override;

    CPose m_objPose;
};
