#include "qdscenegraph/target/CSGATF_XFrmRotate_Angle.h"

bool CSGATF_XFrmRotate_Angle::SetValue(std::span<const float, 1> arrValue)
{
    if (!m_spTransform)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Had NULL transform.");
        return false;
    }
    m_spTransform->SetAngle(arrValue[0]);
    return true;
}
