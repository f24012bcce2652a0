// Elements that others refer to.
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

namespace
{

// The id that a URI names within its own document; false when it leads elsewhere. The DOM's own look-up would
// open what it leads to.
bool GetLocalID(const daeURI& rURI, CQDString& rStrID)
{
    const std::string& rStrURI = rURI.originalStr();
    const size_t nHash = rStrURI.find('#');
    if (nHash == std::string::npos)
    {
        return false;
    }
    if (nHash > 0)
    {
        const daeElement* pContainer = rURI.getContainer();
        const std::string strDocument = rURI.str().substr(0, rURI.str().find('#'));
        if (pContainer == nullptr || pContainer->getDocumentURI() == nullptr ||
            pContainer->getDocumentURI()->str() != strDocument)
        {
            return false;
        }
    }
    rStrID = rStrURI.substr(nHash + 1);
    return true;
}

} // namespace

daeElement* CSGLoaderCollada::FindIDElement(DAE& rDAE, const CQDString& rStrID, int32_t nPreferredType)
{
    const std::vector<daeElement*> vecElements = rDAE.getDatabase()->idLookup(rStrID);
    for (daeElement* pElement : vecElements)
    {
        if (pElement->typeID() == nPreferredType)
        {
            return pElement;
        }
    }
    return vecElements.empty() ? nullptr : vecElements.front();
}

daeElement* CSGLoaderCollada::FindURIElement(const daeURI& rURI, int32_t nPreferredType)
{
    CQDString strID;
    return GetLocalID(rURI, strID) ? FindIDElement(*rURI.getDAE(), strID, nPreferredType) : nullptr;
}

daeElement* CSGLoaderCollada::GetURIElement(const daeURI& rURI, int32_t nExpectedType)
{
    const std::string& rStrURI = rURI.originalStr();
    CQDString strID;
    daeElement* pElement = nullptr;
    if (GetLocalID(rURI, strID))
    {
        pElement = FindIDElement(*rURI.getDAE(), strID, nExpectedType);
        if (pElement == nullptr)
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to find element named \"%s\".", strID);
        }
    }
    else if (!rStrURI.empty())
    {
        Log(QD_COLLADA, LOG_ERROR, "URI '%s' leads out of the document, which is not supported.", rStrURI);
    }
    if (pElement == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "URI referenced NULL element.");
        return nullptr;
    }
    if (pElement->typeID() != nExpectedType)
    {
        Log(QD_COLLADA, LOG_ERROR, "URI '%s' referenced element of type %d when expecting type %d.", rStrURI,
            pElement->typeID(), nExpectedType);
        return nullptr;
    }
    return pElement;
}

daeElement* CSGLoaderCollada::GetIDElement(DAE* pDAE, const CQDString& rStrID, int32_t nExpectedType)
{
    if (pDAE == nullptr || pDAE->getDatabase() == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in DAE with NULL database.");
        return nullptr;
    }
    daeElement* pElement = FindIDElement(*pDAE, rStrID, nExpectedType);
    if (pElement == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to find element named \"%s\".", rStrID);
        return nullptr;
    }
    if (pElement->typeID() != nExpectedType)
    {
        Log(QD_COLLADA, LOG_ERROR, "ID \"%s\" referenced element of type %d when expecting type %d.", rStrID,
            pElement->typeID(), nExpectedType);
        return nullptr;
    }
    return pElement;
}
