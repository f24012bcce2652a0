// Animations: what channels lead to, the curves that samplers become, and the pieces that clips and
// animations documents name. The scene is that of data/moving_box.dae.
#include "qdscenegraph/animation/CSGAnimation.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaSidIndex.h"
#include "qdsgloader_collada/CColladaTargetPath.h"
#include "qdsgloader_collada/CColladaTestScene.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <numbers>
#include <sstream>

namespace
{

using CLines = std::vector<std::string>;

std::string MovingBox()
{
    std::ifstream objFile(QDSG_TEST_DATA_DIR "/moving_box.dae", std::ios::binary);
    return {std::istreambuf_iterator<char>(objFile), {}};
}

// A <sampler>'s sources as text; empty ones are not there.
struct CCurve
{
    std::string strTimes = "0 1";
    std::string strOutputs = "0 10";
    std::string strTypes = "LINEAR LINEAR";
    int nWidth = 1;
    std::string strIn = "";
    std::string strOut = "";
    int nTangentWidth = 2;
};

std::string Source(const std::string& rID, const std::string& rValues, int nWidth,
                   const std::string& rArray = "float")
{
    std::istringstream objValues(rValues);
    const auto nCount = std::distance(std::istream_iterator<std::string>(objValues), {}) / nWidth;
    std::string strParams;
    for (int n = 0; n < nWidth; ++n)
    {
        strParams += "<param type='" + rArray + "'/>";
    }
    return "<source id='" + rID + "'><" + rArray + "_array id='" + rID + "-a'>" + rValues + "</" + rArray +
           "_array><technique_common><accessor source='#" + rID + "-a' count='" + std::to_string(nCount) +
           "' stride='" + std::to_string(nWidth) + "'>" + strParams +
           "</accessor></technique_common></source>";
}

// An <animation> with one sampler and a channel for each target.
std::string Animation(const std::string& rID, const CLines& rTargets, const CCurve& rCurve = {},
                      const std::string& rNested = "")
{
    std::string strSources;
    std::string strInputs;
    const auto Add = [&](const std::string& rSemantic, const std::string& rValues, int nWidth,
                         const char* szArray = "float") {
        if (!rValues.empty())
        {
            strSources += Source(rID + rSemantic, rValues, nWidth, szArray);
            strInputs += "<input semantic='" + rSemantic + "' source='#" + rID + rSemantic + "'/>";
        }
    };
    Add("INPUT", rCurve.strTimes, 1);
    Add("OUTPUT", rCurve.strOutputs, rCurve.nWidth);
    Add("INTERPOLATION", rCurve.strTypes, 1, "Name");
    Add("IN_TANGENT", rCurve.strIn, rCurve.nTangentWidth);
    Add("OUT_TANGENT", rCurve.strOut, rCurve.nTangentWidth);
    std::string strChannels;
    for (const std::string& rTarget : rTargets)
    {
        strChannels += "<channel source='#" + rID + "-s' target='" + rTarget + "'/>";
    }
    return "<animation id='" + rID + "'>" + rNested + strSources + "<sampler id='" + rID + "-s'>" +
           strInputs + "</sampler>" + strChannels + "</animation>";
}

// The scene with other animations, and clips.
std::string Document(const std::string& rAnimations, const std::string& rClips = "")
{
    const std::string strBox = MovingBox();
    const size_t nBegin = strBox.find("<library_animation_clips>");
    const size_t nEnd = strBox.find("<library_materials>");
    return strBox.substr(0, nBegin) + "<library_animation_clips>" + rClips +
           "</library_animation_clips><library_animations>" + rAnimations + "</library_animations>" +
           strBox.substr(nEnd);
}

// The log is that of loading the default animation.
struct CAnimatedScene
{
    explicit CAnimatedScene(const std::string& rDocument)
    {
        const CTempFile objFile("scene.dae", rDocument);
        CQDSGLoaderColladaLib::InitLibrary();
        m_spLoader = CSGLoaderCollada::Create(CSGTextureLoader::CreateStandardLoader());
        EXPECT_TRUE(m_spLoader->LoadFile(objFile.GetName()));
        m_spRoot = m_spLoader->LoadSceneGraph();
        m_objLog.Clear();
        m_spAnimation = m_spLoader->LoadDefaultAnimation();
    }

