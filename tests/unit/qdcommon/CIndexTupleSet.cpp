// The numbering of index tuples.
#include "qdcommon/CIndexTupleSet.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

TEST(IndexTupleSet, NumbersAsAMapDoes)
{
    std::mt19937 objRandom(1);
    for (const int32_t nSize : {1, 2, 3, 7})
    {
        CIndexTupleSet objSet(nSize);
        std::map<std::vector<int32_t>, int32_t> mapExpected;
        std::vector<int32_t> vecTuples;
        for (int n = 0; n < 20000; ++n)
        {
            std::vector<int32_t> vecTuple(static_cast<size_t>(nSize));
            for (int32_t& rnIndex : vecTuple)
            {
                // Few values make repetitions; those far apart differ in their high bits alone.
                rnIndex = static_cast<int32_t>(objRandom() % 20) * (n % 2 == 0 ? 1 : 0x4000000) - 1;
            }
            const auto [it, bNew] =
                mapExpected.try_emplace(vecTuple, static_cast<int32_t>(mapExpected.size()));
            if (bNew)
            {
                vecTuples.insert(vecTuples.end(), vecTuple.begin(), vecTuple.end());
            }
            ASSERT_EQ(objSet.Insert(vecTuple.data()), it->second);
        }
        EXPECT_EQ(objSet.GetCount(), static_cast<int32_t>(mapExpected.size()));
        EXPECT_EQ(objSet.TakeTuples(), vecTuples);
    }
}
