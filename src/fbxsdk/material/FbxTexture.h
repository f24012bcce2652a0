// What is laid over a surface by texture coordinates.
#pragma once

#include "fbxsdk/base/FbxObject.h"
#include "fbxsdk/objects/FBXObjectName.h"

class FbxTexture : public FbxObject
{
  public:
    enum EWrapMode
    {
        eRepeat,
        eClamp
    };

    EWrapMode GetWrapModeU() const { return GetWrapMode("WrapModeU"); }
    EWrapMode GetWrapModeV() const { return GetWrapMode("WrapModeV"); }
    // The name of the mesh's texture coordinates; empty and "default" mean the first.
    std::string_view GetUVSet() const { return LimitFBXName(FindProperty("UVSet").GetString()); }
    // How the coordinates are moved, turned (degrees, the third is that in the plane) and scaled.
    FbxDouble3 GetTranslation() const { return FindProperty("Translation").GetDouble3(); }
    FbxDouble3 GetRotation() const { return FindProperty("Rotation").GetDouble3(); }
    FbxDouble3 GetScaling() const { return FindProperty("Scaling").GetDouble3({1, 1, 1}); }
    bool GetSwapUV() const { return FindProperty("UVSwap").GetBool(); }

  protected:
    using FbxObject::FbxObject;

  private:
    EWrapMode GetWrapMode(std::string_view strProperty) const
    {
        return FindProperty(strProperty).GetInt() == eClamp ? eClamp : eRepeat;
    }
};
