// What references find, and their records in files.

#include "qdscenegraph/material/CSGData_Material.h"
#include "qdscenegraph/material/CSGParamTmpl.h"
#include "qdscenegraph/nest/CSGNestReader.h"
#include "qdscenegraph/nest/CSGNestWriter.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/reference/CSGATFRef_Visibility.h"
#include "qdscenegraph/reference/CSGRefContext.h"
#include "qdscenegraph/reference/CSGRefKind.h"
#include "qdscenegraph/reference/CSGRefPath.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGXFrm_List.h"
#include "qdscenegraph/transform/CSGXFrm_Pair.h"
#include "qdscenegraph/transform/CSGXFrm_Translate.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"

#include <gtest/gtest.h>

namespace
{

template <class T>
std::string Bytes(T value)
{
    return {reinterpret_cast<const char*>(&value), sizeof(value)};
}
std::string I(int32_t nValue) { return Bytes(nValue); }
template <class T>
std::string G()
{
    uint64_t uiGUID = 0;
    EXPECT_TRUE(T::GetStaticSGStreamableType()->GetGUID(uiGUID));
    return Bytes(uiGUID);
}

std::string Save(CSGStreamable* pObject)
{
    const CTempFile objFile("saved.nest");
    const auto spSet = CSGResourceSet::Create();
    spSet->AddTopLevelNode(pObject);
    return CSGNestWriter::Create()->SaveResourceSet(objFile.GetName(), spSet.get()) ? objFile.ReadBytes()
                                                                                    : "";
}

CSGRefPathPtr Load(const std::string& rBytes)
{
    const CTempFile objFile("loaded.nest", rBytes);
    const auto spReader = CSGNestReader::Create();
    return spReader->LoadFile(objFile.GetName())
               ? SGStreamableCast<CSGRefPath>(spReader->m_spResourceSet->GetTopLevelNode(0))
               : nullptr;
}

// root > a (twice in a row) > b; b has a material and a list with "move" in a pair, and another one behind
// it.
struct CScene
{
    CSGNode::CNodePtr spRoot = CSGNode::Create("root", "top");
    CSGNode::CNodePtr spA = CSGNode::Create("a", "inner");
    CSGNode::CNodePtr spSecondA = CSGNode::Create("a", "");
    CSGNode::CNodePtr spB = CSGNode::Create("b", "inner");
    CSGTransform::CTransformPtr spMove = CSGXFrm_Translate::Create({1, 2, 3});
    CSGTransform::CTransformPtr spOther = CSGXFrm_Translate::Create({});
    CSGTransform::CTransformPtr spLater = CSGXFrm_Translate::Create({});
    boost::intrusive_ptr<CSGXFrm_List> spList = CSGXFrm_List::Create();
    CSGMaterialPtr spMaterial = CSGMaterial::Create(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                    nullptr, nullptr, "red", 0, 0);

    CScene()
    {
        spRoot->AddChild(spA.get());
        spA->AddChild(CSGNode::Create("", "").get());
        spRoot->AddChild(spSecondA.get());
        spSecondA->AddChild(spB.get());
        spMove->SetName("move");
        spList->AddTransform(spOther.get());
        spList->AddTransform(CSGXFrm_Pair::Create(spOther, spMove).get());
        spLater->SetName("move");
        spList->AddTransform(spLater.get());
        spList->SetName("all");
        spB->AddData(CSGData_LocalTransform::Create(spList).get());
        spB->AddData(CSGData_Material::Create(spMaterial.get()).get());
    }
};

} // namespace

