// An attribute that says only where the node is.
#pragma once

#include "fbxsdk/scene/FbxNodeAttribute.h"

class FbxNull final : public FbxNodeAttribute
{
  public:
    static std::unique_ptr<FbxNull> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

  private:
    explicit FbxNull(const CFBXObject& rObject) : FbxNodeAttribute(&rObject, eNull) {}
};
