// Numbers the corners of a mesh of triangles: those that agree in everything are one vertex.
#pragma once

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CIndexTupleSet.h"

#include <span>
#include <vector>

// Corners are one vertex when they have the same control point and, bit for bit, the same floats in all
// elements that count. Vertices of one control point are linked to each other: real meshes have a few, near
// to each other in memory, so that no table of all of them is needed.
class CFBXVertexSet
{
  public:
    // The mesh must outlive it; so must the elements, which are the mesh's.
    CFBXVertexSet(const FbxMesh& rMesh, std::vector<const FbxLayerElement*> vecElements);

    // The number of the corner's vertex: that of one that is there, else the next one from 0 on.
    int32_t Insert(int32_t nCorner);
    // Of each vertex the corner that it came with.
    std::span<const int32_t> GetCorners() const { return m_vecCorners; }
    int32_t GetControlPoint(int32_t nCorner) const
    {
        return m_arrControlPoints[static_cast<size_t>(nCorner)];
    }
    // The corner's position, then its floats of each element. Returns the place behind the last.
    float* CopyFloats(int32_t nCorner, float* pfTo) const;
    // Forgets all vertices.
    void Clear();

  private:
    const float* GetValue(const FbxLayerElement& rElement, int32_t nCorner) const;
    bool AreSame(int32_t nCorner, int32_t nOther) const;
    int32_t Add(int32_t nCorner, int32_t nOlder);
    int32_t InsertCrowded(int32_t nCorner);

    const FbxMesh& m_rMesh;
    std::span<const int32_t> m_arrControlPoints; // of corners
    std::vector<const FbxLayerElement*> m_vecElements;
    std::vector<int32_t> m_vecNewest;  // of each control point the last vertex; -1: none
    std::vector<int32_t> m_vecCorners; // of each vertex
    std::vector<int32_t> m_vecOlder;   // of each vertex the one before of the same control point; -1: none
    // Vertices of control points that have very many, as they may in files made to keep somebody waiting.
    std::vector<int32_t> m_vecTuple; // the control point, then the bits of the floats
    CIndexTupleSet m_objCrowded;
    std::vector<int32_t> m_vecCrowded; // vertices by their number there
};