    CLogCapture m_objLog;
    boost::intrusive_ptr<CSGLoaderCollada> m_spLoader;
    boost::intrusive_ptr<CSGNode> m_spRoot;
    CSGAnimation::CAnimationPtr m_spAnimation;
};

std::string ChannelNames(const CSGAnimation& rAnimation)
{
    std::string strNames;
    for (int32_t n = 0; n < rAnimation.GetNumChannels(); ++n)
    {
        strNames += " " + std::string(rAnimation.GetChannel(n)->GetName().c_str());
    }
    return strNames;
}

// "name begin-end: channels" of every named animation.
CLines NamedAnimations(CSGLoaderCollada& rLoader)
{
    std::vector<CSGAnimation*> vecAnimations;
    EXPECT_TRUE(rLoader.LoadAnimations(vecAnimations));
    CLines vecTexts;
    for (const CSGAnimation* pAnimation : vecAnimations)
    {
        std::ostringstream objText;
        objText << pAnimation->GetName().c_str() << ' ' << pAnimation->GetBeginTime() << '-'
                << pAnimation->GetEndTime() << ':' << ChannelNames(*pAnimation);
        vecTexts.push_back(objText.str());
    }
    return vecTexts;
}

} // namespace

TEST(ColladaAnimation, TargetPaths)
{
    const auto Parts = [](const char* szPath) {
        const CColladaTargetPath objPath(szPath);
        std::string strAtoms;
        for (int32_t n = 0; n < objPath.GetNumAtoms(); ++n)
        {
            strAtoms += objPath.GetAtom(n).GetName() + "|";
        }
        return strAtoms + "." + objPath.GetMember();
    };
    EXPECT_EQ(Parts("box/rot.ANGLE"), "box|rot|.ANGLE");
    EXPECT_EQ(Parts("a.b/c.d/e.f.g"), "a.b|c.d|e|.f.g");
    EXPECT_EQ(Parts("a/m(3)(0)"), "a|m(3)(0)|.");
    EXPECT_EQ(Parts(""), "|.");

    CDaeFile objFile;
    ASSERT_TRUE(objFile.OpenMemory(
        "sids.dae",
        DaeTestDocument("<library_nodes><node id='a'><node sid='x'><node sid='t' id='deep'><node sid='u' "
                        "id='u1'/></node></node><node sid='t' id='shallow'/><node sid='t' "
                        "id='later'/></node><node sid='u' id='beside'/></library_nodes>")));
    CColladaSidIndex objIndex;
    const auto Resolve = [&](const char* szPath) {
        CColladaTargetPath objPath(szPath);
        CLogCapture objLog;
        return objPath.ResolveElements(objFile.GetDAE(), objIndex)
                   ? GetIDText(*objPath.GetAtom(objPath.GetNumAtoms() - 1).GetElement())
                   : objLog.GetLines().front();
    };
    EXPECT_EQ(Resolve("a/t"), "shallow"); // the first of those the fewest levels down
    EXPECT_EQ(Resolve("a/x/t"), "deep");
    EXPECT_EQ(Resolve("a/u"), "u1");
    EXPECT_EQ(Resolve("shallow/u"), "1 Couldn't find child element of <node> with scoped ID u");
    EXPECT_EQ(Resolve("a/"), "1 Couldn't find child element of <node> with scoped ID ");
    EXPECT_EQ(Resolve("b/t"), "1 Failed to find start element named \"b\".");
    EXPECT_EQ(Resolve("a/x/x/x/x/x/x/x/x/x/x/x/x/x/x/x/x"), "1 The target path has more than 16 elements");
}

