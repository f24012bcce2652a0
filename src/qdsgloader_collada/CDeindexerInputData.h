// One input of a primitive element, as the de-indexer uses it.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdscenegraph/geometry/CSGVertexFormat.h"
#include "qdsgloader_collada/CCDS_FloatArray.h"

class CColladaDataSourceCache;

class CDeindexerInputData
{
  public:
    // False (reported) for a negative offset or set, and for a source that is not one of floats.
    bool Setup(int32_t nOffset, const CQDString& rStrSemantic, int32_t nSet,
               ColladaDOM141::domSource* pSource, CColladaDataSourceCache& rDataSources);

    // Where the input's index stands in a corner's tuple.
    int32_t GetOffset() const { return m_nOffset; }
    const CQDString& GetSemantic() const { return m_strSemantic; }
    int32_t GetSet() const { return m_nSet; }
    // MEMBER_NONE when the input's data goes nowhere.
    CSGVertexFormat::EMember GetVertexMember() const { return m_eVertexMember; }
    void Ignore() { m_eVertexMember = CSGVertexFormat::MEMBER_NONE; }
    int32_t GetNumFloats() const { return m_spDataSource->GetPrimitivesPerValue(); }
    const CCDS_FloatArray& GetDataSource() const { return *m_spDataSource; }

  private:
    int32_t m_nOffset = 0;
    CQDString m_strSemantic;
    int32_t m_nSet = 0;
    CSGVertexFormat::EMember m_eVertexMember = CSGVertexFormat::MEMBER_NONE;
    boost::intrusive_ptr<CCDS_FloatArray> m_spDataSource;
};
