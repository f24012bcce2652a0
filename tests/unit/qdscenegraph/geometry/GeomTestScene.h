// Small geometry for the tests of this folder.
#pragma once

#include "qdscenegraph/geometry/CSGData_GeomBounds.h"
#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdscenegraph/geometry/CSGGeom_Lines.h"
#include "qdscenegraph/geometry/CSGGeom_PrimList.h"
#include "qdscenegraph/geometry/CSGGeom_Quads.h"
#include "qdscenegraph/geometry/CSGGeom_Triangles.h"
#include "qdscenegraph/geometry/CSGPrim_Polygon.h"
#include "qdscenegraph/geometry/CSGPrim_Quad.h"
#include "qdscenegraph/geometry/CSGPrim_Triangle.h"
#include "support/NestTestFile.h"

using CVertexBufferPtr = boost::intrusive_ptr<CSGVertexBuffer>;
using CIndexBufferPtr = boost::intrusive_ptr<CSGIndexBuffer>;

// Vertices that are positions of so many floats alone.
inline CVertexBufferPtr MakeVertices(const std::vector<float>& rFloats, int32_t nFloatsEach = 3)
{
    CSGVertexFormat objFormat;
    objFormat.AddMemberN(CSGVertexFormat::MEMBER_POSITION, 0, nFloatsEach);
    CVertexBufferPtr spBuffer =
        CSGVertexBuffer::Create(objFormat, static_cast<int32_t>(rFloats.size()) / nFloatsEach);
    std::ranges::copy(rFloats, spBuffer->EditData().begin());
    return spBuffer;
}

inline CIndexBufferPtr MakeIndices(const std::vector<int32_t>& rIndices)
{
    CIndexBufferPtr spBuffer = CSGIndexBuffer::Create(0, 0);
    return spBuffer->AddIndices(rIndices) ? spBuffer : nullptr;
}

inline boost::intrusive_ptr<CSGGeomBinding> MakeTriangles(const std::vector<int32_t>& rIndices,
                                                          const CVertexBufferPtr& spVertices)
{
    return CSGGeomBinding::Create(CSGGeom_Triangles::Create(MakeIndices(rIndices)), spVertices);
}
