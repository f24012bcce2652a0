// Named pools of textures, with the folders in which their images are searched.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdcommon/CRefObject.h"

#include <filesystem>
#include <vector>

// Pools are kept by name for the life of the process. So far a pool knows its search folders only.
class CSGTexturePool : public CRefObject
{
  public:
    // The pool of a name, made on first use; the empty name means the pool "default". Null when memory is
    // exhausted.
    static boost::intrusive_ptr<CSGTexturePool> GetPool(const CQDString& rName);

    // A folder that is there already is not added again.
    void AddTexturePath(const std::filesystem::path& rPath);
    const CQDString& GetName() const { return m_strName; }
    const std::vector<std::filesystem::path>& GetTexturePaths() const { return m_vecPaths; }

  private:
    explicit CSGTexturePool(const CQDString& rName) : m_strName(rName) {}

    CQDString m_strName;
    std::vector<std::filesystem::path> m_vecPaths;
};
