// Makes scene-graph lights of FBX lights.
#pragma once

#include "qdscenegraph/light/CSGLight.h"

class CSGNode;
class FbxLight;
class FbxNode;

class CFBXLightConverter
{
  public:
    // The colour times the intensity, of which 100 is the full strength. Area lights become spot lights over
    // the half space in front of them, volume lights point lights, and what decays with the third power of
    // the distance decays with the second (each reported). Null (reported) for a light that cannot be used,
    // and without memory.
    static boost::intrusive_ptr<CSGLight> Convert(const FbxNode& rFBXNode, const FbxLight& rLight);
    // Adds a child "node/light" with the light: FBX lights shine along -Y of their node. A light that cannot
    // be used is left out (reported). False (reported) without memory.
    static bool AddToNode(CSGNode& rSGNode, const FbxNode& rFBXNode, const FbxLight& rLight);
};
