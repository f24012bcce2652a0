#include "qdsgloader_fbx/CFBXCameraConverter.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/Angles.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/camera/CSGCam_OrthoYMag.h"
#include "qdscenegraph/camera/CSGCam_PerspYFOV.h"
#include "qdscenegraph/camera/CSGData_Camera.h"
#include "qdsgloader_fbx/CFBXChildNode.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr double MM_PER_INCH = 25.4;
// What an orthographic camera shows across at a zoom of 1.
constexpr double ORTHO_WIDTH = 30.0;

// Takes -Z, along which cameras look here, to +X.
const CTransform3 TURN = {{{{0.0f, 0.0f, 1.0f}, {0.0f, 1.0f, 0.0f}, {-1.0f, 0.0f, 0.0f}}}, {}};

// How the picture lies in the film gate; the numbers are the file's.
enum EGateFit : int64_t
{
    FIT_NONE,
    FIT_VERTICAL,
    FIT_HORIZONTAL,
    FIT_FILL,
    FIT_OVERSCAN,
    FIT_STRETCH
};

// What the film sees, in inches across.
double GetFilmWidth(const FbxCamera& rCamera)
{
    return rCamera.GetFilmWidth() * rCamera.GetApertureSqueeze();
}

// Width of the picture by its height.
double GetAspectRatio(const FbxCamera& rCamera)
{
    const double dWidth = rCamera.GetAspectWidth();
    const double dHeight = rCamera.GetAspectHeight();
    switch (rCamera.GetAspectRatioMode())
    {
    case FbxCamera::eFixedRatio:
        return dWidth;
    case FbxCamera::eFixedWidth:
        return rCamera.GetPixelAspectRatio() / dHeight;
    case FbxCamera::eFixedHeight:
        return dWidth * rCamera.GetPixelAspectRatio();
    case FbxCamera::eWindowSize:
        if (dWidth == 0.0 && dHeight == 0.0) // the file does not know the window
        {
            return GetFilmWidth(rCamera) / rCamera.GetFilmHeight();
        }
        break;
    case FbxCamera::eFixedResolution:
        break;
    }
    return dWidth / dHeight * rCamera.GetPixelAspectRatio();
}

// Of the film behind the picture.
double GetFilmHeight(const FbxCamera& rCamera, double dAspectRatio)
{
    const double dHeight = rCamera.GetFilmHeight();
    const double dHeightByWidth = GetFilmWidth(rCamera) / dAspectRatio;
    switch (rCamera.FindProperty("GateFit").GetInt(FIT_NONE))
    {
    case FIT_HORIZONTAL:
        return dHeightByWidth;
    case FIT_FILL:
        return std::min(dHeight, dHeightByWidth);
    case FIT_OVERSCAN:
        return std::max(dHeight, dHeightByWidth);
    default:
        return dHeight;
    }
}

// Half of what the picture shows upright at the distance 1.
double GetHalfHeight(const FbxCamera& rCamera, double dAspectRatio)
{
    const auto GetTangent = [](double dDegrees) { return std::tan(0.5 * dDegrees * RADIANS_PER_DEGREE); };
    switch (rCamera.GetApertureMode())
    {
    case FbxCamera::eHorizAndVert:
        return GetTangent(rCamera.GetFieldOfViewY());
    case FbxCamera::eHorizontal:
        return GetTangent(rCamera.GetFieldOfView()) / dAspectRatio;
    case FbxCamera::eFocalLength:
        return 0.5 * GetFilmHeight(rCamera, dAspectRatio) * MM_PER_INCH / rCamera.GetFocalLength();
    case FbxCamera::eVertical:
        break;
    }
    return GetTangent(rCamera.GetFieldOfView());
}

// Half of the height of an orthographic camera's picture, in the units of its node, which is scaled by so
// much.
double GetOrthoHalfHeight(const FbxNode& rFBXNode, const FbxCamera& rCamera, double dAspectRatio,
                          double dScale)
{
    // Blender writes the width that it shows itself, and not in the units of the scene.
    const bool bWidth = rFBXNode.GetScene()->GetCreator().starts_with("Blender");
    const double dWidth = rCamera.GetOrthoZoom() * (bWidth ? 1.0 : ORTHO_WIDTH / dScale);
    return 0.5 * dWidth / dAspectRatio;
}

double GetLength(const FbxDouble3& rVector) { return std::hypot(rVector[0], rVector[1], rVector[2]); }

// A number above the bound, and a float that is so.
bool IsAbove(double dValue, double dBound)
{
    return std::abs(dValue) <= std::numeric_limits<float>::max() && static_cast<float>(dValue) > dBound;
}

} // namespace

boost::intrusive_ptr<CSGCamera> CFBXCameraConverter::Convert(const FbxNode& rFBXNode,
                                                             const FbxCamera& rCamera)
{
    const FbxAMatrix objWorld = rFBXNode.EvaluateGlobalTransform();
    const double dForwardScale = GetLength(objWorld.MultDirection({1.0, 0.0, 0.0}));
    const double dUpScale = GetLength(objWorld.MultDirection({0.0, 1.0, 0.0}));
    const bool bOrtho = rCamera.GetProjectionType() == FbxCamera::eOrthogonal;
    const double dAspectRatio = GetAspectRatio(rCamera);
    const double dNear = rCamera.GetNearPlane() / dForwardScale;
    const double dFar = rCamera.GetFarPlane() / dForwardScale;
    // Of the picture, for an orthographic camera; else at the distance 1.
    const double dHalfHeight = bOrtho ? GetOrthoHalfHeight(rFBXNode, rCamera, dAspectRatio, dUpScale)
                                      : GetHalfHeight(rCamera, dAspectRatio);
    // An orthographic camera may well see what lies behind its place.
    const double dNearest = bOrtho ? -std::numeric_limits<double>::infinity() : 0.0;
    if (!IsAbove(dAspectRatio, 0.0) || !IsAbove(dHalfHeight, 0.0) || !IsAbove(dNear, dNearest) ||
        !IsAbove(dFar, dNear))
    {
        Log(QD_FBX, LOG_WARNING,
            "Ignoring the camera of node '%s': its aspect ratio is %g, half its height %g, and it sees from "
            "%g to %g",
            rFBXNode.GetName(), dAspectRatio, dHalfHeight, dNear, dFar);
        return nullptr;
    }
    const CSGCamera::CFrame objFrame = {static_cast<float>(dAspectRatio), static_cast<float>(dNear),
                                        static_cast<float>(dFar)};
    const CQDCompactString strName(rCamera.GetName().empty() ? rFBXNode.GetName() : rCamera.GetName());
    if (bOrtho)
    {
        return CSGCam_OrthoYMag::Create(strName, static_cast<float>(dHalfHeight), objFrame);
    }
    const double dYFOV = 2.0 * std::atan(dHalfHeight) / RADIANS_PER_DEGREE;
    return CSGCam_PerspYFOV::Create(strName, static_cast<float>(dYFOV), objFrame);
}

bool CFBXCameraConverter::AddToNode(CSGNode& rSGNode, const FbxNode& rFBXNode, const FbxCamera& rCamera)
{
    const auto spCamera = Convert(rFBXNode, rCamera);
    if (!spCamera)
    {
        return true;
    }
    const CQDString& rName = rCamera.GetName();
    CSGNode* pChild = CFBXChildNode::Add(rSGNode, rName.empty() ? "camera" : rName, TURN);
    QD_CHECK_NOT_NULL(pChild, false);
    const auto spData = CSGData_Camera::Create(spCamera);
    return spData && pChild->AddData(spData.get());
}
