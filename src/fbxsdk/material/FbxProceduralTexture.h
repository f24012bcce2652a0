// A texture that a tool computes.
#pragma once

#include "fbxsdk/material/FbxTexture.h"

#include <memory>

class CFBXObjectTable;

class FbxProceduralTexture final : public FbxTexture
{
  public:
    static std::unique_ptr<FbxProceduralTexture> Create(const CFBXObjectTable&, const CFBXObject& rObject)
    {
        return std::unique_ptr<FbxProceduralTexture>(new FbxProceduralTexture(&rObject));
    }

  private:
    using FbxTexture::FbxTexture;
};
