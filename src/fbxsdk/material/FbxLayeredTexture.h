// Textures that are blended with one another.
#pragma once

#include "fbxsdk/material/FbxTexture.h"

#include <memory>

class CFBXObjectTable;

// The textures are connected to it, the lowest first.
class FbxLayeredTexture final : public FbxTexture
{
  public:
    static std::unique_ptr<FbxLayeredTexture> Create(const CFBXObjectTable&, const CFBXObject& rObject)
    {
        return std::unique_ptr<FbxLayeredTexture>(new FbxLayeredTexture(&rObject));
    }

  private:
    using FbxTexture::FbxTexture;
};
