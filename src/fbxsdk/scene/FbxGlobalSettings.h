// What holds for a whole file: axes, units, frame rate.
#pragma once

#include "fbxsdk/base/FbxObject.h"
#include "fbxsdk/base/FbxTime.h"
#include "fbxsdk/scene/FbxAxisSystem.h"

#include <memory>

class CFBXObjectTable;

class FbxGlobalSettings final : public FbxObject
{
  public:
    static std::unique_ptr<FbxGlobalSettings> Create(const CFBXObjectTable& rTable,
                                                     const CFBXObject& rObject);
    // Of a scene that is not from a file: Y up, centimetres, 30 frames a second.
    static std::unique_ptr<FbxGlobalSettings> CreateDefault();

    // An axis that is none, or two that are the same: Y up, reported.
    FbxAxisSystem GetAxisSystem() const;
    FbxTime::EMode GetTimeMode() const;
    // Frames per second of the time mode, or the file's own.
    double GetFrameRate() const;
    // Centimetres that one unit is.
    double GetUnitScaleFactor() const;
    FbxTimeSpan GetTimelineDefaultTimeSpan() const { return m_objTimeSpan; }

  private:
    FbxGlobalSettings(const CFBXObject* pObject, const FbxTimeSpan& rTimeSpan);

    FbxTimeSpan m_objTimeSpan;
};
