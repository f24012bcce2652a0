// Reference counts of service objects, names, and the pool that both kinds of object are counted in.

#include "qdcommon/CRefObject.h"

#include "qdcommon/CMemPool.h"
#include "qdcommon/CQDCompactString.h"
#include "support/CLogCapture.h"

#include <gtest/gtest.h>

#include <new>

TEST(RefObject, CountsAndReportsWhatIsDeleted)
{
    CLogCapture objLog;
    // In memory of our own, so that the count of the destroyed object can be looked at.
    alignas(CRefObject) unsigned char arrMemory[sizeof(CRefObject)];
    auto* pObject = ::new (static_cast<void*>(arrMemory)) CRefObject;
    EXPECT_EQ(pObject->AddRef(), 1);
    EXPECT_EQ(pObject->AddRef(), 2);
    EXPECT_EQ(pObject->Release(), 1);
    // Nobody owns it: releasing is reported, and the object is not destroyed.
    auto* pUnowned = new CRefObject;
    EXPECT_EQ(pUnowned->Release(), -1);
    EXPECT_EQ(pUnowned->AddRef(), -1);
    ASSERT_EQ(objLog.GetLines().size(), 2u);
    EXPECT_EQ(objLog.GetLines()[0].find("1 Attempt to Release() deleted CRefObject at 0x"), 0u);
    EXPECT_EQ(objLog.GetLines()[1].find("1 Attempt to AddRef() deleted CRefObject at 0x"), 0u);
    delete pUnowned;
}

TEST(CompactString, EqualTextsAreOneEntry)
{
    const CMemPool& rPool = CMemPool::GetPool("Names");
    const int64_t nBlocks = rPool.GetNumLiveBlocks();
    {
        const CQDCompactString strA("a name of its own");
        CQDCompactString strB(CQDString("a name of its own"));
        EXPECT_EQ(strA, strB);
        EXPECT_EQ(strA.c_str(), strB.c_str()) << "one copy of the characters";
        EXPECT_EQ(rPool.GetNumLiveBlocks(), nBlocks + 1);
        strB = CQDCompactString("another");
        EXPECT_FALSE(strA == strB);
        EXPECT_EQ(CQDCompactString(), CQDCompactString(""));
        strB = strA;
        EXPECT_EQ(strB.GetView(), "a name of its own");
    }
    EXPECT_EQ(rPool.GetNumLiveBlocks(), nBlocks);
    EXPECT_EQ(sizeof(CQDCompactString), sizeof(void*));
}
