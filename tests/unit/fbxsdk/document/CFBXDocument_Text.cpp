// ASCII files: the grammar, the numbers and the messages.
#include "FBXTestDocument.h"

#include "support/CLogCapture.h"

#include <gtest/gtest.h>

namespace
{

TEST(CFBXDocument, AsciiGivesTheSameAsBinary)
{
    std::string strRow = "0,0";
    for (int n = 1; n < 20; ++n)
    {
        strRow += "\n ," + std::to_string(n) + ",-1.5e-" + std::to_string(n % 3) + " ; comment } \" :\r\n";
    }
    const std::string strText = "\xEF\xBB\xBF; FBX 6.1.0 project file\r\n;a: {\r\n\r\n"
                                "Objects:  {\r\n"
                                "\tModel: -5000000000, \"Model::A &quot;B&quot; &amp;\", \"Mesh\" \n {\n"
                                "Shading: T\n Culling: \"CullingOff\"\n"
                                "Vertices: *6 {\n a: 1,2.5,-3, ; why\n 4,\n5e1,+6 } Edges: *0 { a: }\n"
                                "Normals: *2 { 1,2 }\n"
                                "Key: 0,0,U,s,0,-0,a,\n 0.25,36948926400\n ,1,L\n\tColor: 1,1,1\n"
                                "Row: " +
                                strRow +
                                "\nLast: 18446744073709551615 }\n"
                                "Content: ,\n\"one\",\"\"\n}\nEmpty:";
    CQDString strError;
    const auto spDocument = ParseText(strText, strError);
    ASSERT_TRUE(spDocument) << strError;
    EXPECT_TRUE(spDocument->IsASCII());
    EXPECT_EQ(spDocument->GetVersion(), 6100);
    std::string strNumbers = "0 0";
    for (int n = 1; n < 20; ++n)
    {
        strNumbers += " " + std::to_string(n) + (n % 3 == 0 ? " -1.5" : n % 3 == 1 ? " -0.15" : " -0.015");
    }
    EXPECT_EQ(Describe(spDocument->GetRoot()),
              "(){Objects(){Model(-5e+09,'Model::A \"B\" &amp;','Mesh'){Shading('T')Culling('CullingOff')"
              "Vertices([1 2.5 -3 4 50 6])Edges([])Normals([1 2])"
              "Key(0,0,'U','s',0,0,'a',0.25,3.69489264e+10,1,'L')Color(1,1,1)Row([" +
                  strNumbers + "])Last(1.84467441e+19)}Content('one','')}Empty()}");
    EXPECT_EQ(spDocument->GetRoot().FindChild("Objects")->FindChild("Content")->Describe(),
              "'Content' at line 58");
}

TEST(CFBXDocument, DamagedAsciiFilesAreNamedWithTheLine)
{
    const struct
    {
        const char* szText;
        const char* szError;
    } arrFaults[] = {
        {"Objects: {\n\n", "line 3: the file ends within 'Objects' at line 1"},
        {"A: 1\n}\n", "line 2: '}' without '{'"},
        {"A: 1\n\n{ B }", "line 3: no ':' after the record's name 'B'"},
        {"A: 1\n:", "line 2: ':' where a record should begin"},
        {"A: \"b\n\n", "line 1: a text in 'A' at line 1 has no closing quotes"},
        {"A: 1\n,1.#INDIE", "line 2: '1.#INDIE' is neither a number nor a word"},
        {"A: *2 {\n a: 1,\nsnan}", "line 3: 'snan' is not a number"},
        {"A: *2 { a: 1,\"2\"}", "line 1: a text is not a number"},
        {"A: *2 { a: 1 {} }", "line 1: the numbers of 'A' at line 1 are not closed by '}'"},
        {"A: *x { a: 1 }", "line 1: 'x' is not the length of an array"},
        {"A: *2\nB: 1", "line 1: an array without '{'"},
        {"FBXHeaderExtension: {\n FBXVersion: 8100 }",
         "'FBXVersion' at line 2: FBX of the unknown version 8100"},
        {"A\1: 1", "this is not an FBX file, neither a binary nor an ASCII one"},
    };
    for (const auto& rFault : arrFaults)
    {
        CQDString strError;
        EXPECT_EQ(ParseText(rFault.szText, strError), nullptr) << rFault.szText;
        EXPECT_EQ(strError, rFault.szError);
    }
    std::string strDeep;
    for (int n = 0; n < 100000; ++n)
    {
        strDeep += "N: {\n";
    }
    CQDString strError;
    EXPECT_EQ(ParseText(strDeep, strError), nullptr);
    EXPECT_EQ(strError, "line 65: records are nested too deep or too many");
}

// Every form that printf of some library has for a number.
TEST(CFBXDocument, NumbersInText)
{
    const struct
    {
        const char* szText;
        const char* szNumbers;
    } arrCases[] = {
        {"inf,+INFINITY,-Infinity,1.#INF,-1.#INF00,2.#INF3456", "inf inf -inf inf -inf inf"},
        {"1e999,-1e999,1e-999", "inf -inf 0"},
        {"1.,.5,-.5E+1,007,-0", "1 0.5 -5 7 0"},
    };
    for (const auto& rCase : arrCases)
    {
        CQDString strError;
        const auto spDocument = ParseText("A: *1 { a: " + std::string(rCase.szText) + "}", strError);
        ASSERT_TRUE(spDocument) << strError;
        EXPECT_EQ(Describe(spDocument->GetRoot()), "(){A([" + std::string(rCase.szNumbers) + "])}");
    }
    CQDString strError;
    const auto spDocument =
        ParseText("A: nan,-nan(ind),nan(12345),1.#IND,-1.#QNAN0,0.#NAN B: *1 { a: 1-2 }", strError);
    ASSERT_TRUE(spDocument) << strError;
    std::vector<double> vecNumbers;
    EXPECT_TRUE(spDocument->GetRoot().FindChild("A")->ReadDoubles(vecNumbers));
    EXPECT_EQ(vecNumbers.size(), 6u);
    EXPECT_TRUE(std::ranges::all_of(vecNumbers, [](double d) { return d != d; }));

    const CLogCapture objLog;
    EXPECT_FALSE(spDocument->GetRoot().FindChild("B")->ReadDoubles(vecNumbers));
    EXPECT_TRUE(objLog.HasLine("1 The array of 'B' at line 1 is damaged: '1-2' is not a number."));
}

} // namespace
