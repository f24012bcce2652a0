// Makes scene graphs cheaper without changing what they show.
#pragma once

#include <vector>

class CSGAnimation;
class CSGNode;

class CSGOptimizer
{
  public:
    // Collapses the transforms in a tree that no channel of the animations writes: what stands between two
    // animated transforms of a node becomes one transform, an identity vanishes, and a node left without
    // transforms has no local transform. Animated transforms stay the objects that they are, under their
    // names. Nodes, their names, world transforms and poses stay. A channel counts for every node of the name
    // that it gives. Null animations are passed over. False (reported) for a null node and when memory runs
    // out; the tree is sound then, too.
    //
    // Takes time in proportion to the nodes with their transforms and the channels.
    static bool OptimizeNonTargetTransforms(CSGNode* pNode, const std::vector<CSGAnimation*>& rvecAnimations);
};
