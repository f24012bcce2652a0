// Which class of the scene stands for which object of the file.
#pragma once

#include "fbxsdk/base/FbxObject.h"

#include <memory>

class CFBXObjectTable;

class CFBXObjectFactory
{
  public:
    // Null for objects that no class stands for, and (reported) for damaged ones.
    static std::unique_ptr<FbxObject> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);
};
