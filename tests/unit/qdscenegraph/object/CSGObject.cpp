// Reference counts, weak pointers and the registries of kinds.

#include "qdscenegraph/object/CSGObject.h"

#include "qdscenegraph/object/CSGDataTypeInfo.h"
#include "qdscenegraph/object/CSGMem.h"
#include "qdscenegraph/object/CSGTombstone.h"
#include "qdscenegraph/object/CSGTypeInfo.h"
#include "support/CLogCapture.h"

#include <gtest/gtest.h>

namespace
{

class CThing : public CSGObject, public CEnableSGObjectWPtr
{
  public:
    size_t GetObjectSize() const override { return sizeof(CThing); }
};
using CTypes = CSGTypeInfo<CThing>;

// Is taken once more when it is too late.
class CTakenWhileDestroyed : public CSGObject
{
  public:
    explicit CTakenWhileDestroyed(int32_t& rResult) : m_rResult(rResult) {}
    ~CTakenWhileDestroyed() override { m_rResult = AddRef(); }
    size_t GetObjectSize() const override { return sizeof(CTakenWhileDestroyed); }

  private:
    int32_t& m_rResult;
};

} // namespace

TEST(SGObject, LivesInThePoolAndRefusesToBeReleasedUnowned)
{
    CLogCapture objLog;
    const int64_t nBlocks = CSGMem::GetPool().GetNumLiveBlocks();
    auto* pThing = CSGMem::Construct<CThing>();
    EXPECT_EQ(pThing->Release(), -1);
    ASSERT_EQ(objLog.GetLines().size(), 1u);
    EXPECT_EQ(objLog.GetLines()[0].find("1 Called when ref count was invalid value 0 at 0x"), 0u);
    EXPECT_EQ(pThing->AddRef(), 1);
    EXPECT_EQ(CSGMem::GetPool().GetNumLiveBlocks(), nBlocks + 1);
    EXPECT_EQ(pThing->Release(), 0);
    EXPECT_EQ(CSGMem::GetPool().GetNumLiveBlocks(), nBlocks);
    CSGMem::Destroy(nullptr);
    EXPECT_TRUE(objLog.HasLine("1 Handed in NULL pObject"));
}

TEST(SGObject, CannotBeTakenOnceItIsDestroyed)
{
    CLogCapture objLog;
    int32_t nResult = 0;
    EXPECT_EQ(
        boost::intrusive_ptr<CSGObject>(CSGMem::Construct<CTakenWhileDestroyed>(nResult))->GetRefCount(), 1);
    EXPECT_EQ(nResult, -1);
    EXPECT_TRUE(objLog.Contains("1 Called when ref count was invalid value -1000 at 0x"));
}

TEST(WeakPtr, YieldsNullOnceTheObjectIsGone)
{
    auto* pThing = CSGMem::Construct<CThing>();
    EXPECT_EQ(CSGWeakPtr<CThing>(pThing).Lock(), nullptr) << "nobody owns it yet";
    boost::intrusive_ptr<CThing> spThing(pThing);
    CSGWeakPtr<CThing> objFirst(pThing);
    const CSGWeakPtr<CThing> objSecond(objFirst);
    EXPECT_EQ(objSecond.Lock().get(), pThing);
    spThing.reset();
    EXPECT_EQ(objFirst.Lock(), nullptr);
    objFirst = CSGWeakPtr<CThing>();
    EXPECT_EQ(objSecond.Lock(), nullptr);

    CLogCapture objLog;
    spThing = CSGMem::Construct<CThing>();
    CSGTombstone* pTombstone = CSGTombstone::GetOrCreateTombstone(spThing.get(), spThing.get());
    CSGTombstone* pOther = nullptr;
    pTombstone->WeakPointerDetached(pOther);
    EXPECT_TRUE(objLog.HasLine("1 this == rpObjTombstone is false"));
    spThing.reset();
    EXPECT_EQ(pTombstone->GetObject(), nullptr);
    CSGTombstone* pLast = pTombstone;
    pTombstone->ObjectDestroyed(pLast);
    EXPECT_TRUE(objLog.HasLine("1 (this == rpObjTombstone) && (m_pObject != 0) is false"));
    pTombstone->WeakPointerDetached(pLast);
}

