// Makes scene-graph cameras of COLLADA cameras, and puts them onto nodes.
#pragma once

#include "qdscenegraph/camera/CSGCamera.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

#include <unordered_map>

class CSGNode;

// The cameras of one scene graph: all instances of a camera share it.
//
// A document gives the width or the height of the picture, both, or one of them with the aspect ratio.
// Without an aspect ratio, or with the 0 that Autodesk's exporter writes, it comes from width and height, and
// is 1 when there is only one of them. With all three the width is left out of account.
class CColladaCameras
{
  public:
    // Converts every camera of the document. One that cannot be used is left out (reported). False (reported)
    // without memory.
    bool LoadLibraries(ColladaDOM141::domCOLLADA& rRoot);
    // The one camera of a node goes onto the node; of several each gets a child node named "node/camera". An
    // instance of what is not there is left out (reported). False (reported) without memory.
    bool AddToNode(ColladaDOM141::domNode& rNode, CSGNode& rSGNode) const;

  private:
    std::unordered_map<const ColladaDOM141::domCamera*, boost::intrusive_ptr<CSGCamera>> m_mapCameras;
};
