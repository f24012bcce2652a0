// Damaged animations documents: no crash, no hang, nothing left behind, and what is read keeps its promises.
//
// fuzz_anim [COUNT]: truncations at every byte and COUNT (10 000) mutations of a small document, half of them
// of bytes and half of markup.

#include "../unit/support/CTempFile.h"
#include "CMutator.h"
#include "MutateXml.h"

#include "animxml/CAnimationSliceData.h"
#include "animxml/CBexnelParser.h"
#include "animxml/CXMLEltParse_DocAnimSlice.h"
#include "animxml/CXMLEltParse_WellFormed.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace
{

constexpr const char* SEED = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE animations [<!ENTITY e "arm/rot"><!ENTITY f "&e;&e;&e;">]>
<animations>
  <dae> walk.dae </dae>
  <fps>29.97</fps>
  <channelSet id="arms">
    <channel value="&e;.ANGLE"/>
    <channel value="&f;"/>
  </channelSet>
  <channelSet id="all">
    <channel refSet="arms"/>
    <channel refSet="arms"/>
  </channelSet>
  <!-- cuts -->
  <animation name="walk" startFrame="15" endFrame="45"/>
  <animation name="wave" startFrame="0" useChannels="arms"/>
  <animation name="rest" startFrame="-50" endFrame="2147483647" ignoreChannels="all"/>
</animations>
)";

bool KeepsPromises(const CAnimationSliceData& rData)
{
    size_t nNames = 0;
    for (const auto& [strID, listChannel] : rData.GetChannelSets())
    {
        nNames += listChannel.size();
    }
    bool bKept = nNames == rData.GetNumChannelNames() && nNames <= CAnimationSliceData::MAX_CHANNEL_NAMES;
    for (const CAnimationSlice& rSlice : rData.GetSlices())
    {
        bKept = bKept && rData.GetFPS() > 0.0f && !rSlice.m_strName.empty() &&
                std::isfinite(rSlice.m_fStartTime) && std::isfinite(rSlice.m_fEndTime.value_or(0.0f));
    }
    return bKept;
}

} // namespace

int main(int argc, char** argv)
{
    const int nCount = argc > 1 ? std::atoi(argv[1]) : 10000;
    const CTempFile objFile("mutation.anim");
    int nTried = 0;
    int nParsed = 0;
    const auto Try = [&](const std::string& rDocument) {
        objFile.WriteBytes(rDocument);
        {
            CAnimationSliceData objData;
            CBexnelParser objParser(CXMLEltParse_DocAnimSlice::Create(objData));
            const bool bParsed = objParser.ParseFile(objFile.GetName());
            CBexnelParser objCheck(CXMLEltParse_WellFormed::CreateTopLevel());
            const bool bWellFormed = objCheck.ParseFile(objFile.GetName());
            if ((bParsed && (!bWellFormed || objData.GetDAEFilename().empty())) || !KeepsPromises(objData))
            {
                std::printf("document %d was read as it may not be:\n%s\n", nTried, rDocument.c_str());
                std::exit(1);
            }
            nParsed += bParsed ? 1 : 0;
        }
        ++nTried;
        if (CQDCharAllocator::GetNumTexts() != 0)
        {
            std::printf("document %d leaves names behind:\n%s\n", nTried, rDocument.c_str());
            std::exit(1);
        }
    };
    CMutator(SEED).ForEach(nCount / 2, Try);
    std::mt19937 objRandom(9);
    for (int n = nCount / 2; n < nCount; ++n)
    {
        Try(MutateXml(SEED, objRandom));
    }
    std::printf("fuzz_anim: %d documents tried, %d of them parsed\n", nTried, nParsed);
    return nParsed > 0 ? 0 : 1;
}
