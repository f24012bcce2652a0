// What a node's extra data says about how it is drawn.
#pragma once

#include "qdsgloader_collada/ColladaDomFwd.h"

class CSGNode;

class CColladaNodeExtra
{
  public:
    // Applies <visibility> and <double_sided> of every technique, whatever its profile. False (reported) when
    // the node does not take it.
    static bool Load(ColladaDOM141::domNode& rNode, CSGNode& rSGNode);
};
