// A deformer that takes the points of a geometry from a file of their own. Only known to be there: that file
// is not read.
#pragma once

#include "fbxsdk/base/FbxObject.h"

#include <memory>

class CFBXObjectTable;

class FbxVertexCacheDeformer final : public FbxObject
{
  public:
    static std::unique_ptr<FbxVertexCacheDeformer> Create(const CFBXObjectTable&, const CFBXObject& rObject)
    {
        return std::unique_ptr<FbxVertexCacheDeformer>(new FbxVertexCacheDeformer(rObject));
    }

  private:
    explicit FbxVertexCacheDeformer(const CFBXObject& rObject) : FbxObject(&rObject) {}
};
