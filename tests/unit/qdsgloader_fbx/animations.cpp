// Animations: which channels a layer becomes, the keys of their samplers, and what is refused. Scenes are
// ASCII files of version 7400.
#include "qdsgloader_fbx/CSGLoaderFBXImpl.h"

#include "fbxsdk/fbxsdk.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGData_WorldTransform.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <filesystem>
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
    CNumbers vecSlopes{}; // behind a key and in front of the next, for each key
};

template <class T>
std::string Array(const std::string& rName, const std::vector<T>& rNumbers)
{
    std::ostringstream objText;
    objText << std::setprecision(17) << rName << ": *" << rNumbers.size() << " { a: ";
    for (size_t n = 0; n < rNumbers.size(); ++n)
    {
        objText << (n > 0 ? "," : "") << rNumbers[n];
    }
    return objText.str() + " }\n";
}

std::string Number(double f)
{
    std::ostringstream objText;
    objText << std::setprecision(17) << f;
    return objText.str();
}

// Ids count from 1; 0 is the root.
class CTestScene
{
  public:
    int AddNode(const std::string& rName, int nParent = 0, const std::string& rProperties = "")
    {
        Object("Model", "Model::" + rName, "Null", "Properties70: { " + rProperties + " }\n");
        return Connect(m_nId, nParent);
    }
    // With one layer; further curves are its.
    int AddStack(const std::string& rName, double fStop = 0)
    {
        Object("AnimationStack", "AnimStack::" + rName, "",
               "Properties70: { P: \"LocalStop\", \"KTime\", \"Time\", \"\"," + Ticks(fStop) + " }\n");
        const int nStack = m_nId;
        AddLayer(nStack);
        return nStack;
    }
    void AddLayer(int nStack)
    {
        Object("AnimationLayer", "AnimLayer::Base", "");
        m_nLayer = Connect(m_nId, nStack);
    }
    // The curves are those of X, Y and Z; one without keys is not there.
    void Animate(int nNode, const std::string& rProperty, const std::vector<CCurve>& rCurves,
                 const std::string& rDefaults = "")
    {
        Object("AnimationCurveNode", "AnimCurveNode::", "", "Properties70: { " + rDefaults + " }\n");
        const int nCurveNode = Connect(m_nId, m_nLayer);
        Connect(nCurveNode, nNode, rProperty);
        for (size_t n = 0; n < rCurves.size(); ++n)
        {
            if (!rCurves[n].vecTimes.empty())
            {
                AddCurve(rCurves[n]);
                Connect(m_nId, nCurveNode,
                        rProperty == "Visibility" ? "d|Visibility" : std::string("d|") + "XYZ"[n]);
            }
        }
    }
    std::string GetText() const
    {
        return "; FBX 7.4.0 project file\nFBXHeaderExtension: { FBXVersion: 7400 }\n"
               "GlobalSettings: { Properties70: { P: \"TimeMode\", \"enum\", \"\", \"\",11 } }\nObjects: "
               "{\n" +
               m_strObjects + "}\nConnections: {\n" + m_strConnections + "}\n" + m_strTakes;
    }

    std::string m_strTakes;

  private:
    static std::string Ticks(double fSeconds) { return std::to_string(FbxTime::FromSeconds(fSeconds).Get()); }
    void Object(const std::string& rClass, const std::string& rName, const std::string& rKind,
                const std::string& rBody = "")
    {
        m_strObjects += rClass + ": " + std::to_string(++m_nId) + ", \"" + rName + "\", \"" + rKind +
                        "\" {\n" + rBody + "}\n";
    }
    int Connect(int nSource, int nDestination, const std::string& rProperty = "")
    {
        m_strConnections += std::string("C: \"") + (rProperty.empty() ? "OO" : "OP") + "\"," +
                            std::to_string(nSource) + "," + std::to_string(nDestination) +
                            (rProperty.empty() ? "" : ", \"" + rProperty + "\"") + "\n";
        return nSource;
    }
    void AddCurve(const CCurve& rCurve)
    {
        std::vector<int64_t> vecTicks;
        std::vector<int> vecCounts;
        std::vector<int> vecData;
        for (size_t n = 0; n < rCurve.vecTimes.size(); ++n)
        {
            vecTicks.push_back(FbxTime::FromSeconds(rCurve.vecTimes[n]).Get());
            vecCounts.push_back(1);
            for (size_t nSlope = 0; nSlope < 2; ++nSlope)
            {
                const auto fSlope =
                    static_cast<float>(rCurve.vecSlopes.empty() ? 0 : rCurve.vecSlopes[2 * n + nSlope]);
                vecData.push_back(std::bit_cast<int>(fSlope));
            }
            vecData.insert(vecData.end(), {218434821, 0}); // weights of a third
        }
        const auto Extrapolation = [&](const char* szSide, const std::string& rType) {
            return std::string(szSide) + "-Extrapolation: { Type: " + rType +
                   "\nRepetition: " + std::to_string(rCurve.nRepetitions) + "\n}\n";
        };
        Object("AnimationCurve", "AnimCurve::", "",
               "KeyVer: 4009\n" + Array("KeyTime", vecTicks) + Array("KeyValueFloat", rCurve.vecValues) +
                   Array("KeyAttrFlags", rCurve.vecFlags) + Array("KeyAttrDataFloat", vecData) +
                   Array("KeyAttrRefCount", vecCounts) + Extrapolation("Pre", rCurve.strPre) +
                   Extrapolation("Post", rCurve.strPost));
    }

