#include "qdsgloader_collada/CColladaAnimChannels.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaAnimSamplerData.h"
#include "qdsgloader_collada/CColladaDataSourceCache.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

void CColladaAnimChannels::LoadAnimation(domAnimation& rAnimation)
{
    // One animation that is being loaded.
    struct CFrame
    {
        domAnimation* pAnimation;
        size_t nFirstChannel;
        bool bHadChannels; // in the document, nested ones too
        size_t nNextChild = 0;
    };
    std::vector<CFrame> vecStack;
    const auto Begin = [&](domAnimation& rBegun) {
        vecStack.push_back({&rBegun, m_vecChannels.size(), rBegun.getChannel_array().getCount() > 0});
        LoadAnimChannels(rBegun);
    };
    Begin(rAnimation);
    while (!vecStack.empty())
    {
        CFrame& rFrame = vecStack.back();
        if (rFrame.nNextChild < rFrame.pAnimation->getAnimation_array().getCount())
        {
            Begin(*rFrame.pAnimation->getAnimation_array()[rFrame.nNextChild++]);
            continue;
        }
        m_mapChannels[rFrame.pAnimation] = {rFrame.nFirstChannel, m_vecChannels.size()};
        m_rSources.DropSourcesOf(*rFrame.pAnimation);
        const CFrame objDone = rFrame;
        vecStack.pop_back();
        if (objDone.bHadChannels && !vecStack.empty())
        {
            vecStack.back().bHadChannels = true;
            if (objDone.nFirstChannel == m_vecChannels.size())
            {
                Log(QD_COLLADA, LOG_ERROR, "Failed to load <animation id=\"%s\"> in <animation id=\"%s\">",
                    GetIDText(*objDone.pAnimation), GetIDText(*vecStack.back().pAnimation));
            }
        }
    }
}

std::span<const CSGAnimChannelPtr> CColladaAnimChannels::GetChannelsOf(const domAnimation& rAnimation) const
{
    const auto it = m_mapChannels.find(&rAnimation);
    if (it == m_mapChannels.end())
    {
        return {};
    }
    const auto [nFirst, nEnd] = it->second;
    return std::span(m_vecChannels).subspan(nFirst, nEnd - nFirst);
}

void CColladaAnimChannels::LoadAnimChannels(domAnimation& rAnimation)
{
    for (const auto& rspChannel : AsSpan(rAnimation.getChannel_array()))
    {
        if (const CSGAnimChannelPtr spChannel = LoadAnimChannel(*rspChannel))
        {
            m_vecChannels.push_back(spChannel);
        }
    }
}

// A <channel> has no id: its target stands in for one.
CSGAnimChannelPtr CColladaAnimChannels::LoadAnimChannel(domChannel& rChannel)
{
    const CQDString strTarget = Text(rChannel.getTarget());
    const CColladaAnimTarget objTarget = m_objTranslator.TranslatePath(strTarget);
    if (!objTarget.m_spRef)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to translate target path \"%s\" for <channel>.", strTarget);
        return nullptr;
    }
    auto* pSampler = CSGLoaderCollada::GetURIElement<domSampler>(rChannel.getSource());
    if (pSampler == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "<channel id=\"%s\"> referred to NULL <sampler>.", strTarget);
        return nullptr;
    }
    const CSamplerPtr spSampler = LoadAnimSampler(*pSampler, objTarget);
    if (!spSampler)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to load <sampler id=\"%s\"> referenced by <channel id=\"%s\">.",
            GetIDText(*pSampler), strTarget);
        return nullptr;
    }
    const CSGAnimChannelPtr spChannel = CSGAnimChannel::Create(strTarget, spSampler, objTarget.m_spRef);
    if (!spChannel)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create SG animation channel for <channel id=\"%s\">",
            strTarget);
    }
    return spChannel;
}

CColladaAnimChannels::CSamplerPtr CColladaAnimChannels::LoadAnimSampler(domSampler& rSampler,
                                                                        const CColladaAnimTarget& rTarget)
{
    const auto [it, bNew] = m_mapSamplers.try_emplace({&rSampler, rTarget.m_eValues, rTarget.m_nOutputCount});
    if (!bNew)
    {
        return it->second;
    }
    CColladaAnimSamplerData objData(m_rSources);
    if (!objData.LoadSources(rSampler))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to load data sources for <sampler id=\"%s\">",
            GetIDText(rSampler));
        return nullptr;
    }
    it->second = objData.CreateSampler(rTarget.m_eValues, rTarget.m_nOutputCount);
    if (!it->second)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create SG animation samplers for <sampler id=\"%s\">",
            GetIDText(rSampler));
    }
    return it->second;
}
