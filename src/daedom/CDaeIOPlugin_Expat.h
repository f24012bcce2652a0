// Reads COLLADA documents into the COLLADA DOM with Expat, in place of the DOM's own reader.
//
// The one pass over a file is its well-formedness check as well: it goes on to the end after a fault in what
// the document says, so that a document is "not well formed", "well formed but unusable" or loaded.
//
//     CDaeIOPlugin_Expat objPlugin;                  // outlives the DAE
//     DAE objDAE(nullptr, &objPlugin, "1.4.1");
//     CDaeDatabase_Ids objDatabase(objDAE);          // goes before the DAE
//     objDAE.setDatabase(&objDatabase);
//     objPlugin.SetSource(strFileName);
//     objDAE.open(MakeDaeDocumentURI(strFileName));  // then look at the plugin's result
//
// CDaeFile does just that. Reads local files only, and only what SetSource names: a URI that the DOM comes
// upon in a document opens nothing. Compressed files are refused.
#pragma once

#include "qdcommon/CQDString.h"

#include <dae/daeError.h>
#include <dae/daeIOPlugin.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

class CDaeIOPlugin_Expat : public daeIOPlugin
{
  public:
    CDaeIOPlugin_Expat();

    // What the next read reads: a file, by its name in the file system.
    void SetSource(const CQDString& rFileName);
    // The same with the document's text in memory, which must stay until it is read; the name is for
    // messages.
    void SetSource(const CQDString& rName, std::string_view strDocument);

    // The result of the last read.
    // Whether all of it was read and is XML. A file that is loaded is.
    bool IsWellFormed() const { return m_bWellFormed; }
    // Whether it was read and is no XML, in contrast to what keeps a file from being read.
    bool HasXMLError() const { return m_bXMLError; }
    // DAE_OK: loaded. DAE_ERR_BACKEND_IO: not to be read, or not well formed. DAE_ERR_BACKEND_VALIDATION:
    // well formed but no document to use.
    daeInt GetErrorNumber() const { return m_nError; }
    // The fault as it was logged; empty when the document is loaded.
    const CQDString& GetErrorText() const { return m_strError; }
    // What was read, in bytes.
    uint64_t GetSize() const { return m_uiSize; }
    // The document, owned by the DAE's database; null unless it is loaded.
    daeDocument* GetDocument() const { return m_pDocument; }

    // The interface that the DAE calls. Documents aren't written, and there are no options.
    daeInt setMeta(daeMetaElement* pTopMeta) override;
    void setDatabase(daeDatabase* pDatabase) override;
    daeInt read(const daeURI& rURI, daeString szDocument) override;
    daeInt write(const daeURI& rURI, daeDocument* pDocument, daeBool bReplace) override;
    daeInt writeToMemory(std::vector<char>& rOutput, daeDocument* pDocument) override;
    daeInt setOption(daeString szOption, daeString szValue) override;
    daeString getOption(daeString szOption) override;

  private:
    struct CSource
    {
        CQDString strName;
        std::optional<std::string_view> strDocument; // in memory; a file without it
    };

    daeDatabase* m_pDatabase = nullptr;
    std::optional<CSource> m_objSource;
    bool m_bWellFormed = false;
    bool m_bXMLError = false;
    daeInt m_nError = DAE_ERR_INVALID_CALL;
    CQDString m_strError;
    uint64_t m_uiSize = 0;
    daeDocument* m_pDocument = nullptr;
};
