// A bone.
#pragma once

#include "fbxsdk/scene/FbxNodeAttribute.h"

class FbxSkeleton final : public FbxNodeAttribute
{
  public:
    static std::unique_ptr<FbxSkeleton> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

  private:
    explicit FbxSkeleton(const CFBXObject& rObject) : FbxNodeAttribute(&rObject, eSkeleton) {}
};
