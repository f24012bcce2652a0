// Lights and cameras: their values, where they look, and values that are of no use.
#include "qdscenegraph/camera/CSGData_Camera.h"
#include "qdscenegraph/light/CSGData_LightSet.h"
#include "qdscenegraph/transform/CSGData_WorldTransform.h"
#include "qdsgloader_fbx/CFBXTestScene.h"

#include <gtest/gtest.h>

namespace
{

using CValues = std::vector<std::string>; // "Intensity 50"

std::string Properties(const CValues& rValues)
{
    std::string strText = "Properties70: {\n";
    for (const std::string& rValue : rValues)
    {
        const size_t nEnd = rValue.rfind(' ');
        strText +=
            "P: \"" + rValue.substr(0, nEnd) + "\", \"\", \"\", \"\"," + rValue.substr(nEnd + 1) + "\n";
    }
    return strText + "}\n";
}

// A node "n" at (1, 2, 3), five times as large, with a light or camera "c".
struct CAttributeScene : CFBXTestScene
{
    CAttributeScene(const std::string& rKind, const CValues& rValues)
        : CFBXTestScene("Model: 1, \"Model::n\", \"" + rKind + "\" {\n" +
                            Properties({"Lcl Translation 1,2,3", "Lcl Scaling 5,5,5"}) +
                            "}\nNodeAttribute: 2, \"NodeAttribute::c\", \"" + rKind + "\" {\n" +
                            Properties(rValues) + "}\n",
                        "C: \"OO\",1,0\nC: \"OO\",2,1\n")
    {}

    // The light or camera, as the log writes it, without its address; what was logged instead of it.
    std::string GetResult() const
    {
        const CSGNode* pNode = Find("n/c");
        const CLogCapture objLog;
        if (pNode != nullptr && pNode->FindData<CSGData_LightSet>() != nullptr)
        {
            pNode->FindData<CSGData_LightSet>()->GetLight(0)->OutputDebugInfo("");
        }
        else if (pNode != nullptr && pNode->FindData<CSGData_Camera>() != nullptr)
        {
            pNode->FindData<CSGData_Camera>()->GetCamera()->OutputDebugInfo("");
        }
        std::string strText;
        for (const std::string& rLine : objLog.GetLines())
        {
            strText += rLine.substr(strText.empty() ? 2 : 5); // level, indent
        }
        const size_t nAddress = strText.find(": 0x");
        if (nAddress == std::string::npos)
        {
            return GetComplaints().empty() ? "nothing" : GetComplaints().front();
        }
        return strText.erase(nAddress, strText.find(' ', nAddress + 2) - nAddress);
    }
};

} // namespace

TEST(FBXLights, Values)
{
    const std::string strWhite = " Name: 'c' - Color: [1.000 1.000 1.000]";
    const std::string strEverywhere = " Attenuation: [1.000 0.000 0.000]";
    struct CCase
    {
        CValues vecValues;
        std::string strExpected;
    };
    const CCase arrCases[] = {
        // The format's defaults: as strong everywhere.
        {{}, "CSGLight_Point" + strWhite + strEverywhere},
        {{"Color 0.2,0.4,0.6", "Intensity 50", "DecayType 1", "DecayStart 4"},
         "CSGLight_Point Name: 'c' - Color: [0.100 0.200 0.300] Attenuation: [0.000 0.250 0.000]"},
        {{"DecayType 2"}, "CSGLight_Point" + strWhite + " Attenuation: [0.000 0.000 1.000]"},
        {{"DecayType 3", "DecayStart 2"}, "CSGLight_Point" + strWhite + " Attenuation: [0.000 0.000 0.250]"},
        {{"LightType 1", "Intensity 300"}, "CSGLight_Directional Name: 'c' - Color: [3.000 3.000 3.000]"},
        {{"LightType 2", "OuterAngle 50", "InnerAngle 50"},
         "CSGLight_Spot" + strWhite + strEverywhere + " Falloff angle: 50.000 - Falloff exponent: 0.000"},
        // Integrated numerically over the cone, this power lets as much light through as the fall from the
        // axis to the edge.
        {{"LightType 2", "OuterAngle 90", "InnerAngle 0"},
         "CSGLight_Spot" + strWhite + strEverywhere + " Falloff angle: 90.000 - Falloff exponent: 8.682"},
        {{"LightType 3"},
         "CSGLight_Spot" + strWhite + strEverywhere + " Falloff angle: 180.000 - Falloff exponent: 1.000"},
        {{"CastLight 0"}, "4 Ignoring the light of node 'n': it is switched off"},
        {{"Intensity 1e300"}, "4 Ignoring the light of node 'n': not all of its values are numbers"},
    };
    for (const CCase& rCase : arrCases)
    {
        EXPECT_EQ(CAttributeScene("Light", rCase.vecValues).GetResult(), rCase.strExpected);
    }
}

