// The records of transforms byte for byte, and what damaged ones can do.

#include "qdscenegraph/nest/CSGNestReader.h"
#include "qdscenegraph/nest/CSGNestWriter.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGData_WorldTransform.h"
#include "qdscenegraph/transform/CSGXFrm_List.h"
#include "qdscenegraph/transform/CSGXFrm_LookAt.h"
#include "qdscenegraph/transform/CSGXFrm_Pair.h"
#include "qdscenegraph/transform/CSGXFrm_Rotate.h"
#include "qdscenegraph/transform/CSGXFrm_Scale.h"
#include "qdscenegraph/transform/CSGXFrm_Transform3.h"
#include "qdscenegraph/transform/CSGXFrm_Translate.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"

#include <gtest/gtest.h>

namespace
{

using CTransformPtr = CSGTransform::CTransformPtr;

template <class T>
std::string Bytes(T value)
{
    return {reinterpret_cast<const char*>(&value), sizeof(value)};
}
std::string I(int32_t nValue) { return Bytes(nValue); }
std::string S(const std::string& rText) { return I(static_cast<int32_t>(rText.size())) + rText; }
std::string F(std::initializer_list<float> arrValues)
{
    std::string strBytes;
    for (const float fValue : arrValues)
    {
        strBytes += Bytes(fValue);
    }
    return strBytes;
}
template <class T>
std::string G()
{
    uint64_t uiGUID = 0;
    EXPECT_TRUE(T::GetStaticSGStreamableType()->GetGUID(uiGUID));
    return Bytes(uiGUID);
}

std::string Save(CSGNode* pRoot)
{
    const CTempFile objFile("saved.nest");
    const auto spSet = CSGResourceSet::Create();
    spSet->AddTopLevelNode(pRoot);
    return CSGNestWriter::Create()->SaveResourceSet(objFile.GetName(), spSet.get()) ? objFile.ReadBytes()
                                                                                    : "";
}

boost::intrusive_ptr<CSGResourceSet> Load(const std::string& rBytes)
{
    const CTempFile objFile("loaded.nest", rBytes);
    const auto spReader = CSGNestReader::Create();
    return spReader->LoadFile(objFile.GetName()) ? spReader->m_spResourceSet : nullptr;
}

// A file with a node (object 0) whose local transform (1) links to object 2, the first of those given.
std::string MakeFile(const std::vector<std::string>& rRecords)
{
    std::string strBytes = "NEST" + I(2) + I(5);
    for (const std::string& rGUID : {G<CSGNode>(), G<CSGData_LocalTransform>(), G<CSGXFrm_List>(),
                                     G<CSGXFrm_Pair>(), G<CSGXFrm_Translate>()})
    {
        strBytes += rGUID + I(1);
    }
    strBytes += I(1) + I(0) + I(2 + static_cast<int32_t>(rRecords.size()));
    strBytes += G<CSGNode>() + S("") + S("") + I(1) + I(1) + I(0) + G<CSGData_LocalTransform>() + I(2);
    for (const std::string& rRecord : rRecords)
    {
        strBytes += rRecord;
    }
    return strBytes;
}

std::string List(std::initializer_list<int32_t> arrIDs)
{
    std::string strBytes = G<CSGXFrm_List>() + S("") + I(static_cast<int32_t>(arrIDs.size()));
    for (const int32_t nID : arrIDs)
    {
        strBytes += I(nID);
    }
    return strBytes;
}

std::string Pair(int32_t nFirst, int32_t nSecond)
{
    return G<CSGXFrm_Pair>() + S("") + I(nFirst) + I(nSecond);
}

const CTransform3& GetWorld(CSGNode* pNode)
{
    return CSGData_WorldTransform::GetOrCreateFromNode(pNode)->GetTransform();
}

} // namespace

