// The animations that play on the tree below a node.
#pragma once

#include "qdscenegraph/animation/CSGAnimLayer.h"
#include "qdscenegraph/node/CSGData.h"

// Layers, the lowest first: each shows over those before it. A copy has layers of its own for the same
// animations. CSGAnimPlayer plays it.
class CSGData_AnimStack final : public CSGDataInterface<CSGData_AnimStack>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_AnimStack";
    static CSGDataTypeInfo ms_objDataTypeInfo;

    // Without layers.
    static boost::intrusive_ptr<CSGData_AnimStack> Create();

    // On top. False (reported) for null.
    bool AddLayer(const CSGAnimLayerPtr& spLayer);
    int32_t GetNumLayers() const { return static_cast<int32_t>(m_vecLayers.size()); }
    // Null for a layer that is not there.
    CSGAnimLayer* GetLayer(int32_t nLayer) const;
    // The lowest layer of the name; null when there is none.
    CSGAnimLayer* FindLayer(const CQDCompactString& rName) const;

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Copy::ms_objInstance; }
    boost::intrusive_ptr<CSGData> CreateCopy(CSGCopyData* pCopyData) const override;
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    // A loaded stack has a layer in every place.
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override { m_vecLayers.clear(); }
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    std::vector<CSGAnimLayerPtr> m_vecLayers;
};
