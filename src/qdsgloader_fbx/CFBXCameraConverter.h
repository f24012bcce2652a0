// Makes scene-graph cameras of FBX cameras.
#pragma once

#include "qdscenegraph/camera/CSGCamera.h"

class CSGNode;
class FbxCamera;
class FbxNode;

// What an FBX camera says of distances is in the units of the scene however its node is scaled; ours is in
// those of the node.
class CFBXCameraConverter
{
  public:
    // The picture is as upright as the camera's gate fit shows it of the film. Null (reported) for a camera
    // that cannot be used, and without memory.
    static boost::intrusive_ptr<CSGCamera> Convert(const FbxNode& rFBXNode, const FbxCamera& rCamera);
    // Adds a child "node/camera" with the camera: FBX cameras look along +X of their node, and Y is above. A
    // camera that cannot be used is left out (reported). False (reported) without memory.
    static bool AddToNode(CSGNode& rSGNode, const FbxNode& rFBXNode, const FbxCamera& rCamera);
};
