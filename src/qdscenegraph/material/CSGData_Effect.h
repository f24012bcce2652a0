// The effects that a node and what hangs below it are drawn with.
#pragma once

#include "qdscenegraph/material/CSGEffect.h"
#include "qdscenegraph/node/CSGData.h"

// Belongs to one node; copies of the node get one of their own with the same effects. It cannot be saved.
class CSGData_Effect final : public CSGDataInterface<CSGData_Effect>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_Effect";
    static CSGDataTypeInfo ms_objDataTypeInfo;

    // Null (reported) without an effect.
    static boost::intrusive_ptr<CSGData_Effect> Create(const CSGEffectPtr& spEffect);

    CSGEffect* GetPrimaryEffect() const { return m_spPrimaryEffect.get(); }
    // Allowed once.
    bool SetPrimaryEffect(const CSGEffectPtr& spEffect);
    const std::vector<CSGEffectPtr>& GetSurfaceEffects() const { return m_listSurfaceEffects; }
    // Each effect at most once.
    bool AddSurfaceEffect(const CSGEffectPtr& spEffect);
    bool RemoveSurfaceEffect(const CSGEffectPtr& spEffect);
    // Null while it is attached to none.
    CSGNode* GetNode() const { return m_pNode; }

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Copy::ms_objInstance; }
    boost::intrusive_ptr<CSGData> CreateCopy(CSGCopyData* pCopyData) const override;
    bool NotifyAddedToNode(CSGNode* pObjNode) override;
    bool NotifyRemovedFromNode(CSGNode* pObjNode) override;
    bool NotifyNodeDestroyed(CSGNode* pObjNode) override;

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    CSGEffectPtr m_spPrimaryEffect;
    std::vector<CSGEffectPtr> m_listSurfaceEffects;
    CSGNode* m_pNode = nullptr;
};
