// Numbering while saving, delivery of links while loading, and the registry of types.

#include "qdcommon/CFileStream.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"

#include <gtest/gtest.h>

#include <set>

namespace
{

// Notes what it is told.
template <class T, class PARENT>
class CLinkedBase : public SGStreamableDerivedInterface<T, PARENT>
{
  public:
    bool ReadFromStream(CStream*, CSGStreamableLoadState*) override { return true; }
    bool WriteToStream(CStream*, CSGStreamableSaveState*) override { return true; }
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*) override
    {
        m_vecLoaded.emplace_back(nCookie, pChild);
        return nCookie != 13;
    }
    std::vector<std::pair<int32_t, CSGStreamable*>> m_vecLoaded;
};

class CBase : public CLinkedBase<CBase, CSGStreamable>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CBase";
};
class CDerived : public SGStreamableDerivedInterface<CDerived, CBase>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CDerived";
};
class CUnregistered : public CLinkedBase<CUnregistered, CSGStreamable>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CUnregistered";
};

const SGStreamableRegistration<CBase> s_objBase(0x7100000000000001, 1, 4);
const SGStreamableRegistration<CDerived> s_objDerived(0x7100000000000002, 1, 2);

template <class T>
boost::intrusive_ptr<T> Make()
{
    return CSGMem::Construct<T>();
}

} // namespace

TEST(SaveState, NumbersObjectsAndListsParentTypes)
{
    CLogCapture objLog;
    CSGStreamableSaveState objState;
    const auto spDerived = Make<CDerived>();
    const auto spOther = Make<CDerived>();
    ASSERT_TRUE(spDerived->PreWrite(&objState));
    ASSERT_TRUE(objState.AddObject(spOther.get()));
    ASSERT_TRUE(objState.AddObject(spDerived.get())) << "keeps its id";
    EXPECT_EQ(objState.GetNumObjects(), 2);
    EXPECT_EQ(objState.GetObjectID(spDerived.get()), 0);
    EXPECT_EQ(objState.GetObject(1), spOther.get());
    ASSERT_EQ(objState.GetNumTypes(), 2) << "the parent has no object of its own";
    EXPECT_EQ(objState.GetType(0), CDerived::GetStaticSGStreamableType());
    EXPECT_EQ(objState.GetType(1), CBase::GetStaticSGStreamableType());

    const CTempFile objFile("ids");
    CFileStream objStream(objFile.GetName(), CFileStream::OPEN_WRITE | CFileStream::OPEN_TRUNCATE);
    EXPECT_TRUE(objState.WriteChildID(&objStream, nullptr));
    EXPECT_TRUE(objState.WriteChildID(&objStream, spOther.get()));
    objStream.Close();
    EXPECT_EQ(objFile.ReadBytes(), std::string("\xFF\xFF\xFF\xFF\x01\0\0\0", 8));
    EXPECT_TRUE(objLog.GetLines().empty());

    EXPECT_FALSE(objState.AddObject(nullptr));
    EXPECT_FALSE(objState.WriteChildID(&objStream, Make<CBase>().get()));
    EXPECT_EQ(objState.GetType(2), nullptr);
    EXPECT_EQ(objLog.GetLines(),
              (std::vector<std::string>{
                  "1 Handed in NULL pStreamable", "1 nID >= 0 is false", "1 nID>=0 is false",
                  "1 (nTypeIndex>=0) && (nTypeIndex < (int)m_vecSGTypeHeaders.size()) is false"}));
}

TEST(LoadState, DeliversLinksAtOnceOrWhenTheObjectComes)
{
    const CTempFile objFile("ids", std::string("\x01\0\0\0\x01\0\0\0\xFF\xFF\xFF\xFF\0\0\0\0\x02\0\0\0", 20));
    CFileStream objStream(objFile.GetName(), CFileStream::OPEN_READ);
    CSGStreamableLoadState objState;
    ASSERT_TRUE(objState.SetNumObjects(2));
    const auto spFirst = Make<CBase>();
    const auto spSecond = Make<CBase>();
    // Two links to object 1 and one to nothing, while object 0 is read.
    EXPECT_TRUE(objState.ReadChildID(&objStream, spFirst.get(), 5));
    EXPECT_TRUE(objState.ReadChildID(&objStream, spFirst.get(), 6));
    EXPECT_TRUE(objState.ReadChildID(&objStream, spFirst.get(), 7));
    EXPECT_TRUE(objState.NotifyObjectLoaded(spFirst.get(), 0));
    EXPECT_TRUE(spFirst->m_vecLoaded.empty());
    // A link back to object 0.
    EXPECT_TRUE(objState.ReadChildID(&objStream, spSecond.get(), 8));
    EXPECT_EQ(spSecond->m_vecLoaded, (std::vector<std::pair<int32_t, CSGStreamable*>>{{8, spFirst.get()}}));
    EXPECT_TRUE(objState.NotifyObjectLoaded(spSecond.get(), 1));
    EXPECT_EQ(spFirst->m_vecLoaded,
              (std::vector<std::pair<int32_t, CSGStreamable*>>{{5, spSecond.get()}, {6, spSecond.get()}}));

    CLogCapture objLog;
    EXPECT_FALSE(objState.VerifyLinks());
    EXPECT_TRUE(objLog.HasLine("1 The links of 2 objects run in a circle."));
    objLog.Clear();
    EXPECT_FALSE(objState.ReadChildID(&objStream, spSecond.get(), 9)) << "there is no object 2";
    EXPECT_FALSE(objState.ReadChildID(&objStream, spSecond.get(), 9)) << "the end of the file";
    EXPECT_FALSE(objState.NotifyObjectLoaded(spSecond.get(), 0));
    EXPECT_FALSE(objState.NotifyObjectLoaded(Make<CBase>().get(), 1));
    EXPECT_EQ(objState.GetLoadedObject(2), nullptr);
    EXPECT_EQ(objLog.GetLines(),
              (std::vector<std::string>{"1 (nID >= 0) && (nID < GetNumObjects()) is false",
                                        "1 pStream->CanRead(1, sizeof(int32_t)) is false",
                                        "1 nExistingID < 0 is false", "1 pLoadState->m_pObject == 0 is false",
                                        "1 (nID >= 0) && (nID < (int)m_vecObjects.size()) is false"}));
}