TEST(TransformRecords, ByteForByte)
{
    const auto spMove = CSGXFrm_Translate::Create({1, 2, 3});
    spMove->SetName("move");
    const std::string strMove = G<CSGXFrm_Translate>() + S("move") + F({1, 2, 3});
    const auto spTurn = CSGXFrm_Rotate::Create({0, 0, 2}, 0.5f);
    const std::string strTurn = G<CSGXFrm_Rotate>() + S("") + F({0, 0, 2, 0.5f});
    const struct
    {
        CTransformPtr spTransform;
        std::string strRecords; // from object 2 on
    } arrCases[] = {
        {spMove, strMove},
        {spTurn, strTurn},
        {CSGXFrm_Scale::Create({2, 3, 4}), G<CSGXFrm_Scale>() + S("") + F({2, 3, 4})},
        {CSGXFrm_Transform3::Create({CMatrix3{{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}, {10, 11, 12}}),
         G<CSGXFrm_Transform3>() + S("") + F({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12})},
        {CSGXFrm_LookAt::Create({1, 2, 3}, {4, 5, 6}, {7, 8, 9}),
         G<CSGXFrm_LookAt>() + S("") + F({1, 2, 3, 4, 5, 6, 7, 8, 9})},
        {CSGXFrm_Pair::Create(spTurn, spMove), Pair(3, 4) + strTurn + strMove},
        {CSGXFrm_List::Create(), List({})},
        // The pair is saved once and linked to twice, and what it shares with the list likewise.
        {CSGXFrm_List::Create(
             std::vector<CTransformPtr>{spMove, CSGXFrm_Pair::Create(spMove, spTurn), spMove}),
         List({3, 4, 3}) + strMove + Pair(3, 5) + strTurn},
    };
    for (const auto& r : arrCases)
    {
        SCOPED_TRACE(r.spTransform->GetTypeInfo()->GetName());
        const auto spNode = CSGNode::Create("", "");
        ASSERT_TRUE(spNode->AddData(CSGData_LocalTransform::Create(r.spTransform).get()));
        GetWorld(spNode.get()); // it is not saved
        const std::string strSaved = Save(spNode.get());
        const std::string strExpected = G<CSGNode>() + S("") + S("") + I(1) + I(1) + I(0) +
                                        G<CSGData_LocalTransform>() + I(2) + r.strRecords;
        EXPECT_TRUE(strSaved.ends_with(strExpected));
        const auto spLoaded = Load(strSaved);
        ASSERT_NE(spLoaded, nullptr);
        EXPECT_EQ(GetWorld(spLoaded->GetFirstNode()), r.spTransform->GetTransform());
        EXPECT_EQ(Save(spLoaded->GetFirstNode()), strSaved);
        const auto spCopy = spLoaded->GetFirstNode()->Copy();
        EXPECT_EQ(Save(spCopy.get()), strSaved);
    }
}

TEST(TransformRecords, DamagedOnesAreRefused)
{
    const std::string strMove = G<CSGXFrm_Translate>() + S("") + F({1, 2, 3});
    std::vector<std::string> vecNested;
    for (int32_t n = 0; n < 300; ++n)
    {
        vecNested.push_back(List({n + 3}));
    }
    vecNested.push_back(strMove);
    const struct
    {
        std::string strBytes;
        std::string strLine;
    } arrCases[] = {
        {MakeFile({List({2})}), "run in a circle"},
        {MakeFile({List({3, 4}), Pair(2, 4), strMove}), "run in a circle"},
        {MakeFile({List({4}), strMove, Pair(3, 5), List({4, 2, 3})}), "run in a circle"},
        {MakeFile(vecNested), "is nested more than"},
        {MakeFile({List({3, -1}), strMove}), "pTransform is NULL"},
        {MakeFile({Pair(-1, 3), strMove}), "pTransform is NULL"},
        {MakeFile({List({0})}), "Unexpected (CSGStreamable*)0x"},
        {MakeFile({Pair(1, 1)}), "Unexpected (CSGStreamable*)0x"},
        {MakeFile({List({3})}), "(nID >= 0) && (nID < GetNumObjects()) is false"},
        {MakeFile({G<CSGXFrm_List>() + S("") + I(2000000000) + I(2)}),
         "pStream->CanRead(nCount, sizeof(int32_t)) is false"},
        {MakeFile({G<CSGXFrm_List>() + S("") + I(-1) + I(2)}),
         "pStream->CanRead(nCount, sizeof(int32_t)) is false"},
        {MakeFile({G<CSGXFrm_List>() + S("")}), "pStream->CanRead(1, sizeof(int32_t)) is false"},
        {MakeFile({strMove.substr(0, strMove.size() - 1)}), "pStream->CanRead(1, sizeof(T)) is false"},
        {MakeFile({G<CSGNode>() + S("") + S("") + I(1) + I(1) + I(0)}), "m_pNode == 0 is false"},
    };
    const int64_t nLive = CSGMem::GetPool().GetNumLiveBlocks();
    for (const auto& r : arrCases)
    {
        CLogCapture objLog;
        EXPECT_EQ(Load(r.strBytes), nullptr) << r.strLine;
        EXPECT_TRUE(objLog.Contains(r.strLine)) << r.strLine << ", but\n"
                                                << testing::PrintToString(objLog.GetLines());
        EXPECT_EQ(CSGMem::GetPool().GetNumLiveBlocks(), nLive) << r.strLine;
    }
}

TEST(TransformRecords, SharingDoesNotMultiply)
{
    // Each pair has the next one twice: as a tree that would be 2^120 translations.
    std::vector<std::string> vecRecords;
    for (int32_t n = 0; n < 120; ++n)
    {
        vecRecords.push_back(Pair(n + 3, n + 3));
    }
    vecRecords.push_back(G<CSGXFrm_Translate>() + S("") + F({1, 0, 0}));
    const auto spLoaded = Load(MakeFile(vecRecords));
    ASSERT_NE(spLoaded, nullptr);
    const auto spCopy = spLoaded->GetFirstNode()->Copy();
    EXPECT_EQ(GetWorld(spCopy.get()).m_objTranslation.x, 0x1p120f);
    EXPECT_TRUE(Save(spCopy.get()).ends_with(MakeFile(vecRecords).substr(2 + 3 * 12 + 5 * 12)));
    CLogCapture objLog;
    spCopy->OutputDebugInfo("");
    EXPECT_LT(objLog.GetLines().size(), 300u);

    const auto* pLocal = spCopy->FindData<CSGData_LocalTransform>();
    const CSGTransform* pDeepest = pLocal->GetTransformObject();
    while (const auto* pPair = dynamic_cast<const CSGXFrm_Pair*>(pDeepest))
    {
        pDeepest = pPair->GetTransformObject(0);
    }
    const_cast<CSGXFrm_Translate*>(dynamic_cast<const CSGXFrm_Translate*>(pDeepest))
        ->SetTranslation({2, 0, 0});
    EXPECT_EQ(GetWorld(spCopy.get()).m_objTranslation.x, 0x1p121f);
}
