// Animates a rotation by quaternions.
#pragma once

#include "qdscenegraph/target/CSGATF.h"
#include "qdscenegraph/transform/CSGXFrm_Rotate.h"

// x, y, z, w with w real; of any length but 0.
class CSGATF_XFrmRotate_Quat final : public CSGATFInterface<CSGATF_XFrmRotate_Quat, 4>
{
  public:
    explicit CSGATF_XFrmRotate_Quat(CSGXFrm_Rotate* pTransform) : m_spTransform(pTransform) {}
    static boost::intrusive_ptr<CSGATF_XFrmRotate_Quat> Create(CSGXFrm_Rotate* pTransform)
    {
        return CSGMem::Construct<CSGATF_XFrmRotate_Quat>(pTransform);
    }

    bool SetValue(std::span<const float, 4> arrValue);

  private:
    boost::intrusive_ptr<CSGXFrm_Rotate> m_spTransform;
};
