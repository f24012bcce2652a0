// NEST files byte for byte, what is refused, and what a damaged file can do.

#include "qdcommon/CFileStream.h"
#include "support/CTestData.h"
#include "support/NestTestFile.h"

#include <cstring>

using namespace std::string_literals;

namespace
{

constexpr uint64_t NODE_GUID = 0x2B14FFFA087B3E28;
constexpr uint64_t DATA_GUID = 0x71461D30E88B44F3;
constexpr uint64_t TEST_GUID = 0x7200000000000001;
const SGStreamableRegistration<CTestData<1>> s_objTestData(TEST_GUID, 1, 3);

std::string Header(int32_t nVersion = 2) { return "NEST" + I(nVersion); }
// A node with one attachment (ids -1 for none are left out) and children.
std::string NodeRecord(const std::string& rName, const std::vector<int32_t>& rData,
                       const std::vector<int32_t>& rChildren)
{
    std::string strBytes = Bytes(NODE_GUID) + S(rName) + S("") + I(static_cast<int32_t>(rData.size()));
    for (const int32_t nID : rData)
    {
        strBytes += I(nID);
    }
    strBytes += I(static_cast<int32_t>(rChildren.size()));
    for (const int32_t nID : rChildren)
    {
        strBytes += I(nID);
    }
    return strBytes;
}
const std::string NODE_TYPES = I(1) + Bytes(NODE_GUID) + I(1);

} // namespace

TEST(Nest, FileLayout)
{
    const CNodePtr spRoot = CSGNode::Create("root", "r");
    const CNodePtr spA = CSGNode::Create("a", "");
    const CNodePtr spB = CSGNode::Create("b", "");
    ASSERT_TRUE(spRoot->AddChild(spA.get()) && spRoot->AddChild(spB.get()));
    const auto spData = CTestData<1>::Create(7);
    ASSERT_TRUE(spA->AddData(CTestData<2>::Create(1, CSGDCBhvr_Ignore::ms_objInstance).get()));
    ASSERT_TRUE(spA->AddData(spData.get()));
    ASSERT_TRUE(spB->AddData(spData.get()));
    const std::string strExpected = Header() + I(3) + Bytes(NODE_GUID) + I(1) + Bytes(TEST_GUID) + I(3) +
                                    Bytes(DATA_GUID) + I(1) + I(1) + I(0) + I(4) +                      //
                                    Bytes(NODE_GUID) + S("root") + S("r") + I(0) + I(2) + I(1) + I(3) + // 0
                                    NodeRecord("a", {2}, {}) +                                          // 1
                                    Bytes(TEST_GUID) + I(7) +                                           // 2
                                    NodeRecord("b", {2}, {});                                           // 3
    const std::string strSaved = Save(spRoot.get());
    EXPECT_EQ(strSaved, strExpected);

    const auto spSet = LoadSet(strSaved);
    ASSERT_NE(spSet, nullptr);
    const CSGNode* pRoot = spSet->GetFirstNode();
    EXPECT_EQ(Describe(pRoot), "root(a,b)");
    EXPECT_EQ(pRoot->GetChild(0)->FindData<CTestData<1>>(), pRoot->GetChild(1)->FindData<CTestData<1>>())
        << "shared";
    EXPECT_EQ(Save(spSet->GetFirstNode()), strExpected);
}

TEST(Nest, AVacancyIsCountedAndWritesNothing)
{
    const CNodePtr spRoot = MakeNode("root");
    const CNodePtr spA = MakeNode("a", spRoot.get());
    const CNodePtr spB = MakeNode("b", spRoot.get());
    const CNodePtr spC = MakeNode("c", spRoot.get());
    ASSERT_TRUE(spRoot->RemoveChild(spA.get()));
    EXPECT_NE(Save(spRoot.get()).find(S("local root") + I(0) + I(3) + I(1) + I(2) + Bytes(NODE_GUID)),
              std::string::npos);
}

