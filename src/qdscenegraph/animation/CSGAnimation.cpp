#include "qdscenegraph/animation/CSGAnimation.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/reference/CSGRefContext.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

#include <algorithm>
#include <limits>

namespace
{
const SGStreamableRegistration<CSGAnimation> s_objRegistration(0x46CECCBFB6257147, 1, 2);
}

CSGAnimation::CAnimationPtr CSGAnimation::Create(const CChannelList& rListChannels, float fBeginTime,
                                                 float fEndTime)
{
    QD_CHECK(!rListChannels.empty(), nullptr);
    QD_CHECK(fBeginTime <= fEndTime, nullptr);
    CAnimationPtr spAnimation = CSGMem::Construct<CSGAnimation>();
    QD_CHECK_CREATED(spAnimation, nullptr);
    spAnimation->m_fBeginTime = fBeginTime;
    spAnimation->m_fEndTime = fEndTime;
    spAnimation->m_listChannels = rListChannels;
    return spAnimation;
}

CSGAnimation::CAnimationPtr CSGAnimation::Create(const CChannelList& rListChannels)
{
    float fBeginTime = std::numeric_limits<float>::infinity();
    float fEndTime = -fBeginTime;
    for (const CSGAnimChannelPtr& spChannel : rListChannels)
    {
        QD_CHECK_NOT_NULL(spChannel, nullptr);
        const CSGAnimSampler* spSampler = spChannel->GetSampler();
        QD_CHECK_NOT_NULL(spSampler, nullptr);
        QD_CHECK(spSampler->GetKeyCount() > 0, nullptr);
        fBeginTime = std::min(fBeginTime, spSampler->GetBeginTime());
        fEndTime = std::max(fEndTime, spSampler->GetEndTime());
    }
    return Create(rListChannels, fBeginTime, fEndTime);
}

CSGAnimChannel* CSGAnimation::GetChannel(int32_t nIndex) const
{
    QD_CHECK(nIndex >= 0, nullptr);
    QD_CHECK(nIndex < GetNumChannels(), nullptr);
    return m_listChannels[static_cast<size_t>(nIndex)].get();
}

void CSGAnimation::RemoveChannel(const CQDCompactString& rName)
{
    std::erase_if(m_listChannels, [&](const CSGAnimChannelPtr& spChannel) {
        QD_CHECK_NOT_NULL(spChannel, false);
        return spChannel->GetName() == rName;
    });
}

CSGAnimation::CAnimationPtr CSGAnimation::Slice(float fBeginTime, float fEndTime) const
{
    CAnimationPtr spAnimation = Create(m_listChannels, fBeginTime, fEndTime);
    QD_CHECK_CREATED(spAnimation, nullptr);
    spAnimation->m_strName = m_strName;
    return spAnimation;
}

CSGAnimation::CAnimationPtr CSGAnimation::GetForTree(CSGNode* pNode)
{
    QD_CHECK_ARG(pNode, nullptr);
    CSGRefContext objContext(pNode);
    CChannelList listChannels;
    for (const CSGAnimChannelPtr& spChannel : m_listChannels)
    {
        QD_CHECK_NOT_NULL(spChannel, nullptr);
        if (spChannel->CanAnimate(pNode, &objContext))
        {
            listChannels.push_back(spChannel);
        }
    }
    if (listChannels.size() == m_listChannels.size())
    {
        return this;
    }
    CAnimationPtr spAnimation = CSGMem::Construct<CSGAnimation>();
    QD_CHECK_CREATED(spAnimation, nullptr);
    spAnimation->m_strName = m_strName;
    spAnimation->m_fBeginTime = m_fBeginTime;
    spAnimation->m_fEndTime = m_fEndTime;
    spAnimation->m_listChannels = std::move(listChannels);
    return spAnimation;
}

bool CSGAnimation::PoseModel(CSGNode* pNode) const { return PoseModelAtTime(pNode, m_fBeginTime); }

bool CSGAnimation::PoseModelAtTime(CSGNode* pNode, float fTime) const
{
    QD_CHECK_ARG(pNode, false);
    CSGRefContext objContext(pNode);
    bool bAllPosed = true;
    for (const CSGAnimChannelPtr& spChannel : m_listChannels)
    {
        if (!spChannel)
        {
            QD_CHECK_FAILED("%s is NULL", "spChannel");
            bAllPosed = false;
        }
        else if (!spChannel->PoseModel(pNode, fTime, &objContext))
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Failed to pose with channel:");
            spChannel->OutputDebugInfo("    ");
            bAllPosed = false;
        }
    }
    return bAllPosed;
}

