// GUIDs and versions never change by accident: what registers is what the documentation of the format lists.

#include "qdscenegraph/streaming/SGStreamableType.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

namespace
{

std::string FirstWord(const std::string& rText)
{
    std::istringstream objText(rText);
    std::string strWord;
    objText >> strWord;
    std::erase(strWord, '`'); // around names with angle brackets
    return strWord;
}

} // namespace

TEST(NestTypes, AreTheDocumentedOnes)
{
    std::ifstream objDocument(QDSG_TEST_DATA_DIR "/../../docs/nest-format.md");
    ASSERT_TRUE(objDocument.is_open());
    std::set<std::string> setDocumented;
    for (std::string strLine; std::getline(objDocument, strLine);)
    {
        // "| CSGData (base, never an object) | GUID | 1 to 2 | 2 |"
        std::istringstream objCells(strLine);
        std::string strNone, strName, strGUID, strRead, strWritten;
        for (std::string* pCell : {&strNone, &strName, &strGUID, &strRead, &strWritten})
        {
            std::getline(objCells, *pCell, '|');
        }
        if (strGUID.size() == 18 && strGUID.find_first_not_of("0123456789ABCDEF ") == std::string::npos)
        {
            setDocumented.insert(FirstWord(strName) + " " + FirstWord(strGUID) + " " + FirstWord(strRead) +
                                 " " + FirstWord(strWritten));
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