TEST(Nest, AttachmentsKeepTheirOrder)
{
    // The attachment of the second node's first slot comes later in the file than that of its second slot.
    const std::string strTypes =
        I(3) + Bytes(NODE_GUID) + I(1) + Bytes(TEST_GUID) + I(3) + Bytes(DATA_GUID) + I(1);
    const std::string strFile = Header() + strTypes + I(1) + I(0) + I(3) + NodeRecord("root", {1}, {2, -1}) +
                                Bytes(TEST_GUID) + I(5) + NodeRecord("a", {-1, 1}, {});
    const auto spSet = LoadSet(strFile);
    ASSERT_NE(spSet, nullptr);
    EXPECT_EQ(spSet->GetFirstNode()->GetChildrenSize(), 1) << "a child id of -1 leaves the slot vacant";
    EXPECT_EQ(spSet->GetFirstNode()->GetChild(0)->GetDataSet().GetData(1),
              spSet->GetFirstNode()->GetDataSet().GetData(0));
}

TEST(Nest, RefusedFiles)
{
    const std::string strType = Bytes(NODE_GUID) + I(1);
    const struct
    {
        std::string strBytes;
        std::string strLine;
    } arrCases[] = {
        {"", "Did not find expected NEST signature"},
        {"NESP" + I(2), "1 memcmp(buff,\"NEST\",4) == 0 is false"},
        {Header(0), "Unsupported NEST version 0 found in \""},
        {Header(3), "1 (nFileVersion >= 1) && (nFileVersion <= 2) is false"},
        {Header() + I(1) + Bytes(uint64_t(42)) + I(1) + I(0) + I(0), "1 Unknown GUID 42"},
        {Header() + I(2) + strType + strType + I(0) + I(0),
         "1 Call loadState.SetVersionBeingLoaded(pType,nTypeVersion) failed"},
        {Header() + I(2000000000), "1 The type count 2000000000 of \""},
        {Header() + I(0) + I(-1), "1 The top-level object count -1 of \""},
        {Header() + NODE_TYPES + I(0) + I(2000000000) + strType, "1 The object count 2000000000 of \""},
        {Header() + I(0) + I(0), "1 The object count -1 of \""},
        {Header() + I(0) + I(0) + I(1) + NodeRecord("a", {}, {}),
         "1 Encountered Type CSGNode GUID 3104387492514315816 for object ID 0 with no version specified in "
         "header"},
        {Header() + I(0) + I(0) + I(1) + Bytes(uint64_t(42)),
         "1 Unknown GUID 42 encountered for object ID 0"},
        {Header() + I(1) + Bytes(NODE_GUID) + I(2) + I(0) + I(1) + NodeRecord("a", {}, {}),
         "1 Type CSGNode GUID 3104387492514315816 for object ID 0 has unsupported version 2"},
        {Header() + I(1) + Bytes(DATA_GUID) + I(1) + I(0) + I(1) + Bytes(DATA_GUID),
         "1 Failed to create object of Type CSGData GUID 8162243470552679667 for object ID 0 version 1"},
        {Header() + NODE_TYPES + I(0) + I(2) + NodeRecord("a", {}, {1}) + NodeRecord("b", {}, {1}),
         "1 !pChild->HasParent() is false"},
        {Header() + NODE_TYPES + I(0) + I(2) + NodeRecord("a", {}, {1}) + NodeRecord("b", {}, {0}),
         "1 The links of 2 objects run in a circle."},
        {Header() + NODE_TYPES + I(0) + I(1) + NodeRecord("a", {}, {0}),
         "1 The links of 1 objects run in a circle."},
        {Header() + NODE_TYPES + I(0) + I(2) + NodeRecord("a", {1}, {}) + NodeRecord("b", {}, {}),
         "type CSGNode"},
        {Header() + NODE_TYPES + I(0) + I(1) + NodeRecord("a", {}, {7}),
         "1 Call pLoadState->ReadChildID(pStream,this,nChildIndex) failed"},
        {Header() + NODE_TYPES + I(0) + I(1) + Bytes(NODE_GUID) + S("a") + S("") + I(0) + I(1000000),
         "1 pStream->CanRead(nCount, sizeof(int32_t)) is false"},
        {Header() + NODE_TYPES + I(0) + I(2) + NodeRecord("a", {}, {}), "1 !objStream.EndOfFile() is false"},
        {Header() + NODE_TYPES + I(1) + I(1) + I(1) + NodeRecord("a", {}, {}), "1 pStreamable is NULL"},
    };
    for (const auto& [strBytes, strLine] : arrCases)
    {
        ExpectRefused(strBytes, strLine);
    }
}

