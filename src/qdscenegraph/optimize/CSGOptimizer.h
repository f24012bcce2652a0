// Makes scene graphs cheaper without changing what they show.
#pragma once

#include <vector>

class CSGAnimation;
class CSGNode;

class CSGOptimizer
{
  public:
    // Collapses the transforms of every node of the tree that no animation drives: a list becomes one matrix,
    // and an identity vanishes. Nodes, their names and their world transforms stay. Animations have no
    // channels yet, so all transforms are collapsed.
    static bool OptimizeNonTargetTransforms(CSGNode* pNode, const std::vector<CSGAnimation*>& rvecAnimations);
};
