#include "qdscenegraph/material/CSGParam.h"

namespace
{
const SGStreamableRegistration<CSGParam> s_objRegistration(0xC5B138F6561F4F17, 1, 1);
}

bool CSGParam::NotifyAddedToParamSet(CSGParamSet* pParamSet)
{
    if (pParamSet == nullptr)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Handed in NULL Param set to %s of type %d.", m_strName, m_eType);
        return false;
    }
    if (m_pParamSet != nullptr)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Already had a Param set in %s of type %d.", m_strName, m_eType);
        return false;
    }
    m_pParamSet = pParamSet;
    return true;
}

bool CSGParam::NotifyRemovedFromParamSet(CSGParamSet* pParamSet)
{
    if (pParamSet == nullptr)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Handed in NULL Param set to %s of type %d.", m_strName, m_eType);
        return false;
    }
    if (pParamSet != m_pParamSet)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Param %s of type %d was in different set than that handed in.",
            m_strName, m_eType);
        return false;
    }
    m_pParamSet = nullptr;
    return true;
}
