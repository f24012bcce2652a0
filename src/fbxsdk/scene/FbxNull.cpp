#include "fbxsdk/scene/FbxNull.h"

std::unique_ptr<FbxNull> FbxNull::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    return std::unique_ptr<FbxNull>(new FbxNull(rObject));
}
