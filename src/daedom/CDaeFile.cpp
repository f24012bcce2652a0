// One COLLADA document, opened in a DAE of its own.
#include "daedom/CDaeFile.h"

#include "daedom/CDaeDatabase_Ids.h"
#include "daedom/CDaeIOPlugin_Expat.h"
#include "daedom/CDaeUri.h"

CDaeFile::CDaeFile()
    : m_spPlugin(std::make_unique<CDaeIOPlugin_Expat>()),
      m_spDAE(std::make_unique<DAE>(nullptr, m_spPlugin.get(), "1.4.1")),
      m_spDatabase(std::make_unique<CDaeDatabase_Ids>(*m_spDAE))
{
    m_spDAE->setDatabase(m_spDatabase.get());
}

CDaeFile::~CDaeFile() = default;

bool CDaeFile::Open(const CQDString& rFileName)
{
    const CQDString strPath = GetDaeFilePath(rFileName);
    m_spPlugin->SetSource(strPath);
    return OpenSource(strPath);
}

bool CDaeFile::OpenMemory(const CQDString& rName, std::string_view strDocument)
{
    m_spPlugin->SetSource(rName, strDocument);
    return OpenSource(rName);
}

bool CDaeFile::OpenSource(const CQDString& rName)
{
    m_strURI = MakeDaeDocumentURI(rName);
    m_spDAE->open(m_strURI);
    if (daeDocument* pDocument = GetDocument())
    {
        m_strURI = pDocument->getDocumentURI()->str();
    }
    return GetDocument() != nullptr;
}

bool CDaeFile::IsWellFormed() const { return m_spPlugin->IsWellFormed(); }

bool CDaeFile::HasXMLError() const { return m_spPlugin->HasXMLError(); }

int CDaeFile::GetErrorNumber() const { return m_spPlugin->GetErrorNumber(); }

const CQDString& CDaeFile::GetErrorText() const { return m_spPlugin->GetErrorText(); }

uint64_t CDaeFile::GetSize() const { return m_spPlugin->GetSize(); }

daeDocument* CDaeFile::GetDocument() const { return m_spPlugin->GetDocument(); }
