// A light database behind the COLLADA DOM: it finds elements by id. The DOM's own keeps maps of every element
// by type name and type as well, which take longer to fill than the document takes to parse.
#pragma once

#include <dae.h>
#include <dae/daeDatabase.h>

#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

// Holds a reference to every element, and lets go of a document's elements parents first: a deep tree comes
// apart step by step instead of through as many nested destructors as it has levels.
//
// Made for a DAE and handed to it with setDatabase; must be destroyed before that DAE is.
class CDaeDatabase_Ids : public daeDatabase
{
  public:
    explicit CDaeDatabase_Ids(DAE& rDAE) : daeDatabase(rDAE) {}
    CDaeDatabase_Ids(const CDaeDatabase_Ids&) = delete;
    CDaeDatabase_Ids& operator=(const CDaeDatabase_Ids&) = delete;
    ~CDaeDatabase_Ids() override;

    daeInt setMeta(daeMetaElement* pTopMeta) override;

    // Documents. A name is an absolute URI; there is one document of each name. The database owns them.
    daeInt insertDocument(daeString szName, daeElement* pRoot, daeDocument** ppDocument, bool bArchive,
                          const std::string& rExtracted) override;
    daeInt insertDocument(daeString szName, daeDocument** ppDocument) override;
    daeInt createDocument(daeString szName, daeElement* pRoot, daeDocument** ppDocument, bool bArchive,
                          const std::string& rExtracted) override;
    daeInt createDocument(daeString szName, daeDocument** ppDocument) override;
    daeInt insertDocument(daeDocument* pDocument) override;
    daeInt removeDocument(daeDocument* pDocument) override;
    daeUInt getDocumentCount() override;
    daeDocument* getDocument(daeUInt uiIndex) override;
    daeDocument* getDocument(daeString szName, bool bSkipNormalization) override;
    daeString getDocumentName(daeUInt uiIndex) override;
    daeBool isDocumentLoaded(daeString szName) override;
    daeInt clear() override;

    // Elements, entered and removed with all below them.
    daeInt insertElement(daeDocument* pDocument, daeElement* pElement) override;
    daeInt removeElement(daeDocument* pDocument, daeElement* pElement) override;
    daeInt changeElementID(daeElement* pElement, daeString szNewID) override;
    daeInt changeElementSID(daeElement* pElement, daeString szNewSID) override;

    using daeDatabase::idLookup;
    using daeDatabase::sidLookup;
    using daeDatabase::typeLookup;
    // The elements of an id, the first of each type, in document order. (Thousands that share an id would
    // make each look-up as long.) An id that is found only when its %xx escapes are resolved counts, too:
    // that is how a reference must write ids with characters that no URI may hold.
    std::vector<daeElement*> idLookup(const std::string& rID) override;
    // Walks all elements.
    void typeLookup(daeInt nTypeID, std::vector<daeElement*>& rMatching, daeDocument* pDocument) override;
    // Finds none: sids are found from the element that they belong to.
    void sidLookup(const std::string& rSID, std::vector<daeElement*>& rMatching,
                   daeDocument* pDocument) override;

    // All of them, in the order of their entry: for a document that was read, its own.
    std::span<const daeElementRef> GetElements() const { return m_arrElements; }

    // The old look-ups by position, in document order; each call walks all elements.
    daeUInt getTypeCount() override;
    daeString getTypeName(daeUInt uiIndex) override;
    daeUInt getElementCount(daeString szID, daeString szType, daeString szFile) override;
    daeInt getElement(daeElement** ppElement, daeInt nIndex, daeString szID, daeString szType,
                      daeString szFile) override;

  private:
    void AddID(daeString szID, daeElement& rElement);
    void RemoveID(daeElement& rElement);
    std::vector<daeElement*> Match(daeString szID, daeString szType, daeString szFile);

    daeMetaElement* m_pTopMeta = nullptr;
    std::vector<std::unique_ptr<daeDocument>> m_arrDocuments;
    std::vector<daeElementRef> m_arrElements; // parents before their children
    std::multimap<std::string, daeElement*, std::less<>> m_mapIDs;
};