TEST(FBXCameras, Values)
{
    const CValues FILM = {"ApertureMode 3",   "FilmWidth 2",     "FilmHeight 1",
                          "FocalLength 12.7", "AspectWidth 100", "AspectHeight 100"};
    const auto WithFit = [&](const char* szFit) {
        CValues vecValues = FILM;
        vecValues.push_back(szFit);
        return vecValues;
    };
    const auto Camera = [](const char* szYFOV, const char* szAspect) {
        return std::string("CSGCam_PerspYFOV Name: 'c' - YFOV: ") + szYFOV + " - Aspect ratio: " + szAspect +
               " - Near: 2.000 - Far: 800.000";
    };
    struct CCase
    {
        CValues vecValues;
        std::string strExpected;
    };
    const CCase arrCases[] = {
        // The format's defaults; near and far are 10 and 4000, in the node's space a fifth of that.
        {{}, Camera("25.115", "1.600")},
        {{"ApertureMode 0", "FieldOfViewX 90", "FieldOfViewY 60"}, Camera("60.000", "1.600")},
        {{"ApertureMode 1", "FieldOfView 90", "AspectWidth 2", "AspectHeight 2"}, Camera("90.000", "1.000")},
        {{"AspectRatioMode 1", "AspectWidth 1.25", "AspectHeight 7"}, Camera("25.115", "1.250")},
        {{"AspectRatioMode 2", "AspectWidth 50", "AspectHeight 100", "PixelAspectRatio 3"},
         Camera("25.115", "1.500")},
        {{"AspectRatioMode 3", "AspectWidth 50", "AspectHeight 0.5"}, Camera("25.115", "2.000")},
        {{"AspectRatioMode 4", "AspectWidth 0.5", "AspectHeight 10"}, Camera("25.115", "0.500")},
        // An inch of film behind half an inch of focal length is a right angle; a square picture that is
        // as wide as this film is two inches upright.
        {FILM, Camera("90.000", "1.000")},
        {WithFit("GateFit 1"), Camera("90.000", "1.000")},
        {WithFit("GateFit 2"), Camera("126.870", "1.000")},
        {WithFit("GateFit 3"), Camera("90.000", "1.000")},
        {WithFit("GateFit 4"), Camera("126.870", "1.000")},
        // 30 units wide at a zoom of 1.
        {{"CameraProjectionType 1", "OrthoZoom 2", "AspectWidth 3", "AspectHeight 1", "NearPlane -10"},
         "CSGCam_OrthoYMag Name: 'c' - YMag: 2.000 - Aspect ratio: 3.000 - Near: -2.000 - Far: 800.000"},
        // Without a window, that of the film.
        {{"AspectWidth 0", "AspectHeight 0", "FilmWidth 3", "FilmHeight 2"}, Camera("25.115", "1.500")},
        {{"NearPlane 0"},
         "4 Ignoring the camera of node 'n': its aspect ratio is 1.6, half its height 0.222748, and it sees "
         "from 0 to "
         "800"},
        {{"AspectHeight 0"},
         "4 Ignoring the camera of node 'n': its aspect ratio is inf, half its height 0.222748, and it sees "
         "from 2 to "
         "800"},
    };
    for (const CCase& rCase : arrCases)
    {
        EXPECT_EQ(CAttributeScene("Camera", rCase.vecValues).GetResult(), rCase.strExpected);
    }
}

// FBX lights shine along -Y of their node, cameras look along +X with Y above; ours do so along -Z.
TEST(FBXLights, Direction)
{
    const std::pair<const char*, CSGFloat3> arrCases[] = {{"Light", {1.0f, -3.0f, -2.0f}},
                                                          {"Camera", {6.0f, 7.0f, 3.0f}}};
    for (const auto& [szKind, vExpected] : arrCases)
    {
        const CAttributeScene objScene(szKind, {});
        ASSERT_NE(objScene.Find("n/c"), nullptr);
        const CTransform3 objWorld =
            CSGData_WorldTransform::GetOrCreateFromNode(objScene.Find("n/c"))->GetTransform();
        EXPECT_EQ(objWorld.TransformPoint({0.0f, 1.0f, -1.0f}), vExpected) << szKind;
    }
}
