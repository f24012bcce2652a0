// A list of line segments.
#pragma once

#include "qdscenegraph/geometry/CSGIndexedGeom.h"

class CSGGeom_Lines final : public SGStreamableDerivedInterface<CSGGeom_Lines, CSGIndexedGeom>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGGeom_Lines";
    static CSGTypeInfo<CSGGeom> ms_objTypeInfo;

    CSGGeom_Lines() : SGStreamableDerivedInterface(2) {}
    // Null (reported) without an index buffer, and for a count of indices that is not a multiple of 2.
    static boost::intrusive_ptr<CSGGeom_Lines> Create(
        const boost::intrusive_ptr<CSGIndexBuffer>& spIndexBuffer);

    int32_t GetNumLines() const { return GetNumElements(); }
    // False for a line that is not there.
    bool GetLine(int32_t nLine, int32_t (&arrIndices)[2]) const { return GetElement(nLine, arrIndices); }
    // False (reported) for a negative index.
    bool AddLine(int32_t a, int32_t b);

    const CSGTypeInfo<CSGGeom>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    int64_t CountTriangles() const override { return 0; }
    int64_t CountLines() const override { return GetNumLines(); }
    void OutputDebugInfo(const CQDString& rIndent) const override;
};
