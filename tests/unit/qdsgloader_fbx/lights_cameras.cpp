// Lights and cameras: their values, where they look, and values that are of no use.
#include "qdscenegraph/camera/CSGData_Camera.h"
#include "qdscenegraph/light/CSGData_LightSet.h"
#include "qdsgloader_fbx/CFBXTestGraph.h"

#include <gtest/gtest.h>

namespace
{

// A node "n" at (1, 2, 3), five times as large, with a light or camera "c".
struct CAttributeGraph : CFBXTestGraph
{
    CAttributeGraph(const std::string& rKind, const CValues& rValues)
        : CFBXTestGraph(
              Object("Model", 1, "n", rKind, Properties({"Lcl Translation 1,2,3", "Lcl Scaling 5,5,5"})) +
                  Object("NodeAttribute", 2, "c", rKind, Properties(rValues)),
              Connect({"1,0", "2,1"}))
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

struct CCase
{
    CValues vecValues;
    std::string strExpected;
};

void Check(const std::string& rKind, const std::vector<CCase>& rCases)
{
    for (const CCase& rCase : rCases)
    {
        EXPECT_EQ(CAttributeGraph(rKind, rCase.vecValues).GetResult(), rCase.strExpected);
    }
}

} // namespace

TEST(FBXLights, Values)
{
    const std::string strPoint = "CSGLight_Point Name: 'c' - Color: [1.000 1.000 1.000]";
    const std::string strSpot = "CSGLight_Spot Name: 'c' - Color: [1.000 1.000 1.000]"
                                " Attenuation: [1.000 0.000 0.000] Falloff angle: ";
    Check(
        "Light",
        {
            // The format's defaults: as strong everywhere. Distances in the node's space are a fifth of those
            // in the scene.
            {{}, strPoint + " Attenuation: [1.000 0.000 0.000]"},
            {{"Color 0.2,0.4,0.6", "Intensity 50", "DecayType 1", "DecayStart 4"},
             "CSGLight_Point Name: 'c' - Color: [0.100 0.200 0.300] Attenuation: [0.000 1.250 0.000]"},
            {{"Color 1,0.5"},
             "CSGLight_Point Name: 'c' - Color: [1.000 0.500 1.000] Attenuation: [1.000 0.000 0.000]"},
            {{"DecayType 2"}, strPoint + " Attenuation: [0.000 0.000 25.000]"},
            {{"DecayType 3", "DecayStart 2"}, strPoint + " Attenuation: [0.000 0.000 6.250]"},
            {{"LightType 1", "Intensity 300"}, "CSGLight_Directional Name: 'c' - Color: [3.000 3.000 3.000]"},
            {{"LightType 2", "OuterAngle 50", "InnerAngle 50"}, strSpot + "50.000 - Falloff exponent: 0.000"},
            // Integrated numerically over the cone, this power lets as much light through as the fall from
            // the axis to the edge.
            {{"LightType 2", "OuterAngle 90", "InnerAngle 0"}, strSpot + "90.000 - Falloff exponent: 8.682"},
            {{"LightType 3"}, strSpot + "180.000 - Falloff exponent: 1.000"},
            {{"CastLight 0"}, "4 Ignoring the light of node 'n': it is switched off"},
            {{"Intensity 1e300"}, "4 Ignoring the light of node 'n': not all of its values are numbers"},
        });
}

TEST(FBXCameras, Values)
{
    const auto Film = [](const char* szFit) {
        return CValues{"ApertureMode 3",  "FilmWidth 2",      "FilmHeight 1", "FocalLength 12.7",
                       "AspectWidth 100", "AspectHeight 100", szFit};
    };
    const auto Camera = [](const char* szYFOV, const char* szAspect) {
        return std::string("CSGCam_PerspYFOV Name: 'c' - YFOV: ") + szYFOV + " - Aspect ratio: " + szAspect +
               " - Near: 2.000 - Far: 800.000";
    };
    Check(
        "Camera",
        {
            // The format's defaults; near and far are 10 and 4000, in the node's space a fifth of that.
            {{}, Camera("25.115", "1.600")},
            {{"ApertureMode 0", "FieldOfViewX 90", "FieldOfViewY 60"}, Camera("60.000", "1.600")},
            {{"ApertureMode 1", "FieldOfView 90", "AspectWidth 2", "AspectHeight 2"},
             Camera("90.000", "1.000")},
            {{"AspectRatioMode 1", "AspectWidth 1.25", "AspectHeight 7"}, Camera("25.115", "1.250")},
            {{"AspectRatioMode 2", "AspectWidth 50", "AspectHeight 100", "PixelAspectRatio 3"},
             Camera("25.115", "1.500")},
            {{"AspectRatioMode 3", "AspectWidth 50", "AspectHeight 0.5"}, Camera("25.115", "2.000")},
            {{"AspectRatioMode 4", "AspectWidth 0.5", "AspectHeight 10"}, Camera("25.115", "0.500")},
            // An inch of film behind half an inch of focal length is a right angle; a square picture that
            // is as wide as this film is two inches upright.
            {Film("GateFit 0"), Camera("90.000", "1.000")},
            {Film("GateFit 1"), Camera("90.000", "1.000")},
            {Film("GateFit 2"), Camera("126.870", "1.000")},
            {Film("GateFit 3"), Camera("90.000", "1.000")},
            {Film("GateFit 4"), Camera("126.870", "1.000")},
            // 30 units wide at a zoom of 1.
            {{"CameraProjectionType 1", "OrthoZoom 2", "AspectWidth 3", "AspectHeight 1", "NearPlane -10"},
             "CSGCam_OrthoYMag Name: 'c' - YMag: 2.000 - Aspect ratio: 3.000 - Near: -2.000 - Far: 800.000"},
            // Without a window, that of the film.
            {{"AspectWidth 0", "AspectHeight 0", "FilmWidth 3", "FilmHeight 2"}, Camera("25.115", "1.500")},
            {{"NearPlane 0"},
             "4 Ignoring the camera of node 'n': its aspect ratio is 1.6, half its height 0.222748, and it "
             "sees from 0 to 800"},
            {{"AspectHeight 0"},
             "4 Ignoring the camera of node 'n': its aspect ratio is inf, half its height 0.222748, and it "
             "sees from 2 to 800"},
        });
}

// FBX lights shine along -Y of their node, cameras look along +X with Y above; ours do so along -Z.
TEST(FBXLights, Direction)
{
    const std::pair<const char*, CSGFloat3> arrCases[] = {{"Light", {1.0f, -3.0f, -2.0f}},
                                                          {"Camera", {6.0f, 7.0f, 3.0f}}};
    for (const auto& [szKind, vExpected] : arrCases)
    {
        const CAttributeGraph objGraph(szKind, {});
        ASSERT_NE(objGraph.Find("n/c"), nullptr);
        EXPECT_EQ(objGraph.GetWorld("n/c").TransformPoint({0.0f, 1.0f, -1.0f}), vExpected) << szKind;
    }
}
