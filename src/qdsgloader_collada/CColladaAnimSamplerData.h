// The sources of a COLLADA sampler, and the curve they make.
#pragma once

#include "qdscenegraph/animation/CSGAnimSampler.h"
#include "qdsgloader_collada/CCDS_FloatArray.h"
#include "qdsgloader_collada/CCDS_StringArray.h"
#include "qdsgloader_collada/CColladaAnimTarget.h"
#include "qdsgloader_collada/CColladaInterpolation.h"

#include <string_view>
#include <vector>

class CColladaDataSourceCache;

class CColladaAnimSamplerData
{
  public:
    using CSamplerPtr = boost::intrusive_ptr<CSGAnimSampler>;

    explicit CColladaAnimSamplerData(CColladaDataSourceCache& rSources) : m_rSources(rSources) {}

    // False (reported) when a source cannot be read.
    bool LoadSources(ColladaDOM141::domSampler& rSampler);

    // The curve for a target that takes so many values. COLLADA has a kind of interpolation for every
    // segment, a curve has one: where they differ, it becomes Bezier if any segment is, else linear; a step
    // gets a second key, which holds the value up to the next key's time. Null (reported) when the sources do
    // not fit together.
    CSamplerPtr CreateSampler(EColladaValues eValues, int32_t nOutputCount);

  private:
    using CFloatsPtr = boost::intrusive_ptr<CCDS_FloatArray>;
    using CStringsPtr = boost::intrusive_ptr<CCDS_StringArray>;
    struct CKeys;

    template <class T>
    bool SetSource(boost::intrusive_ptr<T>& rspValues, std::string_view strSemantic, const daeURI& rURI);
    bool CheckSources(int32_t nOutputCount) const;
    bool CheckCount(const CColladaDataSource& rSource, std::string_view strSemantic) const;
    bool CheckTimes() const;
    bool ReadInterpolations(std::vector<EColladaInterpolation>& rvecTypes) const;
    bool FixInTangentValues();
    bool FixOutTangentValues();
    bool FixTangentValues(CFloatsPtr& rspTangents, int32_t nOtherKey) const;
    bool CheckTangentWidth(const CCDS_FloatArray& rTangents) const;
    void AddTangents(CKeys& rKeys, EColladaValues eValues) const;

    CColladaDataSourceCache& m_rSources;
    CQDString m_strID;
    CFloatsPtr m_spInputValues;
    CFloatsPtr m_spOutputValues;
    CFloatsPtr m_spInTangentValues;
    CFloatsPtr m_spOutTangentValues;
    CStringsPtr m_spInterpolationValues;
};