TEST(ColladaAnimation, Targets)
{
    struct CCase
    {
        std::string strTarget;
        int nWidth;
        std::string strFault; // empty: it is taken, and found in the scene
        std::string strPart;  // of the path, where it fails
    };
    const std::string strNoMember =
        "Path had no target and didn't know how to handle this with last element ";
    const std::string strUnknown = "Didn't recognize last element and target of target path.";
    const std::string strParent =
        "Invalid parent element for single child element at index 1 of target path.";
    const CCase arrCases[] = {
        {"box/move", 3, "", ""},
        {"box/move.Z", 1, "", ""},
        {"box/size", 3, "", ""},
        {"box/size.Y", 1, "", ""},
        {"box/spin.ANGLE", 1, "", ""},
        {"box/matrix", 16, "", ""},
        {"box/shown", 1, "", ""},
        {"box/a/b/c", 1, "", ""},
        {"lid/seen", 1, "", ""},
        {"fx/common/paint", 4, "", ""},
        {"fx/common/paint.A", 1, "", ""},
        {"box/look", 1, strNoMember + "lookat (look)", "target for"},
        {"box/spin", 4, strNoMember + "rotate (spin)", "target for"},
        {"box", 1, strNoMember + "node (box)", "target for"},
        {"box/spin.X", 1, strUnknown, "target for"},
        {"box/move.ANGLE", 1, strUnknown, "target for"},
        {"box/move.R", 1, strUnknown, "target for"},
        {"box/shown.X", 1, strUnknown, "target for"},
        {"box/move.(0)", 1, strUnknown, "target for"},
        {"box/shape", 1, "Didn't recognize single child element of a node at index 1 of target path.",
         "atom at 1 for"},
        {"box/deep", 1, strParent, "atom at 1 for"},
        {"box/seen", 1, strParent, "atom at 1 for"},
        {"fx/paint", 1, strParent, "atom at 1 for"},
        {"box/a/d", 1, "Invalid parent for 2 child elements at index 2 of target path.", "atom at 2 for"},
        {"fx/common/shine", 1, "Didn't recognize child elements of an effect at index 2 of target path.",
         "atom at 2 for"},
        {"fx/common/mirror", 1, "Unrecognized color 'reflective' for color effect at index 2 of target path.",
         "atom at 2 for"},
        {"box/a/b/d", 1, "Didn't recognize 3 child elements of a node at index 3 of target path.",
         "atom at 3 for"},
        {"box/a/b/d/e", 1, "Invalid number of child elements (4) at index 1 of target path.",
         "atom at 1 for"},
        {"red", 1, "Start element wasn't a <node> or <effect>", "start of"},
        {"unused/common", 1, "No <material> instances <effect id=\"unused\">", "start of"},
    };
    for (const CCase& rCase : arrCases)
    {
        std::string strOutputs;
        for (int n = 0; n < 2 * rCase.nWidth; ++n)
        {
            strOutputs += "0 ";
        }
        const CAnimatedScene objScene(
            Document(Animation("a", {rCase.strTarget}, {.strOutputs = strOutputs, .nWidth = rCase.nWidth})));
        const std::string strPath = "path \"" + rCase.strTarget + "\"";
        const CLines vecFault = {"1 " + rCase.strFault,
                                 "1 Failed to translate the " + rCase.strPart + " " + strPath,
                                 "1 Failed to translate target " + strPath + " for <channel>."};
        EXPECT_EQ(objScene.m_objLog.GetLines(), rCase.strFault.empty() ? CLines{} : vecFault);
        ASSERT_EQ(objScene.m_spAnimation == nullptr, !rCase.strFault.empty()) << strPath;
        EXPECT_TRUE(!objScene.m_spAnimation || objScene.m_spAnimation->CanAnimate(objScene.m_spRoot.get()))
            << strPath;
    }
}

