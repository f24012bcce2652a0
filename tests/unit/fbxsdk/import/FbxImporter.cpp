// What the importer tells about files, and which it refuses.
#include "fbxsdk/fbxsdk.h"
#include "support/CTempFile.h"
#include "support/FBXTestScene.h"

#include <gtest/gtest.h>

namespace
{

// An ASCII file of the version, imported; the header's lines go into its FBXHeaderExtension.
class CImport
{
  public:
    CImport(int nVersion, const std::string& rHeader, const std::string& rText)
        : m_objFile("file.fbx", "; FBX project file\nFBXHeaderExtension:  {\n FBXVersion: " +
                                    std::to_string(nVersion) + "\n" + rHeader + "}\n" + rText)
    {
        m_bInitialized = m_spImporter->Initialize(m_objFile.GetName(), m_spSettings.get());
    }

    std::unique_ptr<FbxManager> m_spManager = FbxManager::Create();
    FbxScene* m_pScene = FbxScene::Create(m_spManager.get(), "scene");
    std::unique_ptr<FbxIOSettings> m_spSettings = FbxIOSettings::Create(m_spManager.get(), IOSROOT);
    std::unique_ptr<FbxImporter> m_spImporter = FbxImporter::Create(m_spManager.get());
    CTempFile m_objFile;
    bool m_bInitialized;
};

const std::string STACK = R"(Documents: { Document: 5, "", "Scene" { Properties70: {
        P: "ActiveAnimStackName", "KString", "", "", "Run" } } }
    Objects: { AnimationStack: 1, "AnimStack::Walk", "" { }
        AnimationStack: 2, "AnimStack::Run", "" { Properties70: {
            P: "Description", "KString", "", "", "fast"
            P: "LocalStart", "KTime", "Time", "",141120000
            P: "LocalStop", "KTime", "Time", "",46186158000 } } }
)";

TEST(FbxImporter, TakesAndVersion)
{
    CImport objImport(7530, "", STACK);
    FbxImporter& rImporter = *objImport.m_spImporter;
    ASSERT_TRUE(objImport.m_bInitialized) << rImporter.GetErrorString();
    int arrVersion[3];
    rImporter.GetFileVersion(arrVersion[0], arrVersion[1], arrVersion[2]);
    EXPECT_EQ(arrVersion[0], 7);
    EXPECT_EQ(arrVersion[1], 5);
    EXPECT_EQ(arrVersion[2], 3);
    ASSERT_EQ(rImporter.GetAnimStackCount(), 2);
    EXPECT_EQ(rImporter.GetActiveAnimStackName(), "Run");
    EXPECT_EQ(rImporter.GetTakeInfo(0).m_strImportName, "Walk");
    EXPECT_TRUE(rImporter.GetTakeInfo(0).m_objLocalTimeSpan.IsEmpty());
    EXPECT_EQ(rImporter.GetTakeInfo(1).m_strDescription, "fast");
    EXPECT_TRUE(rImporter.Import(objImport.m_pScene));
    EXPECT_FALSE(rImporter.Import(objImport.m_pScene)) << "once";
}

TEST(FbxImporter, TicksOfTheFile)
{
    // The definition counts in headers that know it; then a second has 141120000 ticks, but for number 127.
    const struct
    {
        const char* m_szHeader;
        double m_dStart;
        double m_dStop;
    } CASES[] = {
        {"FBXHeaderVersion: 1003\nOtherFlags: { TCDefinition: 64\n}\n", 141120000.0 / 46186158000.0, 1},
        {"FBXHeaderVersion: 1004\nOtherFlags: { TCDefinition: 127\n}\n", 141120000.0 / 46186158000.0, 1},
        {"FBXHeaderVersion: 1004\n", 141120000.0 / 46186158000.0, 1},
        {"FBXHeaderVersion: 1004\nOtherFlags: { TCDefinition: 64\n}\n", 1, 46186158000.0 / 141120000.0},
    };
    for (const auto& rCase : CASES)
    {
        SCOPED_TRACE(rCase.m_szHeader);
        CImport objImport(7700, rCase.m_szHeader, STACK);
        ASSERT_EQ(objImport.m_spImporter->GetAnimStackCount(), 2);
        const FbxTimeSpan& rSpan = objImport.m_spImporter->GetTakeInfo(1).m_objLocalTimeSpan;
        EXPECT_NEAR(rSpan.m_objStart.GetSecondDouble(), rCase.m_dStart, 1e-10);
        EXPECT_NEAR(rSpan.m_objStop.GetSecondDouble(), rCase.m_dStop, 1e-10);
    }
}

TEST(FbxImporter, RefusedFiles)
{
    CImport objImport(7400, "EncryptionType: 1\n", STACK);
    EXPECT_TRUE(objImport.m_bInitialized);
    EXPECT_TRUE(objImport.m_spImporter->IsPasswordProtected());
    EXPECT_FALSE(objImport.m_spImporter->Import(objImport.m_pScene));

    objImport.m_objFile.Remove();
    EXPECT_FALSE(
        objImport.m_spImporter->Initialize(objImport.m_objFile.GetName(), objImport.m_spSettings.get()));
    EXPECT_FALSE(objImport.m_spImporter->GetErrorString().empty());
    EXPECT_FALSE(objImport.m_spImporter->IsPasswordProtected()) << "nothing is left of the file before";
    EXPECT_EQ(objImport.m_spImporter->GetAnimStackCount(), 0);
}

} // namespace
