// Settings of old files: frame rate and timeline.
#include "fbxsdk/objects/FBXLegacySettings.h"

#include "fbxsdk/objects/CFBXObjectTable.h"

#include <charconv>

namespace
{

// Numbers are texts in some places.
double ReadNumber(const CFBXValue& rValue)
{
    double dNumber = rValue.GetDouble();
    const std::string_view strText = rValue.GetString();
    std::from_chars(strText.data(), strText.data() + strText.size(), dNumber);
    return dNumber;
}

} // namespace

void ReadFBXLegacySettings(const CFBXRecord& rRecord, CFBXObjectTable& rTable)
{
    constexpr int64_t TIME_MODE_CUSTOM = 14;

    const CFBXRecord* pSettings = rRecord.FindChild("Settings");
    if (pSettings == nullptr)
    {
        return;
    }
    CFBXProperties& rProperties = rTable.GetGlobalSettings().objProperties;
    const auto Add = [&](std::string_view strName, std::string_view strType, const CFBXValue& rValue) {
        if (rProperties.Find(strName) == nullptr)
        {
            rProperties.Add({strName, strType, {}, {}, rTable.KeepValues({&rValue, 1})});
        }
    };
    const CFBXRecord* pFrameRate = pSettings->FindChild("FrameRate");
    const double dFrameRate = pFrameRate != nullptr ? ReadNumber(pFrameRate->GetValue(0)) : 0;
    if (dFrameRate > 0 && rProperties.Find("TimeMode") == nullptr)
    {
        // The record has a time mode, too; what its numbers mean has changed since.
        Add("TimeMode", "enum", TIME_MODE_CUSTOM);
        Add("CustomFrameRate", "double", dFrameRate);
    }
    if (const CFBXRecord* pStart = pSettings->FindChild("TimeLineStartTime"))
    {
        Add("TimeSpanStart", "KTime", pStart->GetValue(0));
    }
    if (const CFBXRecord* pStop = pSettings->FindChild("TimeLineStopTime"))
    {
        Add("TimeSpanStop", "KTime", pStop->GetValue(0));
    }
}
