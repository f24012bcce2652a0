// Makes surfaces of <surface> elements.
#pragma once

#include "qdscenegraph/material/CSGSurface.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

class CColladaImages;

class CColladaSurfaceConverter
{
  public:
    // The surface of the one image that a 2D surface is initialised from; other surfaces are refused. Null
    // (reported) on failure.
    static CSGSurfacePtr LoadSurface(ColladaDOM141::domFx_surface_common& rSurface, CColladaImages& rImages);
};
