// Properties of old files under the names they have since version 6.
#include "fbxsdk/objects/FBXLegacyProperties.h"

#include "fbxsdk/objects/CFBXObjectTable.h"

#include <array>

namespace
{

struct SLegacyProperty
{
    std::string_view strRecord;
    std::string_view strProperty;
    std::string_view strType;
    size_t uiFirst = 0; // among the record's values
    size_t uiCount = 1;
};

constexpr SLegacyProperty CAMERA[] = {
    {"Position", "Position", "Vector", 0, 3},
    {"Up", "UpVector", "Vector", 0, 3},
    {"LookAt", "InterestPosition", "Vector", 0, 3},
    {"Roll", "Roll", "Roll"},
    {"AspectType", "AspectRatioMode", "enum"},
    {"AspectW", "AspectWidth", "double"},
    {"AspectH", "AspectHeight", "double"},
    {"PixelRatio", "PixelAspectRatio", "double"},
    {"NearPlane", "NearPlane", "double"},
    {"FarPlane", "FarPlane", "double"},
    {"ApertureMode", "ApertureMode", "enum"},
    {"CameraAperture", "FilmWidth", "double", 0},
    {"CameraAperture", "FilmHeight", "double", 1},
    {"SqueezeRatio", "FilmSqueezeRatio", "double"},
    {"FocalLength", "FocalLength", "Number"},
    {"Aperture", "FieldOfView", "FieldOfView"},
    {"FieldOfViewXProperty", "FieldOfViewX", "FieldOfViewX"},
    {"FieldOfViewYProperty", "FieldOfViewY", "FieldOfViewY"},
    {"OpticalCenterXProperty", "OpticalCenterX", "OpticalCenterX"},
    {"OpticalCenterYProperty", "OpticalCenterY", "OpticalCenterY"},
    {"CameraOrthoZoom", "OrthoZoom", "double"},
};

constexpr SLegacyProperty LIGHT[] = {
    {"LightType", "LightType", "enum"},    {"CastLight", "CastLightOnObject", "bool"},
    {"Color", "Color", "Color", 0, 3},     {"Intensity", "Intensity", "Number"},
    {"ConeAngle", "Cone angle", "Number"}, {"Fog", "Fog", "Number"},
};

constexpr SLegacyProperty MATERIAL[] = {
    {"ShadingModel", "ShadingModel", "KString"},
    {"Ambient", "AmbientColor", "ColorRGB", 0, 3},
    {"Diffuse", "DiffuseColor", "ColorRGB", 0, 3},
    {"Specular", "SpecularColor", "ColorRGB", 0, 3},
    {"Emissive", "EmissiveColor", "ColorRGB", 0, 3},
    {"Shininess", "ShininessExponent", "double"},
    {"Alpha", "Opacity", "double"},
    {"Reflectivity", "ReflectionFactor", "double"},
};

void ReadProperties(const CFBXRecord& rRecord, std::span<const SLegacyProperty> spanProperties,
                    std::string_view strFlags, CFBXProperties& rProperties)
{
    for (const SLegacyProperty& rProperty : spanProperties)
    {
        const CFBXRecord* pValues = rRecord.FindChild(rProperty.strRecord);
        if (pValues != nullptr && pValues->GetNumValues() >= rProperty.uiFirst + rProperty.uiCount)
        {
            rProperties.Add({rProperty.strProperty,
                             rProperty.strType,
                             {},
                             strFlags,
                             pValues->GetValues().subspan(rProperty.uiFirst, rProperty.uiCount)});
        }
    }
}

void AddValues(std::string_view strName, std::string_view strType, std::span<const CFBXValue> spanValues,
               CFBXObjectTable& rTable, CFBXProperties& rProperties)
{
    rProperties.Add({strName, strType, {}, "A", rTable.KeepValues(spanValues)});
}

const CFBXRecord* FindChannel(const CFBXRecord& rRecord, std::string_view strChannel)
{
    for (const CFBXRecord& rChild : rRecord.GetChildren())
    {
        if (rChild.GetName() == "Channel" && rChild.GetString(0) == strChannel)
        {
            return &rChild;
        }
    }
    return nullptr;
}

// The limits of a light's or camera's rotation turn it from the axis that its model looks along.
void ReadLimits(const CFBXRecord& rLimits, CFBXObjectTable& rTable, CFBXProperties& rProperties)
{
    if (rLimits.GetChildInt64("RAuto", 1) != 0)
    {
        return;
    }
    const std::array<CFBXValue, 1> arrActive = {int64_t(1)};
    const std::array<CFBXValue, 3> arrAxes = {
        rLimits.GetChildDouble("RXAxis"), rLimits.GetChildDouble("RYAxis"), rLimits.GetChildDouble("RZAxis")};
    AddValues("RotationActive", "bool", arrActive, rTable, rProperties);
    AddValues("PostRotation", "Vector3D", arrAxes, rTable, rProperties);
}

} // namespace