TEST(TypeInfo, FreedIdsComeBackOldestFirst)
{
    CLogCapture objLog;
    CTypes::CTypeMap objMap;
    CTypes arrTypes[] = {{"A", nullptr}, {"B", nullptr}, {"C", nullptr}, {"D", nullptr}, {"E", nullptr}};
    for (CTypes& rType : arrTypes)
    {
        ASSERT_TRUE(objMap.Register(&rType));
    }
    EXPECT_FALSE(objMap.Register(&arrTypes[2]));
    CTypes objSameName("B", nullptr);
    EXPECT_FALSE(objMap.Register(&objSameName));
    EXPECT_FALSE(objMap.Register(nullptr));
    objMap.Unregister(&objSameName);
    EXPECT_EQ(objLog.GetLines(), (std::vector<std::string>{"1 Data type 2 C was already registered.",
                                                           "1 Already had data type named B registered.",
                                                           "1 Handed in NULL lpObjDataType",
                                                           "1 Data type -1 B was not registered."}));
    objMap.Unregister(&arrTypes[3]);
    objMap.Unregister(&arrTypes[1]);
    EXPECT_EQ(objMap.Find("B"), nullptr);
    EXPECT_EQ(arrTypes[3].GetTypeID(), -1);
    ASSERT_TRUE(objMap.Register(&arrTypes[1]));
    ASSERT_TRUE(objMap.Register(&arrTypes[3]));
    EXPECT_EQ(arrTypes[1].GetTypeID(), 3);
    EXPECT_EQ(arrTypes[3].GetTypeID(), 1);
    EXPECT_EQ(objMap.Find("B"), objMap.Find(3));
    for (CTypes& rType : arrTypes)
    {
        objMap.Unregister(&rType);
    }
    EXPECT_EQ(objMap.GetHighWaterMark(), 0);
    EXPECT_EQ(objMap.GetCapacity(), CTypes::CTypeMap::MIN_CAPACITY);
}

TEST(DataTypeInfo, TwentyNineKindsAndNoMore)
{
    CLogCapture objLog;
    CSGDataTypeInfo::CTypeMap objMap;
    std::vector<std::unique_ptr<CSGDataTypeInfo>> vecTypes;
    for (int n = 0; n < 29; ++n)
    {
        vecTypes.push_back(
            std::make_unique<CSGDataTypeInfo>(("Kind" + std::to_string(n)).c_str(), n == 5, nullptr));
        ASSERT_TRUE(objMap.Register(vecTypes.back().get()));
        EXPECT_EQ(vecTypes.back()->GetTypeID(), 1u << n);
    }
    CSGDataTypeInfo objThirtieth("Kind29", false, nullptr);
    EXPECT_FALSE(objMap.Register(&objThirtieth));
    EXPECT_TRUE(objLog.HasLine(
        "1 Hit maximum number of CSGData types that can be registered while registering Kind29"));
    EXPECT_FALSE(objMap.Register(vecTypes[0].get()));
    EXPECT_TRUE(objLog.HasLine("1 pTypeInfo->GetTypeID() == 0 is false"));
}

TEST(DataTypeInfo, SecondRecordsUnderAName)
{
    CLogCapture objLog;
    CSGDataTypeInfo::CTypeMap objMap;
    CSGDataTypeInfo objFirst("Kind", false, nullptr);
    CSGDataTypeInfo objSecond("Kind", false, nullptr);
    CSGDataTypeInfo objMultiple("Kind", true, nullptr);
    ASSERT_TRUE(objMap.Register(&objFirst));
    EXPECT_FALSE(objMap.Register(&objSecond));
    EXPECT_TRUE(objMap.Register(&objMultiple));
    EXPECT_EQ(objMultiple.GetTypeID(), 0u) << "accepted without effect";
    EXPECT_EQ(objMap.Find("Kind"), &objFirst);
    objMap.Unregister(&objSecond);
    EXPECT_EQ(objLog.GetLines(),
              (std::vector<std::string>{"1 Data type with name Kind was already registered",
                                        "1 Data type Kind was not registered."}));
    objMap.Unregister(&objFirst);
    ASSERT_TRUE(objMap.Register(&objSecond));
    EXPECT_EQ(objSecond.GetTypeID(), 2u) << "bits are not handed out again";
}
