// A deformer that moves the points of a geometry towards those of other shapes. Only known to be there: what
// it does is not read.
#pragma once

#include "fbxsdk/base/FbxObject.h"

#include <memory>

class CFBXObjectTable;

class FbxBlendShape final : public FbxObject
{
  public:
    static std::unique_ptr<FbxBlendShape> Create(const CFBXObjectTable&, const CFBXObject& rObject)
    {
        return std::unique_ptr<FbxBlendShape>(new FbxBlendShape(rObject));
    }

  private:
    explicit FbxBlendShape(const CFBXObject& rObject) : FbxObject(&rObject) {}
};