void ReadFBXLegacyModel(const CFBXRecord& rModel, CFBXObjectTable& rTable, CFBXProperties& rProperties)
{
    constexpr std::string_view OF_ATTRIBUTE = "N";

    ReadFBXLegacyTransform(rModel, rTable, rProperties);
    if (const CFBXRecord* pLimits = rModel.FindChild("Limits"))
    {
        ReadLimits(*pLimits, rTable, rProperties);
    }
    const std::string_view strType = rModel.GetChildString("TypeFlags");
    if (strType == "Camera")
    {
        ReadProperties(rModel, CAMERA, OF_ATTRIBUTE, rProperties);
        // The first "Type" is a text, the projection a later one.
        for (const CFBXRecord& rChild : rModel.GetChildren())
        {
            if (rChild.GetName() == "Type" && rChild.GetValue(0).IsNumber())
            {
                rProperties.Add({"CameraProjectionType", "enum", {}, OF_ATTRIBUTE, rChild.GetValues()});
            }
        }
    }
    else if (strType == "Light")
    {
        ReadProperties(rModel, LIGHT, OF_ATTRIBUTE, rProperties);
    }
}

void ReadFBXLegacyTransform(const CFBXRecord& rRecord, CFBXObjectTable& rTable, CFBXProperties& rProperties)
{
    constexpr struct
    {
        std::string_view strChannel;
        std::string_view strProperty;
        double dDefault;
    } TRANSFORMS[] = {{"T", "Lcl Translation", 0}, {"R", "Lcl Rotation", 0}, {"S", "Lcl Scaling", 1}};

    const CFBXRecord* pTransform = FindChannel(rRecord, "Transform");
    for (const auto& rTransform : TRANSFORMS)
    {
        const CFBXRecord* pChannel =
            pTransform != nullptr ? FindChannel(*pTransform, rTransform.strChannel) : nullptr;
        if (pChannel == nullptr || rProperties.Find(rTransform.strProperty) != nullptr)
        {
            continue;
        }
        std::array<CFBXValue, 3> arrValues;
        for (size_t uiAxis = 0; uiAxis < arrValues.size(); ++uiAxis)
        {
            const CFBXRecord* pAxis = FindChannel(*pChannel, std::string_view("XYZ").substr(uiAxis, 1));
            arrValues[uiAxis] = pAxis != nullptr ? pAxis->GetChildDouble("Default", rTransform.dDefault)
                                                 : rTransform.dDefault;
        }
        AddValues(rTransform.strProperty, rTransform.strProperty, arrValues, rTable, rProperties);
    }
    const CFBXRecord* pVisibility = FindChannel(rRecord, "Visibility");
    if (pVisibility != nullptr && rProperties.Find("Visibility") == nullptr)
    {
        // In percent
        const std::array<CFBXValue, 1> arrVisible = {pVisibility->GetChildDouble("Default", 1) > 0 ? 1.0
                                                                                                   : 0.0};
        AddValues("Visibility", "Visibility", arrVisible, rTable, rProperties);
    }
}

void ReadFBXLegacyMaterial(const CFBXRecord& rMaterial, CFBXObjectTable& rTable, CFBXProperties& rProperties)
{
    ReadProperties(rMaterial, MATERIAL, {}, rProperties);
    // What version 6 says besides the opacity: how much of white shines through.
    const std::array<CFBXValue, 1> arrTransparency = {1 - rMaterial.GetChildDouble("Alpha", 1)};
    AddValues("TransparencyFactor", "double", arrTransparency, rTable, rProperties);
}
