#include "qdscenegraph/target/CSGATF_Visible.h"

bool CSGATF_Visible::SetValue(std::span<const float, 1> arrValue)
{
    const float fValue = arrValue[0];
    QD_CHECK_NOT_NULL(m_spObjNode, false);
    QD_CHECK_CALL(m_spObjNode->SetVisible(fValue != 0.0f), false);
    return true;
}
