// The loader of FBX files.
#pragma once

#include "qdscenegraph/loader/CSGLoader.h"

class CSGTextureLoader;
class CSGTexturePool;

// A facade: what loads is made by Create, and nobody else sees what it is built on.
class CSGLoaderFBX : public CSGLoader
{
  public:
    // With the first flag rotations are kept as quaternions, with the second animated transforms are
    // resampled at the file's frame rate instead of keeping their keys. Null (reported) without a texture
    // loader, and when there is no memory.
    static boost::intrusive_ptr<CSGLoaderFBX> Create(
        const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader, bool bKeepQuaternions, bool bResample);

    ~CSGLoaderFBX() override;

    // The pool that textures are looked up in first; null for none. To be set before LoadFile.
    void SetTexturePool(const boost::intrusive_ptr<CSGTexturePool>& spTexturePool);

  protected:
    CSGLoaderFBX();

    boost::intrusive_ptr<CSGTexturePool> m_spTexturePool;
};
