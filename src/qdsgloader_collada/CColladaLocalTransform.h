// Makes a node's local transform of its transform elements.
#pragma once

#include "qdsgloader_collada/ColladaDomFwd.h"

class CSGNode;

class CColladaLocalTransform
{
  public:
    // One transform per element, in document order, named by its sid. A node without such elements gets none.
    // False (reported) for an element that is not right.
    static bool Load(ColladaDOM141::domNode& rNode, CSGNode& rSGNode);
};
