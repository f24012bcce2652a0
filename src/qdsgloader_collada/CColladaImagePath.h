// Where the image lies that a document names.
#pragma once

#include "qdcommon/CQDString.h"

#include <filesystem>
#include <string_view>

// Documents travel without their folders: they name images by paths of the machine that wrote them, by URIs
// with and without escapes, and relative to themselves.
class CColladaImagePath
{
  public:
    // The reference is a URI as the document's reader keeps it: back slashes are slashes, and what no URI may
    // hold is escaped. The folder is the document's.
    CColladaImagePath(std::string_view strReference, const std::filesystem::path& rFolder);

    // False for what only a network could bring.
    bool IsLocal() const { return m_bLocal; }
    // The name without folders.
    const CQDString& GetBaseName() const { return m_strBaseName; }
    // The file as it is named, else the one of the same base name beside the document (reported). When there
    // is neither, the name of the first, which is not there.
    CQDString FindFile() const;

  private:
    CQDString InFolder(const CQDString& rName) const;

    std::filesystem::path m_objFolder;
    bool m_bLocal = true;
    CQDString m_strAsWritten; // with its escapes: a file may be called "50%20.png"
    CQDString m_strDecoded;
    CQDString m_strBaseName;
};
