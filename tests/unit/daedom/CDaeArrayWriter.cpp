// Numbers and lists of them as COLLADA documents write them.
#include "daedom/CDaeArrayWriter.h"

#include "daedom/CDaeNumber.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <vector>

namespace
{

constexpr double INF = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

class CDaeArrayWriterTest : public testing::Test
{
  protected:
    DAE m_objDAE{nullptr, nullptr, "1.4.1"};

    daeAtomicType& GetType(daeEnum eType) { return *m_objDAE.getAtomicTypes().get(eType); }

    template <class T>
    bool Write(daeTArray<T>& rArray, daeEnum eType, const std::vector<std::string>& rPieces,
               std::string* pBad = nullptr)
    {
        CDaeArrayWriter objWriter;
        objWriter.Begin(rArray, GetType(eType));
        bool bGood = true;
        for (const std::string& rPiece : rPieces)
        {
            bGood = bGood && objWriter.Write(rPiece);
        }
        bGood = bGood && objWriter.End();
        if (pBad)
        {
            *pBad = objWriter.GetBadToken();
        }
        return bGood;
    }
};

template <class T>
std::vector<T> ToVector(const daeTArray<T>& rArray)
{
    std::vector<T> arrValues;
    for (size_t n = 0; n < rArray.getCount(); ++n)
    {
        arrValues.push_back(rArray[n]);
    }
    return arrValues;
}

} // namespace

TEST(CDaeNumber, ReadsRealsAsExportersWriteThem)
{
    const struct
    {
        std::string_view strToken;
        double fValue;
    } arrGood[] = {
        {"1", 1},
        {"-0.5", -0.5},
        {"+2.5", 2.5},
        {"1e-005", 1e-5},
        {"1.", 1},
        {".5", 0.5},
        {"-.5E+2", -50},
        {"INF", INF},
        {"-INF", -INF},
        {"+inf", INF},
        {"Infinity", INF},
        {"1e400", INF},
        {"-1e400", -INF},
        {"1e-400", 0},
        {"1.#INF", INF},
        {"-1.#INF00", -INF},
        {"NaN", NOT_A_NUMBER},
        {"-nan", NOT_A_NUMBER},
        {"1.#QNAN", NOT_A_NUMBER},
        {"-1.#IND00", NOT_A_NUMBER},
        {"0.1", 0.1},
        {"123456789012345678", 123456789012345678.0},
        {"4.9e-324", 4.9e-324},
    };
    for (const auto& rCase : arrGood)
    {
        double fValue = 77;
        EXPECT_TRUE(ParseDaeReal(rCase.strToken, fValue)) << rCase.strToken;
        EXPECT_TRUE(std::isnan(rCase.fValue) ? std::isnan(fValue) : fValue == rCase.fValue)
            << rCase.strToken << " read as " << fValue;
    }
    for (std::string_view strToken :
         {"", "+", "-", "+-1", "--1", "1,5", "0x10", "1.0f", "one", "1.#", "1.#FOO", "1e", "."})
    {
        double fValue = 77;
        EXPECT_FALSE(ParseDaeReal(strToken, fValue)) << strToken;
        EXPECT_EQ(fValue, 77) << strToken;
    }
}

TEST(CDaeNumber, ReadsIntegersAndBooleans)
{
    const struct
    {
        std::string_view strToken;
        bool bGood;
        unsigned long long uiValue;
    } arrCases[] = {{"0", true, 0},
                    {"+7", true, 7},
                    {"18446744073709551615", true, ~0ull},
                    {"-1", true, ~0ull},
                    {"3.0", true, 3},
                    {"1e3", true, 1000},
                    {"3.5", false, 0},
                    {"18446744073709551616", false, 0},
                    {"abc", false, 0},
                    {"", false, 0},
                    {"NaN", false, 0},
                    {"1e30", false, 0}};
    for (const auto& rCase : arrCases)
    {
        unsigned long long uiValue = 0;
        EXPECT_EQ(ParseDaeInteger(rCase.strToken, uiValue), rCase.bGood) << rCase.strToken;
        EXPECT_EQ(uiValue, rCase.uiValue) << rCase.strToken;
    }
    short nShort = 0;
    EXPECT_FALSE(ParseDaeInteger("2490374", nShort));
    EXPECT_TRUE(ParseDaeInteger("-32768", nShort));
    EXPECT_EQ(nShort, -32768);
    bool bValue = false;
    EXPECT_TRUE(ParseDaeBool("TRUE", bValue) && bValue && ParseDaeBool("0", bValue) && !bValue);
    EXPECT_FALSE(ParseDaeBool("truely", bValue));
}

