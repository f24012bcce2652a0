// Structure, attachments, copying and the end of nodes.

#include "qdscenegraph/node/CSGNode.h"

#include "qdscenegraph/node/CSGCopyData.h"
#include "qdscenegraph/node/CSGData_RenderState.h"
#include "support/CLogCapture.h"
#include "support/CTestData.h"

#include <gtest/gtest.h>

#include <limits>

TEST(Node, ChildSlots)
{
    CLogCapture objLog;
    const CNodePtr spRoot = MakeNode("root");
    const CNodePtr spA = MakeNode("a", spRoot.get());
    EXPECT_EQ(spA->GetIndexInParent(), 0);
    const CNodePtr spB = MakeNode("b", spRoot.get());
    const CNodePtr spC = MakeNode("c", spRoot.get());
    EXPECT_EQ(spRoot->GetChild(0), spA.get());
    EXPECT_EQ(spB->GetIndexInParent(), 1);

    EXPECT_FALSE(spB->AddChild(spC.get()));
    EXPECT_FALSE(spRoot->AddChild(nullptr));
    EXPECT_FALSE(spB->AddChild(spRoot.get())) << "an ancestor";
    EXPECT_FALSE(spRoot->AddChild(spRoot.get()));
    ASSERT_EQ(objLog.GetLines().size(), 4u);
    EXPECT_EQ(objLog.GetLines()[0], "1 !pChild->HasParent() is false");
    EXPECT_EQ(objLog.GetLines()[1], "1 Handed in NULL pChild");
    EXPECT_EQ(Describe(spRoot.get()), "root(a,b,c)");

    ASSERT_TRUE(spRoot->RemoveChild(spA.get()));
    EXPECT_FALSE(spA->HasParent());
    EXPECT_EQ(spRoot->GetChildCount(), 2);
    EXPECT_EQ(spRoot->GetChildrenSize(), 3);
    EXPECT_EQ(spRoot->GetChild(0), nullptr);
    EXPECT_EQ(spRoot->GetNextInTree(spRoot.get()), spB.get());
    objLog.Clear();
    EXPECT_FALSE(spRoot->RemoveChild(spA.get()));
    EXPECT_EQ(objLog.GetLines()[0].find("1 Node wasn't a child of this node.  Node: 0x"), 0u);
    const CNodePtr spD = MakeNode("d", spRoot.get());
    EXPECT_EQ(spD->GetIndexInParent(), 0) << "the oldest vacancy";
    EXPECT_TRUE(spRoot->RemoveAllChildren());
    EXPECT_EQ(spRoot->GetChildrenSize(), 0);
}

TEST(Node, DocumentOrderAndSearch)
{
    const CNodePtr spRoot = MakeNode("root");
    const CNodePtr spA = MakeNode("a", spRoot.get());
    const CNodePtr spB = MakeNode("b", spA.get());
    const CNodePtr spC = MakeNode("c", spB.get());
    const CNodePtr spD = MakeNode("d", spRoot.get());
    const CNodePtr spOutside = MakeNode("outside");
    ASSERT_TRUE(spOutside->AddChild(spRoot.get()));
    ASSERT_NE(MakeNode("after", spOutside.get()), nullptr);
    std::string strOrder;
    for (const CSGNode* p = spRoot.get(); p != nullptr; p = p->GetNextInTree(spRoot.get()))
    {
        strOrder += p->GetGlobalName().c_str();
    }
    EXPECT_EQ(strOrder, "rootabcd");
    EXPECT_EQ(spA->GetNextBeyondTree(spRoot.get()), spD.get());
    EXPECT_EQ(spD->GetNextInTree(spRoot.get()), nullptr);
    EXPECT_TRUE(spC->IsAncestor(spRoot.get()));
    EXPECT_TRUE(spRoot->IsDescendant(spC.get()));
    EXPECT_FALSE(spD->IsAncestor(spA.get()));

    const CSGDataTypeInfo* pKind = &CTestData<0>::ms_objDataTypeInfo;
    EXPECT_EQ(spRoot->FindDescendantWithData(pKind), nullptr);
    for (CSGNode* p : {spD.get(), spRoot.get(), spC.get()})
    {
        ASSERT_TRUE(p->AddData(CTestData<0>::Create(1).get()));
        ASSERT_TRUE(p->AddData(CTestData<0>::Create(2).get()));
    }
    EXPECT_EQ(spRoot->FindDescendantWithData(pKind), spC.get()) << "document order, not this node itself";
    EXPECT_TRUE(spRoot->RemoveDataFromAllDescendants(pKind));
    EXPECT_EQ(spRoot->FindDescendantWithData(pKind), nullptr);
    EXPECT_NE(spRoot->FindData<CTestData<0>>(), nullptr);
}