TEST(ColladaAnimation, Curves)
{
    struct CCase
    {
        const char* szTarget;
        CCurve objCurve;
        float fTime;
        std::vector<float> vecExpected;
    };
    constexpr float RADIAN = std::numbers::pi_v<float> / 180.0f;
    // With its control points' times at the thirds a Bezier curve's parameter is the time itself. This is its
    // value at a quarter.
    const auto Quarter = [](float fBegin, float fOut, float fIn, float fEnd) {
        return (27 * fBegin + 27 * fOut + 9 * fIn + fEnd) / 64;
    };
    const CCurve objPairs = {"0 1", "0 10", "BEZIER BEZIER", 1, "0 0 .666666667 6", ".333333333 2 0 0"};
    const std::vector<float> vecThree = {Quarter(0, 2, 6, 10), Quarter(0, 3, 6, 20), Quarter(0, 4, 6, 30)};
    CCurve objThree = {"0 1", "0 0 0 10 20 30", "BEZIER BEZIER", 3};
    objThree.nTangentWidth = 6; // a time and a value for each output
    objThree.strIn = "0 0 0 0 0 0 .666666667 6 .666666667 6 .666666667 6";
    objThree.strOut = ".333333333 2 .333333333 3 .333333333 4 0 0 0 0 0 0";
    CCurve objOneTime = objThree; // for all of them
    objOneTime.nTangentWidth = 4;
    objOneTime.strIn = "0 0 0 0 .666666667 6 6 6";
    objOneTime.strOut = ".333333333 2 3 4 0 0 0 0";
    CCurve objNoTime = objThree;
    objNoTime.nTangentWidth = 3;
    objNoTime.strIn = "0 0 0 6 6 6";
    objNoTime.strOut = "2 3 4 0 0 0";
    const CCurve objMixed = {"0 1 2 4",
                             "10 20 40 80",
                             "STEP LINEAR BEZIER BEZIER",
                             1,
                             "0 0 0 0 9 9 3.33333333 60",
                             "9 9 9 9 2.66666667 50 0 0"};
    const CCurve objHold = {"0 1 2", "10 20 40", "LINEAR STEP LINEAR"};
    const CCurve objSteps = {"0 1 2", "10 20 40", "STEP STEP LINEAR"};
    const CCurve objMatrix = {"0 1", "1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1 1 2 3 4 5 6 7 8 9 10 11 12 0 0 0 1",
                              "LINEAR LINEAR", 16};
    const CCase arrCases[] = {
        {"box/move.X", {}, 0.25f, {2.5f}},
        {"box/spin.ANGLE", {}, 0.25f, {2.5f * RADIAN}},
        {"box/move.X", {.strTypes = "BEZIER BEZIER"}, 0.25f, {2.5f}}, // without tangents it is straight
        {"box/move.X", objPairs, 0.25f, {Quarter(0, 2, 6, 10)}},
        {"box/spin.ANGLE", objPairs, 0.25f, {Quarter(0, 2, 6, 10) * RADIAN}},
        {"box/move", objThree, 0.25f, vecThree},
        {"box/move", objOneTime, 0.25f, vecThree},
        {"box/size", objNoTime, 0.25f, vecThree},
        {"box/move.X", objMixed, 0.75f, {10}},
        {"box/move.X", objMixed, 1.0f, {20}},
        {"box/move.X", objMixed, 1.25f, {25}},
        {"box/move.X", objMixed, 2.5f, {Quarter(40, 50, 60, 80)}},
        {"box/move.X", objHold, 0.25f, {12.5f}},
        {"box/move.X", objHold, 1.99f, {20}},
        {"box/move.X", objHold, 2.0f, {40}},
        {"box/move.X", objSteps, 0.99f, {10}},
        {"box/move.X", objSteps, 1.99f, {20}},
        {"box/matrix", objMatrix, 1.0f, {1, 2, 3, 0, 5, 6, 7, 0, 9, 10, 11, 0, 4, 8, 12, 1}},
        {"box/move.X", {"3", "7", "BEZIER"}, 5.0f, {7}},
        {"box/move.X", {"0 0", "0 10", "STEP LINEAR"}, 0.5f, {10}},
    };
    for (const CCase& rCase : arrCases)
    {
        const CAnimatedScene objScene(Document(Animation("a", {rCase.szTarget}, rCase.objCurve)));
        EXPECT_EQ(objScene.m_objLog.GetLines(), CLines{});
        ASSERT_TRUE(objScene.m_spAnimation);
        std::vector<float> vecValues(rCase.vecExpected.size());
        ASSERT_TRUE(objScene.m_spAnimation->GetChannel(0)->GetSampler()->SampleAtTime(
            rCase.fTime, vecValues.data(), static_cast<int32_t>(vecValues.size())));
        for (size_t n = 0; n < vecValues.size(); ++n)
        {
            EXPECT_NEAR(vecValues[n], rCase.vecExpected[n], 2e-6f * std::max(1.0f, rCase.vecExpected[n]))
                << rCase.szTarget << " " << rCase.objCurve.strTypes << " " << rCase.fTime << " output " << n;
        }
    }
}

