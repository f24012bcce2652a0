// A light database behind the COLLADA DOM.
#include "daedom/CDaeDatabase_Ids.h"

#include "daedom/CDaeUri.h"

#include <dae/daeMetaElement.h>

#include <algorithm>
#include <string_view>
#include <unordered_set>

CDaeDatabase_Ids::~CDaeDatabase_Ids() { clear(); }

daeInt CDaeDatabase_Ids::setMeta(daeMetaElement* pTopMeta)
{
    m_pTopMeta = pTopMeta;
    return DAE_OK;
}

daeInt CDaeDatabase_Ids::insertDocument(daeString szName, daeElement* pRoot, daeDocument** ppDocument,
                                        bool bArchive, const std::string& rExtracted)
{
    return createDocument(szName, pRoot, ppDocument, bArchive, rExtracted);
}

daeInt CDaeDatabase_Ids::insertDocument(daeString szName, daeDocument** ppDocument)
{
    return createDocument(szName, ppDocument);
}

daeInt CDaeDatabase_Ids::createDocument(daeString szName, daeElement* pRoot, daeDocument** ppDocument,
                                        bool bArchive, const std::string& rExtracted)
{
    if (ppDocument)
    {
        *ppDocument = nullptr;
    }
    if (!pRoot)
    {
        return DAE_ERR_INVALID_CALL;
    }
    if (isDocumentLoaded(szName))
    {
        return DAE_ERR_COLLECTION_ALREADY_EXISTS;
    }
    daeDocument* pDocument =
        m_arrDocuments.emplace_back(std::make_unique<daeDocument>(dae, bArchive, rExtracted)).get();
    pDocument->getDocumentURI()->setURI(szName);
    pDocument->setDomRoot(pRoot);
    if (ppDocument)
    {
        *ppDocument = pDocument;
    }
    return DAE_OK;
}

daeInt CDaeDatabase_Ids::createDocument(daeString szName, daeDocument** ppDocument)
{
    daeElementRef spRoot;
    if (m_pTopMeta)
    {
        spRoot = m_pTopMeta->create();
    }
    return createDocument(szName, spRoot, ppDocument, false, std::string());
}

daeInt CDaeDatabase_Ids::insertDocument(daeDocument*)
{
    return DAE_ERR_NOT_IMPLEMENTED; // documents are made here
}

daeInt CDaeDatabase_Ids::removeDocument(daeDocument* pDocument)
{
    const auto it = std::ranges::find(m_arrDocuments, pDocument, &std::unique_ptr<daeDocument>::get);
    if (it == m_arrDocuments.end())
    {
        return DAE_ERR_COLLECTION_DOES_NOT_EXIST;
    }
    std::erase_if(m_mapIDs, [=](const auto& rEntry) { return rEntry.second->getDocument() == pDocument; });
    std::vector<daeElementRef> arrReleased;
    arrReleased.swap(m_arrElements);
    std::ranges::remove_copy_if(
        arrReleased, std::back_inserter(m_arrElements),
        [=](const daeElementRef& rspElement) { return rspElement->getDocument() == pDocument; });
    m_arrDocuments.erase(it);
    // An element that goes here leaves its children to the references that come after its own, so that none
    // goes inside the destructor of another.
    for (daeElementRef& rspElement : arrReleased)
    {
        rspElement = nullptr;
    }
    return DAE_OK;
}

daeUInt CDaeDatabase_Ids::getDocumentCount() { return static_cast<daeUInt>(m_arrDocuments.size()); }

daeDocument* CDaeDatabase_Ids::getDocument(daeUInt uiIndex)
{
    return uiIndex < m_arrDocuments.size() ? m_arrDocuments[uiIndex].get() : nullptr;
}

daeDocument* CDaeDatabase_Ids::getDocument(daeString szName, bool bSkipNormalization)
{
    const std::string strName = bSkipNormalization ? szName : daeURI(dae, szName, true).str();
    for (const auto& rspDocument : m_arrDocuments)
    {
        if (rspDocument->getDocumentURI()->str() == strName)
        {
            return rspDocument.get();
        }
    }
    return nullptr;
}

daeString CDaeDatabase_Ids::getDocumentName(daeUInt uiIndex)
{
    daeDocument* pDocument = getDocument(uiIndex);
    return pDocument ? pDocument->getDocumentURI()->getURI() : nullptr;
}

daeBool CDaeDatabase_Ids::isDocumentLoaded(daeString szName) { return getDocument(szName, false) != nullptr; }

daeInt CDaeDatabase_Ids::clear()
{
    while (!m_arrDocuments.empty())
    {
        removeDocument(m_arrDocuments.back().get());
    }
    dae.getRawRefCache().clear();
    dae.getSidRefCache().clear();
    return DAE_OK;
}

daeInt CDaeDatabase_Ids::insertElement(daeDocument*, daeElement* pElement)
{
    if (!pElement)
    {
        return DAE_ERR_INVALID_CALL;
    }
    // Breadth first from the element: each below it is entered after its parent.
    for (size_t n = m_arrElements.size(), nEnd = n + 1; n < nEnd; ++n)
    {
        if (n == m_arrElements.size())
        {
            m_arrElements.emplace_back(pElement);
        }
        daeElement& rElement = *m_arrElements[n];
        if (daeString szID = rElement.getID(); szID && *szID)
        {
            AddID(szID, rElement);
        }
        daeElementRefArray arrChildren;
        rElement.getChildren(arrChildren);
        for (size_t nChild = 0; nChild < arrChildren.getCount(); ++nChild)
        {
            m_arrElements.emplace_back(arrChildren[nChild]);
        }
        nEnd = m_arrElements.size();
    }
    dae.getSidRefCache().clear();
    return DAE_OK;
}

