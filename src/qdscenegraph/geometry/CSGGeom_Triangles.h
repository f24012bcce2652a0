// A list of triangles.
#pragma once

#include "qdscenegraph/geometry/CSGIndexedGeom.h"

class CSGGeom_Triangles final : public SGStreamableDerivedInterface<CSGGeom_Triangles, CSGIndexedGeom>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGGeom_Triangles";
    static CSGTypeInfo<CSGGeom> ms_objTypeInfo;

    CSGGeom_Triangles() : SGStreamableDerivedInterface(3) {}
    // Null (reported) without an index buffer, and for a count of indices that is not a multiple of 3.
    static boost::intrusive_ptr<CSGGeom_Triangles> Create(
        const boost::intrusive_ptr<CSGIndexBuffer>& spIndexBuffer);

    int32_t GetNumTriangles() const { return GetNumElements(); }
    // False for a triangle that is not there.
    bool GetTriangle(int32_t nTriangle, int32_t (&arrIndices)[3]) const
    {
        return GetElement(nTriangle, arrIndices);
    }
    // False (reported) for a negative index.
    bool AddTriangle(int32_t a, int32_t b, int32_t c);

    const CSGTypeInfo<CSGGeom>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    int64_t CountTriangles() const override { return GetNumTriangles(); }
    int64_t CountLines() const override { return 0; }
    void OutputDebugInfo(const CQDString& rIndent) const override;
};
