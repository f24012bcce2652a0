// Lights and cameras: what becomes of their values, of values that are of no use, and of their instances.
#include "qdscenegraph/camera/CSGData_Camera.h"
#include "qdscenegraph/light/CSGData_LightSet.h"
#include "qdsgloader_collada/CColladaTestScene.h"

#include <gtest/gtest.h>

namespace
{

std::string Light(const std::string& rID, const std::string& rContent)
{
    return "<light id=\"" + rID + "\" name=\"name\"><technique_common>" + rContent +
           "</technique_common></light>";
}

std::string Lights(const std::string& rLights) { return "<library_lights>" + rLights + "</library_lights>"; }

std::string Camera(const std::string& rAttributes, const std::string& rTechnique)
{
    return "<library_cameras><camera " + rAttributes + "><optics><technique_common>" + rTechnique +
           "</technique_common></optics></camera></library_cameras>";
}

// What a node that instances the light or camera "c" gets, as the log writes it, without its address; else
// the one line that says why it gets nothing.
std::string GetResult(const std::string& rLibraries)
{
    const CColladaTestScene objScene(TestScene("<node id=\"n\"><instance_light url=\"#c\"/></node><node "
                                               "id=\"m\"><instance_camera url=\"#c\"/></node>",
                                               rLibraries));
    if (!objScene.m_spRoot)
    {
        return "failed";
    }
    const auto* pLights = objScene.Find("n")->FindData<CSGData_LightSet>();
    const auto* pCamera = objScene.Find("m")->FindData<CSGData_Camera>();
    const CLogCapture objLog;
    if (pLights != nullptr)
    {
        pLights->GetLight(0)->OutputDebugInfo("");
    }
    else if (pCamera != nullptr)
    {
        pCamera->GetCamera()->OutputDebugInfo("");
    }
    std::string strText;
    for (const std::string& rLine : objLog.GetLines())
    {
        strText += rLine.substr(strText.empty() ? 2 : 5); // level, indent
    }
    const size_t nAddress = strText.find(": 0x");
    return nAddress == std::string::npos
               ? objScene.GetComplaints().front()
               : strText.erase(nAddress, strText.find(' ', nAddress + 2) - nAddress);
}

std::string Ignoring(const char* szKind, const std::string& rWhat)
{
    return std::string("4 Ignoring <") + szKind + " id=\"c\"> " + rWhat;
}

} // namespace

TEST(ColladaLights, Values)
{
    const std::string strLight = " Name: 'c' - Color: [1.000 1.000 1.000]";
    struct CCase
    {
        const char* szKind;
        std::string strContent;
        std::string strExpected; // the light, or the one line that leaves it out
    };
    const CCase arrCases[] = {
        {"ambient", "<color>0.1 0.2 0.3</color>", "CSGLight_Ambient Name: 'c' - Color: [0.100 0.200 0.300]"},
        {"directional", "<color>5 0 -1 1</color>",
         "CSGLight_Directional Name: 'c' - Color: [5.000 0.000 -1.000]"},
        {"point", "", "CSGLight_Point" + strLight + " Attenuation: [1.000 0.000 0.000]"},
        {"point",
         "<color>1 1 1</color><constant_attenuation>2</constant_attenuation>"
         "<linear_attenuation>3</linear_attenuation><quadratic_attenuation>4</quadratic_attenuation>",
         "CSGLight_Point" + strLight + " Attenuation: [2.000 3.000 4.000]"},
        {"spot", "<color>1 1 1</color>",
         "CSGLight_Spot" + strLight +
             " Attenuation: [1.000 0.000 0.000] Falloff angle: 180.000 - Falloff exponent: 0.000"},
        {"spot",
         "<color>1 1 1</color><linear_attenuation>3</linear_attenuation>"
         "<falloff_angle sid=\"a\">50</falloff_angle><falloff_exponent>0.3</falloff_exponent>",
         "CSGLight_Spot" + strLight +
             " Attenuation: [1.000 3.000 0.000] Falloff angle: 50.000 - Falloff exponent: 0.300"},
        {"ambient", "<color>1 1</color>", Ignoring("light", "whose <color> has 2 values")},
        {"ambient", "<color>1 1e39 NaN</color>", Ignoring("light", "whose <color> is 1e+39")},
        {"spot", "<falloff_angle>NaN</falloff_angle>", Ignoring("light", "whose <falloff_angle> is nan")},
    };
    for (const CCase& rCase : arrCases)
    {
        const std::string strKind = rCase.szKind;
        EXPECT_EQ(
            GetResult(Lights(Light("c", "<" + strKind + ">" + rCase.strContent + "</" + strKind + ">"))),
            rCase.strExpected);
    }
}

