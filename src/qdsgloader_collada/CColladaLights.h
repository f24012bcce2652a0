// Makes scene-graph lights of COLLADA lights, and puts them onto nodes.
#pragma once

#include "qdscenegraph/light/CSGLight.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

#include <unordered_map>

class CSGNode;

// The lights of one scene graph: all instances of a light share it.
class CColladaLights
{
  public:
    // Converts every light of the document. One that cannot be used is left out (reported). False (reported)
    // without memory.
    bool LoadLibraries(ColladaDOM141::domCOLLADA& rRoot);
    // Gives a node one light set with the lights that it instances. An instance of what is not there is left
    // out (reported). False (reported) without memory.
    bool AddToNode(ColladaDOM141::domNode& rNode, CSGNode& rSGNode) const;

  private:
    std::unordered_map<const ColladaDOM141::domLight*, boost::intrusive_ptr<CSGLight>> m_mapLights;
};
