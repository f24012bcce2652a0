// Trees, connections and settings as files describe them, rightly and wrongly.
#include "support/CLogCapture.h"
#include "support/FBXTestScene.h"

#include <gtest/gtest.h>

namespace
{

// "a(b,c(d))": the names of a node and what is below it.
std::string Describe(const FbxNode& rNode)
{
    std::string strText = rNode.GetName();
    for (int n = 0; n < rNode.GetChildCount(); ++n)
    {
        EXPECT_EQ(rNode.GetChild(n)->GetParent(), &rNode);
        strText += (n == 0 ? "(" : ",") + Describe(*rNode.GetChild(n));
    }
    return rNode.GetChildCount() == 0 ? strText : strText + ")";
}

// Models with the ids 1, 2 ... and the names A, B ...
CFBXTestScene MakeTree(int nModels, const CValues& rConnections)
{
    std::string strObjects;
    for (int n = 1; n <= nModels; ++n)
    {
        strObjects += Object("Model", n, std::string(1, static_cast<char>('A' + (n - 1) % 26)), "Null");
    }
    return CFBXTestScene(strObjects, Connect(rConnections));
}

TEST(CFBXSceneBuilder, Trees)
{
    const struct
    {
        const char* m_szWhat;
        CValues m_vecConnections;
        const char* m_szTree;
        const char* m_szLine; // in the log; empty: none
    } CASES[] = {
        {"order of connections, not of objects", {"3,0", "1,3", "2,0", "4,3"}, "RootNode(C(A,D),B)", ""},
        {"several parents: the first", {"1,0", "2,0", "3,2", "3,1", "4,3"}, "RootNode(A,B(C(D)))", ""},
        {"connected twice", {"1,0", "1,0", "2,1", "3,1", "4,1"}, "RootNode(A(B,C,D))", ""},
        {"to a property", {"1,0", "2,1", "3,1", "4,1", "2,3,LookAtProperty"}, "RootNode(A(B,C,D))", ""},
        {"below itself",
         {"1,0", "2,4", "3,2", "4,3"},
         "RootNode(A,B(C(D)))",
         "4 Node 'B' is below itself; taking it as a child of the root"},
    };
    for (const auto& rCase : CASES)
    {
        SCOPED_TRACE(rCase.m_szWhat);
        CLogCapture objLog;
        const CFBXTestScene objScene = MakeTree(4, rCase.m_vecConnections);
        EXPECT_EQ(Describe(*objScene->GetRootNode()), rCase.m_szTree);
        EXPECT_TRUE(*rCase.m_szLine == '\0' ? objLog.GetLines().empty() : objLog.HasLine(rCase.m_szLine));
    }
}

TEST(CFBXSceneBuilder, TooDeepATreeIsCut)
{
    constexpr int MODELS = 2 * FbxNode::MAX_DEPTH + 10;
    CValues vecConnections;
    for (int n = 1; n <= MODELS; ++n)
    {
        vecConnections.push_back(std::to_string(n) + "," + std::to_string(n - 1));
    }
    const CFBXTestScene objScene = MakeTree(MODELS, vecConnections);
    ASSERT_EQ(objScene->GetRootNode()->GetChildCount(), 3);
    int nNodes = 1;
    const FbxNode* pNode = objScene->GetRootNode()->GetChild(1);
    for (; pNode->GetChildCount() > 0; pNode = pNode->GetChild(0))
    {
        ++nNodes;
    }
    EXPECT_EQ(nNodes, FbxNode::MAX_DEPTH);
}

TEST(CFBXSceneBuilder, GlobalSettings)
{
    const auto Read = [](const CValues& rValues) {
        return CFBXTestScene("", "", "GlobalSettings: { " + Properties(rValues) + "}\n");
    };
    int nSign = 0;
    const CFBXTestScene objZUp =
        Read({"UpAxis 2", "UpAxisSign -1", "FrontAxis 1", "CoordAxis 0", "TimeMode 14",
              "CustomFrameRate 12.5", "TimeSpanStop 46186158000", "UnitScaleFactor 2.54"});
    const FbxGlobalSettings& rSettings = objZUp->GetGlobalSettings();
    EXPECT_EQ(rSettings.GetAxisSystem().GetUpVector(nSign), FbxAxisSystem::eZAxis);
    EXPECT_EQ(nSign, -1);
    EXPECT_EQ(rSettings.GetFrameRate(), 12.5);
    EXPECT_EQ(rSettings.GetUnitScaleFactor(), 2.54);
    EXPECT_EQ(rSettings.GetTimelineDefaultTimeSpan().m_objStop.GetSecondDouble(), 1);

    const CFBXTestScene objBad = Read({"UpAxis 2", "FrontAxis 2", "TimeMode 999"});
    EXPECT_EQ(objBad->GetGlobalSettings().GetAxisSystem().GetUpVector(nSign), FbxAxisSystem::eYAxis);
    EXPECT_EQ(objBad->GetGlobalSettings().GetFrameRate(), 30);
    EXPECT_DOUBLE_EQ(Read({"TimeMode 9"})->GetGlobalSettings().GetFrameRate(), 30000.0 / 1001.0);
}

} // namespace
