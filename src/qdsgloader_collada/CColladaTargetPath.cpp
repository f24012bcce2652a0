#include "qdsgloader_collada/CColladaTargetPath.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

CColladaTargetPath::CColladaTargetPath(std::string_view strPath)
{
    for (size_t nSlash = strPath.find('/'); nSlash != std::string_view::npos; nSlash = strPath.find('/'))
    {
        if (m_vecAtoms.size() + 1 == MAX_ATOMS)
        {
            m_bTooLong = true;
            return;
        }
        m_vecAtoms.emplace_back(CQDString(strPath.substr(0, nSlash)));
        strPath.remove_prefix(nSlash + 1);
    }
    const size_t nDot = strPath.find('.');
    m_vecAtoms.emplace_back(CQDString(strPath.substr(0, nDot)));
    if (nDot != std::string_view::npos)
    {
        m_strMember = strPath.substr(nDot + 1);
    }
}

bool CColladaTargetPath::ResolveElements(DAE& rDAE, CColladaSidIndex& rIndex)
{
    if (m_bTooLong)
    {
        Log(QD_COLLADA, LOG_ERROR, "The target path has more than %d elements", static_cast<int>(MAX_ATOMS));
        return false;
    }
    if (!m_vecAtoms.front().ResolveStartElement(rDAE))
    {
        return false;
    }
    for (size_t n = 1; n < m_vecAtoms.size(); ++n)
    {
        daeElement& rParent = *m_vecAtoms[n - 1].GetElement();
        if (!m_vecAtoms[n].ResolveElement(rParent, rIndex))
        {
            Log(QD_COLLADA, LOG_ERROR,
                "Failed to resolve element for atom named %s using element of type %s with ID %s",
                m_vecAtoms[n].GetName(), rParent.getElementName(), GetIDText(rParent));
            return false;
        }
    }
    return true;
}
