// Parameters that a node carries.
#pragma once

#include "qdscenegraph/material/CSGParamSet.h"
#include "qdscenegraph/node/CSGData.h"

// Copies of a node get parameters of their own. It cannot be saved.
class CSGData_ParamSet final : public CSGDataInterface<CSGData_ParamSet>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_ParamSet";
    static CSGDataTypeInfo ms_objDataTypeInfo;

    // Null (reported) without a set.
    static boost::intrusive_ptr<CSGData_ParamSet> Create(const CSGParamSetPtr& spParamSet);

    CSGParamSet* GetParamSet() const { return m_spParamSet.get(); }

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Copy::ms_objInstance; }
    boost::intrusive_ptr<CSGData> CreateCopy(CSGCopyData* pCopyData) const override;
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    CSGParamSetPtr m_spParamSet;
};
