#include "qdsgloader_collada/CColladaTargetPathAtom.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaSidIndex.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

bool CColladaTargetPathAtom::ResolveStartElement(DAE& rDAE)
{
    if (!CheckUnresolved())
    {
        return false;
    }
    m_pElement = CSGLoaderCollada::FindIDElement(rDAE, m_strName, domNode::ID());
    if (m_pElement == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to find start element named \"%s\".", m_strName);
    }
    return m_pElement != nullptr;
}

bool CColladaTargetPathAtom::ResolveElement(daeElement& rParent, CColladaSidIndex& rIndex)
{
    if (!CheckUnresolved())
    {
        return false;
    }
    m_pElement = rIndex.Find(rParent, m_strName);
    if (m_pElement == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Couldn't find child element of <%s> with scoped ID %s",
            rParent.getElementName(), m_strName);
    }
    return m_pElement != nullptr;
}

bool CColladaTargetPathAtom::CheckUnresolved() const
{
    if (m_pElement != nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Already had resolved element.");
    }
    return m_pElement == nullptr;
}
