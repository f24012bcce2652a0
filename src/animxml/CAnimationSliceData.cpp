#include "animxml/CAnimationSliceData.h"

#include "animxml/AnimXMLLog.h"
#include "qdcommon/CLogChecks.h"

#include <cmath>

bool CAnimationSliceData::SetDAEFilename(const CQDString& rStrFilename)
{
    m_strDAEFilename = rStrFilename;
    return true;
}

bool CAnimationSliceData::SetFPS(float fFPS)
{
    QD_ASSERT(fFPS > 0.0f, false);
    m_fFPS = fFPS;
    return true;
}

bool CAnimationSliceData::AddSlice(const CQDString& rStrName, int nStartFrame, std::optional<int> nEndFrame,
                                   const CQDString& rStrChannel, bool bIgnoreChannel)
{
    QD_ASSERT(m_fFPS > 0.0f, false);
    CAnimationSlice objSlice{rStrName, static_cast<float>(nStartFrame) / m_fFPS, std::nullopt, bIgnoreChannel,
                             rStrChannel};
    if (nEndFrame)
    {
        objSlice.m_fEndTime = static_cast<float>(*nEndFrame) / m_fFPS;
    }
    QD_ASSERT(std::isfinite(objSlice.m_fStartTime), false); // a rate can be very small
    QD_ASSERT(std::isfinite(objSlice.m_fEndTime.value_or(0.0f)), false);
    m_listSlices.push_back(std::move(objSlice));
    return true;
}

bool CAnimationSliceData::AddChannelSet(const CQDString& rStrID, const CChannelList& rListChannel)
{
    Log(ANIM_XML, LOG_INFO, "AddChannelSet %s %d ", rStrID, static_cast<int>(rListChannel.size()));
    const auto itChannelSet = m_mapChannels.find(rStrID);
    QD_ASSERT(itChannelSet == m_mapChannels.end(), false);
    m_mapChannels.emplace(rStrID, rListChannel);
    m_nChannelNames += rListChannel.size();
    return true;
}
