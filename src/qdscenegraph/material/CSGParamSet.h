// A set of parameters that are found by name.
#pragma once

#include "qdscenegraph/material/CSGParam.h"
#include "qdscenegraph/material/CSGSampler.h"
#include "qdscenegraph/object/CSGAllocator.h"

#include <functional>
#include <map>
#include <string_view>
#include <vector>

// Owns its parameters. What it does not have itself is looked for in its base set.
class CSGParamSet final : public CSGObject
{
  public:
    using CParamSetPtr = boost::intrusive_ptr<CSGParamSet>;

    static CParamSetPtr Create();

    // False (reported) for a null parameter, one whose name the set has already (the base set does not
    // count), and one that stands in a set.
    bool AddParam(const CSGParamPtr& spObjParam);
    // False (reported) for a parameter that is not in this set itself.
    bool RemoveParam(const CSGParamPtr& spObjParam);
    // Of this set, else of the nearest base set that has one; null when none has.
    CSGParamPtr GetParam(std::string_view strName) const;

    // Null for none. False (reported) for this set or one that falls back to it.
    bool SetBaseParams(const CParamSetPtr& spObjBaseParams);
    CSGParamSet* GetBaseParams() const { return m_spObjBaseParams.get(); }

    // Adds copies of the other set's own parameters. False (reported) at the first that fails; those before
    // it stay.
    bool CopyShallow(const CParamSetPtr& spParamSet);
    // Appends every sampler that a parameter holds, the base sets' after the own ones, shadowed ones too.
    bool GetSamplers(std::vector<CSGSamplerPtr>& rListOutput) const;

    void OutputDebugInfo(const CQDString& rIndent) const;
    size_t GetObjectSize() const override { return sizeof(CSGParamSet); }

  private:
    CParamSetPtr m_spObjBaseParams;
    CSGListSet<CSGParamPtr, 8> m_objParams; // an index stays with its parameter
    std::map<CQDString, int32_t, std::less<>> m_mapNameToIndex;
};

using CSGParamSetPtr = CSGParamSet::CParamSetPtr;
