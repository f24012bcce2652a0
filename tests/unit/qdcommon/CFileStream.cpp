// The byte encodings of the stream, and its ends.

#include "qdcommon/CFileStream.h"

#include "support/CLogCapture.h"
#include "support/CTempFile.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

TEST(FileStream, WritesLittleEndianWithoutPadding)
{
    const CTempFile objFile("values");
    {
        CFileStream objStream(objFile.GetName(), CFileStream::OPEN_WRITE | CFileStream::OPEN_TRUNCATE);
        ASSERT_TRUE(objStream.IsOpen());
        objStream.WriteInt32(-2);
        objStream.WriteUInt64(0x0102030405060708);
        objStream.WriteString("ab");
        objStream.WriteString(static_cast<const char*>(nullptr));
        objStream.WriteString(CQDCompactString(""));
        EXPECT_EQ(objStream.GetPosition(), 4 + 8 + 6 + 4 + 4);
        EXPECT_TRUE(objStream.Close());
    }
    EXPECT_EQ(objFile.ReadBytes(), "\xFE\xFF\xFF\xFF"
                                   "\x08\x07\x06\x05\x04\x03\x02\x01"
                                   "\x02\0\0\0ab\0\0\0\0\0\0\0\0"s);
}

TEST(FileStream, ReadingPastTheEndIsLoggedAndYieldsZeros)
{
    const CTempFile objFile("short", "\x07\x01\x02"s);
    CLogCapture objLog;
    CFileStream objStream(objFile.GetName(), CFileStream::OPEN_READ);
    EXPECT_EQ(objStream.ReadInt32(), 0x00020107) << "what is there, then zeros";
    EXPECT_TRUE(objLog.GetLines().empty());
    EXPECT_TRUE(objStream.EndOfFile());
    EXPECT_EQ(objStream.ReadInt32(), 0);
    char arrBytes[3] = {'x', 'y', 'z'};
    objStream.Read(arrBytes, 3);
    EXPECT_EQ(std::string(arrBytes, 3), "\0yz"s) << "only the first byte is cleared";
    EXPECT_EQ(objLog.GetLines(), (std::vector<std::string>{
                                     "1 CStream::Read found premature end of file trying to read 4 bytes.",
                                     "1 CStream::Read found premature end of file trying to read 3 bytes."}));
    objStream.SetPosition(1);
    EXPECT_FALSE(objStream.EndOfFile());
    EXPECT_EQ(objStream.GetBytesLeft(), 2);
}

TEST(FileStream, AnEmptyFileIsAtItsEndAndCanBeWritten)
{
    const CTempFile objFile("empty", "");
    CFileStream objStream(objFile.GetName(), CFileStream::OPEN_READ | CFileStream::OPEN_WRITE);
    ASSERT_TRUE(objStream.IsOpen());
    EXPECT_TRUE(objStream.EndOfFile());
    objStream.WriteInt32(5);
    EXPECT_TRUE(objStream.Close());
    EXPECT_EQ(objFile.ReadBytes(), "\x05\0\0\0"s);
}

TEST(FileStream, ReadingAndWritingShareOnePosition)
{
    const CTempFile objFile("both", "0123456789");
    {
        CFileStream objStream(objFile.GetName(), CFileStream::OPEN_READ | CFileStream::OPEN_WRITE);
        EXPECT_EQ(objStream.ReadInt32(), 0x33323130);
        objStream.Write("ab", 2);
        EXPECT_EQ(objStream.GetReadPosition(), 6);
        EXPECT_EQ(objStream.GetWritePosition(), 6);
        EXPECT_EQ(objStream.GetBytesLeft(), 4);
        EXPECT_EQ(objStream.ReadInt32(), 0x39383736);
        objStream.SetPosition(-1);
        EXPECT_EQ(objStream.GetPosition(), 10) << "there is no such place";
    }
    EXPECT_EQ(objFile.ReadBytes(), "0123ab6789");
}

TEST(FileStream, OpenModes)
{
    const CTempFile objFile("modes", "0123456789");
    {
        CFileStream objStream(objFile.GetName(), CFileStream::OPEN_WRITE);
        objStream.Write("ab", 2);
    }
    EXPECT_EQ(objFile.ReadBytes(), "ab23456789") << "writing alone does not empty the file";
    {
        CFileStream objStream(objFile.GetName(), CFileStream::OPEN_WRITE | CFileStream::OPEN_AT_END);
        objStream.Write("c", 1);
        EXPECT_EQ(objStream.GetPosition(), 11);
    }
    EXPECT_EQ(objFile.ReadBytes(), "ab23456789c");
    EXPECT_FALSE(CFileStream(objFile.GetName() + "/none", CFileStream::OPEN_READ).IsOpen());
    EXPECT_FALSE(
        CFileStream(std::filesystem::path(objFile.GetName()).parent_path(), CFileStream::OPEN_READ).IsOpen());
}

TEST(FileStream, StringsOfBothWidths)
{
    // U+00E9, U+20AC, U+1F600 as a pair, and half a pair.
    const CTempFile objFile("utf16", "\x06\0\0\0a\0\xE9\0\xAC\x20\x3D\xD8\x00\xDE\x3D\xD8"
                                     "\x02\0\0\0xy"s);
    CFileStream objStream(objFile.GetName(), CFileStream::OPEN_READ);
    objStream.SetStringMode(CStream::STRINGS_UTF16);
    CQDString strText;
    objStream.ReadString(strText);
    EXPECT_EQ(strText, "a\u00E9\u20AC\U0001F600\uFFFD");
    EXPECT_EQ(objStream.GetReadPosition(), 4 + 12);
    objStream.SetStringMode(2);
    EXPECT_EQ(objStream.ReadString(), nullptr);
    objStream.SetStringMode(CStream::STRINGS_8_BIT);
    objStream.ReadString(strText);
    EXPECT_EQ(strText, "xy");
}

TEST(FileStream, AStringLongerThanTheFileTakesNoMemory)
{
    const CTempFile objFile("long", "\xFF\xFF\xFF\xFF"
                                    "ab"s);
    CLogCapture objLog;
    CFileStream objStream(objFile.GetName(), CFileStream::OPEN_READ);
    CQDString strText = "before";
    objStream.ReadString(strText);
    EXPECT_EQ(strText, "");
    EXPECT_TRUE(
        objLog.HasLine("1 String of 4294967295 characters is longer than the 2 bytes left in the stream."));
}