TEST(ColladaAnimation, SamplersThatDoNotFit)
{
    struct CCase
    {
        CCurve objCurve;
        std::string strLine; // with "@" for the sampler
    };
    const auto Tangents = [](const char* szIn, const char* szOut, int nWidth) {
        return CCurve{"0 1", "0 10", "BEZIER BEZIER", 1, szIn, szOut, nWidth};
    };
    const CCase arrCases[] = {
        {{.strTimes = ""}, "Assert 'm_spInputValues' failed"},
        {{.strOutputs = ""}, "Assert 'm_spOutputValues' failed"},
        {{.strTypes = ""}, "Assert 'm_spInterpolationValues' failed"},
        {Tangents("0 0 0 0", "", 2),
         "Assert '(m_spInTangentValues != 0) == (m_spOutTangentValues != 0)' failed"},
        {{.strTimes = "0 1 2"}, "@ has 3 values for INPUT and 2 for OUTPUT"},
        {{.strTypes = "STEP"}, "@ has 2 values for INPUT and 1 for INTERPOLATION"},
        {{.strTimes = "1 0"}, "The times of @ do not ascend at key 1"},
        {{.strTimes = "0 NaN"}, "The times of @ do not ascend at key 1"},
        {{.strTypes = "LINEAR HERMITE"}, "Unsupported interpolation type 5"},
        {{.strTypes = "LINEAR linear"}, "Unrecognized interpolation type linear"},
        {{.strOutputs = "0 1 2 3", .nWidth = 2}, "@ has 2 numbers for a value of a target of 1"},
        {Tangents("0", "0", 1), "Input values and single tangent values had different number of values."},
        {Tangents("0 0 0 0 0 0", "0 0 0 0 0 0", 3), "@ has 3 numbers for a tangent of 1 outputs"},
        {Tangents("0 0 0 0", "0 0", 2), "@ has 2 values for INPUT and 1 for OUT_TANGENT"},
    };
    const std::string strSampler = "<sampler id=\"a-s\">";
    for (const CCase& rCase : arrCases)
    {
        const CAnimatedScene objScene(Document(Animation("a", {"box/move.X"}, rCase.objCurve)));
        EXPECT_FALSE(objScene.m_spAnimation);
        std::string strLine = "1 " + rCase.strLine;
        if (const size_t nPlace = strLine.find('@'); nPlace != std::string::npos)
        {
            strLine.replace(nPlace, 1, strSampler);
        }
        EXPECT_EQ(objScene.m_objLog.GetLines(),
                  (CLines{strLine, "1 Failed to create SG animation samplers for " + strSampler,
                          "1 Failed to load " + strSampler + " referenced by <channel id=\"box/move.X\">."}));
    }
    for (const auto& [strInputs, strLine] : std::vector<std::pair<std::string, std::string>>{
             {"<input semantic='TCB' source='#none'/>",
              "4 Ignoring <input> with unknown semantic TCB in <sampler>"},
             {"<input semantic='INPUT' source='#f'/><input semantic='INPUT' source='#f'/>",
              "1 Already had source for INPUT"},
             {"<input semantic='INTERPOLATION' source='#f'/>",
              "1 Got data source of invalid type 1 CCDS_FloatArray for INTERPOLATION"},
             {"<input semantic='INPUT' source='#none'/>", "1 Failed to find element named \"none\"."},
             {"<input semantic='INPUT' source='#f2'/><input semantic='OUTPUT' source='#f'/><input "
              "semantic='INTERPOLATION' source='#n'/>",
              "1 Input had 2 primitives per value.  Expected 1."},
             {"<input semantic='INPUT' source='#f'/><input semantic='OUTPUT' source='#f'/><input "
              "semantic='INTERPOLATION' source='#n2'/>",
              "1 Interpolation values had 2 primitives per value.  Expected 1."},
             {"<input semantic='INPUT' source='#f0'/><input semantic='OUTPUT' source='#f'/><input "
              "semantic='INTERPOLATION' source='#n'/>",
              "1 Data didn't have at least 1 value."}})
    {
        const CAnimatedScene objScene(Document(
            "<animation>" + Source("f", "0 1", 1) + Source("f2", "0 1", 2) + Source("f0", "", 1) +
            Source("n", "STEP", 1, "Name") + Source("n2", "STEP STEP", 2, "Name") + "<sampler id='s'>" +
            strInputs + "</sampler><channel source='#s' target='box/move.X'/></animation>"));
        EXPECT_EQ(objScene.m_objLog.GetLines().front(), strLine);
    }
}