TEST(Nest, EmptySetsAndOldStrings)
{
    ASSERT_NE(LoadSet(Header() + I(0) + I(0) + I(0)), nullptr);
    const std::string strRecord = Bytes(NODE_GUID) + I(2) + "a\0b\0"s + I(1) + "\xE9\0"s + I(0) + I(0);
    const auto spSet = LoadSet(Header(1) + NODE_TYPES + I(1) + I(0) + I(1) + strRecord);
    ASSERT_NE(spSet, nullptr);
    EXPECT_EQ(spSet->GetFirstNode()->GetGlobalName().GetView(), "ab");
    EXPECT_EQ(spSet->GetFirstNode()->GetLocalName().GetView(), "\u00E9");
}

TEST(Nest, SavingMakesDirectoriesAndSaysWhatItCannotDo)
{
    const CTempFile objFile("file");
    const auto spSet = CSGResourceSet::Create();
    const auto spWriter = CSGNestWriter::Create();
    EXPECT_TRUE(spWriter->SaveResourceSet(objFile.GetName() + ".d/deep/scene.nest", spSet.get()));
    EXPECT_TRUE(std::filesystem::exists(objFile.GetName() + ".d/deep/scene.nest"));
    objFile.WriteBytes("no directory");
    CLogCapture objLog;
    EXPECT_FALSE(spWriter->SaveResourceSet(objFile.GetName() + "/scene.nest", spSet.get()));
    EXPECT_FALSE(spWriter->SaveResourceSet(objFile.GetName() + ".d/deep", spSet.get()));
    EXPECT_FALSE(spWriter->SaveResourceSet("back\\slash.nest", spSet.get()));
    EXPECT_EQ(objLog.GetLines(),
              (std::vector<std::string>{"1 Failed to create file directory " + objFile.GetName(),
                                        "1 Failed to open file \"" + objFile.GetName() + ".d/deep\".",
                                        "1 Failed to get file directory from file back\\slash.nest"}));
    EXPECT_FALSE(CSGNestReader::Create()->LoadFile(objFile.GetName() + ".none"));
    EXPECT_TRUE(objLog.HasLine("1 Failed to open file \"" + objFile.GetName() + ".none\"."));
}

TEST(Nest, DeepTreesInLinearTime)
{
    std::string strFile = Header() + NODE_TYPES + I(1) + I(0) + I(200000);
    for (int32_t n = 0; n < 200000; ++n)
    {
        strFile += n + 1 < 200000 ? NodeRecord("n", {}, {n + 1}) : NodeRecord("n", {}, {});
    }
    const auto spSet = LoadSet(strFile);
    ASSERT_NE(spSet, nullptr);
    EXPECT_EQ(Save(spSet->GetFirstNode()), strFile);
    // The same chain from the bottom up: every child is there before its parent.
    strFile = Header() + NODE_TYPES + I(1) + I(199999) + I(200000) + NodeRecord("n", {}, {});
    for (int32_t n = 1; n < 200000; ++n)
    {
        strFile += NodeRecord("n", {}, {n - 1});
    }
    EXPECT_NE(LoadSet(strFile), nullptr);
}
