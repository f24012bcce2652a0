// The loader of FBX files.
#pragma once

#include "qdscenegraph/loader/CSGLoader.h"

class CSGTextureLoader;

// A facade: what loads is made by Create, and nobody else sees what it is built on.
class CSGLoaderFBX : public CSGLoader
{
  public:
    // With the first flag rotations are kept as quaternions, with the second animated transforms are
    // resampled at the file's frame rate instead of keeping their keys. Null when there is no memory.
    static boost::intrusive_ptr<CSGLoader> Create(
        const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader, bool bQuaternions, bool bResample);
};
