// Animates the angle of a rotation.
#pragma once

#include "qdscenegraph/target/CSGATF.h"
#include "qdscenegraph/transform/CSGXFrm_Rotate.h"

// Radians; the axis is kept.
class CSGATF_XFrmRotate_Angle final : public CSGATFInterface<CSGATF_XFrmRotate_Angle, 1>
{
  public:
    explicit CSGATF_XFrmRotate_Angle(CSGXFrm_Rotate* pTransform) : m_spTransform(pTransform) {}
    static boost::intrusive_ptr<CSGATF_XFrmRotate_Angle> Create(CSGXFrm_Rotate* pTransform)
    {
        return CSGMem::Construct<CSGATF_XFrmRotate_Angle>(pTransform);
    }

    bool SetValue(std::span<const float, 1> arrValue);

  private:
    boost::intrusive_ptr<CSGXFrm_Rotate> m_spTransform;
};
