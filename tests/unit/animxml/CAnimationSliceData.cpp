// Animations documents, sound and faulty.
#include "animxml/CAnimationSliceData.h"

#include "animxml/CXMLEltParse_DocAnimSlice.h"
#include "animxml/CXMLEltParse_animations.h"
#include "animxml/CXMLEltParse_animations_animation.h"
#include "animxml/CXMLEltParse_animations_channel.h"
#include "animxml/CXMLEltParse_animations_channelSet.h"
#include "animxml/CXMLEltParse_animations_dae.h"
#include "animxml/CXMLEltParse_animations_fps.h"
#include "animxml/ParseXml.h"

#include <gtest/gtest.h>

namespace
{

std::string Parse(CAnimationSliceData& rData, const std::string& rDocument)
{
    return ParseXml(CXMLEltParse_DocAnimSlice::Create(rData), rDocument);
}

std::string Describe(const CAnimationSliceData& rData)
{
    std::string strText = rData.GetDAEFilename();
    for (const CAnimationSlice& rSlice : rData.GetSlices())
    {
        strText += "\n" + rSlice.m_strName + " " + std::to_string(rSlice.m_fStartTime) + " " +
                   (rSlice.m_fEndTime ? std::to_string(*rSlice.m_fEndTime) : "end") +
                   (rSlice.m_bIgnoreChannel ? " without " : " with ") + rSlice.m_strChannel;
    }
    for (const auto& [strID, listChannel] : rData.GetChannelSets())
    {
        strText += "\n" + strID + ":";
        for (const CQDCompactString& rName : listChannel)
        {
            strText += std::string(" ") + rName.c_str();
        }
    }
    return strText;
}

} // namespace

TEST(CAnimationSliceData, WholeDocument)
{
    CAnimationSliceData objData;
    EXPECT_EQ(Parse(objData, R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<!DOCTYPE animations [<!ENTITY arm "arm/rot">]>
<animations>
  <dae>
    caf)"
                             "\xe9"
                             R"(/<!-- in pieces -->w&amp;<![CDATA[<k>]]>.dae
  </dae>
  <fps> 30 </fps>
  <channelSet id="arms"><channel value="&arm;.ANGLE"/> <channel value="b"/></channelSet>
  <channelSet id="all"><channel value="a"/><channel refSet="arms"/><channel value="a"/></channelSet>
  <channelSet id="none"/>
  <animation name="walk" startFrame="15" endFrame="45"/>
  <animation endFrame="-3" useChannels="arms" startFrame=" +0 " name="wave"></animation>
  <fps>2.5e1</fps>
  <animation name="walk" startFrame="50" ignoreChannels="later"/>
</animations>)"),
              "parsed");
    EXPECT_EQ(Describe(objData), "caf\xc3\xa9/w&<k>.dae\n"
                                 "walk 0.500000 1.500000 with \n"
                                 "wave 0.000000 -0.100000 with arms\n"
                                 "walk 2.000000 end without later\n"
                                 "all: a arm/rot.ANGLE b a\n"
                                 "arms: arm/rot.ANGLE b\n"
                                 "none:");
}

