#include "fbxsdk/scene/FbxSkeleton.h"

#include "fbxsdk/objects/CFBXObject.h"

std::unique_ptr<FbxSkeleton> FbxSkeleton::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    const ESkeletonType eType = rObject.strKind == "Root"       ? eRoot
                                : rObject.strKind == "Limb"     ? eLimb
                                : rObject.strKind == "Effector" ? eEffector
                                                                : eLimbNode;
    return std::unique_ptr<FbxSkeleton>(new FbxSkeleton(rObject, eType));
}
