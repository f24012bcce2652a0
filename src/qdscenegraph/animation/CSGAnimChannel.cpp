#include "qdscenegraph/animation/CSGAnimChannel.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/streaming/CSGLoadedLink.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

namespace
{

const SGStreamableRegistration<CSGAnimChannel> s_objRegistration(0xDC8022582F9E4EEF, 1, 2);

enum ECookie : int32_t
{
    COOKIE_SAMPLER,
    COOKIE_TARGET_REF
};

} // namespace

CSGAnimChannelPtr CSGAnimChannel::Create(const CQDCompactString& rName, const CSamplerPtr& spSampler,
                                         const CSGRefPathPtr& spTargetRef)
{
    QD_CHECK_ARG(spSampler, nullptr);
    QD_CHECK_ARG(spTargetRef, nullptr);
    CSGAnimChannelPtr spChannel = CSGMem::Construct<CSGAnimChannel>();
    QD_CHECK_CREATED(spChannel, nullptr);
    spChannel->m_strName = rName;
    spChannel->m_spSampler = spSampler;
    spChannel->m_spTargetRef = spTargetRef;
    return spChannel;
}

CSGRefPath* CSGAnimChannel::GetTargetRef() const
{
    QD_CHECK_NOT_NULL(m_spTargetRef, nullptr);
    return m_spTargetRef.get();
}

CSGATFPtr CSGAnimChannel::GetTarget(CSGNode* pNode, CSGRefContext* pContext) const
{
    QD_CHECK_ARG(pNode, nullptr);
    QD_CHECK_NOT_NULL(m_spSampler, nullptr);
    const CSGRefPath* pTargetRef = GetTargetRef();
    QD_CHECK_NOT_NULL(pTargetRef, nullptr);
    CSGATFPtr spTarget = pTargetRef->ResolveTarget(pNode, pContext);
    if (!spTarget)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Can't resolve target for path:");
        pTargetRef->OutputDebugInfo("    ");
        Log(QD_SCENEGRAPH, LOG_ERROR, "  from node:");
        pNode->OutputDebugInfoNonRecursive("    ");
        return nullptr;
    }
    if (spTarget->GetOutputCount() != m_spSampler->GetOutputCount())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR,
            "In channel %s, got target from node %s with %d outputs, but required %d outputs instead.",
            m_strName, pNode->GetGlobalName(), spTarget->GetOutputCount(), m_spSampler->GetOutputCount());
        return nullptr;
    }
    return spTarget;
}

bool CSGAnimChannel::CanAnimate(CSGNode* pNode, CSGRefContext* pContext) const
{
    QD_CHECK_ARG(pNode, false);
    QD_CHECK_NOT_NULL(m_spSampler, false);
    QD_CHECK_NOT_NULL(m_spTargetRef, false);
    const CSGATFPtr spTarget = m_spTargetRef->ResolveTarget(pNode, pContext);
    return spTarget && spTarget->GetOutputCount() == m_spSampler->GetOutputCount();
}

bool CSGAnimChannel::PoseModel(CSGNode* pNode, float fTime, CSGRefContext* pContext) const
{
    const CSGATFPtr spTarget = GetTarget(pNode, pContext);
    QD_CHECK_NOT_NULL(spTarget, false);
    QD_CHECK_CALL(UpdateOutputAbsoluteTime(spTarget.get(), fTime), false);
    return true;
}

bool CSGAnimChannel::UpdateOutputAbsoluteTime(CSGATF* pTarget, float fTime) const
{
    QD_CHECK_ARG(pTarget, false);
    QD_CHECK_NOT_NULL(m_spSampler, false);
    const int32_t nOutputs = m_spSampler->GetOutputCount();
    if (!IsSupportedOutputCount(nOutputs))
    {
        return false;
    }
    float arrValue[MAX_OUTPUTS];
    QD_CHECK_OR_RETURN(m_spSampler->SampleAtTime(fTime, arrValue, nOutputs), "Call %s failed",
                       "pSampler->SampleAtTime(fTime, (float*) &objValue, t_nValueCount)", false);
    QD_CHECK_OR_RETURN(pTarget->SetTargetValue({arrValue, static_cast<size_t>(nOutputs)}), "Call %s failed",
                       "pTarget->SetTargetValue(objValue)", false);
    return true;
}

