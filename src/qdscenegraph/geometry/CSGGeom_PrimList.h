// A list of primitives of different kinds.
#pragma once

#include "qdscenegraph/geometry/CSGGeom.h"
#include "qdscenegraph/geometry/CSGPrimitive.h"

#include <vector>

class CSGGeom_PrimList final : public SGStreamableDerivedInterface<CSGGeom_PrimList, CSGGeom>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGGeom_PrimList";
    static CSGTypeInfo<CSGGeom> ms_objTypeInfo;

    // Without primitives.
    static boost::intrusive_ptr<CSGGeom_PrimList> Create();

    // Appends a primitive; it may stand in several lists. A saved file keeps a copy for each place.
    bool AddPrimitive(const boost::intrusive_ptr<CSGPrimitive>& spPrimitive);
    int32_t GetNumPrimitives() const { return static_cast<int32_t>(m_vecPrimitives.size()); }
    // Null for a primitive that is not there.
    CSGPrimitive* GetPrimitive(int32_t nPrimitive) const;

    const CSGTypeInfo<CSGGeom>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    int32_t GetMaxIndex() const override { return m_nMaxIndex; }
    int64_t CountTriangles() const override { return m_nTriangles; }
    int64_t CountLines() const override { return 0; }
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    std::vector<boost::intrusive_ptr<CSGPrimitive>> m_vecPrimitives;
    int32_t m_nMaxIndex = -1;
    int64_t m_nTriangles = 0;
};