TEST(ColladaCameras, Values)
{
    const std::string strRange = "<znear>0.5</znear><zfar>100</zfar>";
    const auto Persp = [](const std::string& r) { return "<perspective>" + r + "</perspective>"; };
    const auto Ortho = [](const std::string& r) { return "<orthographic>" + r + "</orthographic>"; };
    const auto Whose = [](const std::string& r) { return Ignoring("camera", "whose <" + r); };
    const auto IsPersp = [](const std::string& rYFOV, const std::string& rAspectRatio) {
        return "CSGCam_PerspYFOV Name: 'c' - YFOV: " + rYFOV + " - Aspect ratio: " + rAspectRatio +
               " - Near: 0.500 - Far: 100.000";
    };
    const auto IsOrtho = [](const std::string& rYMag, const std::string& rAspectRatio,
                            const std::string& rRange = "Near: 0.500 - Far: 100.000") {
        return "CSGCam_OrthoYMag Name: 'c' - YMag: " + rYMag + " - Aspect ratio: " + rAspectRatio + " - " +
               rRange;
    };
    const std::pair<std::string, std::string> arrCases[] = {
        {Persp("<yfov>40</yfov><aspect_ratio>1.5</aspect_ratio>" + strRange), IsPersp("40.000", "1.500")},
        // A lens of 35 mm before a picture of 36 mm by 20.25 mm.
        {Persp("<xfov sid=\"xfov\">54.43223</xfov><aspect_ratio>1.777778</aspect_ratio>" + strRange),
         IsPersp("32.269", "1.778")},
        {Persp("<xfov>90</xfov><yfov>53.130102354</yfov>" + strRange), IsPersp("53.130", "2.000")},
        {Persp("<xfov>17</xfov><yfov>40</yfov><aspect_ratio>1.5</aspect_ratio>" + strRange),
         IsPersp("40.000", "1.500")},
        {Persp("<xfov>70</xfov>" + strRange), IsPersp("70.000", "1.000")},
        {Persp("<yfov>70</yfov><aspect_ratio>0.0000000</aspect_ratio>" + strRange),
         IsPersp("70.000", "1.000")},
        {Ortho("<ymag>3</ymag><aspect_ratio>1.5</aspect_ratio>" + strRange), IsOrtho("3.000", "1.500")},
        {Ortho("<xmag>3</xmag><aspect_ratio>1.5</aspect_ratio>" + strRange), IsOrtho("2.000", "1.500")},
        {Ortho("<xmag>3</xmag><ymag>4</ymag>" + strRange), IsOrtho("4.000", "0.750")},
        {Ortho("<xmag>3</xmag><znear>-10</znear><zfar>0</zfar>"),
         IsOrtho("3.000", "1.000", "Near: -10.000 - Far: 0.000")},
        {Persp("<yfov>0</yfov><xfov>-1</xfov>" + strRange), Whose("xfov> is -1")},
        {Persp("<yfov>180</yfov>" + strRange), Whose("yfov> is 180")},
        {Persp("<xfov>NaN</xfov>" + strRange), Whose("xfov> is nan")},
        {Persp("<xfov>90</xfov><aspect_ratio>1e-30</aspect_ratio>" + strRange), Whose("yfov> is 180")},
        {Persp("<yfov>40</yfov><aspect_ratio>-1.5</aspect_ratio>" + strRange),
         Whose("aspect_ratio> is -1.5")},
        {Persp("<yfov>40</yfov><znear>0</znear><zfar>100</zfar>"), Whose("znear> is 0")},
        {Persp("<yfov>40</yfov><znear>2</znear><zfar>2</zfar>"), Whose("zfar> is 2")},
        {Persp("<yfov>40</yfov><znear>2</znear>"), Ignoring("camera", "without <zfar>")},
        {Persp(strRange), Ignoring("camera", "without <xfov> or <yfov>")},
        {Ortho("<ymag>1e30</ymag><xmag>1e-30</xmag>" + strRange), Whose("aspect_ratio> is 1e-60")},
        {Ortho(strRange), Ignoring("camera", "without <xmag> or <ymag>")},
        {"", Ignoring("camera", "without <perspective> or <orthographic>")},
    };
    for (const auto& [strTechnique, strExpected] : arrCases)
    {
        EXPECT_EQ(GetResult(Camera("id=\"c\"", strTechnique)), strExpected) << strTechnique;
    }
}

