#include "fbxsdk/scene/FbxCamera.h"

std::unique_ptr<FbxCamera> FbxCamera::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    return std::unique_ptr<FbxCamera>(new FbxCamera(rObject));
}

FbxCamera::EProjectionType FbxCamera::GetProjectionType() const
{
    return FindProperty("CameraProjectionType").GetEnum(ePerspective, eOrthogonal, ePerspective);
}

FbxCamera::EApertureMode FbxCamera::GetApertureMode() const
{
    return FindProperty("ApertureMode").GetEnum(eHorizAndVert, eFocalLength, eVertical);
}

FbxCamera::EAspectRatioMode FbxCamera::GetAspectRatioMode() const
{
    return FindProperty("AspectRatioMode").GetEnum(eWindowSize, eFixedHeight, eWindowSize);
}

double FbxCamera::GetAspectWidth() const { return FindProperty("AspectWidth", "AspectW").GetDouble(320); }
double FbxCamera::GetAspectHeight() const { return FindProperty("AspectHeight", "AspectH").GetDouble(200); }
double FbxCamera::GetPixelAspectRatio() const
{
    return FindProperty("PixelAspectRatio", "PixelRatio").GetDouble(1);
}
double FbxCamera::GetFieldOfView() const { return FindProperty("FieldOfView").GetDouble(25.114999771118164); }
double FbxCamera::GetFieldOfViewY() const { return FindProperty("FieldOfViewY").GetDouble(40); }
double FbxCamera::GetFocalLength() const { return FindProperty("FocalLength").GetDouble(34.89327621672628); }
double FbxCamera::GetFilmWidth() const { return FindProperty("FilmWidth").GetDouble(0.816); }
double FbxCamera::GetFilmHeight() const { return FindProperty("FilmHeight").GetDouble(0.612); }
double FbxCamera::GetApertureSqueeze() const { return FindProperty("FilmSqueezeRatio").GetDouble(1); }
double FbxCamera::GetNearPlane() const { return FindProperty("NearPlane").GetDouble(10); }
double FbxCamera::GetFarPlane() const { return FindProperty("FarPlane").GetDouble(4000); }
double FbxCamera::GetOrthoZoom() const { return FindProperty("OrthoZoom", "CameraOrthoZoom").GetDouble(1); }
