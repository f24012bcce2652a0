// Animations: which channels a layer becomes, the keys of their samplers, and what is refused.
#include "fbxsdk/fbxsdk.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdsgloader_fbx/CFBXTestGraph.h"

#include <bit>
#include <gtest/gtest.h>
#include <iomanip>
#include <sstream>

namespace
{

using CNumbers = std::vector<double>;

// The flags of keys.
constexpr int CONSTANT = 2;
constexpr int CONSTANT_NEXT = 0x102;
constexpr int LINEAR = 4;
constexpr int CUBIC = 8 | 0x400 | 0x800; // with slopes of its own on either side

struct CCurve
{
    CNumbers vecTimes{0, 1}; // seconds
    CNumbers vecValues{1, 3};
    std::vector<int> vecFlags{LINEAR, LINEAR};
    std::string strPre = "C"; // the letter of the extrapolation
    std::string strPost = "C";
    int nRepetitions = -1;
    std::vector<float> vecSlopes = std::vector<float>(6); // behind a key and in front of the next
};
const CCurve NO_CURVE = {{}, {}, {}};
const CCurve OTHER_TIMES = {{0, 2}, {1, 3}};

template <class T>
std::string Join(const std::vector<T>& rNumbers)
{
    std::ostringstream objText;
    for (const T& rNumber : rNumbers)
    {
        objText << (&rNumber == rNumbers.data() ? "" : ",") << std::setprecision(17) << rNumber;
    }
    return objText.str();
}

int64_t Ticks(double fSeconds) { return FbxTime::FromSeconds(fSeconds).Get(); }

// Ids count from 1; 0 is the root.
class CAnimatedText
{
  public:
    int AddNode(const std::string& rName, int nParent = 0, const CValues& rProperties = {})
    {
        return Add("Model", rName, Properties(rProperties), nParent);
    }
    // With one layer; further curves are its.
    int AddStack(const std::string& rName, double fStop = 0)
    {
        const int nStack =
            Add("AnimationStack", rName, Properties({"LocalStop " + std::to_string(Ticks(fStop))}));
        AddLayer(nStack);
        return nStack;
    }
    void AddLayer(int nStack) { m_nLayer = Add("AnimationLayer", "Base", "", nStack); }
    // The curves are those of X, Y and Z; one without keys is not there.
    void Animate(int nNode, const std::string& rProperty, const std::vector<CCurve>& rCurves,
                 const CValues& rDefaults = {})
    {
        const int nCurveNode = Add("AnimationCurveNode", "", Properties(rDefaults), m_nLayer);
        Link(nCurveNode, nNode, "," + rProperty);
        for (size_t n = 0; n < rCurves.size(); ++n)
        {
            if (!rCurves[n].vecTimes.empty())
            {
                Link(AddCurve(rCurves[n]), nCurveNode,
                     rProperty == "Visibility" ? ",d|Visibility" : std::string(",d|") + "XYZ"[n]);
            }
        }
    }
    std::string GetText() const
    {
        return MakeFBXFile(m_strObjects, Connect(m_vecConnections),
                           "GlobalSettings: { " + Properties({"TimeMode 11"}) + "}\n" + m_strTakes);
    }

    std::string m_strTakes;

  private:
    // Without a parent it is not connected.
    int Add(const std::string& rClass, const std::string& rName, const std::string& rContent,
            int nParent = -1)
    {
        m_strObjects += Object(rClass, ++m_nId, rName, rClass == "Model" ? "Null" : "", rContent);
        if (nParent >= 0)
        {
            Link(m_nId, nParent);
        }
        return m_nId;
    }
    void Link(int nSource, int nDestination, const std::string& rProperty = "")
    {
        m_vecConnections.push_back(std::to_string(nSource) + "," + std::to_string(nDestination) + rProperty);
    }
    int AddCurve(const CCurve& rCurve)
    {
        std::vector<int64_t> vecTicks;
        std::vector<int> vecData;
        for (size_t n = 0; n < rCurve.vecTimes.size(); ++n)
        {
            vecTicks.push_back(Ticks(rCurve.vecTimes[n]));
            vecData.push_back(std::bit_cast<int>(rCurve.vecSlopes[2 * n]));
            vecData.push_back(std::bit_cast<int>(rCurve.vecSlopes[2 * n + 1]));
            vecData.insert(vecData.end(), {218434821, 0}); // weights of a third
        }
        const auto Extrapolation = [&](const std::string& rType) {
            return "-Extrapolation: { Type: " + rType +
                   "\nRepetition: " + std::to_string(rCurve.nRepetitions) + "\n}\n";
        };
        return Add("AnimationCurve", "",
                   Array("KeyTime", Join(vecTicks)) + Array("KeyValueFloat", Join(rCurve.vecValues)) +
                       Array("KeyAttrFlags", Join(rCurve.vecFlags)) +
                       Array("KeyAttrDataFloat", Join(vecData)) +
                       Array("KeyAttrRefCount", Join(std::vector<int>(vecTicks.size(), 1))) + "Pre" +
                       Extrapolation(rCurve.strPre) + "Post" + Extrapolation(rCurve.strPost));
    }