TEST(ColladaAnimation, OneFaultLeavesTheRest)
{
    const CAnimatedScene objScene(Document(Animation(
        "outer", {"box/move.X", "box/none", "box/move.Y"}, {.strTimes = "1 2"},
        Animation("inner", {"box/none"}) + Animation("other", {"box/size.X"}, {.strTimes = "-1 5"}))));
    ASSERT_TRUE(objScene.m_spAnimation);
    EXPECT_EQ(ChannelNames(*objScene.m_spAnimation), " box/move.X box/move.Y box/size.X");
    EXPECT_EQ(objScene.m_spAnimation->GetBeginTime(), -1.0f);
    EXPECT_EQ(objScene.m_spAnimation->GetEndTime(), 5.0f);
    EXPECT_EQ(objScene.m_spAnimation->GetChannel(0)->GetSampler(),
              objScene.m_spAnimation->GetChannel(1)->GetSampler()); // one curve
    EXPECT_EQ(objScene.m_objLog.GetLines().back(),
              "1 Failed to load <animation id=\"inner\"> in <animation id=\"outer\">");
    EXPECT_EQ(objScene.m_spLoader->LoadDefaultAnimation(), objScene.m_spAnimation);

    std::string strDeep; // nothing to animate is no fault
    for (int n = 0; n < 2000; ++n)
    {
        strDeep = "<animation>" + strDeep + "</animation>";
    }
    const CAnimatedScene objEmpty(Document(strDeep));
    EXPECT_FALSE(objEmpty.m_spAnimation);
    EXPECT_EQ(objEmpty.m_objLog.GetLines(), CLines{});
}

// A few bytes a sampler ask for memory for all its keys.
TEST(ColladaAnimation, SharedSourcesDoNotMultiply)
{
    std::string strZeros;
    std::string strTypes;
    for (int n = 0; n < 50000; ++n)
    {
        strZeros += "0 ";
        strTypes += n % 2 == 0 ? "STEP " : "LINEAR ";
    }
    std::string strText = Animation("a", {"box/move.X"}, {strZeros, strZeros, strTypes});
    const size_t nSampler = strText.find("<sampler");
    const std::string strSampler = strText.substr(nSampler, strText.find("</animation>") - nSampler);
    for (int n = 0; n < 100; ++n)
    {
        std::string strCopy = strSampler;
        for (size_t nID = strCopy.find("a-s"); nID != std::string::npos; nID = strCopy.find("a-s", nID + 8))
        {
            strCopy.replace(nID, 3, "copy" + std::to_string(n));
        }
        strText.insert(strText.size() - 12, strCopy);
    }
    const CAnimatedScene objScene(Document(strText));
    ASSERT_TRUE(objScene.m_spAnimation);
    EXPECT_LT(objScene.m_spAnimation->GetNumChannels(), 40);
    EXPECT_TRUE(objScene.m_objLog.Contains("hold too much for the size of the file"));
}

TEST(ColladaAnimation, Clips)
{
    const CAnimatedScene objBox(MovingBox());
    EXPECT_EQ(NamedAnimations(*objBox.m_spLoader),
              (CLines{"slide 0-2: box/move box/spin.ANGLE box/matrix lid/seen fx/common/paint.G",
                      "turning 0.5-2: box/spin.ANGLE"}));
    ASSERT_TRUE(objBox.m_spAnimation && objBox.m_spAnimation->GetName().empty());
    EXPECT_EQ(objBox.m_spLoader->LoadAnimation(""), objBox.m_spAnimation);
    EXPECT_TRUE(objBox.m_spAnimation->PoseModelAtTime(objBox.m_spRoot.get(), 1.0f));
    EXPECT_FALSE(objBox.m_spRoot->FindNodeByGlobalName("lid")->IsVisible());

    const CAnimatedScene objScene(Document(
        Animation("y", {"box/move.Y"}),
        "<animation_clip id='late' start='4'><instance_animation url='#y'/></animation_clip><animation_clip "
        "id='gone'><instance_animation url='#z'/></animation_clip>"));
    EXPECT_EQ(NamedAnimations(*objScene.m_spLoader), CLines{});
    EXPECT_TRUE(objScene.m_objLog.HasLine("4 Ignoring <animation_clip name=\"late\">"));
    EXPECT_TRUE(objScene.m_objLog.HasLine(
        "4 Ignoring <instance_animation url=\"#z\"> in <animation_clip name=\"gone\">"));
}

