// Programmable rendering: parameters and the passes that are drawn one after the other.
#pragma once

#include "qdscenegraph/material/CSGFXPass.h"

// Not saved.
class CSGEffect final : public CSGObject
{
  public:
    // Null (reported) without a parameter set.
    static boost::intrusive_ptr<CSGEffect> Create(const CSGParamSetPtr& spParamSet,
                                                  const CQDString& rName = CQDString());

    const CQDString& GetName() const { return m_strName; }
    CSGParamSet* GetParamSet() const { return m_spParamSet.get(); }
    const std::vector<CSGFXPassPtr>& GetPasses() const { return m_listPasses; }
    // Appends; false (reported) for a null pass.
    bool AddPass(const CSGFXPassPtr& spPass);

    // Written to the log at level 7, each line behind the indent.
    void OutputDebugInfo(const CQDString& rIndent) const;
    size_t GetObjectSize() const override { return sizeof(CSGEffect); }

  private:
    CSGParamSetPtr m_spParamSet;
    CQDString m_strName;
    std::vector<CSGFXPassPtr> m_listPasses;
};

using CSGEffectPtr = boost::intrusive_ptr<CSGEffect>;
