#include "qdscenegraph/animation/CSGAnimPlayer.h"

#include "qdscenegraph/reference/CSGRefContext.h"

#include <map>
#include <new>

boost::intrusive_ptr<CSGAnimPlayer> CSGAnimPlayer::Create(CSGNode* pNode)
{
    QD_CHECK_ARG(pNode, nullptr);
    const boost::intrusive_ptr<CSGAnimPlayer> spPlayer = new (std::nothrow) CSGAnimPlayer;
    QD_CHECK_CREATED(spPlayer, nullptr);
    spPlayer->m_spNode = pNode;
    spPlayer->m_spTimeSource = CSGAnimTimeSource::Create();
    QD_CHECK_CREATED(spPlayer->m_spTimeSource, nullptr);
    QD_CHECK_CALL(spPlayer->Bind(), nullptr);
    return spPlayer;
}

bool CSGAnimPlayer::Bind()
{
    m_dqBindings.clear();
    m_vecLayers.clear();
    const auto* pAnimStack = m_spNode->FindData<CSGData_AnimStack>();
    QD_CHECK_NOT_NULL(pAnimStack, false);
    CSGRefContext objContext(m_spNode.get());
    // The topmost binding so far, by what it writes.
    std::map<std::pair<const CSGStreamable*, ETarget>, CSGAnimTargetBinding*> mapTops;
    for (int32_t nLayer = 0; nLayer < pAnimStack->GetNumLayers(); ++nLayer)
    {
        CSGAnimLayer* pAnimLayer = pAnimStack->GetLayer(nLayer);
        m_vecLayers.emplace_back(pAnimLayer);
        if (pAnimLayer->GetTimeSource() == nullptr)
        {
            pAnimLayer->SetTimeSource(m_spTimeSource);
        }
        const CSGAnimation* pAnimation = pAnimLayer->GetAnimation();
        for (int32_t nChannel = 0; nChannel < pAnimation->GetNumChannels(); ++nChannel)
        {
            CSGAnimChannel* pChannel = pAnimation->GetChannel(nChannel);
            const CSGATFPtr spTarget = pChannel != nullptr && pAnimLayer->PlaysChannel(*pChannel)
                                           ? pChannel->GetTarget(m_spNode.get(), &objContext)
                                           : nullptr;
            if (!spTarget)
            {
                continue;
            }
            CSGAnimTargetBinding& rBinding = m_dqBindings.emplace_back();
            QD_CHECK_CALL(rBinding.Init(pAnimLayer, pChannel, spTarget.get()), false);
            const CSGRefPath* pPath = pChannel->GetTargetRef();
            CSGAnimTargetBinding*& rpTop = mapTops[{pPath->Resolve(m_spNode.get(), &objContext),
                                                    pPath->GetRef(pPath->GetNumRefs() - 1)->GetTarget()}];
            if (rpTop != nullptr)
            {
                QD_CHECK_CALL(rBinding.MaskBinding(rpTop), false);
            }
            rpTop = &rBinding;
        }
    }
    return true;
}

bool CSGAnimPlayer::Update()
{
    bool bAllUpdated = true;
    for (CSGAnimTargetBinding& rBinding : m_dqBindings)
    {
        bAllUpdated &= rBinding.IsMasked() || rBinding.UpdateTarget();
    }
    return bAllUpdated;
}