TEST(ColladaLights, InstancesShareWhatTheyInstance)
{
    const std::string strPoint = "<point><color>1 1 1</color></point>";
    const CColladaTestScene objScene(TestScene(
        "<node id=\"a\"><instance_light url=\"#l\"/><instance_light url=\"#gone\"/><instance_light "
        "url=\"#k\"/>"
        "<instance_light url=\"#l\"/><instance_light url=\"#bad\"/></node>"
        "<node id=\"b\"><instance_light url=\"#k\"/></node><node id=\"c\"><instance_node url=\"#a\"/></node>"
        "<node id=\"d\"><instance_light url=\"#b\"/></node>",
        Lights(Light("l", strPoint) + "<light id=\"bad\"><technique profile=\"X\"/></light>") +
            Lights(Light("k", strPoint))));
    ASSERT_TRUE(objScene.m_spRoot);
    EXPECT_EQ(objScene.GetComplaints(),
              (std::vector<std::string>{
                  "4 Ignoring <light id=\"bad\"> without <ambient>, <directional>, <point> or <spot>",
                  "1 Failed to find element named \"gone\".", "1 URI referenced NULL element.",
                  "4 Ignoring <instance_light url=\"#gone\"> in <node id=\"a\">", objScene.GetComplaints()[4],
                  "4 Ignoring <instance_light url=\"#b\"> in <node id=\"d\">"}));
    const auto* pSet = objScene.Find("a")->FindData<CSGData_LightSet>();
    ASSERT_EQ(pSet->GetNumLights(), 3);
    EXPECT_EQ(pSet->GetLight(0)->GetName(), "l");
    EXPECT_EQ(pSet->GetLight(2), pSet->GetLight(0));
    EXPECT_EQ(pSet->GetLight(1), objScene.Find("b")->FindData<CSGData_LightSet>()->GetLight(0));
    EXPECT_EQ(objScene.Find("c")->GetChild(0)->FindData<CSGData_LightSet>(), pSet);
    EXPECT_EQ(objScene.Find("d")->FindData<CSGData_LightSet>(), nullptr);
}

TEST(ColladaCameras, SeveralOnANodeBecomeItsChildren)
{
    const std::string strOptics = "<perspective><yfov>40</yfov><znear>1</znear><zfar>2</zfar></perspective>";
    const CColladaTestScene objScene(TestScene("<node id=\"n\" sid=\"local\"><instance_camera "
                                               "url=\"#c\"/><instance_camera url=\"#k\"/><instance_camera "
                                               "url=\"#gone\"/></node><node id=\"one\"><instance_camera "
                                               "url=\"#bad\"/><instance_camera url=\"#c\"/></node>",
                                               Camera("id=\"c\" name=\"cam\"", strOptics) +
                                                   Camera("id=\"k\"", strOptics) + Camera("id=\"bad\"", "")));
    ASSERT_TRUE(objScene.m_spRoot);
    EXPECT_EQ(objScene.GetComplaints().size(), 4U);
    const CSGNode* pNode = objScene.Find("n");
    EXPECT_EQ(pNode->FindData<CSGData_Camera>(), nullptr);
    ASSERT_EQ(pNode->GetChildCount(), 2);
    EXPECT_EQ(pNode->GetChild(0)->GetGlobalName(), "n/c");
    EXPECT_EQ(pNode->GetChild(0)->GetLocalName(), "local/cam");
    EXPECT_EQ(pNode->GetChild(1)->GetLocalName(), "local/k");
    EXPECT_EQ(pNode->GetChild(0)->FindData<CSGData_Camera>()->GetCamera(),
              objScene.Find("one")->FindData<CSGData_Camera>()->GetCamera());
}
