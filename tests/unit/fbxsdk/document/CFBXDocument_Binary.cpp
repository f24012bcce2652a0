// Binary files: all versions and byte orders give the same document, and damage is named with its place.
#include "FBXTestDocument.h"

#include "support/CLogCapture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace
{

using namespace std::string_view_literals;

// As many as are kept as a row.
const std::vector<double> ROW = {0, 1, 4, 9, 16, 25, 36, 49, 64, 81, 2.5, -1, 0.25, 7, 8, 9,
                                 1, 2, 3, 4, 5,  6,  7,  8,  9,  8,  7,   6,  5,    4, 3, 2};
constexpr const char* ROW_TEXT =
    "0 1 4 9 16 25 36 49 64 81 2.5 -1 0.25 7 8 9 1 2 3 4 5 6 7 8 9 8 7 6 5 4 3 2";

// One that every version of the format can say.
std::vector<uint8_t> MakeFile(int nVersion, bool bBigEndian, bool bDeflate)
{
    CFBXTestFile objFile(nVersion, bBigEndian, bDeflate);
    objFile.Open("FBXHeaderExtension").Add("FBXVersion", nVersion < 6000 ? 5800 : nVersion).Close();
    objFile.Open("Objects").Open("Model", int64_t{-5000000000}, "Cube\0\1Model"sv, "Mesh");
    objFile.Add("Numbers", '\1', 'T', int16_t{-2}, int32_t{-70000}, 0.5f, -1.25,
                CFBXTestFile::SRaw{"\x7F\0b"});
    objFile.Add("Row", ROW).Close().Add("Empty", "").Close();
    return objFile.Finish();
}

TEST(CFBXDocument, EveryVersionAndByteOrderGivesTheSame)
{
    const std::string strExpected =
        std::string(
            "Objects(){Model(-5e+09,'Cube\0\1Model','Mesh'){Numbers(1,'T',-2,-70000,0.5,-1.25,'\x7F')Row(["sv) +
        ROW_TEXT + "])}Empty('')}";
    for (const int nVersion : {2000, 3000, 6100, 7000, 7400, 7499, 7500, 7700})
    {
        for (const bool bBigEndian : {false, true})
        {
            for (const bool bDeflate : {false, true})
            {
                SCOPED_TRACE(std::to_string(nVersion) + (bBigEndian ? " big" : "") +
                             (bDeflate ? " deflated" : ""));
                CQDString strError;
                const auto spDocument =
                    CFBXDocument::FromBytes(MakeFile(nVersion, bBigEndian, bDeflate), strError);
                ASSERT_TRUE(spDocument) << strError;
                EXPECT_EQ(spDocument->GetVersion(), nVersion < 6000 ? 5800 : nVersion);
                EXPECT_FALSE(spDocument->IsASCII());
                EXPECT_EQ(Describe(*spDocument->GetRoot().FindChild("Objects")), strExpected);
            }
        }
    }
}

TEST(CFBXDocument, ArraysBecomeAnyTypeOfNumber)
{
    for (const bool bBigEndian : {false, true})
    {
        for (const bool bDeflate : {false, true})
        {
            CFBXTestFile objFile(7500, bBigEndian, bDeflate);
            objFile.Add("d",
                        std::vector<double>{1.9, -1e300, 1e300, std::numeric_limits<double>::quiet_NaN()});
            objFile.Add("f", std::vector<float>{0.1f, -2.5f});
            objFile.Add("i", std::vector<int32_t>{-1, 2147483647});
            objFile.Add("l", std::vector<int64_t>{(int64_t{1} << 53) + 1, -5});
            objFile.Add("b", std::vector<char>{1, 0}).Add("none", std::vector<int32_t>{});
            CQDString strError;
            const auto spDocument = CFBXDocument::FromBytes(objFile.Finish(), strError);
            ASSERT_TRUE(spDocument) << strError;
            const CFBXRecord& rRoot = spDocument->GetRoot();
            std::vector<int32_t> vecInts{7};
            std::vector<int64_t> vecInt64s;
            std::vector<float> vecFloats;
            constexpr int32_t LEAST = std::numeric_limits<int32_t>::min();
            constexpr int32_t MOST = std::numeric_limits<int32_t>::max();
            EXPECT_TRUE(rRoot.FindChild("d")->ReadInts(vecInts));
            EXPECT_EQ(vecInts, (std::vector<int32_t>{1, LEAST, MOST, 0}));
            EXPECT_TRUE(rRoot.FindChild("l")->ReadInts(vecInts));
            EXPECT_EQ(vecInts, (std::vector<int32_t>{MOST, -5}));
            EXPECT_TRUE(rRoot.FindChild("l")->ReadInt64s(vecInt64s));
            EXPECT_EQ(vecInt64s, (std::vector<int64_t>{(int64_t{1} << 53) + 1, -5}));
            EXPECT_TRUE(rRoot.FindChild("f")->ReadFloats(vecFloats));
            EXPECT_EQ(vecFloats, (std::vector<float>{0.1f, -2.5f}));
            EXPECT_TRUE(rRoot.FindChild("b")->ReadFloats(vecFloats));
            EXPECT_EQ(vecFloats, (std::vector<float>{1, 0}));
            EXPECT_TRUE(rRoot.FindChild("none")->ReadInts(vecInts));
            EXPECT_TRUE(vecInts.empty());
            EXPECT_EQ(rRoot.FindChild("d")->GetArrayCount(), 4u);
        }
    }
}

TEST(CFBXDocument, DamagedBinaryFilesAreNamed)
{
    // Outer at byte 27, its end at 27, values 31, value bytes 35, name 40; Inner at 58 with "Text" in it.
    CFBXTestFile objFile(7400);
    objFile.Open("Outer", int64_t{1}).Open("Inner", "Text").Close().Close();
    const std::vector<uint8_t> vecGood = objFile.Finish();
    const struct
    {
        size_t nPlace;
        uint32_t uiValue;
        const char* szError;
    } arrFaults[] = {
        {23, 1999, "byte 23: binary FBX of the unknown version 1999"},
        {23, 8000, "byte 23: binary FBX of the unknown version 8000"},
        {27, 30, "byte 27: record 'Outer' says that it ends at byte 30, which is before its values"},
        {27, 0, "byte 27: record 'Outer' says that it ends at byte 0, which is before its values"},
        {27, 999, "byte 27: record 'Outer' says that it ends at byte 999, which is after what it is in"},
        {35, 999, "byte 45: the values of record 'Outer' take more bytes than it has"},
        {31, 2, "byte 54: too few bytes for all values in record 'Outer'"},
        {45, 'W', "byte 45: unknown type 'W' of a value in record 'Outer'"},
        {45, 'd', "byte 45: too few bytes for the head of an array in record 'Outer'"},
        {54, 200, "byte 54: record 'Inner' says that it ends at byte 200, which is after what it is in"},
        {54, 40, "byte 54: record 'Inner' says that it ends at byte 40, which is before its values"},
        {73, 5, "byte 72: too few bytes for a value of type 'S' in record 'Inner'"},
        {73, 0xFFFFFFFFu, "byte 72: too few bytes for a value of type 'S' in record 'Inner'"},
    };
    for (const auto& rFault : arrFaults)
    {
        std::vector<uint8_t> vecBytes = vecGood;
        std::memcpy(vecBytes.data() + rFault.nPlace, &rFault.uiValue, sizeof(rFault.uiValue));
        CQDString strError;
        EXPECT_EQ(CFBXDocument::FromBytes(std::move(vecBytes), strError), nullptr) << rFault.szError;
        EXPECT_EQ(strError, rFault.szError);
    }
    std::vector<uint8_t> vecFewer = vecGood;
    vecFewer[31] = 0;
    const CLogCapture objLog;
    CQDString strError;
    const auto spFewer = CFBXDocument::FromBytes(std::move(vecFewer), strError);
    EXPECT_EQ(spFewer ? Describe(spFewer->GetRoot()) : strError, "(){Outer(){Inner('Text')}}");
    EXPECT_TRUE(objLog.HasLine(
        "4 'Outer' at byte 27 has bytes after its last value. They are ignored, here and elsewhere."));
    EXPECT_EQ(CFBXDocument::FromBytes({}, strError), nullptr);
    EXPECT_EQ(strError, "the file is empty");
    EXPECT_EQ(CFBXDocument::FromBytes(std::vector<uint8_t>(40, 0xFF), strError), nullptr);
    EXPECT_EQ(strError, "this is not an FBX file, neither a binary nor an ASCII one");
    EXPECT_EQ(CFBXDocument::Load("/no/such/file.fbx", strError), nullptr);
    EXPECT_EQ(strError, "No such file or directory");
}

TEST(CFBXDocument, RecordsNestedTooDeepAreRefused)
{
    for (const int nDepth : {64, 65, 100000})
    {
        CFBXTestFile objFile(7400);
        for (int n = 0; n < 2 * nDepth; ++n)
        {
            n < nDepth ? objFile.Open("N") : objFile.Close();
        }
        CQDString strError;
        EXPECT_EQ(CFBXDocument::FromBytes(objFile.Finish(), strError) != nullptr, nDepth == 64) << nDepth;
    }
}

TEST(CFBXDocument, CutOffFilesAreRefusedUnlessEveryRecordIsThere)
{
    const std::vector<uint8_t> vecGood = MakeFile(7400, false, true);
    const size_t nRecordsEnd = vecGood.size() - 6 - 13;
    for (size_t nLength = 0; nLength < vecGood.size(); ++nLength)
    {
        CQDString strError;
        const auto spDocument = CFBXDocument::FromBytes(
            {vecGood.begin(), vecGood.begin() + static_cast<ptrdiff_t>(nLength)}, strError);
        // Also between its two records of the top level, where nobody can tell: a warning is all.
        const bool bWhole = spDocument && spDocument->GetRoot().FindChild("Objects") != nullptr;
        EXPECT_EQ(bWhole, nLength >= nRecordsEnd) << nLength;
        EXPECT_EQ(spDocument == nullptr, !strError.empty()) << nLength;
    }
}

TEST(CFBXDocument, PackedArraysThatLieAreDamaged)
{
    CFBXTestFile objFile(7400, false, true);
    objFile.Add("Vertices", std::vector<double>(100, 0.5));
    const std::vector<uint8_t> vecGood = objFile.Finish();
    // The record begins at byte 27; its name ends at 48, where the array's type is, then count, encoding,
    // bytes.
    uint32_t uiPacked = 0;
    std::memcpy(&uiPacked, vecGood.data() + 57, sizeof(uiPacked));
    const struct
    {
        size_t nPlace;
        uint32_t uiValue;
        std::string strFault;
    } arrFaults[] = {
        {49, 99, "it has more than its 99 numbers"},
        {49, 101, "it has 100 numbers instead of 101"},
        {49, 0xFFFFFFFFu, std::to_string(uiPacked) + " packed bytes cannot hold 4294967295 numbers"},
        {57, uiPacked - 3, "its packed bytes end too early"},
        {61, 0, "unknown compression method"},
        {61 + uiPacked - 4, 0, "incorrect data check"},
    };
    for (const auto& rFault : arrFaults)
    {
        std::vector<uint8_t> vecBytes = vecGood;
        std::memcpy(vecBytes.data() + rFault.nPlace, &rFault.uiValue, sizeof(rFault.uiValue));
        CQDString strError;
        const auto spDocument = CFBXDocument::FromBytes(std::move(vecBytes), strError);
        ASSERT_TRUE(spDocument) << strError;
        const CLogCapture objLog;
        std::vector<double> vecNumbers{1};
        EXPECT_FALSE(spDocument->GetRoot().FindChild("Vertices")->ReadDoubles(vecNumbers));
        EXPECT_TRUE(vecNumbers.empty());
        EXPECT_TRUE(
            objLog.HasLine("1 The array of 'Vertices' at byte 27 is damaged: " + rFault.strFault + "."))
            << rFault.strFault << " / " << (objLog.GetLines().empty() ? "" : objLog.GetLines()[0]);
    }
}

} // namespace
