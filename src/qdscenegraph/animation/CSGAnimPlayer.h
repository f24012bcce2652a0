// Plays a node's stack of animations.
#pragma once

#include "qdscenegraph/animation/CSGAnimTargetBinding.h"
#include "qdscenegraph/animation/CSGData_AnimStack.h"
#include "qdscenegraph/node/CSGNode.h"

#include <deque>

// Looks up what the layers' channels write once, so that a frame costs the sampling alone:
//   spPlayer->GetTimeSource()->Advance(fElapsedSeconds);
//   spPlayer->Update();
// Weights, loops and clocks may change at any time; after a change of the tree, of the stack or of a mask,
// bind again. Two layers are blended where they write the same part of an object; where one writes a whole
// value and another a component of it, the upper one writes last.
class CSGAnimPlayer final : public CRefObject
{
  public:
    // Bound to a node with a CSGData_AnimStack; null (reported) without. Keeps the node alive.
    static boost::intrusive_ptr<CSGAnimPlayer> Create(CSGNode* pNode);

    // The clock that the player gives to layers without one.
    CSGAnimTimeSource* GetTimeSource() const { return m_spTimeSource.get(); }
    // Looks everything up anew. Channels that find nothing are reported and left out. False (reported) when
    // the node has no stack: then nothing plays.
    bool Bind();
    // Poses the tree at the times of the clocks. False when a binding failed (reported).
    bool Update();

  private:
    CSGNode::CNodePtr m_spNode;
    CSGAnimTimeSourcePtr m_spTimeSource;
    std::vector<CSGAnimLayerPtr> m_vecLayers;
    // In the order in which they write. They point at each other: a deque never moves them.
    std::deque<CSGAnimTargetBinding> m_dqBindings;
};