    int m_nId = 0;
    int m_nLayer = 0;
    std::string m_strObjects;
    CValues m_vecConnections;
};

// A scene graph, and its animations.
struct CAnimatedGraph : CFBXTestGraph
{
    explicit CAnimatedGraph(const CAnimatedText& rText, int nFlags = 0)
        : CAnimatedGraph(CTempFile("scene.fbx", rText.GetText()).GetName(), nFlags)
    {}
    CAnimatedGraph(const std::string& rFilename, int nFlags) : CFBXTestGraph(rFilename, nFlags)
    {
        EXPECT_TRUE(m_spRoot && m_spLoader->LoadAnimations(m_vecAnimations)) << rFilename;
    }

    // The names of all channels of the first animation.
    std::string GetNames() const
    {
        std::string strNames;
        for (int32_t n = 0; !m_vecAnimations.empty() && n < m_vecAnimations[0]->GetNumChannels(); ++n)
        {
            strNames +=
                (n > 0 ? " " : "") + std::string(m_vecAnimations[0]->GetChannel(n)->GetName().GetView());
        }
        return strNames;
    }
    // The last one's.
    const CSGAnimSampler& GetSampler() const
    {
        const CSGAnimation& rAnimation = *m_vecAnimations.at(0);
        return *rAnimation.GetChannel(rAnimation.GetNumChannels() - 1)->GetSampler();
    }
    // All its keys, "time:value,value ..." behind the type of the interpolation.
    std::string GetKeys() const
    {
        const CSGAnimSampler& rSampler = GetSampler();
        std::ostringstream objText;
        objText << rSampler.GetInterpType();
        for (int32_t nKey = 0; nKey < rSampler.GetKeyCount(); ++nKey)
        {
            objText << " " << rSampler.GetKeyTime(nKey);
            for (int32_t n = 0; n < rSampler.GetOutputCount(); ++n)
            {
                objText << (n > 0 ? "," : ":") << rSampler.GetKeyValue(nKey, n);
            }
        }
        return objText.str();
    }

