// A joint of a skin together with the node that it follows.
#pragma once

#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/object/CSGTombstone.h"

// The node is not owned: a skinned node may hang below a joint of its own skin. A node that is gone leaves
// the joint unbound.
class CSGJointBinding
{
  public:
    explicit CSGJointBinding(int32_t nJoint) : m_nJoint(nJoint) {}

    // The joint's index in its skin.
    int32_t GetJoint() const { return m_nJoint; }
    // Null while the joint is not bound.
    boost::intrusive_ptr<CSGNode> GetNode() const { return m_objNode.Lock(); }
    // Null unbinds it.
    void SetNode(CSGNode* pNode) { m_objNode = CSGWeakPtr<CSGNode>(pNode); }

  private:
    int32_t m_nJoint;
    CSGWeakPtr<CSGNode> m_objNode;
};
