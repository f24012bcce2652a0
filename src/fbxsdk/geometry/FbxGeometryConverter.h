// Turns the geometry of nodes into forms that are simpler to draw.
#pragma once

class FbxManager;
class FbxNode;

class FbxGeometryConverter
{
  public:
    explicit FbxGeometryConverter(FbxManager* /*pManager*/) {}

    // Meshes are split into triangles where they stand, for all nodes that carry them; FbxNurbs become meshes
    // of triangles in their place. False (reported) when the node is null.
    bool TriangulateInPlace(FbxNode* pNode) const;
    // Each FbxNurbsSurface becomes an FbxNurbs in its place. False (reported) when the node is null.
    bool ConvertNurbsSurfaceToNurbsInPlace(FbxNode* pNode) const;
};