// The fast ways of reading against the C library, on numbers of every length and size.
TEST_F(CDaeArrayWriterTest, RoundsLikeTheCLibrary)
{
    std::mt19937_64 objRandom(1);
    std::string strText;
    std::vector<double> arrExpected;
    for (int n = 0; n < 20000; ++n)
    {
        char arrToken[64];
        const double fNumber = static_cast<double>(static_cast<int64_t>(objRandom())) /
                               std::pow(10.0, static_cast<double>(objRandom() % 24));
        std::snprintf(arrToken, sizeof arrToken, n % 3 == 0 ? "%.*g " : "%.*f ",
                      static_cast<int>(objRandom() % 18), fNumber);
        strText += arrToken;
        arrExpected.push_back(std::strtod(arrToken, nullptr));
    }
    daeTArray<double> arrValues;
    ASSERT_TRUE(Write(arrValues, daeAtomicType::DoubleType, {strText}));
    EXPECT_EQ(ToVector(arrValues), arrExpected);
}

TEST_F(CDaeArrayWriterTest, APieceMayEndAnywhere)
{
    const std::string strText = " 10 -2.5e1\n\t INF 1.#IND +4 ";
    daeTArray<double> arrWhole;
    ASSERT_TRUE(Write(arrWhole, daeAtomicType::DoubleType, {strText}));
    ASSERT_EQ(arrWhole.getCount(), 5u);
    for (size_t n = 0; n <= strText.size(); ++n)
    {
        daeTArray<double> arrValues;
        ASSERT_TRUE(Write(arrValues, daeAtomicType::DoubleType, {strText.substr(0, n), strText.substr(n)}))
            << n;
        ASSERT_EQ(arrValues.getCount(), 5u) << n;
        EXPECT_EQ(arrValues[1], -25) << n;
        EXPECT_TRUE(std::isnan(arrValues[3])) << n;
        EXPECT_EQ(arrValues[4], 4) << n;
    }
    std::vector<std::string> arrLetters;
    for (char c : std::string("one two  three"))
    {
        arrLetters.emplace_back(1, c);
    }
    daeTArray<daeStringRef> arrNames;
    ASSERT_TRUE(Write(arrNames, daeAtomicType::TokenType, arrLetters));
    ASSERT_EQ(arrNames.getCount(), 3u);
    EXPECT_STREQ(arrNames[2], "three");
}

TEST_F(CDaeArrayWriterTest, NamesTheBadToken)
{
    const struct
    {
        daeEnum eType;
        std::string strText;
        std::string strBad;
    } arrCases[] = {{daeAtomicType::DoubleType, "1 2 3,5 4", "3,5"},
                    {daeAtomicType::DoubleType, "1 2 x", "x"},
                    {daeAtomicType::ULongType, "0 1.5", "1.5"},
                    {daeAtomicType::BoolType, "true maybe", "maybe"}};
    for (const auto& rCase : arrCases)
    {
        std::string strBad;
        daeTArray<double> arrDoubles;
        daeTArray<daeULong> arrIntegers;
        daeTArray<daeBool> arrBooleans;
        EXPECT_FALSE(rCase.eType == daeAtomicType::DoubleType
                         ? Write(arrDoubles, rCase.eType, {rCase.strText}, &strBad)
                     : rCase.eType == daeAtomicType::ULongType
                         ? Write(arrIntegers, rCase.eType, {rCase.strText}, &strBad)
                         : Write(arrBooleans, rCase.eType, {rCase.strText}, &strBad));
        EXPECT_EQ(strBad, rCase.strBad);
    }
}

TEST_F(CDaeArrayWriterTest, ADefaultStaysUntilAValueComes)
{
    daeTArray<double> arrValues;
    arrValues.set3(7, 8, 9);
    ASSERT_TRUE(Write(arrValues, daeAtomicType::DoubleType, {" \n "}));
    EXPECT_EQ(ToVector(arrValues), (std::vector<double>{7, 8, 9}));
    ASSERT_TRUE(Write(arrValues, daeAtomicType::DoubleType, {"1"}));
    EXPECT_EQ(ToVector(arrValues), (std::vector<double>{1}));
    arrValues.append(2); // the array is still one that the DOM can go on with
    EXPECT_EQ(ToVector(arrValues), (std::vector<double>{1, 2}));
}
