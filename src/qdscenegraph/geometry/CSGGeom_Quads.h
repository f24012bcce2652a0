// A list of quadrilaterals.
#pragma once

#include "qdscenegraph/geometry/CSGIndexedGeom.h"

class CSGGeom_Quads final : public SGStreamableDerivedInterface<CSGGeom_Quads, CSGIndexedGeom>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGGeom_Quads";
    static CSGTypeInfo<CSGGeom> ms_objTypeInfo;

    CSGGeom_Quads() : SGStreamableDerivedInterface(4) {}
    // Null (reported) without an index buffer, and for a count of indices that is not a multiple of 4.
    static boost::intrusive_ptr<CSGGeom_Quads> Create(
        const boost::intrusive_ptr<CSGIndexBuffer>& spIndexBuffer);

    int32_t GetNumQuads() const { return GetNumElements(); }
    // False for a quad that is not there.
    bool GetQuad(int32_t nQuad, int32_t (&arrIndices)[4]) const { return GetElement(nQuad, arrIndices); }
    // False (reported) for a negative index.
    bool AddQuad(int32_t a, int32_t b, int32_t c, int32_t d);

    const CSGTypeInfo<CSGGeom>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    int64_t CountTriangles() const override { return 2 * int64_t{GetNumQuads()}; }
    int64_t CountLines() const override { return 0; }
    void OutputDebugInfo(const CQDString& rIndent) const override;
};