    std::vector<CSGAnimation*> m_vecAnimations;
};

TEST(FBXAnimations, CurvesBecomeKeys)
{
    const struct
    {
        const char* szWhat;
        CCurve objCurve;
        const char* szKeys; // of Z, for a stack that ends after 2.5 seconds
    } arrCases[] = {
        {"linear", {}, "2 0:1 1:3"},
        {"constant", {{0, 1, 2}, {1, 3, 5}, {CONSTANT, CONSTANT, CONSTANT}}, "1 0:1 1:3 2:5"},
        // Behind the key, as soon as a float can tell.
        {"next", {{0, 1}, {1, 3}, {CONSTANT_NEXT, CONSTANT}}, "1 0:1 1.4013e-45:3 1:3"},
        {"held among straight ones", {{0, 1, 2}, {1, 3, 5}, {LINEAR, CONSTANT, LINEAR}}, "2 0:1 1:3 2:3 2:5"},
        {"repeated", {.strPost = "R"}, "2 0:1 1:3 1:1 2:3 2:1 3:3"},
        {"repeated once", {.strPost = "R", .nRepetitions = 1}, "2 0:1 1:3 1:1 2:3"},
        {"repeated before", {{1, 2}, {1, 3}, {LINEAR, LINEAR}, "R"}, "2 0:1 1:3 1:1 2:3"},
        {"mirrored", {.strPost = "M"}, "2 0:1 1:3 2:1 3:3"},
        {"mirrored steps", {{1, 2}, {1, 3}, {CONSTANT, CONSTANT}, "M"}, "1 0:3 1.4013e-45:1 1:1 2:3"},
        {"slope", {.strPost = "K"}, "2 0:1 1:3 2.5:6"},
        {"slope before", {{1, 2}, {1, 3}, {LINEAR, LINEAR}, "K"}, "2 0:-1 1:1 2:3"},
    };
    for (const auto& rCase : arrCases)
    {
        CAnimatedText objText;
        const int nNode = objText.AddNode("box");
        objText.AddStack("Take", 2.5);
        objText.Animate(nNode, "Lcl Translation", {NO_CURVE, OTHER_TIMES, rCase.objCurve});
        const CAnimatedGraph objGraph(objText);
        EXPECT_EQ(objGraph.GetNames(), "box/translate.Y box/translate.Z") << rCase.szWhat;
        EXPECT_EQ(objGraph.GetKeys(), rCase.szKeys) << rCase.szWhat;
    }
}

TEST(FBXAnimations, CubicKeysHaveTheirTangents)
{
    CAnimatedText objText;
    const int nNode = objText.AddNode("box");
    objText.AddStack("Take");
    // Slopes of 3 behind the first key and of -6 in front of the second; then a straight piece.
    objText.Animate(nNode, "Lcl Translation",
                    {{.vecTimes = {0, 1, 2},
                      .vecValues = {1, 3, 6},
                      .vecFlags = {CUBIC, LINEAR, LINEAR},
                      .vecSlopes = {3, -6, 0, 0, 0, 0}}});
    const CAnimatedGraph objGraph(objText);
    EXPECT_EQ(objGraph.GetKeys(), "3 0:1,0,0 1:3,0,0 2:6,0,0");
    float arrValue[3];
    // Of the Bezier curve 1, 2, 5, 3: (1 + 3 * 2 + 3 * 5 + 3) / 8.
    ASSERT_TRUE(objGraph.GetSampler().SampleAtTime(0.5f, arrValue, 3));
    EXPECT_FLOAT_EQ(arrValue[0], 3.125f);
    ASSERT_TRUE(objGraph.GetSampler().SampleAtTime(1.25f, arrValue, 3));
    EXPECT_FLOAT_EQ(arrValue[0], 3.75f);
    EXPECT_EQ(arrValue[1], 0.0f);
}

TEST(FBXAnimations, Channels)
{
    constexpr int QUATERNIONS = CFBXTestGraph::KEEP_QUATERNIONS;
    constexpr int SAMPLED = CFBXTestGraph::RESAMPLE;
    const struct
    {
        int nFlags;
        std::string strProperty;
        std::vector<CCurve> vecCurves;
        std::string strNames;
        std::string strLastKeys; // of the last channel
    } arrCases[] = {
        {0, "Lcl Scaling", {NO_CURVE, {}}, "box/scale.ALL", "2 0:1,1,1 1:1,3,1"},
        {0,
         "Lcl Scaling",
         {{{0, 1, 2}, {4, 4, 4}, {LINEAR, CONSTANT, LINEAR}}},
         "box/scale.ALL",
         "1 0:4,1,1"},
        // Times of their own; then one that is another at rest, too.
        {0, "Lcl Scaling", {{}, NO_CURVE, OTHER_TIMES}, "box/scale.X box/scale.Z", "2 0:1 2:3"},
        {0,
         "Lcl Scaling",
         {{}, OTHER_TIMES, {{0}, {2}, {LINEAR}}},
         "box/scale.X box/scale.Y box/scale.Z",
         "1 0:2"},
        {0,
         "Lcl Rotation",
         {{{0, 1}, {0, 180}}, {{0, 2}, {0, 90}}},
         "box/rotateX.ANGLE box/rotateY.ANGLE",
         "2 0:0 2:1.5708"},
        {QUATERNIONS,
         "Lcl Rotation",
         {NO_CURVE, {{0, 1, 2}, {0, 90, 90}, {CONSTANT, LINEAR, LINEAR}}},
         "box/rotate.QUAT",
         "4 0:0,0,0,1 1:0,0,0,1 1:0,0.707107,0,0.707107 2:0,0.707107,0,0.707107"},
        {QUATERNIONS, "Lcl Rotation", {{}, OTHER_TIMES}, "", ""},
        {QUATERNIONS | SAMPLED,
         "Lcl Rotation",
         {{{0, 0.125}, {0, 90}}, {{0, 0.0625}, {0, 0}}},
         "box/rotate.QUAT",
         "4 0:0,0,0,1 0.0416667:0.258819,0,0,0.965926 0.0833333:0.5,0,0,0.866025 "
         "0.125:0.707107,0,0,0.707107"},
        {SAMPLED, "Visibility", {{{0, 1}, {1, 0}, {CONSTANT, CONSTANT}}}, "box/visibility", "1 0:1 1:0"},
        {0, "Color", {{}}, "", ""}, // what no node has
    };
    for (const auto& rCase : arrCases)
    {
        SCOPED_TRACE(&rCase - arrCases);
        CAnimatedText objText;
        const int nNode = objText.AddNode("box");
        objText.AddStack("Take");
        objText.Animate(nNode, rCase.strProperty, rCase.vecCurves,
                        rCase.strProperty == "Lcl Scaling" ? CValues{"d|X 1", "d|Y 1", "d|Z 1"} : CValues{});
        const CAnimatedGraph objGraph(objText, rCase.nFlags);
        ASSERT_EQ(objGraph.GetNames(), rCase.strNames);
        if (!rCase.strNames.empty())
        {
            EXPECT_EQ(objGraph.GetKeys(), rCase.strLastKeys);
            continue;
        }
        const CLogCapture& rLog = objGraph.m_objLog;
        EXPECT_TRUE(rLog.HasLine("4 Animation stack 'Take' animates no node."));
        EXPECT_EQ(rCase.nFlags != 0,
                  rLog.HasLine("1 Rotation for node 'box' is animated and cannot be merged into a single "
                               "animation while using quaternions for rotations.") &&
                      rLog.HasLine("1   Y curve: constant=0 keys=2 begin=0 end=2"));
    }
}

TEST(FBXAnimations, StacksAreAnimations)
{
    CAnimatedText objText;
    const int nNode = objText.AddNode("box");
    for (const char* szName : {"First", "Layers", "Second", "Empty"})
    {
        const int nStack = objText.AddStack(szName, szName == std::string("Second") ? 4 : 0);
        if (szName != std::string("Empty"))
        {
            objText.Animate(nNode, "Lcl Translation", {{}});
        }
        if (szName == std::string("Layers"))
        {
            objText.AddLayer(nStack);
        }
    }
    objText.m_strTakes = "Takes: { Current: \"Second\" }\n";
    CAnimatedGraph objGraph(objText);
    EXPECT_TRUE(objGraph.m_objLog.HasLine(
        "1 Animation stack 'Layers' had 2 animation layers.  Loading stacks with only "
        "one layer is supported."));
    EXPECT_TRUE(objGraph.m_objLog.HasLine("7 Animation stack 'Empty' animates no node."));
    std::string strAnimations;
    for (const CSGAnimation* pAnimation : objGraph.m_vecAnimations)
    {
        strAnimations += std::string(pAnimation->GetName().GetView()) + " " +
                         Join<float>({pAnimation->GetBeginTime(), pAnimation->GetEndTime()}) + " ";
    }
    EXPECT_EQ(strAnimations, "First 0,1 Second 0,4 ");
    const auto spDefault = objGraph.m_spLoader->LoadDefaultAnimation();
    ASSERT_TRUE(spDefault);
    EXPECT_EQ(spDefault->GetName(), "");
    EXPECT_EQ(spDefault->GetEndTime(), 4.0f);
    EXPECT_EQ(spDefault->GetChannel(0), objGraph.m_vecAnimations[1]->GetChannel(0));
    EXPECT_EQ(objGraph.m_spLoader->LoadAnimation("First").get(), objGraph.m_vecAnimations[0]);
    EXPECT_FALSE(objGraph.m_spLoader->LoadAnimation("Layers"));
    // Nothing is left of a file when the next one cannot be loaded.
    EXPECT_FALSE(objGraph.m_spLoader->LoadFile("none.fbx"));
    EXPECT_FALSE(objGraph.m_spLoader->LoadAnimations(objGraph.m_vecAnimations));
    EXPECT_FALSE(objGraph.m_spLoader->LoadDefaultAnimation());
    EXPECT_TRUE(objGraph.m_objLog.HasLine("1 Tried to load animatinos when no file was loaded."));
    EXPECT_TRUE(objGraph.m_objLog.HasLine("1 Tried to load animation when no file was loaded."));
}

TEST(FBXAnimations, NodesOfOneName)
{
    CAnimatedText objText;
    const int nLeft = objText.AddNode("left");
    const int nRight = objText.AddNode("right");
    objText.AddNode("arm", nLeft);
    const int nArm = objText.AddNode("arm", nRight);
    const int nInner = objText.AddNode("arm", nArm); // its parent has the name, too
    const int nTwin = objText.AddNode("arm", nRight);
    objText.AddNode("arm_1");
    objText.AddStack("Take");
    double fValue = 5;
    for (const int nNode : {nArm, nInner, nTwin})
    {
        objText.Animate(nNode, "Lcl Translation", {{{0}, {fValue++}, {LINEAR}}});
    }
    const CAnimatedGraph objGraph(objText);
    EXPECT_EQ(objGraph.GetNames(), "arm/translate.ALL arm/translate.ALL arm_2/translate.ALL");
    ASSERT_TRUE(objGraph.m_vecAnimations.at(0)->PoseModel(objGraph.m_spRoot.get()));
    const CSGNode* pLeft = objGraph.m_spRoot->GetChild(0);
    const CSGNode* pRight = objGraph.m_spRoot->GetChild(1);
    const CSGNode* pArm = pRight->GetChild(0);
    const CSGNode* arrNodes[] = {pLeft->GetChild(0), pArm, pArm->GetChild(0), pRight->GetChild(1)};
    std::string strPlaces;
    for (const CSGNode* pNode : arrNodes)
    {
        const auto* pLocal = pNode->FindData<CSGData_LocalTransform>();
        strPlaces += std::string(pNode->GetGlobalName().GetView()) + " " +
                     Join<float>({pLocal->GetTransform().m_objTranslation.x}) + ", ";
    }
    EXPECT_EQ(strPlaces, "arm 0, arm 5, arm 6, arm_2 7, ");
    EXPECT_EQ(arrNodes[3]->GetLocalName(), "arm");
}

// A child that does not take over its parent's own scale (inherit type 2) stays as big as it is, but moves
// away.
TEST(FBXAnimations, InheritedScale)
{
    CAnimatedText objText;
    const int nParent = objText.AddNode("parent");
    objText.AddNode("child", nParent, {"InheritType 2", "Lcl Translation 1,0,0"});
    objText.AddStack("Take");
    objText.Animate(nParent, "Lcl Scaling", {{}, {{0, 1}, {1, 1}}, {{0, 1}, {1, 1}}});
    const CAnimatedGraph objGraph(objText);
    EXPECT_EQ(objGraph.GetNames(), "parent/scale.ALL child/inherit.ALL");
    ASSERT_TRUE(objGraph.m_vecAnimations.at(0)->PoseModelAtTime(objGraph.m_spRoot.get(), 0.5f));
    const CTransform3 objWorld = objGraph.GetWorld("child");
    EXPECT_NEAR(objWorld.m_objTranslation.x, 2.0f, 1e-5f);
    EXPECT_NEAR(objWorld.m_objMatrix.m[0][0], 1.0f, 1e-5f);
    EXPECT_NEAR(objWorld.m_objMatrix.m[1][1], 1.0f, 1e-5f);
}

TEST(FBXAnimations, AFewBytesCannotAskForManyKeys)
{
    for (const int nFlags : {0, int{CFBXTestGraph::RESAMPLE}})
    {
        CAnimatedText objText;
        const int nNode = objText.AddNode("box");
        objText.AddStack("Take", 1e8);
        objText.Animate(nNode, "Lcl Translation", {{.strPost = "R"}});
        const CAnimatedGraph objGraph(objText, nFlags);
        EXPECT_TRUE(objGraph.m_objLog.HasLine(
            "1 A curve of node 'box' has its own keys alone: 1e+08 seconds of it are too many."));
        EXPECT_EQ(objGraph.GetKeys(), "2 0:1,0,0 1:3,0,0");
    }
}

} // namespace