bool CSGAnimChannel::IsSupportedOutputCount(int32_t nOutputs)
{
    switch (nOutputs)
    {
    case 1:
    case 2:
    case 3:
    case 4:
    case 12:
    case MAX_OUTPUTS:
        return true;
    default:
        Log(QD_SCENEGRAPH, LOG_ERROR, "Unsupported number of outputs: %d", nOutputs);
        return false;
    }
}

bool CSGAnimChannel::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    // Version 1 did not keep the name.
    if (pLoadState->GetVersionToRead<CSGAnimChannel>() >= 2)
    {
        pStream->ReadString(m_strName);
    }
    QD_CHECK(pStream->CanRead(2, sizeof(int32_t)), false);
    QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, COOKIE_SAMPLER), false);
    QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, COOKIE_TARGET_REF), false);
    return true;
}

bool CSGAnimChannel::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    pStream->WriteString(m_strName);
    QD_CHECK_OR_RETURN(pSaveState->WriteChildID(pStream, m_spSampler.get()), "Call %s failed",
                       "pSaveState->WriteChildID(pStream,m_spSampler.get() )", false);
    QD_CHECK_OR_RETURN(pSaveState->WriteChildID(pStream, m_spTargetRef.get()), "Call %s failed",
                       "pSaveState->WriteChildID(pStream,pTargetRef )", false);
    return true;
}

bool CSGAnimChannel::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    if (pSaveState->HasObject(this))
    {
        return true;
    }
    QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
    QD_CHECK_NOT_NULL(m_spSampler, false);
    QD_CHECK_CALL(m_spSampler->PreWrite(pSaveState), false);
    CSGRefPath* pTargetRef = GetTargetRef();
    QD_CHECK_NOT_NULL(pTargetRef, false);
    QD_CHECK_CALL(pTargetRef->PreWrite(pSaveState), false);
    return true;
}

bool CSGAnimChannel::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    switch (nCookie)
    {
    case COOKIE_SAMPLER:
    {
        auto* pSampler = SGStreamableCast<CSGAnimSampler>(pChild);
        QD_CHECK_NOT_NULL(pSampler, false);
        return SetLoadedLink(m_spSampler, pSampler);
    }
    case COOKIE_TARGET_REF:
        if (SGStreamableCast<CSGRefPath>(pChild) == nullptr)
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Invalid output path object found in steam.");
            return false;
        }
        return SetLoadedLink(m_spTargetRef, pChild);
    default:
        Log(QD_SCENEGRAPH, LOG_ERROR, "Bad cookie %d", nCookie);
        return false;
    }
}

bool CSGAnimChannel::PostRead(CSGStreamableLoadState*)
{
    QD_CHECK_NOT_NULL(m_spSampler, false);
    QD_CHECK_NOT_NULL(m_spTargetRef, false);
    return true;
}

void CSGAnimChannel::DropLinks()
{
    m_spSampler.reset();
    m_spTargetRef.reset();
}

void CSGAnimChannel::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGAnimChannel: 0x%08llX", rIndent, LogAddress(this));
    Log(QD_SCENEGRAPH, LOG_INFO, "%s  Sampler:", rIndent);
    if (m_spSampler)
    {
        m_spSampler->OutputDebugInfo(rIndent + "    ");
    }
    Log(QD_SCENEGRAPH, LOG_INFO, "%s  Target Ref:", rIndent);
    if (m_spTargetRef)
    {
        m_spTargetRef->OutputDebugInfo(rIndent + "    ");
    }
}
