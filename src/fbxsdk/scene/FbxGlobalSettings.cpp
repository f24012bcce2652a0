#include "fbxsdk/scene/FbxGlobalSettings.h"

#include "fbxsdk/base/CFBXTimeScale.h"
#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/objects/CFBXObjectTable.h"
#include "qdcommon/CLog.h"

FbxGlobalSettings::FbxGlobalSettings(const CFBXObject* pObject, const FbxTimeSpan& rTimeSpan)
    : FbxObject(pObject),
      m_objTimeSpan(rTimeSpan)
{}

std::unique_ptr<FbxGlobalSettings> FbxGlobalSettings::Create(const CFBXObjectTable& rTable,
                                                             const CFBXObject& rObject)
{
    const CFBXTimeScale objScale(rTable);
    const CFBXProperties& rProperties = rObject.objProperties;
    return std::unique_ptr<FbxGlobalSettings>(
        new FbxGlobalSettings(&rObject, {objScale(rProperties.GetInt64("TimeSpanStart")),
                                         objScale(rProperties.GetInt64("TimeSpanStop"))}));
}

std::unique_ptr<FbxGlobalSettings> FbxGlobalSettings::CreateDefault()
{
    return std::unique_ptr<FbxGlobalSettings>(new FbxGlobalSettings(nullptr, {}));
}

FbxAxisSystem FbxGlobalSettings::GetAxisSystem() const
{
    struct CAxis
    {
        int64_t m_nAxis;
        int m_nSign;
    };
    const auto Read = [this](const char* szAxis, const char* szSign, int64_t nDefault) {
        return CAxis{FindProperty(szAxis).GetInt(nDefault), FindProperty(szSign).GetInt(1) < 0 ? -1 : 1};
    };
    const auto IsAxis = [](const CAxis& rAxis) { return rAxis.m_nAxis >= 0 && rAxis.m_nAxis <= 2; };

    CAxis objUp = Read("UpAxis", "UpAxisSign", 1);
    CAxis objFront = Read("FrontAxis", "FrontAxisSign", 2);
    CAxis objCoord = Read("CoordAxis", "CoordAxisSign", 0);
    if (!IsAxis(objUp) || !IsAxis(objFront) || !IsAxis(objCoord) || objUp.m_nAxis == objFront.m_nAxis ||
        objUp.m_nAxis == objCoord.m_nAxis || objFront.m_nAxis == objCoord.m_nAxis)
    {
        Log(FBXSDK, LOG_WARNING, "Axes %lld, %lld and %lld are not three different ones; taking Y as up axis",
            objUp.m_nAxis, objFront.m_nAxis, objCoord.m_nAxis);
        objUp = {1, 1};
        objFront = {2, 1};
        objCoord = {0, 1};
    }
    return FbxAxisSystem(static_cast<int>(objUp.m_nAxis), objUp.m_nSign, static_cast<int>(objFront.m_nAxis),
                         objFront.m_nSign, static_cast<int>(objCoord.m_nAxis), objCoord.m_nSign);
}

FbxTime::EMode FbxGlobalSettings::GetTimeMode() const
{
    const int64_t nMode = FindProperty("TimeMode").GetInt(FbxTime::eDefaultMode);
    return nMode >= FbxTime::eDefaultMode && nMode <= FbxTime::eFrames119dot88
               ? static_cast<FbxTime::EMode>(nMode)
               : FbxTime::eDefaultMode;
}

double FbxGlobalSettings::GetFrameRate() const
{
    const FbxTime::EMode eMode = GetTimeMode();
    const double dCustomRate = FindProperty("CustomFrameRate").GetDouble(-1);
    return eMode == FbxTime::eCustom && dCustomRate > 0 ? dCustomRate : FbxTime::GetFrameRate(eMode);
}

double FbxGlobalSettings::GetUnitScaleFactor() const { return FindProperty("UnitScaleFactor").GetDouble(1); }
