// World transforms against a computation from scratch, whatever happens to the tree above them.

#include "qdscenegraph/transform/CSGData_WorldTransform.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGXFrm_List.h"
#include "qdscenegraph/transform/CSGXFrm_Rotate.h"
#include "qdscenegraph/transform/CSGXFrm_Translate.h"
#include "support/CLogCapture.h"

#include <gtest/gtest.h>

#include <random>

namespace
{

using CNodePtr = CSGNode::CNodePtr;
using CTransformPtr = CSGTransform::CTransformPtr;

CTransform3 World(const CNodePtr& spNode)
{
    return CSGData_WorldTransform::GetOrCreateFromNode(spNode.get())->GetTransform();
}

CNodePtr MakeNode(CSGNode* pParent = nullptr)
{
    CNodePtr spNode = CSGNode::Create("", "");
    if (pParent != nullptr)
    {
        EXPECT_TRUE(pParent->AddChild(spNode.get()));
    }
    return spNode;
}

bool SetLocal(const CNodePtr& spNode, const CTransformPtr& spTransform)
{
    return spNode->AddData(CSGData_LocalTransform::Create(spTransform).get());
}

// Without any cache.
CTransform3 Compute(const CSGTransform* pTransform)
{
    const auto* pProduct = dynamic_cast<const CSGTransformProduct*>(pTransform);
    if (pProduct == nullptr)
    {
        return pTransform->GetTransform();
    }
    CTransform3 objProduct;
    for (int32_t n = 0; n < pProduct->GetNumTransforms(); ++n)
    {
        objProduct = objProduct * Compute(pProduct->GetTransformObject(n));
    }
    return objProduct;
}

CTransform3 ComputeWorld(const CSGNode* pNode)
{
    const CTransform3 objAbove =
        pNode->GetParent() != nullptr ? ComputeWorld(pNode->GetParent()) : CTransform3();
    const auto* pLocal = pNode->FindData<CSGData_LocalTransform>();
    return pLocal != nullptr ? objAbove * Compute(pLocal->GetTransformObject()) : objAbove;
}

// A translation by (1, 0, 0) that counts how often it was evaluated.
class CCountedTransform : public SGStreamableDerivedInterface<CCountedTransform, CSGTransform>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CCountedTransform";
    static inline int ms_nEvaluated = 0;

    CTransform3 GetTransform() const override
    {
        ++ms_nEvaluated;
        return {CMatrix3(), {1, 0, 0}};
    }
    const CSGTypeInfo<CSGTransform>* GetTypeInfo() const override { return nullptr; }
    void OutputDebugInfo(const CQDString&) const override {}

  private:
    CTransformPtr CreateCopy(CCopies&) const override { return nullptr; }
};

} // namespace

TEST(CSGData_WorldTransform, ComposesFromTheRootDown)
{
    const CNodePtr spRoot = MakeNode();
    const CNodePtr spChild = MakeNode(spRoot.get());
    ASSERT_TRUE(SetLocal(spRoot, CSGXFrm_Translate::Create({10, 0, 0})));
    ASSERT_TRUE(SetLocal(spChild, CSGXFrm_Rotate::Create({0, 0, 1}, 1.57079633f)));
    const CSGFloat3 vPoint = World(spChild).TransformPoint({1, 0, 0});
    EXPECT_NEAR(vPoint.x, 10.0f, 1e-6f);
    EXPECT_NEAR(vPoint.y, 1.0f, 1e-6f);
}