// The messages of the fault itself and where it is; what the stack adds stands between them.
TEST(CAnimationSliceData, FaultsAreNamed)
{
    const std::string strBoth = "Cannot have attribute 'useChannels' and 'ignoreChannels' in <animation>.\n"
                                "Assert 'strChannel.empty()' failed\n";
    const std::string strSlice = "Assert 'm_rSliceData.AddSlice(strName, nStartFrame, nEndFrame, strChannel, "
                                 "bIgnoreChannel)' failed\n";
    const std::string strFPS = "Assert 'fFPS > 0.0f' failed\nAssert 'm_rSliceData.SetFPS(fFPS)' failed\n";
    const std::string strSet = "Assert 'm_rSliceData.AddChannelSet(m_strValue, m_listChannel)' failed\n";
    const struct
    {
        std::string strContent; // of line 2
        int nColumn;            // the end of an empty element is behind its tag
        std::string strErrors;
    } arrCases[] = {
        // what may stand where
        {"<box/>", 0,
         "<box> is not a valid child of <animations>\n<box> is not valid inside of <animations>."},
        {"<dae>a<b/></dae>", 6, "<dae> does not support child elements.\n<b> is not valid inside of <dae>."},
        {"<channelSet id='a'><fps/>", 19, "<fps> is not a valid child of <channelSet>\n"},
        {"<dae a='' b=''/>", 0,
         "2 attributes specified for <dae> that takes no attributes.\n"
         "Child element <dae> failed to handle attributes.\n"},
        {"</animations>", 0, "<animations> names no file in a <dae>\nFailed to handle end of <animations>\n"},
        // frame rates
        {"<fps>30 1</fps>", 9, "Invalid value '30 1' for <fps>\n"},
        {"<fps/>", 6, "Invalid value '' for <fps>\n"},
        {"<fps>nan</fps>", 8, "Invalid value 'nan' for <fps>\n"},
        {"<fps>inf</fps>", 8, "Invalid value 'inf' for <fps>\n"},
        {"<fps>1,5</fps>", 8, "Invalid value '1,5' for <fps>\n"},
        {"<fps>0</fps>", 6, strFPS},
        {"<fps>-1</fps>", 7, strFPS},
        {"<animation name='a' startFrame='1'/>", 0, "Assert 'm_fFPS > 0.0f' failed\n" + strSlice},
        {"<fps>1e-38</fps><animation name='a' startFrame='2000000000'/>", 16,
         "Assert 'std::isfinite(objSlice.m_fStartTime)' failed\n" + strSlice},
        // animations
        {"<animation name='a' startFrame='1.5'/>", 0,
         "Invalid value '1.5' for attribute 'startFrame' in <animation>.\n"
         "Assert 'CInt::FromString(rStrAttrValue, nStartFrame)' failed\n"},
        {"<animation endFrame='' name='a' startFrame='1'/>", 0,
         "Invalid value '' for attribute 'endFrame' in <animation>.\n"
         "Assert 'CInt::FromString(rStrAttrValue, nEndFrame)' failed\n"},
        {"<animation useChannels='' ignoreChannels='a'/>", 0, strBoth},
        {"<animation ignoreChannels='a' useChannels='a'/>", 0, strBoth},
        {"<animation\n Name='a'/>", 0, "Unknown attribute Name for element <animation>\n"},
        {"<animation/>", 0, "<animation> missing required attribute 'name'.\n"},
        {"<animation name='a'/>", 0, "<animation> missing required attribute 'startFrame'.\n"},
        // channel sets
        {"<channelSet/>", 0, "<channelSet> requires one of the following attributes: id\n"},
        {"<channelSet id='a' b=''/>", 0, "unknown attribute 'b' in <channelSet>. expecting id\n"},
        {"<channelSet id='a'/><channelSet id='a'/>", 40,
         "Assert 'itChannelSet == m_mapChannels.end()' failed\n" + strSet},
        {"<channelSet id='a'><channel/>", 19,
         "<channel> requires one of the following attributes: value, refSet\n"},
        {"<channelSet id='a'><channel refSet='b' value='c'/>", 19,
         "<channel> requires only one of the following attributes: value, refSet\n"},
        {"<channelSet id='a'><channel refSet='a'/>", 19, "unable to find set 'a' in <channel>.\n"}};
    for (const auto& [strContent, nColumn, strErrors] : arrCases)
    {
        CAnimationSliceData objData;
        const std::string strResult = Parse(objData, "<animations>\n" + strContent);
        EXPECT_EQ(strResult.substr(0, strErrors.size()), strErrors);
        EXPECT_TRUE(strResult.ends_with("\na.anim(2:" + std::to_string(nColumn) +
                                        ") - 35 - parsing aborted\n"
                                        "Assert 'ParseLastBuffer(nBytesRead, bFinished)' failed"))
            << strResult;
        EXPECT_TRUE(objData.GetSlices().empty()) << strContent;
    }
    CAnimationSliceData objData;
    EXPECT_TRUE(Parse(objData, "<box/>")
                    .starts_with("<box> is not a valid top level element\n"
                                 "<box> is not valid at the top level of a document.\na.anim(1:0) - 35"));
    EXPECT_TRUE(
        Parse(objData, "<!-- -->\n  <animations a=''/>")
            .starts_with("1 attributes specified for <animations> that takes no attributes.\n"
                         "Child element <animations> failed to handle attributes.\na.anim(2:2) - 35"));
}

TEST(CAnimationSliceData, ElementsNeedAParent)
{
    CAnimationSliceData objData;
    CLogCapture objLog;
    for (const auto Create : {CXMLEltParse_animations::Create, CXMLEltParse_animations_dae::Create,
                              CXMLEltParse_animations_fps::Create, CXMLEltParse_animations_animation::Create,
                              CXMLEltParse_animations_channelSet::Create})
    {
        EXPECT_FALSE(Create(nullptr, objData));
    }
    EXPECT_FALSE(CXMLEltParse_animations_channel::Create(nullptr, objData));
    EXPECT_TRUE(objData.AddChannelSet("arms", {"left", "right"}));
    std::vector<std::string> vecLines(6, "1 Assert 'spParentParser' failed");
    vecLines.push_back("7 AddChannelSet arms 2 ");
    EXPECT_EQ(objLog.GetLines(), vecLines);
}

// Each set takes in the one before it ten times: what grows by the power must end soon.
TEST(CAnimationSliceData, ChannelSetsThatMultiplyEnd)
{
    std::string strDocument = "<animations><channelSet id='0'><channel value='c'/></channelSet>";
    for (int n = 1; n < 12; ++n)
    {
        strDocument += "<channelSet id='" + std::to_string(n) + "'>" +
                       Repeat("<channel refSet='" + std::to_string(n - 1) + "'/>", 10) + "</channelSet>";
    }
    CAnimationSliceData objData;
    EXPECT_TRUE(
        Parse(objData, strDocument)
            .starts_with("Too many channels in <channelSet id=\"6\">: all sets hold 1048576 at most\n"));
    EXPECT_EQ(objData.GetNumChannelNames(), 111111U);
}
