// Animation curves against the values that MotionBuilder and Maya show for the same keys, and against numbers
// computed by hand.
#include "support/CLogCapture.h"
#include "support/FBXTestScene.h"

#include <gtest/gtest.h>

namespace
{

constexpr double FRAME = 1.0 / 24;

// A scene with one curve, "c", of the lines of its record.
class CCurve : public CFBXTestScene
{
  public:
    explicit CCurve(const std::string& rLines)
        : CFBXTestScene(Object("AnimationCurve", 1, "c", "", rLines + "\n")),
          m_pCurve(Find<FbxAnimCurve>("c"))
    {}

    const FbxAnimCurve* operator->() const { return m_pCurve; }
    bool IsNull() const { return m_pCurve == nullptr; }
    double At(double dSeconds) const { return m_pCurve->Evaluate(FbxTime::FromSeconds(dSeconds)); }

  private:
    const FbxAnimCurve* m_pCurve;
};

// Times in frames of a 24th of a second. Without counts there are flags and numbers for each key, or for all.
std::string Keys(const std::vector<int>& rFrames, const std::string& rValues, const std::string& rFlags,
                 const std::string& rNumbers, std::string strCounts = "")
{
    if (strCounts.empty())
    {
        const bool bOnce = rFlags.find(',') == std::string::npos;
        strCounts = bOnce ? std::to_string(rFrames.size()) : "1";
        for (size_t n = 1; !bOnce && n < rFrames.size(); ++n)
        {
            strCounts += ",1";
        }
    }
    std::string strTimes;
    for (const int nFrame : rFrames)
    {
        strTimes += (strTimes.empty() ? "" : ",") + std::to_string(nFrame * (FbxTime::TICKS_PER_SECOND / 24));
    }
    return Array("KeyTime", strTimes) + Array("KeyValueFloat", rValues) + Array("KeyAttrFlags", rFlags) +
           Array("KeyAttrDataFloat", rNumbers) + Array("KeyAttrRefCount", strCounts);
}

struct CShownCurve
{
    const char* szName;
    std::string strLines;
    std::vector<double> vecShown; // frame, value, frame, value ...
};

const std::string NO_NUMBERS = "0,0,218434821,0";

TEST(FbxAnimCurve, ShowsWhatMotionBuilderAndMayaShow)
{
    const CShownCurve CURVES[] = {
        {"smooth",
         Keys({0, 4, 12, 13, 16, 18, 22, 26, 28}, "0,10,0,0,2,-8,-4,-8,0", "524552", NO_NUMBERS),
         {1, 2.851562, 3, 8.554688, 5, 10.117188, 11, 0.976562, 14, 1.148148, 20, -7, 27, -4.625}},
        {"smooth, clamp",
         Keys({0, 1, 4, 12, 13}, "0,0,10,0,0", "4360", NO_NUMBERS),
         {2, 2.361111, 3, 6.944445, 5, 10.367839, 11, 0.54362}},
        {"time independent",
         Keys({0, 1, 4, 12, 13}, "0,0,10,0,0", "8456", NO_NUMBERS),
         {2, 3.703704, 3, 7.962963, 5, 9.69184}},
        {"time independent, clamp",
         Keys({0, 1, 4, 12, 13}, "0,0,10,0,0", "12552", NO_NUMBERS),
         {2, 2.592592, 5, 9.570312, 11, 0.429688}},
        {"clamp progressive, weights",
         Keys({1, 11, 20, 30}, "0,0.7466079,9.448743,10", "50332680,50356488,50356488,1032",
              "1088132282,1085015226,218438717,0,0,1082000628,218434821,0,0,-1059869115,506989829,0,"
              "-1059869111,0,218434821,0"),
         {2, 0.273, 7, 0.92, 10, 0.591, 14, 3.191, 17, 7.121, 22, 10.128, 26, 10.854, 29, 10.264}},
        {"user, linear, constant",
         Keys({1, 11, 21, 36, 46, 53, 63, 73, 80, 89, 96, 120},
              "-8.653366,-6.490576,-6.113196,-3.958113,-5.905977,-5.118543,-5.118543,-3.875225,"
              "-2.942738,-1.927362,-1.243537,5.603338",
              "50332680,50332680,1028,1028,50332680,50334728,50334728,2,2,258,258,1032",
              "0,1076749697,218434821,0,1076749697,0,218434821,0,1079815734,1079815734,218434821,0,"
              "-1063937905,-1063937905,218434821,0,0,-1064744242,502533381,0,1081739175,1082049094,"
              "341251353,0,-1065006512,1046350915,404100057,0,0,1077608114,218434821,0,0,1076043659,"
              "218434821,0,0,1046350915,218434821,0,0,0,218434821,0,0,0,218434821,0"),
         {0,  -8.653366, 5,  -8.00075,  15, -6.19471,  22, -5.969524, 40, -4.737258,
          47, -5.767788, 50, -4.83559,  58, -5.099224, 60, -5.359269, 68, -4.69383,
          76, -3.875225, 85, -2.942738, 90, -1.243537, 97, 5.603338}},
        {"user, linear, constant, as a row",
         "KeyVer: 4005\nKey: 1924423250,-8.653366,U,s,0,2.71713,a,0.33333333,0.33333333,"
         "21168655750,-6.490576,U,s,2.71713,0,n,40412888250,-6.113196,L,69279237000,-3.958113,L,"
         "88523469500,-5.905977,U,b,0,-4.29038,l,0.766877,101994432250,-5.118543,U,b,3.90672,"
         "3.98061,a,0.540154,0.520752,121238664750,-5.118543,U,s,-4.16532,0.216844,a,0.508151,"
         "0.616662,140482897250,-3.875225,C,s,153953860000,-2.942738,C,s,171273669250,-1.927362,C,"
         "n,184744632000,-1.243537,C,n,230930790000,5.603338,U,s,0,0,n",
         {5, -8.00075, 15, -6.19471, 22, -5.969524, 50, -4.83559, 58, -5.099224, 60, -5.359269, 68, -4.69383,
          76, -3.875225, 90, -1.243537}},
        {"an old row without weights, automatic tangents and TCB",
         "Key: 0,0,U,a,7697693000,4,U,t,0,0,0,23093079000,4,U,s,0,0",
         {2, 1.75, 8, 4.5}},
        {"tension, continuity, bias",
         Keys({0, 6, 12, 24, 30, 42, 48, 51, 57, 60}, "0,-2,5,0,10,6,-2,4,-1,4",
              "66056,520,520,520,520,520,520,520,520",
              "-1090519040,1056964608,1061158912,0,-1082130432,1065353216,-1082130432,0,-1082130432,0,"
              "1065353216,0,0,-1082130432,-1082130432,0,0,-1065353216,0,0,-1085485875,-1102263091,"
              "1058642330,0,1061997773,1045220557,-1093874483,0,1056964608,1069547520,-1090519040,0,"
              "1056964608,-1090519040,-1088841318,0",
              "1,1,1,1,1,1,1,2,1"),
         {1,  -0.839699, 4,  -5.657407, 9,  -0.25, 15, 8.15625,   25, 2.407407, 33, 4.29,
          44, 2.951704,  49, -0.186167, 54, 0.875, 58, -0.069444, 59, 2.354167}},
        {"weights, and velocities that are in them already",
         Keys({0, 6, 12, 18, 24, 30, 36}, "0,10,0,-10,0,10,-10",
              "855640328,855638280,855638280,855638280,856162568,855638280,855638280",
              "-1005671044,0,327618463,109184975,0,-1005544363,425923463,262080130,1141939285,0,"
              "294852963,76418975,0,1142119510,327618963,262079630,-1005364138,1090868564,174723975,"
              "43650975,-1056615084,0,576653930,358220442,0,0,131015263,5466"),
         {2, 3.600664, 5, 9.66706, 8, 8.020978, 14, -2.236577, 23, -0.707333, 28, 7.037397}},
        {"bias beyond all lines",
         Keys({0, 6, 12, 18, 24, 30, 36, 43, 46, 54, 60}, "0,10,20,0,-20,0,20,20,24,20,20",
              "264,264,33554696,16777480,33554696,16777480,264,264,264,3211528,264",
              "1148846080,1142292480,218434821,0,-1005191168,0,218434821,0,0,1140457472,491457797,0,"
              "-1007026176,0,218438987,0,0,-1004371968,327617797,0,1143111680,0,218436487,0,0,"
              "1143930880,218434821,0,-1003552768,0,218434821,0,0,-1010302976,218434821,0,1137180672,"
              "-998637568,218434821,0,1135640576,0,218434821,0"),
         {3, 37.5, 9, 15.624999, 15, 11.020745, 27, -16.822596, 33, 15.768107, 40, 31.673466, 44, 16.203705,
          50, 21.666668, 57, -10.687501}},
    };
    for (const CShownCurve& rShown : CURVES)
    {
        const CCurve objCurve(rShown.strLines);
        ASSERT_FALSE(objCurve.IsNull()) << rShown.szName;
        for (size_t n = 0; n < rShown.vecShown.size(); n += 2)
        {
            EXPECT_NEAR(objCurve.At(rShown.vecShown[n] * FRAME), rShown.vecShown[n + 1], 6e-4)
                << rShown.szName << " at frame " << rShown.vecShown[n];
        }
    }
}

TEST(FbxAnimCurve, GoesOnOutsideOfItsKeys)
{
    // From 0 at 1 s to 10 at 3 s.
    const std::string strKeys = Keys({24, 72}, "0,10", "4", NO_NUMBERS);
    const struct
    {
        const char* szType;
        int nCount;
        std::vector<std::pair<double, double>> vecValues; // seconds, values
    } CASES[] = {
        {"C", -1, {{-50, 0}, {0.5, 0}, {3.5, 10}}},
        {"K", -1, {{0, -5}, {4, 15}}},
        {"R", -1, {{0.5, 7.5}, {-1.5, 7.5}, {3.5, 2.5}, {8, 5}}},
        {"R", 2, {{-2.5, 2.5}, {-3, 0}, {-9, 0}, {6.5, 7.5}, {7, 10}, {7.5, 10}}},
        {"R", 0, {{0.5, 0}, {3.5, 10}}},
        {"M", -1, {{0.5, 2.5}, {-1, 10}, {-2.5, 2.5}, {3.5, 7.5}, {5, 0}, {5.5, 2.5}}},
        {"M", 1, {{0, 5}, {-9, 10}, {4.5, 2.5}, {9, 0}}},
        {"A", -1, {{0.5, -2.5}, {-1.5, -12.5}, {3.5, 12.5}, {6, 25}}},
        {"A", 1, {{-4, -10}, {3.5, 12.5}, {9, 20}}},
        {"?", -1, {{9, 10}}},
    };
    for (const auto& rCase : CASES)
    {
        const std::string strRest = "{\n Type: \"" + std::string(rCase.szType) +
                                    "\"\n Repetition: " + std::to_string(rCase.nCount) + "\n}\n";
        const CCurve objCurve(strKeys + "Pre-Extrapolation: " + strRest + "Post-Extrapolation: " + strRest);
        ASSERT_FALSE(objCurve.IsNull());
        for (const auto& [dSeconds, dValue] : rCase.vecValues)
        {
            EXPECT_NEAR(objCurve.At(dSeconds), dValue, 1e-9)
                << rCase.szType << " " << rCase.nCount << " at " << dSeconds;
        }
    }
    EXPECT_EQ(CCurve("Default: 7")->Evaluate(FbxTime()), 7);
    EXPECT_EQ(CCurve(Keys({24}, "3", "1032", NO_NUMBERS) + "Post-Extrapolation: {\n Type: K\n}").At(9), 3);
}

TEST(FbxAnimCurve, SegmentsAreTheCurve)
{
    // Weights 0.5 behind the first key and 0.25 in front of the second, slopes 12 and -24 a second.
    const CCurve objCurve(Keys({0, 24, 48, 72}, "0,6,9,9", "50332680,4,258,2",
                               "1094713344,-1044381696,163779463,0,0,0,0,0,0,0,0,0,0,0,0,0"));
    ASSERT_FALSE(objCurve.IsNull());
    const FbxAnimCurveSegment objCubic = objCurve->GetSegment(0);
    EXPECT_NEAR(objCubic.dOutTime, 0.5, 1e-4);
    EXPECT_NEAR(objCubic.dOutValue, 6, 2e-3);
    EXPECT_NEAR(objCubic.dInTime, 0.75, 1e-4);
    EXPECT_NEAR(objCubic.dInValue, 12, 2e-3);
    // The point of the Bezier curve at half of its parameter.
    EXPECT_NEAR(objCurve.At((3 * objCubic.dOutTime + 3 * objCubic.dInTime + 1) / 8),
                (3 * objCubic.dOutValue + 3 * objCubic.dInValue + 6) / 8, 1e-6);
    const FbxAnimCurveSegment objLine = objCurve->GetSegment(1);
    EXPECT_NEAR(objLine.dOutTime, 4.0 / 3, 1e-12);
    EXPECT_NEAR(objLine.dInValue, 8, 1e-12);
    EXPECT_TRUE(objCurve->GetSegment(2).bConstantNext);
    EXPECT_FALSE(objCurve->GetSegment(1).bConstantNext);

    // A remembered place is no more than that.
    int nLast = 99;
    for (const double dSeconds : {0.1, 0.4, 1.5, 1.6, 2.5, 0.2, -1.0, 2.9, 7.0})
    {
        EXPECT_EQ(objCurve->Evaluate(FbxTime::FromSeconds(dSeconds), &nLast), objCurve.At(dSeconds))
            << dSeconds;
    }
}

TEST(FbxAnimCurve, DamagedKeys)
{
    const std::string strTwice = Keys({48, 0, 24, 24}, "4,0,1,2", "4", NO_NUMBERS);
    const struct
    {
        std::string strLines;
        const char* szMessage;
        int nKeys; // -1: no curve
        double dAt1;
    } CASES[] = {
        {strTwice, "keys are not in the order of their times", 3, 2},
        {Keys({0, 24, 48}, "5,6", "4", NO_NUMBERS), "3 times and 2 values", 2, 6},
        {Keys({0, 24, 48}, "5,1e300,7", "4", NO_NUMBERS), "1 keys that are no numbers", 2, 6},
        {Keys({0, 48}, "5,7", "8,4", "1,2", "0"), "", 2, 6}, // all keys take the last set
        {Keys({0, 48}, "5,7", "4", NO_NUMBERS, "-9,1000000000"), "", 2, 6},
        {Array("KeyTime", "0,92372316000") + Array("KeyValueFloat", "5,7"), "", 2, 6},
        {Array("KeyTime", "-9223372036854775807,9223372036854775807") + Array("KeyValueFloat", "5,7"), "", 2,
         6},
        {"Key: 0,5,L,92372316000,7,L", "", 2, 6},
        {"Key: 0,5,C", "", 1, 5},
        {"Key: 0,5,L,7,L", "Key 1 of animation curve 'Key' at line", -1, 0},
        {"Key: 0,L", "Key 0 of animation curve", -1, 0},
        {"Key: 0,5", "Key 0 of animation curve", -1, 0},
    };
    for (const auto& rCase : CASES)
    {
        const CLogCapture objLog;
        const CCurve objCurve(rCase.strLines);
        EXPECT_TRUE(*rCase.szMessage == '\0' || objLog.Contains(rCase.szMessage)) << rCase.strLines;
        ASSERT_EQ(objCurve.IsNull() ? -1 : objCurve->KeyGetCount(), rCase.nKeys) << rCase.strLines;
        if (rCase.nKeys > 0)
        {
            EXPECT_NEAR(objCurve.At(1), rCase.dAt1, 1e-6) << rCase.strLines;
        }
    }
}

} // namespace
