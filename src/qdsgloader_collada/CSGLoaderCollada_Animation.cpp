// Animations.
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include "animxml/CAnimationSliceData.h"
#include "qdcommon/CLogChecks.h"
#include "qdcommon/CPointerMap.h"
#include "qdsgloader_collada/CColladaAnimChannels.h"
#include "qdsgloader_collada/CColladaDataSourceCache.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <algorithm>
#include <cmath>

namespace
{

// In the lists of all named animations: each has a list of its own, so that short documents could ask for
// more than any memory holds.
constexpr size_t MAX_ANIMATION_CHANNELS = 1 << 24;

std::map<CQDString, CPointerMap<bool>> HashChannelSets(
    const CAnimationSliceData::CChannelSetMap& rMapChannels)
{
    std::map<CQDString, CPointerMap<bool>> mapSets;
    for (const auto& [strID, listChannel] : rMapChannels)
    {
        CPointerMap<bool>& rNames = mapSets[strID];
        for (const CQDCompactString& rName : listChannel)
        {
            rNames.Add(rName.c_str(), true);
        }
    }
    return mapSets;
}

float GetLastKeyTime(const CSGAnimation::CChannelList& rVecChannels)
{
    float fTime = -HUGE_VALF;
    for (const CSGAnimChannelPtr& rspChannel : rVecChannels)
    {
        fTime = std::max(fTime, rspChannel->GetSampler()->GetEndTime());
    }
    return fTime;
}

} // namespace

bool CSGLoaderCollada::LoadAnimations(std::vector<CSGAnimation*>& rvecAnimations)
{
    if (GetRoot() == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Tried to load animatinos when no file was loaded.");
        return false;
    }
    if (!LoadAllAnimations())
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to load all animations");
        return false;
    }
    for (const auto& rspAnimation : m_vecAnimations)
    {
        rvecAnimations.push_back(rspAnimation.get());
    }
    return true;
}

boost::intrusive_ptr<CSGAnimation> CSGLoaderCollada::LoadDefaultAnimation()
{
    if (GetRoot() == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Tried to load animation when no file was loaded.");
        return nullptr;
    }
    if (!LoadAllAnimations())
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to load animations.");
        return nullptr;
    }
    return m_spDefaultAnimation;
}

boost::intrusive_ptr<CSGAnimation> CSGLoaderCollada::LoadAnimation(const CQDString& rStrName)
{
    const boost::intrusive_ptr<CSGAnimation> spDefaultAnimation = LoadDefaultAnimation();
    const auto it = std::ranges::find_if(m_vecAnimations, [&](const auto& rspAnimation) {
        return rspAnimation->GetName().GetView() == rStrName;
    });
    return it != m_vecAnimations.end() ? *it : rStrName.empty() ? spDefaultAnimation : nullptr;
}

bool CSGLoaderCollada::LoadAllAnimations()
{
    if (m_bAnimationsLoaded)
    {
        return *m_bAnimationsLoaded;
    }
    m_bAnimationsLoaded = false;
    try
    {
        m_bAnimationsLoaded = LoadAllLibraryAnimations(*GetRoot());
    }
    catch (const std::exception& rException)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to load the animations of \"%s\": %s", m_strFilename,
            rException.what());
    }
    m_spDataSources->Clear();
    if (!*m_bAnimationsLoaded)
    {
        m_spDefaultAnimation.reset();
        m_vecAnimations.clear();
    }
    return *m_bAnimationsLoaded;
}

bool CSGLoaderCollada::LoadAllLibraryAnimations(domCOLLADA& rRoot)
{
    CColladaAnimChannels objChannels(rRoot, *m_spDataSources);
    for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_animations_array()))
    {
        for (const auto& rspAnimation : AsSpan(rspLibrary->getAnimation_array()))
        {
            objChannels.LoadAnimation(*rspAnimation);
        }
    }
    const CChannelList& rVecChannels = objChannels.GetChannels();
    if (!rVecChannels.empty())
    {
        m_spDefaultAnimation = CSGAnimation::Create(rVecChannels);
        if (!m_spDefaultAnimation)
        {
            Log(QD_COLLADA, LOG_ERROR,
                "Failed to create default animation for <library_animations> in <COLLADA>");
            return false;
        }
    }
    if (m_spSliceData)
    {
        return LoadSlices(rVecChannels);
    }
    LoadClips(rRoot, objChannels);
    return true;
}

