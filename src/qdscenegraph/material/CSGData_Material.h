// The material that a node is drawn with.
#pragma once

#include "qdscenegraph/material/CSGMaterial.h"
#include "qdscenegraph/node/CSGData.h"

// Copies of a node share it.
class CSGData_Material final : public CSGDataInterface<CSGData_Material>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_Material";
    static CSGDataTypeInfo ms_objDataTypeInfo;

    // Null (reported) without a material.
    static boost::intrusive_ptr<CSGData_Material> Create(CSGMaterial* pMaterial);

    // Never null in an attachment that was created or loaded.
    CSGMaterial* GetMaterial() const { return m_spMaterial.get(); }
    // Allowed once.
    bool SetMaterial(CSGMaterial* pMaterial);
    // The name of the material that a program draws the node with instead; empty for none.
    const CQDCompactString& GetOverrideMaterialName() const { return m_strOverrideMaterialName; }
    void SetOverrideMaterialName(const CQDCompactString& rName) { m_strOverrideMaterialName = rName; }

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Share::ms_objInstance; }
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    // A loaded attachment has a material.
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    CSGMaterialPtr m_spMaterial;
    CQDCompactString m_strOverrideMaterialName;
};