TEST(ColladaAnimation, AnimationsDocument)
{
    CQDSGLoaderColladaLib::InitLibrary();
    const CTempFile objScene("scene.dae", MovingBox());
    const auto spLoader = CSGLoaderCollada::Create(CSGTextureLoader::CreateStandardLoader());
    const std::string strName =
        (std::filesystem::path(objScene.GetName()).parent_path() / "cut.anim").string();
    const auto Load = [&](const std::string& rDAE, const std::string& rContent) {
        std::ofstream(strName)
            << "<animations><dae>" << rDAE
            << "</dae><fps>30</fps><channelSet id='box'><channel value='box/matrix'/><channel "
               "value='box/move'/></channelSet><channelSet id='none'/>"
            << rContent << "</animations>";
        return spLoader->LoadFile(strName);
    };
    // The name is relative to the document's folder, not to where we are.
    ASSERT_TRUE(Load("scene.dae",
                     "<animation name='all' startFrame='15' endFrame='45'/>"
                     "<animation name='use' startFrame='0' useChannels='box'/>"
                     "<animation name='ignore' startFrame='3' ignoreChannels='box'/>"
                     "<animation name='ignoreNone' startFrame='0' endFrame='3' ignoreChannels='none'/>"
                     "<animation name='unknown' startFrame='0' endFrame='3' useChannels='lid'/>"));
    CLogCapture objLog;
    const std::string strAll = " box/move box/spin.ANGLE box/matrix lid/seen fx/common/paint.G";
    EXPECT_EQ(NamedAnimations(*spLoader), (CLines{"all 0.5-1.5:" + strAll, "use 0-2: box/move box/matrix",
                                                  "ignore 0.1-2: box/spin.ANGLE lid/seen fx/common/paint.G",
                                                  "ignoreNone 0-0.1:" + strAll, "unknown 0-0.1:" + strAll}));
    EXPECT_EQ(objLog.GetLines(),
              CLines{"4 unable to find channelSet \"lid\" using all animation channels instead"});
    EXPECT_EQ(spLoader->LoadDefaultAnimation()->GetNumChannels(), 5);

    ASSERT_TRUE(Load(objScene.GetName(), "<animation name='back' startFrame='45' endFrame='15'/>"));
    objLog.Clear();
    std::vector<CSGAnimation*> vecAnimations;
    EXPECT_FALSE(spLoader->LoadAnimations(vecAnimations));
    EXPECT_TRUE(
        objLog.HasLine("1 Failed to create animation \"back\" from 1.500 s to 0.500 s of 5 channels"));
    EXPECT_TRUE(objLog.HasLine("1 Assert 'spSlice' failed"));
    EXPECT_EQ(objLog.GetLines().back(), "1 Failed to load all animations");
    EXPECT_FALSE(spLoader->LoadDefaultAnimation());

    EXPECT_TRUE(Load(".\\scene.dae", "")); // as on Windows
    EXPECT_FALSE(Load("other.dae", ""));
    EXPECT_FALSE(Load("scene.dae", "<animation startFrame='1'/>"));
    EXPECT_TRUE(objLog.HasLine("1 Failed to parse animation slice file \"" + strName + "\""));
    EXPECT_EQ(objLog.GetLines().back(), "1 Assert 'LoadAnimSliceFile(rStrFilename)' failed");
    // The pieces of the last document are forgotten.
    ASSERT_TRUE(spLoader->LoadFile(objScene.GetName()));
    EXPECT_EQ(NamedAnimations(*spLoader).size(), 2u);
}