bool CSGLoaderCollada::LoadSlices(const CChannelList& rVecChannels)
{
    const CChannelSetMap& rMapChannelSet = HashChannelSets(m_spSliceData->GetChannelSets());
    const std::vector<CAnimationSlice>& rSlices = m_spSliceData->GetSlices();
    for (auto itSlice = rSlices.begin(); itSlice != rSlices.end(); ++itSlice)
    {
        CChannelList vecChannels;
        QD_ASSERT(GetChannels(itSlice->m_strChannel, itSlice->m_bIgnoreChannel, vecChannels, rMapChannelSet,
                              rVecChannels),
                  false);
        const CSGAnimation::CAnimationPtr spSlice =
            AddAnimation(itSlice->m_strName, vecChannels, itSlice->m_fStartTime, itSlice->m_fEndTime);
        QD_ASSERT(spSlice, false);
    }
    return true;
}

bool CSGLoaderCollada::GetChannels(const CQDString& rStrChannel, bool bIgnoreChannel,
                                   CChannelList& rVecOutput, const CChannelSetMap& rMapChannelSet,
                                   const CChannelList& rVecChannels)
{
    const auto itSet = rMapChannelSet.find(rStrChannel);
    if (rStrChannel.empty() || itSet == rMapChannelSet.end())
    {
        if (!rStrChannel.empty())
        {
            Log(QD_COLLADA, LOG_WARNING,
                "unable to find channelSet \"%s\" using all animation channels instead", rStrChannel);
        }
        rVecOutput = rVecChannels;
        return true;
    }
    for (const CSGAnimChannelPtr& spChannel : rVecChannels)
    {
        QD_ASSERT(spChannel, false);
        if (itSet->second.Find(spChannel->GetName().c_str(), false) != bIgnoreChannel)
        {
            rVecOutput.push_back(spChannel);
        }
    }
    return true;
}

void CSGLoaderCollada::LoadClips(domCOLLADA& rRoot, const CColladaAnimChannels& rChannels)
{
    for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_animation_clips_array()))
    {
        for (const auto& rspClip : AsSpan(rspLibrary->getAnimation_clip_array()))
        {
            LoadClip(*rspClip, rChannels);
        }
    }
}

void CSGLoaderCollada::LoadClip(domAnimation_clip& rClip, const CColladaAnimChannels& rChannels)
{
    const char* szName = FirstText({rClip.getName(), rClip.getId()});
    CChannelList vecChannels;
    for (const auto& rspInstance : AsSpan(rClip.getInstance_animation_array()))
    {
        const auto* pAnimation = GetURIElement<domAnimation>(rspInstance->getUrl());
        if (pAnimation == nullptr)
        {
            Log(QD_COLLADA, LOG_WARNING,
                "Ignoring <instance_animation url=\"%s\"> in <animation_clip name=\"%s\">",
                rspInstance->getUrl().originalStr(), szName);
            continue;
        }
        const auto arrChannels = rChannels.GetChannelsOf(*pAnimation);
        if (arrChannels.size() > MAX_ANIMATION_CHANNELS - vecChannels.size())
        {
            break; // too many, as AddAnimation will find
        }
        vecChannels.insert(vecChannels.end(), arrChannels.begin(), arrChannels.end());
    }
    const std::optional<float> fEndTime =
        rClip.isAttributeSet("end") ? std::optional(static_cast<float>(rClip.getEnd())) : std::nullopt;
    if (!AddAnimation(szName, vecChannels, static_cast<float>(rClip.getStart()), fEndTime))
    {
        Log(QD_COLLADA, LOG_WARNING, "Ignoring <animation_clip name=\"%s\">", szName);
    }
}

CSGAnimation::CAnimationPtr CSGLoaderCollada::AddAnimation(const CQDCompactString& rName,
                                                           const CChannelList& rVecChannels, float fBeginTime,
                                                           std::optional<float> fEndTime)
{
    CSGAnimation::CAnimationPtr spAnimation;
    m_nAnimationChannels += rVecChannels.size();
    if (m_nAnimationChannels > MAX_ANIMATION_CHANNELS)
    {
        Log(QD_COLLADA, LOG_ERROR, "The named animations have more than %d channels",
            static_cast<int>(MAX_ANIMATION_CHANNELS));
    }
    else
    {
        spAnimation =
            CSGAnimation::Create(rVecChannels, fBeginTime, fEndTime.value_or(GetLastKeyTime(rVecChannels)));
    }
    if (!spAnimation)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create animation \"%s\" from %.3f s to %.3f s of %d channels",
            rName, fBeginTime, fEndTime.value_or(GetLastKeyTime(rVecChannels)),
            static_cast<int>(rVecChannels.size()));
        return nullptr;
    }
    spAnimation->SetName(rName);
    m_vecAnimations.push_back(spAnimation);
    return spAnimation;
}
