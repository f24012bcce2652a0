#include "qdscenegraph/skin/CSGSkinBinding.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/node/CSGCopyData.h"
#include "qdscenegraph/streaming/CSGLoadedLink.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

namespace
{
const SGStreamableRegistration<CSGSkinBinding> s_objRegistration(0x50481A4D1E57CD09, 1, 1);
}

boost::intrusive_ptr<CSGSkinBinding> CSGSkinBinding::Create(
    const boost::intrusive_ptr<CSGSkin>& spSkin, const boost::intrusive_ptr<CSGGeomBinding>& spGeom)
{
    boost::intrusive_ptr<CSGSkinBinding> spBinding = CSGMem::Construct<CSGSkinBinding>();
    QD_CHECK_CREATED(spBinding, nullptr);
    spBinding->m_spSkin = spSkin;
    spBinding->m_spGeomBinding = spGeom;
    spBinding->SetNumJoints(spSkin ? spSkin->GetNumJoints() : 0);
    return spBinding->Verify() ? spBinding : nullptr;
}

boost::intrusive_ptr<CSGSkinBinding> CSGSkinBinding::CreateCopy() const
{
    boost::intrusive_ptr<CSGSkinBinding> spCopy = Create(m_spSkin, m_spGeomBinding);
    QD_CHECK_CREATED(spCopy, nullptr);
    spCopy->m_vecJoints = m_vecJoints;
    return spCopy;
}

boost::intrusive_ptr<CSGSkinBinding> CSGSkinBinding::CreateWithoutUnusedJoints() const
{
    std::vector<int32_t> vecKept;
    boost::intrusive_ptr<CSGSkinBinding> spReduced =
        Create(m_spSkin->CreateWithoutUnusedJoints(vecKept), m_spGeomBinding);
    QD_CHECK_CREATED(spReduced, nullptr);
    for (CSGJointBinding& rJoint : spReduced->m_vecJoints)
    {
        rJoint.SetNode(GetJointNode(vecKept[static_cast<size_t>(rJoint.GetJoint())]).get());
    }
    return spReduced;
}

void CSGSkinBinding::SetNumJoints(int32_t nJoints)
{
    m_vecJoints.clear();
    m_vecJoints.reserve(static_cast<size_t>(nJoints));
    for (int32_t nJoint = 0; nJoint < nJoints; ++nJoint)
    {
        m_vecJoints.emplace_back(nJoint);
    }
}

bool CSGSkinBinding::Verify() const
{
    QD_CHECK_NOT_NULL(m_spSkin, false);
    QD_CHECK_NOT_NULL(m_spGeomBinding, false);
    // Both may come from a damaged file, and not have been looked at yet.
    const CSGSkinVertexWeights* pWeights = m_spSkin->GetWeights();
    const CSGVertexBuffer* pVertexBuffer = m_spGeomBinding->GetVertexBuffer();
    QD_CHECK_NOT_NULL(pWeights, false);
    QD_CHECK_NOT_NULL(pVertexBuffer, false);
    QD_CHECK(GetNumJoints() == m_spSkin->GetNumJoints(), false);
    if (pWeights->GetNumVertices() != pVertexBuffer->GetNumVertices())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "A skin has weights for %d vertices, but its vertex buffer has %d.",
            pWeights->GetNumVertices(), pVertexBuffer->GetNumVertices());
        return false;
    }
    return true;
}

int32_t CSGSkinBinding::BindFoundJoints(std::span<CSGNode* const> arrSkeletonRoots)
{
    // The skin knows one joint of each name: its namesakes take that one's node in the end.
    const auto FindNamesake = [this](const CSGJointBinding& rJoint) {
        return m_spSkin->FindJoint(m_spSkin->GetJoint(rJoint.GetJoint())->GetLocalName());
    };
    int32_t nWanted = 0;
    for (const CSGJointBinding& rJoint : m_vecJoints)
    {
        nWanted += !rJoint.GetNode() && FindNamesake(rJoint) == rJoint.GetJoint() ? 1 : 0;
    }
    for (CSGNode* pRoot : arrSkeletonRoots)
    {
        for (CSGNode* pNode = pRoot; pNode != nullptr && nWanted > 0; pNode = pNode->GetNextInTree(pRoot))
        {
            const int32_t nJoint = m_spSkin->FindJoint(pNode->GetLocalName());
            if (nJoint >= 0 && !GetJointNode(nJoint))
            {
                SetJointNode(nJoint, pNode);
                --nWanted;
            }
        }
    }
    int32_t nLeft = 0;
    for (CSGJointBinding& rJoint : m_vecJoints)
    {
        const int32_t nNamesake = rJoint.GetNode() ? -1 : FindNamesake(rJoint);
        if (nNamesake >= 0)
        {
            rJoint.SetNode(GetJointNode(nNamesake).get());
            nLeft += rJoint.GetNode() ? 0 : 1;
        }
    }
    return nLeft;
}