    int m_nId = 0;
    int m_nLayer = 0;
    std::string m_strObjects;
    std::string m_strConnections;
};

// A scene that was loaded, and its animations.
struct CLoaded
{
    explicit CLoaded(const CTestScene& rScene, bool bKeepQuaternions = false, bool bResample = false)
        : spLoader(
              new CSGLoaderFBXImpl(CSGTextureLoader::CreateStandardLoader(), bKeepQuaternions, bResample))
    {
        const CTempFile objFile("scene.fbx", rScene.GetText());
        EXPECT_TRUE(spLoader->LoadFile(objFile.GetName()));
        EXPECT_TRUE(spLoader->LoadAnimations(vecAnimations));
    }

    // The names of all channels of the first animation.
    std::string GetNames() const
    {
        std::string strNames;
        for (int32_t n = 0; !vecAnimations.empty() && n < vecAnimations[0]->GetNumChannels(); ++n)
        {
            strNames +=
                (n > 0 ? " " : "") + std::string(vecAnimations[0]->GetChannel(n)->GetName().GetView());
        }
        return strNames;
    }
    const CSGAnimSampler& GetSampler(int32_t nChannel = 0) const
    {
        return *vecAnimations.at(0)->GetChannel(nChannel)->GetSampler();
    }
    // All keys of a channel, "time:value,value ..." behind the type of the interpolation.
    std::string GetKeys(int32_t nChannel = 0) const
    {
        const CSGAnimSampler& rSampler = GetSampler(nChannel);
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

    boost::intrusive_ptr<CSGLoaderFBXImpl> spLoader;
    std::vector<CSGAnimation*> vecAnimations;
};

CTransform3 GetWorld(CSGNode& rNode)
{
    return CSGData_WorldTransform::GetOrCreateFromNode(&rNode)->GetTransform();
}

TEST(FBXAnimations, CurvesBecomeKeys)
{
    const struct
    {
        const char* szWhat;
        CCurve objCurve;
        std::string strKeys; // of X, for a stack that ends after 2.5 seconds
    } arrCases[] = {
        {"linear", {}, "2 0:1 1:3"},
        {"constant", {{0, 1, 2}, {1, 3, 5}, {CONSTANT, CONSTANT, CONSTANT}}, "1 0:1 1:3 2:5"},
        // Behind the key, as soon as a float can tell.
        {"next", {{0, 1}, {1, 3}, {CONSTANT_NEXT, CONSTANT}}, "1 0:1 1.4013e-45:3 1:3"},
        {"held among straight ones", {{0, 1, 2}, {1, 3, 5}, {LINEAR, CONSTANT, LINEAR}}, "2 0:1 1:3 2:3 2:5"},
        {"always the same", {{0, 1, 2}, {4, 4, 4}, {LINEAR, CONSTANT, LINEAR}}, "1 0:4"},
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
        CTestScene objScene;
        const int nNode = objScene.AddNode("box");
        objScene.AddStack("Take", 2.5);
        objScene.Animate(nNode, "Lcl Translation", {rCase.objCurve, {{2.25}, {7}, {LINEAR}}, {{}, {}, {}}});
        const CLoaded objLoaded(objScene);
        ASSERT_EQ(objLoaded.GetNames(), "box/translate.ALL") << rCase.szWhat;
        std::string strKeys; // with Y and Z
        for (const char c : rCase.strKeys + " ")
        {
            strKeys += (c == ' ' && strKeys.size() > 1 ? ",7,0" : "") + std::string(1, c);
        }
        strKeys.pop_back();
        EXPECT_EQ(objLoaded.GetKeys(), strKeys) << rCase.szWhat;
    }
}

TEST(FBXAnimations, CubicKeysHaveTheirTangents)
{
    CTestScene objScene;
    const int nNode = objScene.AddNode("box");
    objScene.AddStack("Take");
    // Slopes of 3 behind the first key and of -6 in front of the second; then a straight piece.
    objScene.Animate(nNode, "Lcl Translation",
                     {{.vecTimes = {0, 1, 2},
                       .vecValues = {1, 3, 6},
                       .vecFlags = {CUBIC, LINEAR, LINEAR},
                       .vecSlopes = {3, -6, 0, 0, 0, 0}}});
    const CLoaded objLoaded(objScene);
    EXPECT_EQ(objLoaded.GetKeys(), "3 0:1,0,0 1:3,0,0 2:6,0,0");
    float arrValue[3];
    // Of the Bezier curve 1, 2, 5, 3: (1 + 3 * 2 + 3 * 5 + 3) / 8.
    ASSERT_TRUE(objLoaded.GetSampler().SampleAtTime(0.5f, arrValue, 3));
    EXPECT_FLOAT_EQ(arrValue[0], 3.125f);
    ASSERT_TRUE(objLoaded.GetSampler().SampleAtTime(1.25f, arrValue, 3));
    EXPECT_FLOAT_EQ(arrValue[0], 3.75f);
    EXPECT_EQ(arrValue[1], 0.0f);
}

TEST(FBXAnimations, Channels)
{
    const CCurve objOther{{0, 2}, {1, 3}};
    const CCurve objNone{{}, {}, {}};
    const struct
    {
        const char* szWhat;
        bool bKeepQuaternions;
        bool bResample;
        std::string strProperty;
        std::vector<CCurve> vecCurves;
        std::string strNames;
        std::string strLastKeys; // of the last channel
    } arrCases[] = {
        {"scale", false, false, "Lcl Scaling", {objNone, {}}, "box/scale.ALL", "2 0:1,1,1 1:1,3,1"},
        {"own times",
         false,
         false,
         "Lcl Scaling",
         {{}, objNone, objOther},
         "box/scale.X box/scale.Z",
         "2 0:1 2:3"},
        {"own times, one that is another at rest",
         false,
         false,
         "Lcl Scaling",
         {{}, objOther, {{0}, {2}, {LINEAR}}},
         "box/scale.X box/scale.Y box/scale.Z",
         "1 0:2"},
        {"angles",
         false,
         false,
         "Lcl Rotation",
         {{{0, 1}, {0, 180}}, {{0, 2}, {0, 90}}},
         "box/rotateX.ANGLE box/rotateY.ANGLE",
         "2 0:0 2:1.5708"},
        {"quaternions",
         true,
         false,
         "Lcl Rotation",
         {objNone, {{0, 1, 2}, {0, 90, 90}, {CONSTANT, LINEAR, LINEAR}}},
         "box/rotate.QUAT",
         "4 0:0,0,0,1 1:0,0,0,1 1:0,0.707107,0,0.707107 2:0,0.707107,0,0.707107"},
        {"quaternions that do not share times", true, false, "Lcl Rotation", {{}, objOther}, "", ""},
        {"sampled",
         true,
         true,
         "Lcl Rotation",
         {{{0, 0.125}, {0, 90}}, {{0, 0.0625}, {0, 0}}},
         "box/rotate.QUAT",
         "4 0:0,0,0,1 0.0416667:0.258819,0,0,0.965926 0.0833333:0.5,0,0,0.866025 "
         "0.125:0.707107,0,0,0.707107"},
        {"visibility keeps its keys",
         false,
         true,
         "Visibility",
         {{{0, 1}, {1, 0}, {CONSTANT, CONSTANT}}},
         "box/visibility",
         "1 0:1 1:0"},
        {"what no node has", false, false, "Color", {{}}, "", ""},
    };
    for (const auto& rCase : arrCases)
    {
        CTestScene objScene;
        const int nNode = objScene.AddNode("box");
        objScene.AddStack("Take");
        objScene.Animate(
            nNode, rCase.strProperty, rCase.vecCurves,
            rCase.strProperty == "Lcl Scaling"
                ? "P: \"d|X\", \"Number\", \"\", \"A\",1\nP: \"d|Y\", \"Number\", \"\", \"A\",1\n"
                  "P: \"d|Z\", \"Number\", \"\", \"A\",1\n"
                : "");
        const CLogCapture objCapture;
        const CLoaded objLoaded(objScene, rCase.bKeepQuaternions, rCase.bResample);
        ASSERT_EQ(objLoaded.GetNames(), rCase.strNames) << rCase.szWhat;
        if (!rCase.strNames.empty())
        {
            EXPECT_EQ(objLoaded.GetKeys(objLoaded.vecAnimations[0]->GetNumChannels() - 1), rCase.strLastKeys)
                << rCase.szWhat;
            continue;
        }
        EXPECT_TRUE(objCapture.HasLine("4 Animation stack 'Take' animates no node."));
        EXPECT_EQ(
            rCase.bKeepQuaternions,
            objCapture.HasLine("1 Rotation for node 'box' is animated and cannot be merged into a single "
                               "animation while using quaternions for rotations.") &&
                objCapture.HasLine("1   Y curve: constant=0 keys=2 begin=0 end=2"));
    }
}

TEST(FBXAnimations, StacksAreAnimations)
{
    CTestScene objScene;
    const int nNode = objScene.AddNode("box");
    for (const char* szName : {"First", "Layers", "Second", "Empty"})
    {
        const int nStack = objScene.AddStack(szName, szName == std::string("Second") ? 4 : 0);
        if (szName != std::string("Empty"))
        {
            objScene.Animate(nNode, "Lcl Translation", {{}});
        }
        if (szName == std::string("Layers"))
        {
            objScene.AddLayer(nStack);
        }
    }
    objScene.m_strTakes = "Takes: { Current: \"Second\" }\n";
    CLogCapture objCapture;
    CLoaded objLoaded(objScene);
    EXPECT_TRUE(
        objCapture.HasLine("1 Animation stack 'Layers' had 2 animation layers.  Loading stacks with only "
                           "one layer is supported."));
    EXPECT_TRUE(objCapture.HasLine("4 Animation stack 'Empty' animates no node."));
    std::string strAnimations;
    for (const CSGAnimation* pAnimation : objLoaded.vecAnimations)
    {
        strAnimations += std::string(pAnimation->GetName().GetView()) + " " +
                         Number(pAnimation->GetBeginTime()) + "-" + Number(pAnimation->GetEndTime()) + " ";
    }
    EXPECT_EQ(strAnimations, "First 0-1 Second 0-4 ");
    const auto spDefault = objLoaded.spLoader->LoadDefaultAnimation();
    ASSERT_TRUE(spDefault);
    EXPECT_EQ(spDefault->GetName(), "");
    EXPECT_EQ(spDefault->GetEndTime(), 4.0f);
    EXPECT_EQ(spDefault->GetChannel(0), objLoaded.vecAnimations[1]->GetChannel(0));
    EXPECT_EQ(objLoaded.spLoader->LoadAnimation("First").get(), objLoaded.vecAnimations[0]);
    EXPECT_FALSE(objLoaded.spLoader->LoadAnimation("Layers"));
    // Nothing is left of a file when the next one cannot be loaded.
    EXPECT_FALSE(objLoaded.spLoader->LoadFile("none.fbx"));
    EXPECT_FALSE(objLoaded.spLoader->LoadAnimations(objLoaded.vecAnimations));
    EXPECT_FALSE(objLoaded.spLoader->LoadDefaultAnimation());
    EXPECT_TRUE(objCapture.HasLine("1 Tried to load animatinos when no file was loaded."));
    EXPECT_TRUE(objCapture.HasLine("1 Tried to load animation when no file was loaded."));
}

TEST(FBXAnimations, NodesOfOneName)
{
    CTestScene objScene;
    const int nLeft = objScene.AddNode("left");
    const int nRight = objScene.AddNode("right");
    objScene.AddNode("arm", nLeft);
    const int nArm = objScene.AddNode("arm", nRight);
    const int nInner = objScene.AddNode("arm", nArm); // its parent has the name, too
    const int nTwin = objScene.AddNode("arm", nRight);
    objScene.AddNode("arm_1");
    objScene.AddStack("Take");
    double fValue = 5;
    for (const int nNode : {nArm, nInner, nTwin})
    {
        objScene.Animate(nNode, "Lcl Translation", {{{0}, {fValue++}, {LINEAR}}});
    }
    const CLoaded objLoaded(objScene);
    EXPECT_EQ(objLoaded.GetNames(), "arm/translate.ALL arm/translate.ALL arm_2/translate.ALL");
    const CSGNode::CNodePtr spRoot = objLoaded.spLoader->LoadSceneGraph();
    ASSERT_TRUE(spRoot);
    ASSERT_TRUE(objLoaded.vecAnimations.at(0)->PoseModel(spRoot.get()));
    CSGNode* pArm = spRoot->GetChild(1)->GetChild(0);
    const CSGNode* arrNodes[] = {spRoot->GetChild(0)->GetChild(0), pArm, pArm->GetChild(0),
                                 spRoot->GetChild(1)->GetChild(1)};
    std::string strPlaces;
    for (const CSGNode* pNode : arrNodes)
    {
        const auto* pLocal = pNode->FindData<CSGData_LocalTransform>();
        strPlaces += std::string(pNode->GetGlobalName().GetView()) + " " +
                     Number(static_cast<double>(pLocal->GetTransform().m_objTranslation.x)) + ", ";
    }
    EXPECT_EQ(strPlaces, "arm 0, arm 5, arm 6, arm_2 7, ");
    EXPECT_EQ(arrNodes[3]->GetLocalName(), "arm");
}

// A child that does not take over its parent's own scale (inherit type 2) stays as big as it is, but moves
// away.
TEST(FBXAnimations, InheritedScale)
{
    CTestScene objScene;
    const int nParent = objScene.AddNode("parent");
    objScene.AddNode("child", nParent,
                     "P: \"InheritType\", \"enum\", \"\", \"\",2\n"
                     "P: \"Lcl Translation\", \"Lcl Translation\", \"\", \"A\",1,0,0\n");
    objScene.AddStack("Take");
    objScene.Animate(nParent, "Lcl Scaling", {{}, {{0, 1}, {1, 1}}, {{0, 1}, {1, 1}}});
    const CLoaded objLoaded(objScene);
    EXPECT_EQ(objLoaded.GetNames(), "parent/scale.ALL child/inherit.ALL");
    const CSGNode::CNodePtr spRoot = objLoaded.spLoader->LoadSceneGraph();
    ASSERT_TRUE(objLoaded.vecAnimations.at(0)->PoseModelAtTime(spRoot.get(), 0.5f));
    const CTransform3 objWorld = GetWorld(*spRoot->GetChild(0)->GetChild(0));
    EXPECT_NEAR(objWorld.m_objTranslation.x, 2.0f, 1e-5f);
    EXPECT_NEAR(objWorld.m_objMatrix.m[0][0], 1.0f, 1e-5f);
    EXPECT_NEAR(objWorld.m_objMatrix.m[1][1], 1.0f, 1e-5f);
}

TEST(FBXAnimations, AFewBytesCannotAskForManyKeys)
{
    for (const bool bResample : {false, true})
    {
        CTestScene objScene;
        const int nNode = objScene.AddNode("box");
        objScene.AddStack("Take", 1e8);
        objScene.Animate(nNode, "Lcl Translation", {{.strPost = "R"}});
        const CLogCapture objCapture;
        const CLoaded objLoaded(objScene, false, bResample);
        EXPECT_TRUE(objCapture.HasLine(
            "1 A curve of node 'box' has its own keys alone: 1e+08 seconds of it are too many."));
        EXPECT_EQ(objLoaded.GetKeys(), "2 0:1,0,0 1:3,0,0");
    }
}

// The greatest difference of two transforms, beside the second one's greatest number.
double GetDifference(const CTransform3& rFound, const FbxAMatrix& rExpected)
{
    double fDifference = 0;
    double fSize = 1;
    const auto Compare = [&](float fFound, double fExpected) {
        fDifference = std::max(fDifference, std::abs(static_cast<double>(fFound) - fExpected));
        fSize = std::max(fSize, std::abs(fExpected));
    };
    for (size_t n = 0; n < 9; ++n)
    {
        Compare(rFound.m_objMatrix.m[n / 3][n % 3], rExpected.Get(n / 3, n % 3));
    }
    Compare(rFound.m_objTranslation.x, rExpected.Get(3, 0));
    Compare(rFound.m_objTranslation.y, rExpected.Get(3, 1));
    Compare(rFound.m_objTranslation.z, rExpected.Get(3, 2));
    return fDifference / fSize;
}

// The nodes of a scene graph, each with that of the file; children that the loader added come last.
std::vector<std::pair<CSGNode*, const FbxNode*>> PairNodes(CSGNode* pRoot, const FbxNode* pFBXRoot)
{
    std::vector<std::pair<CSGNode*, const FbxNode*>> vecPairs{{pRoot, pFBXRoot}};
    for (size_t nPair = 0; nPair < vecPairs.size(); ++nPair)
    {
        const auto [pNode, pFBXNode] = vecPairs[nPair];
        for (int n = 0; n < pFBXNode->GetChildCount(); ++n)
        {
            vecPairs.emplace_back(pNode->GetChild(n), pFBXNode->GetChild(n));
        }
    }
    return vecPairs;
}

// Poses all animations of a file, at frames where they are sampled, else between them, beside the file's own
// curves. Returns how many transforms were compared.
int CheckPoses(const std::string& rFile, const FbxScene& rScene, bool bKeepQuaternions, bool bResample)
{
    const boost::intrusive_ptr<CSGLoader> spLoader =
        CSGLoaderFBX::Create(CSGTextureLoader::CreateStandardLoader(), bKeepQuaternions, bResample);
    std::vector<CSGAnimation*> vecAnimations;
    const CSGNode::CNodePtr spRoot = spLoader->LoadFile(rFile) ? spLoader->LoadSceneGraph() : nullptr;
    EXPECT_TRUE(spRoot && spLoader->LoadAnimations(vecAnimations)) << rFile;
    const double fRate = rScene.GetGlobalSettings().GetFrameRate();
    const auto vecStacks = rScene.GetObjects<FbxAnimStack>();
    int nPoses = 0;
    for (const CSGAnimation* pAnimation : vecAnimations)
    {
        const FbxAnimStack* pStack = *std::ranges::find_if(
            vecStacks, [&](const auto* p) { return pAnimation->GetName() == p->GetName(); });
        const double fFrames = std::floor((pAnimation->GetEndTime() - pAnimation->GetBeginTime()) * fRate);
        for (const double fPart : {0.0, 0.13, 0.31, 0.5, 0.77, 1.0})
        {
            const double fFrame = std::min(fFrames, std::floor(fPart * fFrames) + (bResample ? 0.0 : 0.37));
            const auto fTime = static_cast<float>(pAnimation->GetBeginTime() + fFrame / fRate);
            EXPECT_TRUE(pAnimation->PoseModelAtTime(spRoot.get(), fTime)) << rFile;
            for (const auto& [pNode, pFBXNode] : PairNodes(spRoot.get(), rScene.GetRootNode()))
            {
                ++nPoses;
                EXPECT_LE(
                    GetDifference(GetWorld(*pNode), pFBXNode->EvaluateGlobalTransform(
                                                        pStack->GetLayers().front(),
                                                        FbxTime::FromSeconds(static_cast<double>(fTime)))),
                    1e-4)
                    << rFile << " " << pStack->GetName() << " " << pFBXNode->GetName() << " at " << fTime
                    << (bKeepQuaternions ? " quaternions" : "") << (bResample ? " sampled" : "");
            }
        }
    }
    return nPoses;
}

TEST(FBXAnimations, SamplesArePosedAsTheirCurvesSay)
{
    if (!std::filesystem::exists(QDSG_SAMPLES_DIR "/fbx"))
    {
        GTEST_SKIP() << "no samples";
    }
    int nPoses = 0;
    for (const auto& rEntry : std::filesystem::recursive_directory_iterator(QDSG_SAMPLES_DIR))
    {
        const std::string strFile = rEntry.path().string();
        if (rEntry.path().extension() != ".fbx" || strFile.find("malformed") != std::string::npos)
        {
            continue;
        }
        const auto spManager = FbxManager::Create();
        const auto spImporter = FbxImporter::Create(spManager.get());
        const auto spSettings = FbxIOSettings::Create(spManager.get(), IOSROOT);
        FbxScene* pScene = FbxScene::Create(spManager.get(), strFile);
        if (spImporter->Initialize(strFile, spSettings.get()) && spImporter->Import(pScene))
        {
            nPoses += CheckPoses(strFile, *pScene, false, false) + CheckPoses(strFile, *pScene, false, true) +
                      CheckPoses(strFile, *pScene, true, true);
        }
    }
    EXPECT_GT(nPoses, 10000);
}

} // namespace
