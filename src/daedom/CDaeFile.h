// One COLLADA document, opened in a DAE of its own.
#pragma once

#include "qdcommon/CQDString.h"

#include <cstdint>
#include <memory>
#include <string_view>

class CDaeDatabase_Ids;
class CDaeIOPlugin_Expat;
class DAE;
class daeDocument;

// Owns the DAE with the reader and the database behind it, and takes them down in the order they need. Opens
// once. The DOM isn't made for threads: at any time only one may use it. Not for
// static objects either: the DOM's own go first, and it uses them to the end.
class CDaeFile
{
  public:
    CDaeFile();
    ~CDaeFile();
    CDaeFile(const CDaeFile&) = delete;
    CDaeFile& operator=(const CDaeFile&) = delete;

    // Reads the file into the DAE, by the rules of COLLADA 1.4.1. The name may be a "file://" URI. False, and
    // logged, when there is no document to use.
    bool Open(const CQDString& rFileName);
    // The same with the document's text in memory; the name stands for it in messages.
    bool OpenMemory(const CQDString& rName, std::string_view strDocument);

    // What CDaeIOPlugin_Expat says of the result.
    bool IsWellFormed() const;
    bool HasXMLError() const;
    int GetErrorNumber() const;
    const CQDString& GetErrorText() const;

    uint64_t GetSize() const;

    DAE& GetDAE() const { return *m_spDAE; }
    // The document; its root is a domCOLLADA. Null unless one is open.
    daeDocument* GetDocument() const;
    // The document's URI, the base of the references in it.
    const CQDString& GetURI() const { return m_strURI; }

  private:
    bool OpenSource(const CQDString& rName);

    std::unique_ptr<CDaeIOPlugin_Expat> m_spPlugin;
    std::unique_ptr<DAE> m_spDAE;
    std::unique_ptr<CDaeDatabase_Ids> m_spDatabase;
    CQDString m_strURI;
};
