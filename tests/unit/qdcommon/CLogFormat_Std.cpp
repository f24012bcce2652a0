// The columns of a log line, checked character by character.

#include "qdcommon/CLogFormat_Std.h"

#include "qdcommon/CLogChecks.h"
#include "qdcommon/CRefObject.h"
#include "support/CLogCapture.h"

#include <gtest/gtest.h>

namespace
{

std::string Format(const CLogFormat_Std& rFormat, uint64_t uiTime, int nLevel, const char* szFunction,
                   int nLine, const char* szFile = "CSGNode.cpp")
{
    CQDString strLine;
    rFormat.FormatLogMessage(strLine, uiTime, nLevel, szFunction, szFile, nLine, "message");
    return strLine;
}

class CNamed
{
  public:
    static bool Fail(const int* pArgument)
    {
        QD_CHECK_ARG(pArgument, false);
        return true;
    }
    template <class T>
    static boost::intrusive_ptr<CRefObject> FailTemplate(const T*)
    {
        const bool bCondition = false;
        QD_CHECK(bCondition && 1 + 1 == 2, nullptr);
        return nullptr;
    }
};

} // namespace

TEST(LogFormat, ConsoleAndFileColumns)
{
    const CLogFormat_Std objConsole(10, 0, 6, 50, true);
    const std::string strFunction = "CSGNode::AddChild" + std::string(47 - 17, ' ');
    EXPECT_EQ(Format(objConsole, 3723004000, 1, "CSGNode::AddChild", 42),
              "01:02:03.004 ERROR(1)    42 " + strFunction + "   message\n");
    const CLogFormat_Std objFile(10, 40, 6, 53, true);
    EXPECT_EQ(Format(objFile, 0, 7, "f", 12345), "00:00:00.000 INFO(7)   CSGNode.cpp" +
                                                     std::string(38 - 11, ' ') + "  12345 f" +
                                                     std::string(49, ' ') + "   message\n");
    // A function name and a line that are wider than their columns push the rest to the right.
    EXPECT_EQ(Format(CLogFormat_Std(0, 0, 4, 6, true), 0, 7, "longer", 123),
              "00:00:00.000 123 longer   message\n");
}

TEST(LogFormat, LevelNames)
{
    const CLogFormat_Std objFormat(10, 0, 0, 0, true);
    const std::pair<int, const char*> arrNames[] = {
        {-1, "\?\?\?\?(-1) "}, {0, "FAIL(0)  "},        {1, "ERROR(1) "}, {3, "ERROR(3) "},
        {4, "WARN(4)  "},      {6, "WARN(6)  "},        {7, "INFO(7)  "}, {14, "INFO(14) "},
        {15, "DEBUG(15)"},     {-2000, "\?\?\?\?(-200"}};
    for (const auto& [nLevel, szName] : arrNames)
    {
        EXPECT_EQ(Format(objFormat, 0, nLevel, "f", 1), "00:00:00.000 " + std::string(szName) + " message\n");
    }
}

TEST(LogFormat, ColumnsThatAreLeftOut)
{
    EXPECT_EQ(Format(CLogFormat_Std(1, 2, 1, 3, true), 0, 7, "f", 1), "00:00:00.000 message\n");
    EXPECT_EQ(Format(CLogFormat_Std(10, 40, 6, 50, true), 0, 7, "", 1, ""),
              "00:00:00.000 INFO(7)      1 message\n");
}

TEST(Log, NamesTheCallerAndTheExpression)
{
    CLogCapture objLog;
    EXPECT_FALSE(CNamed::Fail(nullptr));
    EXPECT_EQ(CNamed::FailTemplate("text"), nullptr);
    EXPECT_EQ(objLog.GetLines(), (std::vector<std::string>{"1 Handed in NULL pArgument",
                                                           "1 bCondition && 1 + 1 == 2 is false"}));
    EXPECT_EQ(CutFunctionName("bool CSGNestReader::LoadFile(const CQDString&)"), "CSGNestReader::LoadFile");
    EXPECT_EQ(CutFunctionName("PyObject* {anonymous}::qdsg_load(PyObject*, PyObject*)"), "qdsg_load");
    EXPECT_EQ(CutFunctionName("static T* CSGMem::Construct(Args&& ...) [with T = CSGNode; Args = {}]"),
              "CSGMem::Construct");
    EXPECT_EQ(CutFunctionName("boost::intrusive_ptr<CSGNode> CSGLoaderCollada::LoadSceneGraph()"),
              "CSGLoaderCollada::LoadSceneGraph");
    EXPECT_EQ(CutFunctionName("bool CSGTypeInfo<T>::CTypeMap::Register(CSGTypeInfo<T>*) [with T = CSGGeom]"),
              "CSGTypeInfo<T>::CTypeMap::Register");
    EXPECT_EQ(CutFunctionName("CSGNode::LoadFile(const CQDString&)::<lambda(int)>"), "CSGNode::LoadFile");
}

TEST(Log, ThresholdsSilenceASource)
{
    static CLogSource s_objSource("TEST");
    CLogCapture objLog;
    Log(s_objSource, LOG_DETAIL, "detail %d", 1);
    Log(s_objSource, LOG_INFO, "%s of %lld%% %.2f", std::string("text"), 5LL, 0.5f);
    CLogSource::SetAllThresholds(LOG_ERROR);
    Log(s_objSource, LOG_INFO, "gone");
    CLogSource::SetAllThresholds(CLogSource::DEFAULT_THRESHOLD);
    Log(s_objSource, LOG_ERROR, "%s", std::string(2000, 'x'));
    EXPECT_EQ(objLog.GetLines(),
              (std::vector<std::string>{"7 text of 5% 0.50", "1 " + std::string(2000, 'x')}));
}

TEST(Log, OnlyOneLogger)
{
    CLogCapture objLog;
    CLogger objSecond;
    EXPECT_TRUE(objLog.HasLine("1 A CLogger instance already exists."));
    EXPECT_NE(CLogger::GetInstance(), &objSecond);
}