TEST(References, FindWithAndWithoutContext)
{
    CScene s;
    CSGStreamable* pLocal = s.spB->FindData<CSGData_LocalTransform>();
    const auto eNoSlot = static_cast<CSGMaterial::EParam>(1000);
    const struct
    {
        CSGRefPtr spRef;
        CSGStreamable* pFrom;
        CSGStreamable* pFound;
    } arrCases[] = {
        {CSGRef_Target::Create(TARGET_X), s.spMove.get(), s.spMove.get()},
        {CSGRef_DataByType::Create("CSGData_LocalTransform"), s.spB.get(), pLocal},
        {CSGRef_DataByType::Create("CSGData_LocalTransform"), s.spA.get(), nullptr},
        {CSGRef_DataByType::Create("CSGData_Nonsense"), s.spB.get(), nullptr},
        {CSGRef_DescendantNodeByGlobalName::Create("root"), s.spRoot.get(), s.spRoot.get()},
        {CSGRef_DescendantNodeByGlobalName::Create("a"), s.spRoot.get(), s.spA.get()},
        {CSGATFRef_DescendantNodeByGlobalName::Create("b"), s.spSecondA.get(), s.spB.get()},
        {CSGRef_DescendantNodeByGlobalName::Create(""), s.spRoot.get(), nullptr},
        {CSGRef_DescendantNodeByGlobalName::Create("b"), s.spMove.get(), nullptr},
        {CSGATFRef_ChildNodeByLocalName::Create("inner"), s.spRoot.get(), s.spA.get()},
        {CSGATFRef_ChildNodeByLocalName::Create("inner"), s.spSecondA.get(), s.spB.get()},
        {CSGATFRef_ChildNodeByLocalName::Create("top"), s.spRoot.get(), nullptr},
        {CSGATFRef_ChildNodeByLocalName::Create(""), s.spRoot.get(), nullptr},
        {CSGRef_MaterialByGlobalName::Create("red"), s.spRoot.get(), s.spMaterial.get()},
        {CSGRef_MaterialParam::Create(CSGMaterial::PARAM_DIFFUSE), s.spMaterial.get(),
         s.spMaterial->GetParam(CSGMaterial::PARAM_DIFFUSE)},
        {CSGRef_MaterialParam::Create(eNoSlot), s.spMaterial.get(), nullptr},
        {CSGRef_TransformByName::Create("move"), pLocal, s.spMove.get()},
        {CSGRef_TransformByName::Create("all"), s.spList.get(), s.spList.get()},
        {CSGRef_TransformByName::Create(""), pLocal, nullptr},
        {CSGRef_TransformByName::Create("move"), s.spB.get(), nullptr},
        {CSGATFRef_Visibility::Create(), s.spB.get(), s.spB.get()},
        {CSGATFRef_Visibility::Create(), s.spMove.get(), nullptr},
    };
    CLogCapture objLog;
    CSGRefContext objContext(s.spRoot.get());
    for (const auto& rCase : arrCases)
    {
        EXPECT_EQ(rCase.spRef->Resolve(rCase.pFrom), rCase.pFound) << &rCase - arrCases;
        EXPECT_EQ(rCase.spRef->Resolve(rCase.pFrom, &objContext), rCase.pFound) << &rCase - arrCases;
    }
    EXPECT_EQ(objContext.FindNode(""), nullptr);
    const CSGRefPathPtr spPath = CSGRefPath::Create();
    EXPECT_TRUE(spPath->AddRef(CSGATFRef_ChildNodeByLocalName::Create("inner")));
    EXPECT_EQ(spPath->Resolve(s.spRoot.get()), s.spA.get());
    EXPECT_TRUE(objLog.GetLines().empty());
}

TEST(References, PathsWriteThroughTheirTargets)
{
    CScene s;
    const auto spMove = CSGRefPath::ForTransform("b", "move", TARGET_Y);
    const auto spColor = CSGRefPath::ForMaterialParam("red", CSGMaterial::PARAM_DIFFUSE, TARGET_G);
    const auto spVisible = CSGRefPath::ForVisibility("b");
    for (const auto& spPath : {spMove, spColor, spVisible})
    {
        const CSGATFPtr spTarget = spPath->ResolveTarget(s.spRoot.get());
        ASSERT_TRUE(spTarget);
        EXPECT_TRUE(spTarget->SetTargetValue({{0.0f}}));
        CLogCapture objLog;
        EXPECT_FALSE(spPath->ResolveTarget(s.spA.get()));
        EXPECT_TRUE(objLog.GetLines().empty());
    }
    EXPECT_EQ(s.spMove->GetTransform().m_objTranslation, (CSGFloat3{1, 0, 3}));
    EXPECT_FALSE(s.spB->IsVisible());

    // The whole of what is found, where no part is named; and paths that cannot be written through.
    const auto spWhole = CSGATFRef_TransformByName::Create("move");
    EXPECT_EQ(spWhole->ResolveTarget(s.spList.get())->GetOutputCount(), 3);
    CLogCapture objLog;
    const CSGRefPathPtr spNoTarget = CSGRefPath::Create();
    EXPECT_FALSE(spNoTarget->ResolveTarget(s.spMove.get()));
    EXPECT_TRUE(spNoTarget->AddRef(CSGRef_Target::Create(TARGET_X)));
    EXPECT_FALSE(spNoTarget->ResolveTarget(s.spMove.get()));
    EXPECT_EQ(objLog.GetLines(), std::vector<std::string>(2, "1 pTargetRef is NULL"));
}

TEST(References, PathsFollowARename)
{
    CScene s;
    const auto spMove = CSGRefPath::ForTransform("b", "b", TARGET_ALL);
    EXPECT_FALSE(spMove->RenameNode("a", "c"));
    EXPECT_TRUE(spMove->RenameNode("b", "c"));
    CQDCompactString strNode;
    CQDCompactString strTransform;
    EXPECT_FALSE(CSGRefPath::ForVisibility("b")->GetTransformNames(strNode, strTransform));
    EXPECT_TRUE(spMove->GetTransformNames(strNode, strTransform));
    EXPECT_EQ(strNode, "c");
    EXPECT_EQ(strTransform, "b");
}

// Each pair holds the one before twice: 2^100 ways lead to the innermost transform.
TEST(References, SharedTransformsAreLookedIntoOnce)
{
    CSGTransform::CTransformPtr spTransform = CSGXFrm_Translate::Create({});
    for (int n = 0; n < 100; ++n)
    {
        spTransform = CSGXFrm_Pair::Create(spTransform, spTransform);
    }
    EXPECT_EQ(CSGRef_TransformByName::Create("none")->Resolve(spTransform.get()), nullptr);
}

