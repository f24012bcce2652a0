// Names of COLLADA DOM classes for headers, which must not include the DOM itself.
#pragma once

class DAE;
class daeElement;
class daeURI;

namespace ColladaDOM141
{
class domCOLLADA;
class domController;
class domGeometry;
class domInputLocalOffset;
class domLines;
class domMesh;
class domNode;
class domPolylist;
class domSource;
class domTriangles;
class domVisual_scene;
} // namespace ColladaDOM141
