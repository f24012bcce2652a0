// A light: it shines along -Y of its node.
#pragma once

#include "fbxsdk/scene/FbxNodeAttribute.h"

class FbxLight final : public FbxNodeAttribute
{
  public:
    enum ELightType
    {
        ePoint,
        eDirectional,
        eSpot,
        eArea,
        eVolume
    };

    // How intensity falls with the distance.
    enum EDecayType
    {
        eNone,
        eLinear,
        eQuadratic,
        eCubic
    };

    static std::unique_ptr<FbxLight> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    ELightType GetLightType() const;
    bool GetCastLight() const; // false: it is switched off
    FbxDouble3 GetColor() const;
    double GetIntensity() const;  // per cent
    double GetInnerAngle() const; // of a spot's cones, whole angles in degrees
    double GetOuterAngle() const;
    EDecayType GetDecayType() const;
    double GetDecayStart() const; // the distance from which on it falls

  private:
    explicit FbxLight(const CFBXObject& rObject) : FbxNodeAttribute(&rObject, eLight) {}
};
