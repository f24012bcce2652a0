#include "fbxsdk/scene/FbxLight.h"

std::unique_ptr<FbxLight> FbxLight::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    return std::unique_ptr<FbxLight>(new FbxLight(rObject));
}

FbxLight::ELightType FbxLight::GetLightType() const
{
    return FindProperty("LightType").GetEnum(ePoint, eVolume, ePoint);
}

FbxLight::EDecayType FbxLight::GetDecayType() const
{
    return FindProperty("DecayType").GetEnum(eNone, eCubic, eNone);
}

bool FbxLight::GetCastLight() const { return FindProperty("CastLight", "CastLightOnObject").GetBool(true); }
FbxDouble3 FbxLight::GetColor() const { return FindProperty("Color").GetDouble3({1, 1, 1}); }
double FbxLight::GetIntensity() const { return FindProperty("Intensity").GetDouble(100); }
double FbxLight::GetInnerAngle() const { return FindProperty("InnerAngle", "HotSpot").GetDouble(0); }
double FbxLight::GetOuterAngle() const { return FindProperty("OuterAngle", "Cone angle").GetDouble(45); }
double FbxLight::GetDecayStart() const { return FindProperty("DecayStart").GetDouble(0); }
