// Loads the textures that a scene file names.
#pragma once

#include "qdscenegraph/texture/CSGTexture.h"

#include <span>
#include <unordered_map>

class CLogSource;
class CSGTextureLoader;
class CSGTexturePool;

// For one scene: each file is loaded once, and all that name it share its texture. Textures get the smaller
// levels that scenes are drawn with.
class CSGSceneTextures
{
  public:
    // The pool may be null. Lines go to the log source, which must live longer.
    CSGSceneTextures(const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader,
                     const boost::intrusive_ptr<CSGTexturePool>& spTexturePool, const CLogSource& rLogSource);
    ~CSGSceneTextures();

    // Without a texture loader nothing may be loaded.
    bool HasLoader() const { return m_spTextureLoader != nullptr; }
    // The pool's texture of a name, in place of a file. Null without a pool, and (reported) when the pool
    // does not have it.
    CSGTexturePtr LoadFromPool(const CQDString& rStrName, const CQDString& rStrFile) const;
    // The texture of an image file that is held in memory, which is not kept. Null (reported) when it does
    // not decode.
    CSGTexturePtr LoadFromMemory(std::span<const uint8_t> arrFile, const CQDString& rStrName) const;
    // A file that is missing or does not decode (reported) gives the texture that stands for such; null when
    // no texture can be made at all.
    CSGTexturePtr LoadFile(const CQDString& rStrFile);

  private:
    boost::intrusive_ptr<CSGTextureLoader> m_spTextureLoader;
    boost::intrusive_ptr<CSGTexturePool> m_spTexturePool;
    const CLogSource& m_rLogSource;
    std::unordered_map<CQDString, CSGTexturePtr> m_mapFiles;
};
