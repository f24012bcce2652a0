// Turns the geometry of nodes into forms that are simpler to draw.
#pragma once

#include "fbxsdk/geometry/CFBXTriangulator.h"

#include <cstddef>
#include <unordered_map>

class FbxGeometry;
class FbxManager;
class FbxMesh;
class FbxNode;
class FbxNurbs;
class FbxNurbsSurface;

// One for a scene: nodes with the same surface share what is made of it.
class FbxGeometryConverter
{
  public:
    explicit FbxGeometryConverter(FbxManager* /*pManager*/) {}

    // Meshes are split into triangles where they stand, for all nodes that carry them; FbxNurbs become meshes
    // of triangles in their place. False (reported) when the node is null.
    bool TriangulateInPlace(FbxNode* pNode);
    // Each FbxNurbsSurface becomes an FbxNurbs in its place. False (reported) when the node is null.
    bool ConvertNurbsSurfaceToNurbsInPlace(FbxNode* pNode);

  private:
    FbxMesh* GetMesh(const FbxNurbs& rNurbs);
    FbxNurbs* GetNurbs(const FbxNurbsSurface& rSurface);

    CFBXTriangulator m_objTriangulator;
    std::unordered_map<const FbxGeometry*, FbxGeometry*> m_mapConverted; // surfaces
    // Of the meshes made of surfaces: a few knots can ask for very many points.
    size_t m_nGridPointsLeft = 1 << 19;
};
