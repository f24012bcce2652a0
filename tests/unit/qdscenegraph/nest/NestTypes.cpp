// GUIDs and versions never change by accident: what registers is what the documentation of the format lists.

#include "qdscenegraph/streaming/SGStreamableType.h"

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>

TEST(NestTypes, AreTheDocumentedOnes)
{
    std::ifstream objDocument(QDSG_TEST_DATA_DIR "/../../docs/nest-format.md");
    ASSERT_TRUE(objDocument.is_open());
    const std::regex objRow(R"(\| (C\w+)(?: \([^)]*\))? \| ([0-9A-F]{16}) \| (\d+)(?: to \d+)? \| (\d+) \|)");
    std::set<std::string> setDocumented;
    for (std::string strLine; std::getline(objDocument, strLine);)
    {
        std::smatch objMatch;
        if (std::regex_match(strLine, objMatch, objRow))
        {
            setDocumented.insert(objMatch.format("$1 $2 $3 $4"));
        }
    }
    std::set<std::string> setRegistered;
    for (const SGStreamableType* pType : SGStreamableType::GetAllTypes())
    {
        if (pType->GetName() != "CTestData") // this program's own
        {
            uint64_t uiGUID = 0;
            ASSERT_TRUE(pType->GetGUID(uiGUID));
            char arrText[128];
            std::snprintf(arrText, sizeof(arrText), "%s %016llX %d %d", pType->GetName().c_str(),
                          static_cast<unsigned long long>(uiGUID), pType->GetOldestVersion(),
                          pType->GetLatestVersion());
            setRegistered.insert(arrText);
        }
    }
    EXPECT_EQ(setRegistered, setDocumented);
}
