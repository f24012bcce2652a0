#include "qdscenegraph/animation/CSGAnimLayer.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/reference/CSGRefKind.h"
#include "qdscenegraph/streaming/CSGLoadedLink.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

#include <algorithm>
#include <cmath>

namespace
{

const SGStreamableRegistration<CSGAnimLayer> s_objRegistration(0x54A25AC5EBAF2F34, 1, 1);

constexpr int32_t COOKIE_ANIMATION = 0;

} // namespace

CSGAnimLayerPtr CSGAnimLayer::Create(const CQDCompactString& rName, const CAnimationPtr& spAnimation)
{
    QD_CHECK_ARG(spAnimation, nullptr);
    CSGAnimLayerPtr spLayer = CSGMem::Construct<CSGAnimLayer>();
    QD_CHECK_CREATED(spLayer, nullptr);
    spLayer->m_strName = rName;
    spLayer->m_spAnimation = spAnimation;
    return spLayer;
}

CSGAnimLayerPtr CSGAnimLayer::CreateCopy() const
{
    CSGAnimLayerPtr spCopy = Create(m_strName, m_spAnimation);
    QD_CHECK_CREATED(spCopy, nullptr);
    spCopy->m_fWeight = m_fWeight;
    spCopy->m_bLooping = m_bLooping;
    spCopy->m_spMask = m_spMask;
    return spCopy;
}

void CSGAnimLayer::SetWeight(float fWeight) { m_fWeight = fWeight > 0.0f ? std::min(fWeight, 1.0f) : 0.0f; }

void CSGAnimLayer::SetMask(CMask vecNames)
{
    m_spMask = vecNames.empty() ? nullptr : std::make_shared<const CMask>(std::move(vecNames));
}

const CSGAnimLayer::CMask& CSGAnimLayer::GetMask() const
{
    static const CMask s_vecNone;
    return m_spMask ? *m_spMask : s_vecNone;
}

bool CSGAnimLayer::PlaysChannel(const CSGAnimChannel& rChannel) const
{
    const auto IsInMask = [&](const CQDCompactString& rName) {
        return std::ranges::find(*m_spMask, rName) != m_spMask->end();
    };
    if (!m_spMask || IsInMask(rChannel.GetName()))
    {
        return true;
    }
    const CSGRefPath* pPath = rChannel.GetTargetRef();
    for (int32_t n = 0; pPath != nullptr && n < pPath->GetNumRefs(); ++n)
    {
        const auto* pNodeRef = SGStreamableCast<CSGRef_DescendantNodeByGlobalName>(pPath->GetRef(n));
        const auto* pTargetNodeRef = SGStreamableCast<CSGATFRef_DescendantNodeByGlobalName>(pPath->GetRef(n));
        if ((pNodeRef != nullptr && IsInMask(pNodeRef->GetField())) ||
            (pTargetNodeRef != nullptr && IsInMask(pTargetNodeRef->GetField())))
        {
            return true;
        }
    }
    return false;
}

float CSGAnimLayer::GetAnimationTime() const
{
    const double fBegin = m_spAnimation->GetBeginTime();
    const double fDuration = m_spAnimation->GetEndTime() - fBegin;
    double fTime = m_spTimeSource ? m_spTimeSource->GetTime() : 0.0;
    if (m_bLooping && fDuration > 0.0 && std::isfinite(fTime))
    {
        fTime = std::fmod(fTime, fDuration);
        fTime += fTime < 0.0 ? fDuration : 0.0;
    }
    return static_cast<float>(fBegin + std::clamp(fTime, 0.0, fDuration));
}

void CSGAnimLayer::RenameInMask(const CQDCompactString& rOldName, const CQDCompactString& rNewName)
{
    if (std::ranges::find(GetMask(), rOldName) != GetMask().end())
    {
        CMask vecNames = GetMask();
        std::ranges::replace(vecNames, rOldName, rNewName);
        SetMask(std::move(vecNames));
    }
}

bool CSGAnimLayer::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    pStream->ReadString(m_strName);
    QD_CHECK(pStream->CanRead(4, sizeof(int32_t)), false);
    SetWeight(pStream->ReadFloat());
    m_bLooping = pStream->ReadInt32() != 0;
    QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, COOKIE_ANIMATION), false);
    const int32_t nNames = pStream->ReadInt32();
    QD_CHECK(pStream->CanRead(nNames, sizeof(uint32_t)), false);
    CMask vecNames(static_cast<size_t>(nNames));
    for (CQDCompactString& rName : vecNames)
    {
        QD_CHECK_CALL(pStream->ReadString(rName), false);
    }
    SetMask(std::move(vecNames));
    return true;
}

bool CSGAnimLayer::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    pStream->WriteString(m_strName);
    pStream->WriteFloat(m_fWeight);
    pStream->WriteInt32(m_bLooping ? 1 : 0);
    QD_CHECK_CALL(pSaveState->WriteChildID(pStream, m_spAnimation.get()), false);
    pStream->WriteInt32(static_cast<int32_t>(GetMask().size()));
    for (const CQDCompactString& rName : GetMask())
    {
        pStream->WriteString(rName);
    }
    return true;
}

bool CSGAnimLayer::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
    QD_CHECK_NOT_NULL(m_spAnimation, false);
    QD_CHECK_CALL(m_spAnimation->PreWrite(pSaveState), false);
    return true;
}

bool CSGAnimLayer::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    QD_CHECK(nCookie == COOKIE_ANIMATION, false);
    return SetLoadedLink(m_spAnimation, pChild);
}

bool CSGAnimLayer::PostRead(CSGStreamableLoadState*)
{
    QD_CHECK_NOT_NULL(m_spAnimation, false);
    return true;
}

void CSGAnimLayer::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO,
        "%sCSGAnimLayer: 0x%08llX - Name: %s - Animation: %s - Weight: %.3f - Looping: %d - Masked to: %d",
        rIndent, LogAddress(this), m_strName, m_spAnimation->GetName(), m_fWeight, m_bLooping ? 1 : 0,
        static_cast<int>(GetMask().size()));
}