TEST(CSGData_WorldTransform, StaysRightWhateverHappens)
{
    for (unsigned uiSeed = 1; uiSeed <= 20; ++uiSeed)
    {
        std::mt19937 objRandom(uiSeed);
        const auto Below = [&](size_t nEnd) {
            return std::uniform_int_distribution<size_t>(0, nEnd - 1)(objRandom);
        };
        std::vector<CNodePtr> vecNodes;
        for (int n = 0; n < 24; ++n)
        {
            vecNodes.push_back(MakeNode(vecNodes.empty() ? nullptr : vecNodes[Below(vecNodes.size())].get()));
        }
        std::vector<boost::intrusive_ptr<CSGXFrm_Translate>> vecMoves;
        std::vector<boost::intrusive_ptr<CSGXFrm_Rotate>> vecTurns;
        std::vector<CTransformPtr> vecAll;
        for (int n = 0; n < 6; ++n)
        {
            vecMoves.push_back(CSGXFrm_Translate::Create({float(n), 1, 2}));
            vecTurns.push_back(CSGXFrm_Rotate::Create({1, float(n), 0}, 0.3f));
            vecAll.insert(vecAll.end(), {vecMoves.back(), vecTurns.back()});
            vecAll.push_back(CSGXFrm_List::Create(
                std::vector{vecAll[Below(vecAll.size())], vecAll[Below(vecAll.size())]}));
        }
        for (int nStep = 0; nStep < 1500; ++nStep)
        {
            const CNodePtr& spNode = vecNodes[Below(vecNodes.size())];
            const auto fValue = static_cast<float>(Below(100));
            auto* pLocal = spNode->FindData<CSGData_LocalTransform>();
            const size_t nAction = Below(8);
            switch (nAction)
            {
            case 0:
                vecMoves[Below(vecMoves.size())]->SetTranslation({fValue, 0, 1});
                break;
            case 1:
                vecTurns[Below(vecTurns.size())]->SetAngle(fValue);
                break;
            case 2:
            { // to another parent, or to none
                CSGNode* pParent = vecNodes[Below(vecNodes.size())].get();
                if (spNode->HasParent())
                {
                    ASSERT_TRUE(spNode->GetParent()->RemoveChild(spNode.get()));
                }
                if (pParent != spNode.get() && !pParent->IsAncestor(spNode.get()))
                {
                    ASSERT_TRUE(pParent->AddChild(spNode.get()));
                }
                break;
            }
            case 3:
                ASSERT_TRUE(pLocal == nullptr || spNode->RemoveData(pLocal));
                break;
            case 4:
                ASSERT_TRUE(pLocal != nullptr || SetLocal(spNode, vecAll[Below(vecAll.size())]));
                break;
            case 5:
                ASSERT_TRUE(pLocal == nullptr ||
                            pLocal->SetTransformObject(vecAll[Below(vecAll.size())].get()));
                break;
            case 6:
                if (auto* pWorld = spNode->FindData<CSGData_WorldTransform>();
                    pWorld != nullptr && Below(4) == 0)
                {
                    ASSERT_TRUE(spNode->RemoveData(pWorld));
                }
                break;
            default:
                if (auto* pList = dynamic_cast<CSGXFrm_List*>(vecAll[Below(vecAll.size())].get());
                    pList != nullptr && pList->GetNumTransforms() < 4)
                {
                    ASSERT_TRUE(pList->AddTransform(vecMoves[Below(vecMoves.size())].get()));
                }
            }
            // Only some are asked for, so that others stay out of date.
            for (size_t n = 0; n < (nStep % 50 == 0 ? vecNodes.size() : 2); ++n)
            {
                const CNodePtr& spAsked = vecNodes[nStep % 50 == 0 ? n : Below(vecNodes.size())];
                ASSERT_EQ(World(spAsked), ComputeWorld(spAsked.get()))
                    << "seed " << uiSeed << ", step " << nStep << ", action " << nAction;
            }
        }
    }
}

TEST(CSGData_WorldTransform, DeepTreesCostWhatTheyHold)
{
    constexpr int DEPTH = 200000;
    std::vector<CNodePtr> vecNodes;
    for (int n = 0; n < DEPTH; ++n)
    {
        vecNodes.push_back(MakeNode());
        ASSERT_TRUE(SetLocal(vecNodes.back(), CSGMem::Construct<CCountedTransform>()));
        ASSERT_TRUE(n == 0 || vecNodes[size_t(n) - 1]->AddChild(vecNodes.back().get()));
    }
    CCountedTransform::ms_nEvaluated = 0;
    EXPECT_EQ(World(vecNodes.back()).m_objTranslation.x, float(DEPTH));
    for (const CNodePtr& spNode : vecNodes)
    {
        World(spNode);
    }
    EXPECT_EQ(CCountedTransform::ms_nEvaluated, DEPTH);

    const CNodePtr spMiddle = vecNodes[DEPTH / 2];
    spMiddle->FindData<CSGData_LocalTransform>()->GetTransformObject()->MarkDirty();
    CCountedTransform::ms_nEvaluated = 0;
    for (const CNodePtr& spNode : vecNodes)
    {
        World(spNode);
    }
    EXPECT_EQ(CCountedTransform::ms_nEvaluated, DEPTH / 2);
    // The root goes first; what was below it is a tree of its own.
    vecNodes.erase(vecNodes.begin());
    EXPECT_EQ(World(vecNodes.back()).m_objTranslation.x, float(DEPTH - 1));
}

