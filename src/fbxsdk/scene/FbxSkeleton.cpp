#include "fbxsdk/scene/FbxSkeleton.h"

#include "fbxsdk/objects/CFBXObject.h"

std::unique_ptr<FbxSkeleton> FbxSkeleton::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    return std::unique_ptr<FbxSkeleton>(new FbxSkeleton(rObject));
}
