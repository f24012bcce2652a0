// A bone.
#pragma once

#include "fbxsdk/scene/FbxNodeAttribute.h"

class FbxSkeleton final : public FbxNodeAttribute
{
  public:
    enum ESkeletonType
    {
        eRoot,
        eLimb,
        eLimbNode,
        eEffector
    };

    static std::unique_ptr<FbxSkeleton> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    ESkeletonType GetSkeletonType() const { return m_eSkeletonType; }

  private:
    FbxSkeleton(const CFBXObject& rObject, ESkeletonType eSkeletonType)
        : FbxNodeAttribute(&rObject, FbxNodeAttribute::eSkeleton),
          m_eSkeletonType(eSkeletonType)
    {}

    ESkeletonType m_eSkeletonType;
};
