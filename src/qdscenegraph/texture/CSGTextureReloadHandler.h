// What a texture remembers of where its pixels came from.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdcommon/CRefObject.h"

class CSGTex_2D;
class CSGTextureLoader;

class CSGTextureReloadHandler : public CRefObject
{
  public:
    // Gives the texture its pixels anew (CSGTex_2D::SetPixels); false (reported), with the texture as it
    // was, when they are not to be had.
    virtual bool Reload(CSGTextureLoader* pTextureLoader, CSGTex_2D* pTexture) = 0;
    virtual const CQDString& GetFilename() const = 0;
};
