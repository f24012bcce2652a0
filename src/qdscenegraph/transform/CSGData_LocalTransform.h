// How a node lies in its parent.
#pragma once

#include "qdscenegraph/node/CSGData.h"
#include "qdscenegraph/transform/CSGTransformLink.h"

// Belongs to one node. The transform may be shared with other nodes; the world transforms of all of them
// follow its changes.
class CSGData_LocalTransform : public CSGDataInterface<CSGData_LocalTransform>, public CSGDirtyGraphNode
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_LocalTransform";
    static CSGDataTypeInfo ms_objDataTypeInfo;

    // Null (reported) for a null transform.
    static boost::intrusive_ptr<CSGData_LocalTransform> Create(
        const CSGTransform::CTransformPtr& spTransform);

    CSGTransform* GetTransformObject() const { return m_objTransform.Get(); }
    bool SetTransformObject(CSGTransform* pTransform);
    CTransform3 GetTransform() const;

    // Marks the world transforms of the node and of everything below it.
    void MarkDirty() override;

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Copy::ms_objInstance; }
    boost::intrusive_ptr<CSGData> CreateCopy(CSGCopyData* pCopyData) const override;
    bool NotifyAddedToNode(CSGNode* pNode) override;
    bool NotifyRemovedFromNode(CSGNode* pNode) override;
    bool NotifyNodeDestroyed(CSGNode* pNode) override;

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    // A loaded local transform has a transform.
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;

    void OutputDebugInfo(const CQDString& rIndent) const override;
    void OutputTransformDebugInfo(const CQDString& rIndent) const override;

  private:
    CSGNode* m_pNode = nullptr;
    CSGTransformLink m_objTransform{this};
};