// Names are looked up in a table there.
TEST(References, LongListsAreSearchedLikeShortOnes)
{
    std::vector<CSGTransform::CTransformPtr> vecTransforms;
    for (int n = 0; n < 60; ++n)
    {
        vecTransforms.push_back(CSGXFrm_Translate::Create({}));
        vecTransforms.back()->SetName("t" + std::to_string(n % 50));
    }
    const auto spInner = CSGXFrm_List::Create(std::span(vecTransforms).subspan(5));
    const auto spLast = CSGXFrm_Translate::Create({});
    spLast->SetName("last");
    const auto spAll = CSGXFrm_List::Create();
    ASSERT_TRUE(spAll->AddTransform(spInner.get()) && spAll->AddTransform(spInner.get()) &&
                spAll->AddTransform(spLast.get()));
    spAll->SetName("all");
    const std::pair<const char*, CSGStreamable*> arrCases[] = {{"t7", vecTransforms[7].get()},
                                                               {"t49", vecTransforms[49].get()},
                                                               {"t3", vecTransforms[53].get()},
                                                               {"last", spLast.get()},
                                                               {"all", spAll.get()},
                                                               {"none", nullptr},
                                                               {"", nullptr}};
    CSGRefContext objContext(nullptr);
    for (const auto& [szName, pFound] : arrCases)
    {
        const auto spRef = CSGRef_TransformByName::Create(szName);
        EXPECT_EQ(spRef->Resolve(spAll.get()), pFound) << szName;
        EXPECT_EQ(spRef->Resolve(spAll.get(), &objContext), pFound) << szName;
    }
}

TEST(ReferenceRecords, ByteForByteAndBack)
{
    const auto spShared = CSGRef_TransformByName::Create("t");
    const CSGRefPathPtr spPath = CSGRefPath::Create();
    for (const CSGRefPtr& spRef : std::initializer_list<CSGRefPtr>{
             spShared, CSGATFRef_ChildNodeByLocalName::Create("n"), spShared,
             CSGRef_MaterialParam::Create(CSGMaterial::PARAM_SPECULAR), CSGATFRef_Visibility::Create(),
             CSGATFRef_Target::Create(TARGET_QUAT)})
    {
        EXPECT_TRUE(spPath->AddRef(spRef));
    }
    const std::string strSaved = Save(spPath.get());
    const std::string strRecords =
        G<CSGRefPath>() + I(6) + I(1) + I(2) + I(1) + I(3) + I(4) + I(5) + G<CSGRef_TransformByName>() +
        I(1) + "t" + G<CSGATFRef_ChildNodeByLocalName>() + I(1) + "n" + G<CSGRef_MaterialParam>() + I(3) +
        G<CSGATFRef_Visibility>() + G<CSGATFRef_Target>() + I(9);
    EXPECT_TRUE(strSaved.ends_with(strRecords));
    const CSGRefPathPtr spLoaded = Load(strSaved);
    ASSERT_TRUE(spLoaded);
    EXPECT_EQ(Save(spLoaded.get()), strSaved);
}

TEST(ReferenceRecords, DamagedOnesAreRefused)
{
    const auto fnFile = [](const std::string& rPath, const std::string& rRef) {
        return "NEST" + I(2) + I(2) + G<CSGRefPath>() + I(1) + G<CSGATFRef_Target>() + I(1) + I(1) + I(0) +
               I(2) + G<CSGRefPath>() + rPath + G<CSGATFRef_Target>() + rRef;
    };
    const struct
    {
        std::string strPath;
        std::string strRef;
        const char* szLine;
    } arrCases[] = {
        {I(0x7FFFFFFF), I(1), "nCount <= MAX_REFS is false"},
        {I(-1), I(1), "pStream->CanRead(nCount, sizeof(int32_t)) is false"},
        {I(1) + I(-1), I(1), "spRef is NULL"},
        {I(1) + I(0), I(1), "Unexpected (CSGStreamable*)"},
        {I(1) + I(1), "\x01", "Call ReadField(pStream, m_objField) failed"},
    };
    for (const auto& rCase : arrCases)
    {
        CLogCapture objLog;
        EXPECT_FALSE(Load(fnFile(rCase.strPath, rCase.strRef)));
        EXPECT_TRUE(objLog.Contains(rCase.szLine)) << rCase.szLine;
    }
    // A part that nobody knows is found out when it is asked for.
    const CSGRefPathPtr spPath = Load(fnFile(I(1) + I(1), I(77)));
    ASSERT_TRUE(spPath);
    CScene s;
    CLogCapture objLog;
    EXPECT_FALSE(spPath->ResolveTarget(s.spMove.get()));
    EXPECT_TRUE(objLog.HasLine("1 A CSGXFrm_Translate has no part UNKNOWN (77) that can be animated."));
}