TEST(Node, AFailingAttachmentIsReportedWithItsCall)
{
    CLogCapture objLog;
    const CNodePtr spRoot = MakeNode("root");
    const auto spData = CTestData<1>::Create(0);
    ASSERT_TRUE(spRoot->AddData(spData.get()));
    EXPECT_FALSE(spRoot->AddData(CTestData<1>::Create(1).get())) << "a kind that is there once";
    EXPECT_TRUE(objLog.Contains("1 Already had data of type 0x"));
    EXPECT_TRUE(objLog.HasLine("1 Call m_objDataSet.AddData(pData) failed"));
    spData->m_bRefuseChildren = true;
    EXPECT_EQ(MakeNode("a", spRoot.get()), nullptr);
    EXPECT_TRUE(objLog.HasLine("1 Call pData->NotifyChildAddedToNode(pNode, pAddedChild) failed"));
    EXPECT_TRUE(objLog.HasLine("1 Call m_objDataSet.NotifyChildAddedToNode(this, pChild) failed"));
}

TEST(DataSet, GrowsTo32AndShrinksTo4)
{
    CLogCapture objLog;
    CSGDataSet objSet;
    std::vector<boost::intrusive_ptr<CTestData<0>>> vecData;
    std::vector<uint32_t> vecSizes;
    for (int n = 0; n < 32; ++n)
    {
        vecData.push_back(CTestData<0>::Create(n));
        ASSERT_TRUE(objSet.AddData(vecData.back().get()));
        if (vecSizes.empty() || vecSizes.back() != objSet.GetArraySize())
        {
            vecSizes.push_back(objSet.GetArraySize());
        }
    }
    EXPECT_EQ(vecSizes, (std::vector<uint32_t>{1, 4, 8, 16, 32}));
    EXPECT_FALSE(objSet.AddData(CTestData<0>::Create(32).get()));
    EXPECT_TRUE(objLog.HasLine("1 Can't upgrade data set array of capacity 32 and state 0x80000000"));
    EXPECT_FALSE(objSet.ChangeArrayState(0x20000001));
    EXPECT_TRUE(
        objLog.HasLine("1 0x20000001 is an invalid array state.  It has bits outside of mask 0xE0000000"));
    for (int n = 0; n < 31; ++n)
    {
        ASSERT_TRUE(objSet.RemoveData(vecData[static_cast<size_t>(n)].get()));
        ASSERT_TRUE(objSet.HasData(&CTestData<0>::ms_objDataTypeInfo));
    }
    EXPECT_EQ(objSet.GetState() & CSGDataSet::ARRAY_STATE_MASK, CSGDataSet::ARRAY_STATE_1);
    EXPECT_EQ(objSet.FindData(&CTestData<0>::ms_objDataTypeInfo), vecData[31].get());
    EXPECT_FALSE(objSet.RemoveData(vecData[0].get()));
    EXPECT_TRUE(objLog.Contains("1 Couldn't find data 0x"));
    ASSERT_TRUE(objSet.RemoveData(vecData[31].get()));
    EXPECT_TRUE(objSet.IsEmpty());
}

