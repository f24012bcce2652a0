// A scene: the tree that a renderer would draw. Nodes know the scene they are attached to; nothing is drawn.
#pragma once

#include "qdscenegraph/node/CSGNode.h"

class CSGScene
{
  public:
    CSGScene() = default;
    CSGScene(const CSGScene&) = delete;
    CSGScene& operator=(const CSGScene&) = delete;
    ~CSGScene() { SetRootNode(nullptr); }

    // Attaches the tree below a node; the one before is detached. Null detaches only.
    bool SetRootNode(CSGNode* pRootNode)
    {
        bool bSuccess = true;
        if (m_spRootNode && m_spRootNode->GetScene() == this)
        {
            bSuccess = m_spRootNode->DetachFromScene(this);
        }
        m_spRootNode = pRootNode;
        return bSuccess && (pRootNode == nullptr || pRootNode->AttachToScene(this));
    }
    CSGNode* GetRootNode() const { return m_spRootNode.get(); }

  private:
    CSGNode::CNodePtr m_spRootNode;
};