TEST(CSGData_WorldTransform, IsNeitherCopiedNorShared)
{
    CLogCapture objLog;
    const auto spMove = CSGXFrm_Translate::Create({1, 2, 3});
    const CNodePtr spRoot = MakeNode();
    const CNodePtr spChild = MakeNode(spRoot.get());
    ASSERT_TRUE(SetLocal(spRoot, spMove));
    EXPECT_EQ(World(spChild).m_objTranslation, (CSGFloat3{1, 2, 3}));
    const CNodePtr spCopy = spRoot->Copy();
    EXPECT_EQ(spCopy->FindData<CSGData_WorldTransform>(), nullptr);
    spMove->SetTranslation({0, 0, 0});
    EXPECT_EQ(World(spCopy->GetChild(0)).m_objTranslation, (CSGFloat3{1, 2, 3}))
        << "the copy has its own transforms";
    EXPECT_EQ(World(spChild).m_objTranslation, CSGFloat3());

    // An attachment of either kind belongs to one node; the one that is refused keeps the first.
    {
        const CNodePtr spOther = MakeNode();
        EXPECT_FALSE(spOther->AddData(spRoot->FindData<CSGData_LocalTransform>()));
        EXPECT_FALSE(spOther->AddData(spRoot->FindData<CSGData_WorldTransform>()));
        EXPECT_TRUE(objLog.HasLine("1 m_pNode == 0 is false"));
    }
    spMove->SetTranslation({7, 0, 0});
    EXPECT_EQ(World(spChild).m_objTranslation, (CSGFloat3{7, 0, 0}));
    EXPECT_EQ(CSGData_LocalTransform::Create(nullptr), nullptr);
}

TEST(CSGData_WorldTransform, OutlivesItsNode)
{
    CNodePtr spNode = MakeNode();
    const auto spMove = CSGXFrm_Translate::Create({1, 2, 3});
    ASSERT_TRUE(SetLocal(spNode, spMove));
    World(spNode);
    const boost::intrusive_ptr<CSGData_WorldTransform> spWorld = spNode->FindData<CSGData_WorldTransform>();
    const boost::intrusive_ptr<CSGData_LocalTransform> spLocal = spNode->FindData<CSGData_LocalTransform>();
    spNode.reset();
    spMove->SetTranslation({4, 5, 6});
    EXPECT_TRUE(spWorld->GetTransform().IsIdentity());
    EXPECT_EQ(spLocal->GetTransform().m_objTranslation, (CSGFloat3{4, 5, 6}));
    const CNodePtr spNext = MakeNode();
    EXPECT_TRUE(spNext->AddData(spWorld.get()) && spNext->AddData(spLocal.get()))
        << "both can find a new node";
    EXPECT_EQ(World(spNext).m_objTranslation, (CSGFloat3{4, 5, 6}));
}

TEST(CSGData_WorldTransform, TransformDump)
{
    const CNodePtr spRoot = CSGNode::Create("root", "r");
    ASSERT_TRUE(SetLocal(spRoot, CSGXFrm_Translate::Create({1, 2, 3})));
    World(spRoot);
    CLogCapture objLog;
    spRoot->OutputTransformDebugInfo("");
    const std::vector<std::string> vecRows = {"7       [1.000 0.000 0.000]", "7       [0.000 1.000 0.000]",
                                              "7       [0.000 0.000 1.000]", "7       [1.000 2.000 3.000]"};
    std::vector<std::string> vecExpected = {"7 Node 'root'/'r'", "7     Local:"};
    vecExpected.insert(vecExpected.end(), vecRows.begin(), vecRows.end());
    vecExpected.push_back("7     World:");
    vecExpected.insert(vecExpected.end(), vecRows.begin(), vecRows.end());
    EXPECT_EQ(objLog.GetLines(), vecExpected);
}
