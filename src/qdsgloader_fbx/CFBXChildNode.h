// A node for something that an FBX node carries besides its children: a light, a camera, a piece of a mesh.
#pragma once

#include "qdcommon/CTransform3.h"
#include "qdscenegraph/node/CSGNode.h"

class CFBXChildNode
{
  public:
    // Adds a child "node/name", which lies in the node by the transform. Null (reported) on failure.
    static CSGNode* Add(CSGNode& rNode, const CQDString& rName, const CTransform3& rLocal);
};