daeInt CDaeDatabase_Ids::removeElement(daeDocument*, daeElement* pElement)
{
    if (!pElement)
    {
        return DAE_ERR_INVALID_CALL;
    }
    std::unordered_set<daeElement*> setRemoved{pElement};
    // Parents come before their children, so that one walk finds all that lie below.
    std::vector<daeElementRef> arrRemoved;
    std::erase_if(m_arrElements, [&](const daeElementRef& rspElement) {
        daeElement* pParent = rspElement->getParentElement();
        if (rspElement != pElement && !(pParent && setRemoved.contains(pParent)))
        {
            return false;
        }
        setRemoved.insert(rspElement);
        RemoveID(*rspElement);
        arrRemoved.push_back(rspElement);
        return true;
    });
    dae.getSidRefCache().clear();
    return DAE_OK;
}

void CDaeDatabase_Ids::AddID(daeString szID, daeElement& rElement)
{
    const auto [itBegin, itEnd] = m_mapIDs.equal_range(std::string_view(szID));
    const bool bHasType = std::any_of(itBegin, itEnd, [&](const auto& rEntry) {
        return rEntry.second->typeID() == rElement.typeID() &&
               rEntry.second->getDocument() == rElement.getDocument();
    });
    if (!bHasType)
    {
        m_mapIDs.emplace_hint(itEnd, szID, &rElement);
    }
}

void CDaeDatabase_Ids::RemoveID(daeElement& rElement)
{
    const daeString szID = rElement.getID();
    if (!szID)
    {
        return;
    }
    const auto [itBegin, itEnd] = m_mapIDs.equal_range(std::string_view(szID));
    const auto it =
        std::find_if(itBegin, itEnd, [&](const auto& rEntry) { return rEntry.second == &rElement; });
    if (it != itEnd)
    {
        m_mapIDs.erase(it);
    }
}

daeInt CDaeDatabase_Ids::changeElementID(daeElement* pElement, daeString szNewID)
{
    if (!pElement)
    {
        return DAE_ERR_INVALID_CALL;
    }
    RemoveID(*pElement);
    if (szNewID && *szNewID)
    {
        AddID(szNewID, *pElement);
    }
    dae.getSidRefCache().clear();
    return DAE_OK;
}

daeInt CDaeDatabase_Ids::changeElementSID(daeElement* pElement, daeString)
{
    dae.getSidRefCache().clear();
    return pElement ? DAE_OK : DAE_ERR_INVALID_CALL;
}

std::vector<daeElement*> CDaeDatabase_Ids::idLookup(const std::string& rID)
{
    auto range = m_mapIDs.equal_range(rID);
    if (range.first == range.second && rID.find('%') != std::string::npos)
    {
        range = m_mapIDs.equal_range(DecodeDaeReference(rID));
    }
    std::vector<daeElement*> arrMatching;
    for (auto it = range.first; it != range.second; ++it)
    {
        arrMatching.push_back(it->second);
    }
    return arrMatching;
}

void CDaeDatabase_Ids::typeLookup(daeInt nTypeID, std::vector<daeElement*>& rMatching, daeDocument* pDocument)
{
    rMatching.clear();
    for (const daeElementRef& rspElement : m_arrElements)
    {
        if (rspElement->typeID() == nTypeID && (!pDocument || rspElement->getDocument() == pDocument))
        {
            rMatching.push_back(rspElement);
        }
    }
}

void CDaeDatabase_Ids::sidLookup(const std::string&, std::vector<daeElement*>& rMatching, daeDocument*)
{
    rMatching.clear();
}

daeUInt CDaeDatabase_Ids::getTypeCount() { return static_cast<daeUInt>(dae.getAllMetas().getCount()); }

daeString CDaeDatabase_Ids::getTypeName(daeUInt uiIndex)
{
    const daeMetaElementRefArray& rMetas = dae.getAllMetas();
    return uiIndex < rMetas.getCount() && rMetas[uiIndex] ? daeString(rMetas[uiIndex]->getName()) : nullptr;
}

std::vector<daeElement*> CDaeDatabase_Ids::Match(daeString szID, daeString szType, daeString szFile)
{
    daeDocument* pDocument = szFile ? getDocument(szFile, false) : nullptr;
    std::vector<daeElement*> arrMatching;
    for (const daeElementRef& rspElement : m_arrElements)
    {
        const daeString szElementID = rspElement->getID();
        if ((!szID || (szElementID && std::string_view(szElementID) == szID)) &&
            (!szType || std::string_view(rspElement->getTypeName()) == szType) &&
            (!szFile || rspElement->getDocument() == pDocument))
        {
            arrMatching.push_back(rspElement);
        }
    }
    return arrMatching;
}

daeUInt CDaeDatabase_Ids::getElementCount(daeString szID, daeString szType, daeString szFile)
{
    return static_cast<daeUInt>(Match(szID, szType, szFile).size());
}

daeInt CDaeDatabase_Ids::getElement(daeElement** ppElement, daeInt nIndex, daeString szID, daeString szType,
                                    daeString szFile)
{
    const std::vector<daeElement*> arrMatching = Match(szID, szType, szFile);
    const bool bFound = nIndex >= 0 && static_cast<size_t>(nIndex) < arrMatching.size();
    *ppElement = bFound ? arrMatching[static_cast<size_t>(nIndex)] : nullptr;
    return bFound ? DAE_OK : DAE_ERR_QUERY_NO_MATCH;
}
