// Names of COLLADA DOM classes for headers, which must not include the DOM itself.
#pragma once

class DAE;
class daeElement;
class daeURI;

namespace ColladaDOM141
{
class domAnimation;
class domAnimation_clip;
class domBind_material;
class domCOLLADA;
class domCamera;
class domChannel;
class domCommon_color_or_texture_type;
class domCommon_float_or_param_type;
class domCommon_newparam_type;
class domCommon_transparent_type;
class domController;
class domEffect;
class domFx_newparam_common;
class domFx_sampler2D_common;
class domFx_surface_common;
class domGeometry;
class domImage;
class domInputLocalOffset;
class domInstance_controller;
class domInstance_material;
class domLight;
class domLines;
class domMaterial;
class domMesh;
class domNode;
class domPolylist;
class domProfile_COMMON;
class domSampler;
class domSkin;
class domSource;
class domTriangles;
class domVisual_scene;
} // namespace ColladaDOM141
