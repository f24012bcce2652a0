// Makes animation channels of the <animation> elements of a document.
#pragma once

#include "qdscenegraph/animation/CSGAnimChannel.h"
#include "qdsgloader_collada/CColladaTargetPathTranslator.h"

#include <map>
#include <span>
#include <tuple>
#include <unordered_map>
#include <vector>

class CColladaDataSourceCache;

// A channel that cannot be made is reported and left out: the others are worth more to a user than the fault.
// Channels of one sampler share its curve.
class CColladaAnimChannels
{
  public:
    using CChannelList = std::vector<CSGAnimChannelPtr>;

    CColladaAnimChannels(ColladaDOM141::domCOLLADA& rRoot, CColladaDataSourceCache& rSources)
        : m_objTranslator(rRoot),
          m_rSources(rSources)
    {}

    // An <animation> with all that are nested in it.
    void LoadAnimation(ColladaDOM141::domAnimation& rAnimation);

    // In document order.
    const CChannelList& GetChannels() const { return m_vecChannels; }
    // Those of an animation that was loaded, whether by itself or within another; empty for others.
    std::span<const CSGAnimChannelPtr> GetChannelsOf(const ColladaDOM141::domAnimation& rAnimation) const;

  private:
    using CSamplerPtr = CSGAnimChannel::CSamplerPtr;

    void LoadAnimChannels(ColladaDOM141::domAnimation& rAnimation);
    CSGAnimChannelPtr LoadAnimChannel(ColladaDOM141::domChannel& rChannel);
    // The curve for a target; null (reported) on failure.
    CSamplerPtr LoadAnimSampler(ColladaDOM141::domSampler& rSampler, const CColladaAnimTarget& rTarget);

    CColladaTargetPathTranslator m_objTranslator;
    CColladaDataSourceCache& m_rSources;
    CChannelList m_vecChannels;
    // The places of an animation's channels in the list: the first, and the one behind the last.
    std::unordered_map<const ColladaDOM141::domAnimation*, std::pair<size_t, size_t>> m_mapChannels;
    std::map<std::tuple<ColladaDOM141::domSampler*, EColladaValues, int32_t>, CSamplerPtr> m_mapSamplers;
};
