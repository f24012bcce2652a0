// A camera: it looks along +X of its node, Y is up.
#pragma once

#include "fbxsdk/scene/FbxNodeAttribute.h"

class FbxCamera final : public FbxNodeAttribute
{
  public:
    enum EProjectionType
    {
        ePerspective,
        eOrthogonal
    };

    // Which of the values below says how wide the camera sees.
    enum EApertureMode
    {
        eHorizAndVert, // FieldOfViewX and FieldOfViewY
        eHorizontal,   // FieldOfView, across
        eVertical,     // FieldOfView, upright
        eFocalLength   // FocalLength, with the film's size
    };

    enum EAspectRatioMode
    {
        eWindowSize, // of the window that shows the picture: the file does not know it
        eFixedRatio, // width by height
        eFixedResolution,
        eFixedWidth,
        eFixedHeight
    };

    static std::unique_ptr<FbxCamera> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    EProjectionType GetProjectionType() const;
    EApertureMode GetApertureMode() const;
    EAspectRatioMode GetAspectRatioMode() const;
    double GetAspectWidth() const;
    double GetAspectHeight() const;
    double GetPixelAspectRatio() const; // width of a pixel by its height
    double GetFieldOfView() const;      // whole angles in degrees
    double GetFieldOfViewY() const;
    double GetFocalLength() const; // mm
    double GetFilmWidth() const;   // inches
    double GetFilmHeight() const;
    double GetApertureSqueeze() const; // the film's picture is that much wider than the film
    double GetNearPlane() const;
    double GetFarPlane() const;
    double GetOrthoZoom() const;

  private:
    explicit FbxCamera(const CFBXObject& rObject) : FbxNodeAttribute(&rObject, eCamera) {}
};
