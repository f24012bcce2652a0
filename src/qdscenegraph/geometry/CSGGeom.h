// The base of primitive geometry: which vertices make up what is drawn.
#pragma once

#include "qdscenegraph/object/CSGTypeInfo.h"
#include "qdscenegraph/streaming/CSGStreamable.h"

// Geometry knows vertices by number only; a CSGGeomBinding brings it together with the vertices.
class CSGGeom : public SGStreamableInterface<CSGGeom>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGGeom";

    // The record of the concrete kind: T::ms_objTypeInfo.
    virtual const CSGTypeInfo<CSGGeom>* GetTypeInfo() const = 0;
    // -1 for geometry without indices.
    virtual int32_t GetMaxIndex() const = 0;
    // What the geometry comes to for geometry statistics: a quad is two triangles, a polygon of n corners n
    // - 2.
    virtual int64_t CountTriangles() const = 0;
    virtual int64_t CountLines() const = 0;
    // Counts and formats, written to the log (level 7), each line behind the indent.
    virtual void OutputDebugInfo(const CQDString& rIndent) const = 0;
};
