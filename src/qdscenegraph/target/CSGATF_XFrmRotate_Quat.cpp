#include "qdscenegraph/target/CSGATF_XFrmRotate_Quat.h"

bool CSGATF_XFrmRotate_Quat::SetValue(std::span<const float, 4> arrValue)
{
    QD_CHECK_NOT_NULL(m_spTransform, false);
    // SetRotation brings the quaternion to length 1.
    m_spTransform->SetRotation({arrValue[0], arrValue[1], arrValue[2], arrValue[3]});
    return true;
}
