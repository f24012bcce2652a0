// The records of transforms byte for byte, and what damaged ones can do.

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
#include "support/NestTestFile.h"

namespace
{

using CTransformPtr = CSGTransform::CTransformPtr;

// Records from object 2 on, behind a node (object 0) whose local transform (1) links to the first of them.
CNestRecords BehindNode(CNestRecords vecRecords)
{
    vecRecords.insert(vecRecords.begin(), {{TypeOf<CSGNode>(), S("") + S("") + I({1, 1, 0})},
                                           {TypeOf<CSGData_LocalTransform>(), I(2)}});
    return vecRecords;
}

std::string MakeFile(const CNestRecords& rRecords)
{
    return MakeNest({TypeOf<CSGNode>(), TypeOf<CSGData_LocalTransform>(), TypeOf<CSGXFrm_List>(),
                     TypeOf<CSGXFrm_Pair>(), TypeOf<CSGXFrm_Translate>()},
                    BehindNode(rRecords));
}

template <class T>
CNestRecord Record(const std::string& rBehindName, const std::string& rName = "")
{
    return {TypeOf<T>(), S(rName) + rBehindName};
}

CNestRecord List(std::initializer_list<int32_t> arrIDs)
{
    return Record<CSGXFrm_List>(I(static_cast<int32_t>(arrIDs.size())) + I(arrIDs));
}

CNestRecord Pair(int32_t nFirst, int32_t nSecond) { return Record<CSGXFrm_Pair>(I({nFirst, nSecond})); }

const CTransform3& GetWorld(CSGNode* pNode)
{
    return CSGData_WorldTransform::GetOrCreateFromNode(pNode)->GetTransform();
}

} // namespace

TEST(TransformRecords, ByteForByte)
{
    const auto spMove = CSGXFrm_Translate::Create({1, 2, 3});
    spMove->SetName("move");
    const CNestRecord objMove = Record<CSGXFrm_Translate>(F({1, 2, 3}), "move");
    const auto spTurn = CSGXFrm_Rotate::Create({0, 0, 2}, 0.5f);
    const CNestRecord objTurn = Record<CSGXFrm_Rotate>(F({0, 0, 2, 0.5f}));
    const struct
    {
        CTransformPtr spTransform;
        CNestRecords vecRecords; // from object 2 on
    } arrCases[] = {
        {spMove, {objMove}},
        {spTurn, {objTurn}},
        {CSGXFrm_Scale::Create({2, 3, 4}), {Record<CSGXFrm_Scale>(F({2, 3, 4}))}},
        {CSGXFrm_Transform3::Create({CMatrix3{{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}, {10, 11, 12}}),
         {Record<CSGXFrm_Transform3>(F({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}))}},
        {CSGXFrm_LookAt::Create({1, 2, 3}, {4, 5, 6}, {7, 8, 9}),
         {Record<CSGXFrm_LookAt>(F({1, 2, 3, 4, 5, 6, 7, 8, 9}))}},
        {CSGXFrm_Pair::Create(spTurn, spMove), {Pair(3, 4), objTurn, objMove}},
        {CSGXFrm_List::Create(), {List({})}},
        // The pair is saved once and linked to twice, and what it shares with the list likewise.
        {CSGXFrm_List::Create(
             std::vector<CTransformPtr>{spMove, CSGXFrm_Pair::Create(spMove, spTurn), spMove}),
         {List({3, 4, 3}), objMove, Pair(3, 5), objTurn}},
    };
    for (const auto& r : arrCases)
    {
        SCOPED_TRACE(r.spTransform->GetTypeInfo()->GetName());
        const auto spNode = CSGNode::Create("", "");
        ASSERT_TRUE(spNode->AddData(CSGData_LocalTransform::Create(r.spTransform).get()));
        GetWorld(spNode.get()); // it is not saved
        const std::string strSaved = Save(spNode.get());
        EXPECT_TRUE(strSaved.ends_with(Records(BehindNode(r.vecRecords))));
        const auto spLoaded = Load<CSGNode>(strSaved);
        ASSERT_NE(spLoaded, nullptr);
        EXPECT_EQ(GetWorld(spLoaded.get()), r.spTransform->GetTransform());
        EXPECT_EQ(Save(spLoaded.get()), strSaved);
        EXPECT_EQ(Save(spLoaded->Copy().get()), strSaved);
    }
}

TEST(TransformRecords, DamagedOnesAreRefused)
{
    const CNestRecord objMove = Record<CSGXFrm_Translate>(F({1, 2, 3}));
    CNestRecords vecNested;
    for (int32_t n = 0; n < 300; ++n)
    {
        vecNested.push_back(List({n + 3}));
    }
    vecNested.push_back(objMove);
    const struct
    {
        std::string strBytes;
        std::string strLine;
    } arrCases[] = {
        {MakeFile({List({2})}), "run in a circle"},
        {MakeFile({List({3, 4}), Pair(2, 4), objMove}), "run in a circle"},
        {MakeFile({List({4}), objMove, Pair(3, 5), List({4, 2, 3})}), "run in a circle"},
        {MakeFile(vecNested), "is nested more than"},
        {MakeFile({List({3, -1}), objMove}), "pTransform is NULL"},
        {MakeFile({Pair(-1, 3), objMove}), "pTransform is NULL"},
        {MakeFile({List({0})}), "Unexpected (CSGStreamable*)0x"},
        {MakeFile({Pair(1, 1)}), "Unexpected (CSGStreamable*)0x"},
        {MakeFile({List({3})}), "(nID >= 0) && (nID < GetNumObjects()) is false"},
        {MakeFile({Record<CSGXFrm_List>(I({2000000000, 2}))}),
         "pStream->CanRead(nCount, sizeof(int32_t)) is false"},
        {MakeFile({Record<CSGXFrm_List>(I({-1, 2}))}), "pStream->CanRead(nCount, sizeof(int32_t)) is false"},
        {MakeFile({Record<CSGXFrm_List>("")}), "pStream->CanRead(1, sizeof(int32_t)) is false"},
        {MakeFile({Record<CSGXFrm_Translate>(std::string(11, 0))}),
         "pStream->CanRead(1, sizeof(T)) is false"},
        {MakeFile({{TypeOf<CSGNode>(), S("") + S("") + I({1, 1, 0})}}), "m_pNode == 0 is false"},
    };
    for (const auto& r : arrCases)
    {
        ExpectRefused(r.strBytes, r.strLine);
    }
}

TEST(TransformRecords, SharingDoesNotMultiply)
{
    // Each pair has the next one twice: as a tree that would be 2^120 translations.
    CNestRecords vecRecords;
    for (int32_t n = 0; n < 120; ++n)
    {
        vecRecords.push_back(Pair(n + 3, n + 3));
    }
    vecRecords.push_back(Record<CSGXFrm_Translate>(F({1, 0, 0})));
    const auto spLoaded = Load<CSGNode>(MakeFile(vecRecords));
    ASSERT_NE(spLoaded, nullptr);
    const auto spCopy = spLoaded->Copy();
    EXPECT_EQ(GetWorld(spCopy.get()).m_objTranslation.x, 0x1p120f);
    EXPECT_TRUE(Save(spCopy.get()).ends_with(Records(BehindNode(vecRecords))));
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
