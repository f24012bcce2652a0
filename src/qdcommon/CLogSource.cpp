#include "qdcommon/CLogSource.h"

// Constant-initialised, so that a source in any translation unit can link itself in during static
// initialisation.
CLogSource* CLogSource::ms_pFirst = nullptr;

CLogSource QD_DEFAULT("QD_DEFAULT");
CLogSource QD_CHECKS("QD_CHECKS");

CLogSource::CLogSource(const char* szName) : m_szName(szName), m_pNext(ms_pFirst) { ms_pFirst = this; }

CLogSource::~CLogSource()
{
    for (CLogSource** ppLink = &ms_pFirst; *ppLink != nullptr; ppLink = &(*ppLink)->m_pNext)
    {
        if (*ppLink == this)
        {
            *ppLink = m_pNext;
            return;
        }
    }
}

void CLogSource::SetAllThresholds(int nThreshold)
{
    for (CLogSource* pSource = ms_pFirst; pSource != nullptr; pSource = pSource->m_pNext)
    {
        pSource->m_nThreshold = nThreshold;
    }
}