bool CSGSkinBinding::BindJoints(std::span<CSGNode* const> arrSkeletonRoots)
{
    if (BindFoundJoints(arrSkeletonRoots) == 0)
    {
        return true;
    }
    for (const CSGJointBinding& rJoint : m_vecJoints)
    {
        const CQDCompactString& rName = m_spSkin->GetJoint(rJoint.GetJoint())->GetLocalName();
        if (!rName.empty() && !rJoint.GetNode())
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Failed to find joint node with local name '%s'.", rName);
        }
    }
    return false;
}

boost::intrusive_ptr<CSGNode> CSGSkinBinding::GetJointNode(int32_t nJoint) const
{
    return nJoint >= 0 && nJoint < GetNumJoints() ? m_vecJoints[static_cast<size_t>(nJoint)].GetNode()
                                                  : nullptr;
}

bool CSGSkinBinding::SetJointNode(int32_t nJoint, CSGNode* pNode)
{
    QD_CHECK(nJoint >= 0 && nJoint < GetNumJoints(), false);
    m_vecJoints[static_cast<size_t>(nJoint)].SetNode(pNode);
    return true;
}

void CSGSkinBinding::UnbindNode(const CSGNode* pNode)
{
    for (CSGJointBinding& rJoint : m_vecJoints)
    {
        if (rJoint.GetNode() == pNode)
        {
            rJoint.SetNode(nullptr);
        }
    }
}

void CSGSkinBinding::RebindToCopies(const CSGCopyData& rCopyData)
{
    for (CSGJointBinding& rJoint : m_vecJoints)
    {
        if (CSGNode* pCopy = rCopyData.FindCopy(rJoint.GetNode().get()))
        {
            rJoint.SetNode(pCopy);
        }
    }
}

bool CSGSkinBinding::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, COOKIE_SKIN), false);
    QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, COOKIE_GEOM_BINDING), false);
    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nJoints = pStream->ReadInt32();
    QD_CHECK(pStream->CanRead(nJoints, sizeof(int32_t)), false);
    SetNumJoints(nJoints);
    for (int32_t nJoint = 0; nJoint < nJoints; ++nJoint)
    {
        QD_CHECK_CALL(pLoadState->ReadWeakChildID(pStream, this, nJoint), false);
    }
    return true;
}

bool CSGSkinBinding::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    QD_CHECK_CALL(pSaveState->WriteChildID(pStream, m_spSkin.get()), false);
    QD_CHECK_CALL(pSaveState->WriteChildID(pStream, m_spGeomBinding.get()), false);
    pStream->WriteInt32(GetNumJoints());
    for (const CSGJointBinding& rJoint : m_vecJoints)
    {
        QD_CHECK_CALL(pSaveState->WriteWeakChildID(pStream, rJoint.GetNode().get()), false);
    }
    return true;
}

bool CSGSkinBinding::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    switch (nCookie)
    {
    case COOKIE_SKIN:
        return SetLoadedLink(m_spSkin, pChild);
    case COOKIE_GEOM_BINDING:
        return SetLoadedLink(m_spGeomBinding, pChild);
    default:
        boost::intrusive_ptr<CSGNode> spNode;
        QD_CHECK_CALL(SetLoadedLink(spNode, pChild), false);
        return SetJointNode(nCookie, spNode.get());
    }
}

bool CSGSkinBinding::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
    QD_CHECK_CALL(m_spSkin->PreWrite(pSaveState), false);
    QD_CHECK_CALL(m_spGeomBinding->PreWrite(pSaveState), false);
    return true;
}

bool CSGSkinBinding::PostRead(CSGStreamableLoadState*) { return Verify(); }

void CSGSkinBinding::DropLinks()
{
    m_spSkin.reset();
    m_spGeomBinding.reset();
    m_vecJoints.clear();
}

void CSGSkinBinding::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGSkinBinding: 0x%08llX", rIndent, LogAddress(this));
    const CQDString strIndent = rIndent + "    ";
    for (const CSGJointBinding& rJoint : m_vecJoints)
    {
        const boost::intrusive_ptr<CSGNode> spNode = rJoint.GetNode();
        Log(QD_SCENEGRAPH, LOG_INFO, "%sJoint %d: node '%s'", strIndent, rJoint.GetJoint(),
            spNode ? spNode->GetGlobalName() : CQDCompactString());
    }
    m_spSkin->OutputDebugInfo(strIndent);
    m_spGeomBinding->OutputDebugInfo(strIndent);
}
