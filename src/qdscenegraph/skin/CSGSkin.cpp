#include "qdscenegraph/skin/CSGSkin.h"

#include "qdscenegraph/streaming/CSGFloatRecord.h"
#include "qdscenegraph/streaming/CSGLoadedLink.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

namespace
{
const SGStreamableRegistration<CSGSkin> s_objRegistration(0x144FD0F532F72A27, 1, 1);
}

boost::intrusive_ptr<CSGSkin> CSGSkin::Create(const CTransform3& rBindShape,
                                              std::span<const CJointPtr> arrJoints,
                                              const boost::intrusive_ptr<CSGSkinVertexWeights>& spWeights)
{
    boost::intrusive_ptr<CSGSkin> spSkin = CSGMem::Construct<CSGSkin>();
    QD_CHECK_CREATED(spSkin, nullptr);
    spSkin->m_objBindShape = rBindShape;
    spSkin->m_vecJoints.assign(arrJoints.begin(), arrJoints.end());
    spSkin->m_spWeights = spWeights;
    return spSkin->Complete() ? spSkin : nullptr;
}

bool CSGSkin::Complete()
{
    QD_CHECK_NOT_NULL(m_spWeights, false);
    QD_CHECK(GetNumJoints() <= CSGSkinVertexWeights::MAX_JOINTS, false);
    if (m_spWeights->GetMaxJoint() >= GetNumJoints())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "A weight is for joint %d, but its skin has only %d joints.",
            m_spWeights->GetMaxJoint(), GetNumJoints());
        return false;
    }
    for (int32_t nJoint = 0; nJoint < GetNumJoints(); ++nJoint)
    {
        const CSGJoint* pJoint = GetJoint(nJoint);
        QD_CHECK_NOT_NULL(pJoint, false);
        if (!pJoint->GetLocalName().empty())
        {
            m_mapJoints.emplace(pJoint->GetLocalName().GetView(), nJoint);
        }
    }
    return true;
}

boost::intrusive_ptr<CSGSkin> CSGSkin::CreateWithoutUnusedJoints(std::vector<int32_t>& rvecKept) const
{
    std::vector<int32_t> vecNewJoints(m_vecJoints.size(), -1);
    for (const uint16_t nJoint : m_spWeights->GetRowJoints())
    {
        vecNewJoints[nJoint] = 0;
    }
    std::vector<CJointPtr> vecJoints;
    rvecKept.clear();
    for (int32_t nJoint = 0; nJoint < GetNumJoints(); ++nJoint)
    {
        int32_t& rNewJoint = vecNewJoints[static_cast<size_t>(nJoint)];
        if (rNewJoint == 0)
        {
            rNewJoint = static_cast<int32_t>(vecJoints.size());
            vecJoints.push_back(GetJoint(nJoint));
            rvecKept.push_back(nJoint);
        }
    }
    return Create(m_objBindShape, vecJoints, m_spWeights->CreateWithJoints(vecNewJoints));
}

CSGJoint* CSGSkin::GetJoint(int32_t nJoint) const
{
    return nJoint >= 0 && nJoint < GetNumJoints() ? m_vecJoints[static_cast<size_t>(nJoint)].get() : nullptr;
}

int32_t CSGSkin::FindJoint(const CQDCompactString& rLocalName) const
{
    const auto it = m_mapJoints.find(rLocalName.GetView());
    return it != m_mapJoints.end() ? it->second : -1;
}

bool CSGSkin::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK_CALL(ReadFloats(pStream, m_objBindShape), false);
    QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, COOKIE_WEIGHTS), false);
    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nJoints = pStream->ReadInt32();
    QD_CHECK(pStream->CanRead(nJoints, sizeof(int32_t)), false);
    m_vecJoints.resize(static_cast<size_t>(nJoints));
    for (int32_t nJoint = 0; nJoint < nJoints; ++nJoint)
    {
        QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, nJoint), false);
    }
    return true;
}

bool CSGSkin::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    QD_CHECK_CALL(WriteFloats(pStream, m_objBindShape), false);
    QD_CHECK_CALL(pSaveState->WriteChildID(pStream, m_spWeights.get()), false);
    pStream->WriteInt32(GetNumJoints());
    for (const CJointPtr& spJoint : m_vecJoints)
    {
        QD_CHECK_CALL(pSaveState->WriteChildID(pStream, spJoint.get()), false);
    }
    return true;
}

bool CSGSkin::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    if (nCookie == COOKIE_WEIGHTS)
    {
        return SetLoadedLink(m_spWeights, pChild);
    }
    QD_CHECK(nCookie >= 0 && nCookie < GetNumJoints(), false);
    return SetLoadedLink(m_vecJoints[static_cast<size_t>(nCookie)], pChild);
}

bool CSGSkin::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    // Many nodes may share it.
    if (pSaveState->HasObject(this))
    {
        return true;
    }
    QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
    QD_CHECK_CALL(m_spWeights->PreWrite(pSaveState), false);
    for (const CJointPtr& spJoint : m_vecJoints)
    {
        QD_CHECK_CALL(spJoint->PreWrite(pSaveState), false);
    }
    return true;
}

bool CSGSkin::PostRead(CSGStreamableLoadState*) { return Complete(); }

void CSGSkin::DropLinks()
{
    m_spWeights.reset();
    m_mapJoints.clear();
    m_vecJoints.clear();
}

void CSGSkin::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGSkin: 0x%08llX - Joints: %d - Joints per vertex: %d", rIndent,
        LogAddress(this), GetNumJoints(), GetMaxJointsPerVertex());
    const CQDString strIndent = rIndent + "    ";
    for (const CJointPtr& spJoint : m_vecJoints)
    {
        spJoint->OutputDebugInfo(strIndent);
    }
    m_spWeights->OutputDebugInfo(strIndent);
}