TEST(LoadState, ARefusedLinkFailsTheLoad)
{
    CLogCapture objLog;
    const CTempFile objFile("ids", std::string("\x01\0\0\0\0\0\0\0", 8));
    CFileStream objStream(objFile.GetName(), CFileStream::OPEN_READ);
    CSGStreamableLoadState objState;
    ASSERT_TRUE(objState.SetNumObjects(2));
    const auto spFirst = Make<CBase>();
    const auto spSecond = Make<CBase>();
    EXPECT_TRUE(objState.ReadChildID(&objStream, spFirst.get(), 13));
    EXPECT_TRUE(objState.NotifyObjectLoaded(spFirst.get(), 0));
    EXPECT_FALSE(objState.ReadChildID(&objStream, spSecond.get(), 13));
    EXPECT_FALSE(objState.NotifyObjectLoaded(spSecond.get(), 1));
    EXPECT_EQ(
        objLog.GetLines(),
        (std::vector<std::string>{
            "1 Call pObjectToNotify->NotifyObjectLoaded(nCookie,pChild,this) failed",
            "1 Call nn.m_pObjectToNotify->NotifyObjectLoaded(nn.m_nCookie, pStreamable, this) failed"}));
}

TEST(LoadState, Versions)
{
    CLogCapture objLog;
    CSGStreamableLoadState objState;
    EXPECT_EQ(objState.GetVersionBeingLoaded(CDerived::GetStaticSGStreamableType()), -1);
    ASSERT_TRUE(objState.SetVersionBeingLoaded(CDerived::GetStaticSGStreamableType(), 2));
    EXPECT_EQ(objState.GetVersionToRead<CDerived>(), 2);
    EXPECT_EQ(objState.GetVersionToRead<CBase>(), 1) << "a header without a version";
    EXPECT_FALSE(objState.SetVersionBeingLoaded(CDerived::GetStaticSGStreamableType(), 2));
    EXPECT_EQ(objLog.GetLines(),
              (std::vector<std::string>{"4 Treating version -1 as version 1",
                                        "1 pTypeHeader->m_nVersionBeingStreamed == -1 is false"}));
}

TEST(StreamableType, Registration)
{
    CLogCapture objLog;
    uint64_t uiGUID = 0;
    EXPECT_FALSE(CUnregistered::GetStaticSGStreamableType()->GetGUID(uiGUID));
    EXPECT_TRUE(objLog.Contains("CUnregistered is not registered."));
    objLog.Clear();
    QD_SCENEGRAPH.SetThreshold(LOG_FAIL);
    EXPECT_FALSE(CUnregistered::GetStaticSGStreamableType()->GetGUID(uiGUID));
    QD_SCENEGRAPH.SetThreshold(CLogSource::DEFAULT_THRESHOLD);
    EXPECT_TRUE(objLog.GetLines().empty()) << "the source does not want errors";
    testing::internal::CaptureStderr();
    EXPECT_FALSE(CBase::GetStaticSGStreamableType()->Register(0x7100000000000001, 1, 9));
    EXPECT_FALSE(CUnregistered::GetStaticSGStreamableType()->Register(0x7100000000000001, 1, 9));
    const std::string strText = testing::internal::GetCapturedStderr();
    EXPECT_NE(
        strText.find("WARN(4) - Attempt to register guid 8142508126285856769 to CSGStreamableType at 0x"),
        std::string::npos);
    EXPECT_NE(strText.find(" more than once\r\n"), std::string::npos);
    EXPECT_NE(strText.find(" but it is already registered to 0x"), std::string::npos);
    EXPECT_EQ(SGStreamableType::FindType(0x7100000000000001), CBase::GetStaticSGStreamableType());
    EXPECT_EQ(CBase::GetStaticSGStreamableType()->GetLatestVersion(), 4);
    EXPECT_FALSE(Make<CBase>()->CSGStreamable::NotifyObjectLoaded(0, nullptr, nullptr));
    EXPECT_TRUE(objLog.HasLine("1 Invalid call of base function."));
}
