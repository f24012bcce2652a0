// Slots keep their index, and freed slots come back in the order in which they were freed.

#include "qdcommon/CListSet.h"

#include <gtest/gtest.h>

#include <deque>
#include <random>
#include <vector>

namespace
{

struct CHeapAllocator
{
    using CElt = CListSet<int, CHeapAllocator>::CElt;
    static CElt* AllocEltArray(int32_t nCount) { return new CElt[static_cast<size_t>(nCount)]; }
    static void FreeEltArray(CElt* arrElts, int32_t) { delete[] arrElts; }
};
using CSet = CListSet<int, CHeapAllocator>;

void Fill(CSet& rSet, int nCount)
{
    for (int n = 0; n < nCount; ++n)
    {
        ASSERT_EQ(rSet.Add(100 + n), n);
    }
}

} // namespace

TEST(ListSet, OldestVacancyFirst)
{
    CSet objSet;
    Fill(objSet, 5);
    objSet.Remove(3);
    objSet.Remove(1);
    EXPECT_EQ(objSet.GetSize(), 5);
    EXPECT_EQ(objSet.GetCount(), 3);
    EXPECT_FALSE(objSet.IsInUse(3));
    EXPECT_EQ(objSet.Add(7), 3);
    EXPECT_EQ(objSet.Add(8), 1);
    EXPECT_EQ(objSet.Add(9), 5);
}

TEST(ListSet, OnlyTheHighestSlotLowersTheSize)
{
    CSet objSet;
    Fill(objSet, 3);
    objSet.Remove(1);
    EXPECT_EQ(objSet.GetSize(), 3);
    objSet.Remove(2);
    EXPECT_EQ(objSet.GetSize(), 2) << "by one, although slot 1 is vacant too";
    objSet.Remove(0);
    EXPECT_EQ(objSet.GetSize(), 0) << "nothing is in use";
    EXPECT_EQ(objSet.Add(1), 0);
}

TEST(ListSet, ReservedSlotsThatStayUnsetAreVacant)
{
    CSet objSet;
    ASSERT_TRUE(objSet.Reserve(6));
    objSet.Set(4, 1);
    objSet.Set(2, 2);
    objSet.FreeUnset();
    EXPECT_EQ(objSet.GetSize(), 5);
    EXPECT_EQ(objSet.GetCount(), 2);
    EXPECT_EQ(objSet.Add(3), 0);
    EXPECT_EQ(objSet.Add(3), 1);
    EXPECT_EQ(objSet.Add(3), 3);
    EXPECT_EQ(objSet.Add(3), 5);
}

// Against a plain model: a vector of values and a queue of freed slots.
TEST(ListSet, AgreesWithAPlainModel)
{
    std::mt19937 objRandom(1);
    CSet objSet;
    std::vector<int> vecValues;
    std::deque<int> objFreed;
    for (int nStep = 1; nStep <= 20000; ++nStep)
    {
        const bool bGrow = objRandom() % 100 < (nStep / 2000 % 2 == 0 ? 70u : 30u);
        std::vector<int> vecUsed;
        for (size_t n = 0; n < vecValues.size(); ++n)
        {
            if (vecValues[n] != 0)
            {
                vecUsed.push_back(static_cast<int>(n));
            }
        }
        if (bGrow || vecUsed.empty())
        {
            int nExpected = static_cast<int>(vecValues.size());
            if (!objFreed.empty())
            {
                nExpected = objFreed.front();
                objFreed.pop_front();
                vecValues[static_cast<size_t>(nExpected)] = nStep;
            }
            else
            {
                vecValues.push_back(nStep);
            }
            ASSERT_EQ(objSet.Add(nStep), nExpected);
        }
        else
        {
            const int nIndex = vecUsed[objRandom() % vecUsed.size()];
            ASSERT_EQ(objSet.Remove(nIndex), vecValues[static_cast<size_t>(nIndex)]);
            vecValues[static_cast<size_t>(nIndex)] = 0;
            if (nIndex + 1 == static_cast<int>(vecValues.size()))
            {
                vecValues.pop_back();
            }
            else
            {
                objFreed.push_back(nIndex);
            }
            if (objFreed.size() == vecValues.size())
            {
                objFreed.clear();
                vecValues.clear();
                ASSERT_LE(objSet.GetCapacity(), 4);
            }
        }
        ASSERT_EQ(objSet.GetSize(), static_cast<int>(vecValues.size()));
        ASSERT_EQ(objSet.GetCount(), static_cast<int>(vecValues.size() - objFreed.size()));
    }
}
