// What loads textures from image files on behalf of a scene loader.
#pragma once

#include "qdcommon/CRefObject.h"

// The place of the image readers; none is built yet, so no texture is loaded.
class CSGTextureLoader : public CRefObject
{
  public:
    static boost::intrusive_ptr<CSGTextureLoader> CreateStandardLoader();
};