TEST(Node, CopyFollowsTheBehaviours)
{
    const CNodePtr spRoot = MakeNode("root");
    const CNodePtr spA = MakeNode("a", spRoot.get());
    const CNodePtr spB = MakeNode("b", spA.get());
    const CNodePtr spC = MakeNode("c", spRoot.get());
    ASSERT_TRUE(spA->SetVisible(false));
    ASSERT_TRUE(spA->AddData(CTestData<1>::Create(1).get()));
    ASSERT_TRUE(spA->AddData(CTestData<2>::Create(2, CSGDCBhvr_Share::ms_objInstance).get()));
    ASSERT_TRUE(spA->AddData(CTestData<3>::Create(3, CSGDCBhvr_Ignore::ms_objInstance).get()));

    CSGCopyData objCopyData;
    objCopyData.Ignore(spC.get());
    const CNodePtr spCopy = spRoot->Copy(&objCopyData);
    ASSERT_NE(spCopy, nullptr);
    EXPECT_EQ(Describe(spCopy.get()), "root(a(b))");
    EXPECT_EQ(objCopyData.FindCopy(spB.get())->GetLocalName(), spB->GetLocalName());
    const CSGNode* pCopyOfA = spCopy->GetChild(0);
    EXPECT_FALSE(pCopyOfA->IsVisible());
    EXPECT_NE(pCopyOfA->FindData<CTestData<1>>(), spA->FindData<CTestData<1>>());
    EXPECT_EQ(pCopyOfA->FindData<CTestData<1>>()->m_nValue, 1);
    EXPECT_EQ(pCopyOfA->FindData<CTestData<2>>(), spA->FindData<CTestData<2>>());
    EXPECT_EQ(pCopyOfA->FindData<CTestData<3>>(), nullptr);

    CSGCopyData objUpward;
    const CNodePtr spLeaf = spB->Copy(&objUpward);
    EXPECT_EQ(Describe(spB->CopyAncestors(&objUpward).get()), "root(a(b))") << "ancestors only, no siblings";
}

TEST(Node, VisibilityIsKeptInTheRenderState)
{
    const CNodePtr spNode = MakeNode("a");
    ASSERT_TRUE(spNode->SetVisible(true));
    EXPECT_EQ(spNode->FindData<CSGData_RenderState>(), nullptr) << "nothing to keep";
    ASSERT_TRUE(spNode->SetVisible(false));
    EXPECT_TRUE(spNode->FindData<CSGData_RenderState>()->HasFlag(CSGData_RenderState::FLAG_INVISIBLE));
    spNode->FindData<CSGData_RenderState>()->SetFlag(CSGData_RenderState::FLAG_DOUBLE_SIDED, true);
    ASSERT_TRUE(spNode->SetVisible(true));
    EXPECT_TRUE(spNode->FindData<CSGData_RenderState>()->HasFlag(CSGData_RenderState::FLAG_DOUBLE_SIDED));
}

TEST(Node, DeepTreesAreCopiedAndFreedWithoutRecursion)
{
    const int64_t nBlocks = CSGMem::GetPool().GetNumLiveBlocks();
    {
        const CNodePtr spRoot = MakeNode("root");
        CSGNode* pDeepest = spRoot.get();
        for (int n = 0; n < 300000; ++n)
        {
            pDeepest = MakeNode("n", pDeepest).get();
        }
        const CNodePtr spKept = pDeepest;
        CNodePtr spCopy = spRoot->Copy();
        ASSERT_NE(spCopy, nullptr);
        spCopy.reset();
        EXPECT_TRUE(spKept->HasParent());
    }
    EXPECT_EQ(CSGMem::GetPool().GetNumLiveBlocks(), nBlocks);
}

TEST(Node, GeomStatsOfSharedGeometryStopAtTheLargestCount)
{
    CSGGeomStats objStats;
    objStats.m_nTriangles = std::numeric_limits<int>::max() - 1;
    CSGGeomStats objTotals = objStats;
    objTotals += objStats;
    EXPECT_EQ(objTotals.m_nTriangles, std::numeric_limits<int>::max());
}

TEST(Node, DebugOutput)
{
    const CNodePtr spRoot = MakeNode("root");
    const CNodePtr spA = MakeNode("a", spRoot.get());
    CLogCapture objLog;
    spRoot->OutputDebugGraph(">");
    spRoot->OutputGeomStats("");
    spRoot->OutputDebugInfo("");
    const std::vector<std::string>& rLines = objLog.GetLines();
    ASSERT_EQ(rLines.size(), 10u);
    EXPECT_EQ(rLines[1], "7 >  Node 'a'/'local a'");
    EXPECT_EQ(rLines[2], "7 Geometry stats for tree rooted at: root");
    EXPECT_EQ(rLines[4], "7       a" + std::string(61, ' ') +
                             " | vb=000 | vtx=00000 | geoms=000 | tris=00000 | lines=00000");
    EXPECT_EQ(rLines[6].find("Totals | vb=000"), 64u);
    EXPECT_EQ(rLines[7], "7 0 VertexFormat(s):");
    EXPECT_EQ(rLines[8].find("7 CSGNode: 0x"), 0u);
    EXPECT_NE(rLines[8].find(" Global Name: 'root' - Local Name: 'local root'"), std::string::npos);
}
