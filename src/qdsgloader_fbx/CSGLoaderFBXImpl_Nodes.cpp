// Nodes, and how each lies in its parent.
#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdsgloader_fbx/CFBXLocalTransform.h"
#include "qdsgloader_fbx/CFBXNodePaths.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"
#include "qdsgloader_fbx/CSGLoaderFBXImpl.h"

CSGNode::CNodePtr CSGLoaderFBXImpl::ConvertHierarchy()
{
    std::vector<CSGNode::CNodePtr> vecNodes;
    vecNodes.reserve(m_vecHierarchy.size());
    m_mapNodes.reserve(m_vecHierarchy.size());
    for (const FbxNode* pFBXNode : m_vecHierarchy)
    {
        vecNodes.push_back(ConvertNode(*pFBXNode));
        QD_CHECK_CREATED(vecNodes.back(), nullptr);
        m_mapNodes.emplace(pFBXNode, vecNodes.back().get());
    }
    // From the last one on: a node that gets its children has no parent yet, so that AddChild's check for a
    // circle of nodes, which walks up, has nowhere to go.
    for (size_t n = vecNodes.size(); n-- > 0;)
    {
        for (int i = 0; i < m_vecHierarchy[n]->GetChildCount(); ++i)
        {
            QD_CHECK_CALL(vecNodes[n]->AddChild(m_mapNodes.at(m_vecHierarchy[n]->GetChild(i))), nullptr);
        }
    }
    return vecNodes.empty() ? nullptr : vecNodes.front();
}

CSGNode::CNodePtr CSGLoaderFBXImpl::ConvertNode(const FbxNode& rFBXNode)
{
    Log(QD_FBX, LOG_DETAIL, "Creating node '%s'", rFBXNode.GetName());
    const CSGNode::CNodePtr spNode =
        CSGNode::Create(m_spNodePaths->GetGlobalName(rFBXNode), rFBXNode.GetName());
    QD_CHECK_CREATED(spNode, nullptr);
    QD_CHECK_CALL(AddLocalTransformsToSGNode(*spNode, rFBXNode), nullptr);
    if (!rFBXNode.GetVisibility() || !rFBXNode.GetShow())
    {
        QD_CHECK_CALL(spNode->SetVisible(false), nullptr);
    }
    return spNode;
}

bool CSGLoaderFBXImpl::AddLocalTransformsToSGNode(CSGNode& rNode, const FbxNode& rFBXNode) const
{
    const CSGTransform::CTransformPtr spTransform =
        CFBXLocalTransform(rFBXNode, m_bKeepQuaternions).CreateTransform();
    QD_CHECK_CREATED(spTransform, false);
    const auto spData = CSGData_LocalTransform::Create(spTransform);
    return spData && rNode.AddData(spData.get());
}
