// Named pools of textures, with the folders in which their images are searched.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdscenegraph/texture/CSGTexture.h"

#include <filesystem>
#include <map>
#include <vector>

// Pools are kept by name for the life of the process; a texture stays in its pool once it is loaded.
class CSGTexturePool : public CRefObject
{
  public:
    // The pool of a name, made on first use; the empty name means the pool "default". Null when memory is
    // exhausted.
    static boost::intrusive_ptr<CSGTexturePool> GetPool(const CQDString& rName);
    // The same, but null when there is no such pool yet.
    static boost::intrusive_ptr<CSGTexturePool> FindPool(const CQDString& rName);

    // A folder that is there already is not added again.
    void AddTexturePath(const std::filesystem::path& rPath);
    const CQDString& GetName() const { return m_strName; }
    const std::vector<std::filesystem::path>& GetTexturePaths() const { return m_vecPaths; }

    // The texture of a name if it is loaded already, else null.
    CSGTexturePtr GetTexture(const CQDString& rTextureName) const;
    // The same, but loaded from the first folder that has a file of the name. A name may lead into folders
    // below ("walls/brick.png"), never out of them. Null, with one line that names the pool, the texture and
    // the reason, when it cannot be had.
    CSGTexturePtr GetOrLoadTexture(CSGTextureLoader* pTextureLoader, const CQDString& rTextureName);
    // The same, but read anew and not kept.
    CSGTexturePtr TryLoadTexture(CSGTextureLoader* pTextureLoader, const CQDString& rTextureName) const;
    // Loads every texture of the pool anew; one that cannot be had keeps its pixels, and the result is false.
    bool Reload(CSGTextureLoader* pTextureLoader);

  private:
    using CPoolMap = std::map<CQDString, boost::intrusive_ptr<CSGTexturePool>>;

    explicit CSGTexturePool(const CQDString& rName) : m_strName(rName) {}
    static CPoolMap& GetPools();

    CQDString m_strName;
    std::vector<std::filesystem::path> m_vecPaths;
    std::map<CQDString, CSGTexturePtr> m_mapTextures;
};
