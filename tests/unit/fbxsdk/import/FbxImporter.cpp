// What the importer tells about files, and which it refuses.
#include "fbxsdk/fbxsdk.h"
#include "support/CTempFile.h"
#include "support/FBXTestText.h"

#include <gtest/gtest.h>

namespace
{

const std::string STACKS = R"(Documents: { Document: 5, "", "Scene" { Properties70: {
        P: "ActiveAnimStackName", "KString", "", "", "Run" } } }
    Objects: { AnimationStack: 1, "AnimStack::Walk", "" { }
        AnimationStack: 2, "AnimStack::Run", "" { Properties70: {
            P: "Description", "KString", "", "", "fast"
            P: "LocalStart", "KTime", "Time", "",141120000
            P: "LocalStop", "KTime", "Time", "",46186158000 } } }
)";

// An ASCII file of the version with two stacks, initialized; the header's lines go into its
// FBXHeaderExtension.
class CImport
{
  public:
    CImport(int nVersion, const std::string& rHeader)
        : m_objFile("file.fbx", FBXHeader(nVersion, rHeader) + STACKS)
    {
        EXPECT_TRUE(m_spImporter->Initialize(m_objFile.GetName(), m_spSettings.get()));
    }

    FbxImporter* operator->() const { return m_spImporter.get(); }

    std::unique_ptr<FbxManager> m_spManager = FbxManager::Create();
    FbxScene* m_pScene = FbxScene::Create(m_spManager.get(), "scene");
    std::unique_ptr<FbxIOSettings> m_spSettings = FbxIOSettings::Create(m_spManager.get(), IOSROOT);
    std::unique_ptr<FbxImporter> m_spImporter = FbxImporter::Create(m_spManager.get());
    CTempFile m_objFile;
};

TEST(FbxImporter, TakesAndVersion)
{
    const CImport objImport(7530, "");
    int arrVersion[3];
    objImport->GetFileVersion(arrVersion[0], arrVersion[1], arrVersion[2]);
    EXPECT_EQ(arrVersion[0], 7);
    EXPECT_EQ(arrVersion[1], 5);
    EXPECT_EQ(arrVersion[2], 3);
    ASSERT_EQ(objImport->GetAnimStackCount(), 2);
    EXPECT_EQ(objImport->GetActiveAnimStackName(), "Run");
    EXPECT_EQ(objImport->GetTakeInfo(0).m_strImportName, "Walk");
    EXPECT_TRUE(objImport->GetTakeInfo(0).m_objLocalTimeSpan.IsEmpty());
    EXPECT_EQ(objImport->GetTakeInfo(1).m_strDescription, "fast");
    EXPECT_TRUE(objImport->Import(objImport.m_pScene));
    EXPECT_FALSE(objImport->Import(objImport.m_pScene)) << "once";
}

TEST(FbxImporter, TicksOfTheFile)
{
    // The definition counts in headers that know it; then a second has 141120000 ticks, but for number 127.
    const struct
    {
        const char* m_szHeader;
        double m_dTicksPerSecond;
    } CASES[] = {
        {"FBXHeaderVersion: 1003\nOtherFlags: { TCDefinition: 64\n}\n", 46186158000},
        {"FBXHeaderVersion: 1004\nOtherFlags: { TCDefinition: 127\n}\n", 46186158000},
        {"FBXHeaderVersion: 1004\n", 46186158000},
        {"FBXHeaderVersion: 1004\nOtherFlags: { TCDefinition: 64\n}\n", 141120000},
    };
    for (const auto& [szHeader, dTicksPerSecond] : CASES)
    {
        SCOPED_TRACE(szHeader);
        const CImport objImport(7700, szHeader);
        ASSERT_EQ(objImport->GetAnimStackCount(), 2);
        const FbxTimeSpan& rSpan = objImport->GetTakeInfo(1).m_objLocalTimeSpan;
        EXPECT_NEAR(rSpan.m_objStart.GetSecondDouble(), 141120000 / dTicksPerSecond, 1e-10);
        EXPECT_NEAR(rSpan.m_objStop.GetSecondDouble(), 46186158000 / dTicksPerSecond, 1e-10);
    }
}

TEST(FbxImporter, RefusedFiles)
{
    const CImport objImport(7400, "EncryptionType: 1\n");
    EXPECT_TRUE(objImport->IsPasswordProtected());
    EXPECT_FALSE(objImport->Import(objImport.m_pScene));

    objImport.m_objFile.Remove();
    EXPECT_FALSE(objImport->Initialize(objImport.m_objFile.GetName(), objImport.m_spSettings.get()));
    EXPECT_EQ(objImport->GetErrorString(), objImport.m_objFile.GetName() + ": No such file or directory");
    EXPECT_FALSE(objImport->IsPasswordProtected()) << "nothing is left of the file before";
    EXPECT_EQ(objImport->GetAnimStackCount(), 0);
}

} // namespace
