// Files: which are taken, and what is said of those that are not.
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include "qdsgloader_collada/CColladaTestScene.h"

#include <gtest/gtest.h>

namespace
{

boost::intrusive_ptr<CSGLoaderCollada> MakeLoader()
{
    CQDSGLoaderColladaLib::InitLibrary();
    return CSGLoaderCollada::Create(CSGTextureLoader::CreateStandardLoader());
}

} // namespace

TEST(ColladaLoader, Extensions)
{
    const auto spLoader = MakeLoader();
    CLogCapture objLog;
    for (const auto& [szName, bCanLoad] : {std::pair("a.dae", true),
                                           {"dir.x/a.anim", true},
                                           {"a.DAE", false},
                                           {"a.obj", false},
                                           {"dae", false},
                                           {"x.dae/a", false},
                                           {"a.dae ", false}})
    {
        EXPECT_EQ(spLoader->CanLoadFile(szName), bCanLoad) << szName;
        objLog.Clear();
        EXPECT_FALSE(spLoader->LoadFile(szName)) << "no such file";
        EXPECT_EQ(objLog.HasLine(std::string("1 Unrecognized extension for file '") + szName + "'"),
                  !bCanLoad)
            << szName;
    }
}

TEST(ColladaLoader, FilesThatDoNotLoad)
{
    const auto spLoader = MakeLoader();
    const CTempFile objGood("good.dae", DaeTestDocument(TestScene("<node id=\"a\"/>")));
    const CTempFile objFile("bad.dae");
    const std::string strName = objFile.GetName();
    struct CCase
    {
        const char* szContent; // null: the file is not there
        bool bWellFormed;
        const char* szReason; // in some line
    };
    const CCase arrCases[] = {
        {nullptr, true, "Got load error: -100 Failed to open file "},
        {"<COLLADA><asset></COLLADA>", false, "bad.dae(1:18) - 7 - mismatched tag"},
        {"", false, " - 3 - no element found"},
        {"<html/>", true, "html"},
        {"\x1f\x8b\x08", true, "compressed with gzip"},
    };
    for (const CCase& rCase : arrCases)
    {
        if (rCase.szContent != nullptr)
        {
            objFile.WriteBytes(rCase.szContent);
        }
        ASSERT_TRUE(spLoader->LoadFile(objGood.GetName()));
        CLogCapture objLog;
        EXPECT_FALSE(spLoader->LoadFile(strName));
        EXPECT_TRUE(objLog.Contains(rCase.szReason)) << rCase.szReason;
        EXPECT_EQ(objLog.HasLine("1 Collada file \"" + strName + "\" is not well formed"), !rCase.bWellFormed)
            << rCase.szReason;
        EXPECT_EQ(objLog.Contains("1 Failed to load \"bad.dae\" on URI path \"file:/"), rCase.bWellFormed)
            << rCase.szReason;
        EXPECT_EQ(objLog.GetLines().back(), "1 Assert 'LoadDAEFile(rStrFilename)' failed");
        // What was loaded before is gone.
        objLog.Clear();
        EXPECT_FALSE(spLoader->LoadSceneGraph());
        EXPECT_EQ(spLoader->LoadUpAxis(), UP_AXIS_Z);
        std::vector<CSGAnimation*> vecAnimations;
        EXPECT_FALSE(spLoader->LoadAnimations(vecAnimations));
        EXPECT_FALSE(spLoader->LoadDefaultAnimation());
        EXPECT_FALSE(spLoader->LoadAnimation("walk"));
        EXPECT_EQ(objLog.GetLines(),
                  (std::vector<std::string>{"1 Tried to load scene graph when no file was loaded.",
                                            "1 Tried to load up axis when no file was loaded.",
                                            "1 Tried to load animatinos when no file was loaded.",
                                            "1 Tried to load animation when no file was loaded.",
                                            "1 Tried to load animation when no file was loaded."}));
    }
    EXPECT_TRUE(spLoader->LoadFile(objGood.GetName()));
    EXPECT_TRUE(spLoader->LoadSceneGraph());
}

TEST(ColladaLoader, UpAxis)
{
    struct CCase
    {
        const char* szAsset;
        EUpAxis eUpAxis;
        const char* szLine;
    };
    const CCase arrCases[] = {
        {"<asset><up_axis>X_UP</up_axis></asset>", UP_AXIS_X, nullptr},
        {"<asset><up_axis>Y_UP</up_axis></asset>", UP_AXIS_Y, nullptr},
        {"<asset><up_axis>Z_UP</up_axis></asset>", UP_AXIS_Z, nullptr},
        {"<asset/>", UP_AXIS_Z, "4 <asset> had NUL <up_axis> in <COLLADA>."},
        {"<asset><up_axis>W_UP</up_axis></asset>", UP_AXIS_Z,
         "4 Unknown <up_axis> value 3.  Defaulting to Z axis in <asset> in <COLLADA>"},
        {"<asset><up_axis/></asset>", UP_AXIS_Z,
         "4 Unknown <up_axis> value 3.  Defaulting to Z axis in <asset> in <COLLADA>"},
        {"", UP_AXIS_Z, "4 <COLLADA> element had no <asset>.  Defaulting to Z axis."},
    };
    for (const CCase& rCase : arrCases)
    {
        const CColladaTestScene objScene(rCase.szAsset);
        CLogCapture objLog;
        EXPECT_EQ(objScene.m_spLoader->LoadUpAxis(), rCase.eUpAxis) << rCase.szAsset;
        EXPECT_EQ(objLog.GetLines(), rCase.szLine != nullptr ? std::vector<std::string>{rCase.szLine}
                                                             : std::vector<std::string>{});
    }
}

TEST(ColladaLoader, ResourceSet)
{
    const CColladaTestScene objScene("<asset><up_axis>Y_UP</up_axis></asset>" +
                                     TestScene("<node id=\"a\"/>"));
    const auto spSet = objScene.m_spLoader->LoadResourceSet();
    ASSERT_TRUE(spSet);
    EXPECT_EQ(spSet->GetUpAxis(), UP_AXIS_Y);
    EXPECT_EQ(spSet->GetNumTopLevelNodes(), 1);
    EXPECT_EQ(spSet->GetFirstNode()->GetGlobalName(), "scene");
}