bool CSGAnimation::CanAnimate(CSGNode* pNode) const
{
    QD_CHECK_ARG(pNode, false);
    CSGRefContext objContext(pNode);
    for (const CSGAnimChannelPtr& spChannel : m_listChannels)
    {
        QD_CHECK_NOT_NULL(spChannel, false);
        if (!spChannel->CanAnimate(pNode, &objContext))
        {
            return false;
        }
    }
    return true;
}

bool CSGAnimation::RenameNode(const CQDCompactString& rOldName, const CQDCompactString& rNewName)
{
    bool bRenamed = false;
    for (const CSGAnimChannelPtr& spChannel : m_listChannels)
    {
        CSGRefPath* pTargetRef = spChannel ? spChannel->GetTargetRef() : nullptr;
        bRenamed |= pTargetRef != nullptr && pTargetRef->RenameNode(rOldName, rNewName);
    }
    return bRenamed;
}

bool CSGAnimation::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    const int32_t nVersion = pLoadState->GetVersionToRead<CSGAnimation>();
    if (nVersion != 1 && nVersion != 2)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Unexpected version %d of CSGAnimation.", nVersion);
    }
    pStream->ReadString(m_strName);
    QD_CHECK(pStream->CanRead(nVersion == 1 ? 5 : 3, sizeof(int32_t)), false);
    m_fBeginTime = pStream->ReadFloat();
    m_fEndTime = pStream->ReadFloat();
    QD_CHECK_OR_RETURN(m_fBeginTime <= m_fEndTime, "%s is false", "fBeginTime <= fEndTime", false);
    if (nVersion == 1)
    {
        // Whether and how fast it was to be looped: layers decide on that.
        pStream->ReadInt32();
        pStream->ReadFloat();
    }
    const int32_t nNumChannels = pStream->ReadInt32();
    QD_CHECK(pStream->CanRead(nNumChannels, sizeof(int32_t)), false);
    // All places first: a channel that is loaded already is delivered while its id is read.
    m_listChannels.resize(static_cast<size_t>(nNumChannels));
    for (int32_t nChannelIndex = 0; nChannelIndex < nNumChannels; ++nChannelIndex)
    {
        QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, nChannelIndex), false);
    }
    return true;
}

bool CSGAnimation::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    pStream->WriteString(m_strName);
    pStream->WriteFloat(m_fBeginTime);
    pStream->WriteFloat(m_fEndTime);
    pStream->WriteInt32(GetNumChannels());
    for (const CSGAnimChannelPtr& spChannel : m_listChannels)
    {
        QD_CHECK_OR_RETURN(pSaveState->WriteChildID(pStream, spChannel.get()), "Call %s failed",
                           "pSaveState->WriteChildID(pStream,pChannel)", false);
    }
    return true;
}

bool CSGAnimation::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    if (pSaveState->HasObject(this))
    {
        return true;
    }
    QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
    for (const CSGAnimChannelPtr& pChannel : m_listChannels)
    {
        QD_CHECK_NOT_NULL(pChannel, false);
        QD_CHECK_CALL(pChannel->PreWrite(pSaveState), false);
    }
    return true;
}

bool CSGAnimation::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    auto* pAnimChannel = SGStreamableCast<CSGAnimChannel>(pChild);
    QD_CHECK_NOT_NULL(pAnimChannel, false);
    QD_CHECK(nCookie >= 0, false);
    QD_CHECK(nCookie < GetNumChannels(), false);
    CSGAnimChannelPtr& rspChannel = m_listChannels[static_cast<size_t>(nCookie)];
    QD_CHECK_OR_RETURN(!rspChannel, "%s is false", "m_listChannels[nCookie] == 0", false);
    rspChannel = pAnimChannel;
    return true;
}

bool CSGAnimation::PostRead(CSGStreamableLoadState*)
{
    for (const CSGAnimChannelPtr& spChannel : m_listChannels)
    {
        QD_CHECK_NOT_NULL(spChannel, false);
    }
    return true;
}

void CSGAnimation::OutputDebugInfo(const CQDString& rIndent) const
{
    // "%CSGAnimation" is the text's historic spelling: the C went with the conversion that takes the indent.
    Log(QD_SCENEGRAPH, LOG_INFO, "%sSGAnimation: 0x%08llX - Begin Time: %.3f - End Time: %.3f", rIndent,
        LogAddress(this), m_fBeginTime, m_fEndTime);
    Log(QD_SCENEGRAPH, LOG_INFO, "%s  Channels:", rIndent);
    for (const CSGAnimChannelPtr& spChannel : m_listChannels)
    {
        if (spChannel)
        {
            spChannel->OutputDebugInfo(rIndent + "    ");
        }
    }
}
