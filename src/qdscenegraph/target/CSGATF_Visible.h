// Animates whether a node is seen.
#pragma once

#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/target/CSGATF.h"

// Any value but 0 shows the node, a NaN too.
class CSGATF_Visible final : public CSGATFInterface<CSGATF_Visible, 1>
{
  public:
    explicit CSGATF_Visible(CSGNode* pObjNode) : m_spObjNode(pObjNode) {}
    static boost::intrusive_ptr<CSGATF_Visible> Create(CSGNode* pObjNode)
    {
        return CSGMem::Construct<CSGATF_Visible>(pObjNode);
    }

    bool SetValue(std::span<const float, 1> arrValue);

  private:
    CSGNode::CNodePtr m_spObjNode;
};
