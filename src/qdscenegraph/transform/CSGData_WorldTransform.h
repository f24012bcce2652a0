// How a node lies in the world: derived from the local transforms of the node and of all nodes above it.
#pragma once

#include "qdcommon/CTransform3.h"
#include "qdscenegraph/node/CSGData.h"

// A cache, made for a node and its ancestors when first asked for; never saved and never copied. Valid world
// transforms have valid ones on every node above: what marks a tree dirty passes over all that lies below a
// node without a valid one.
class CSGData_WorldTransform : public CSGDataInterface<CSGData_WorldTransform>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_WorldTransform";
    static CSGDataTypeInfo ms_objDataTypeInfo;

    // The node's world transform, made and added when it has none; null on failure. The node owns it.
    static CSGData_WorldTransform* GetOrCreateFromNode(CSGNode* pNode);
    // The world transforms of a node and of everything below it are out of date.
    static void MarkTreeDirty(CSGNode* pRoot);

    // From the space of the node to that of the root above it; the identity for one that belongs to no node.
    const CTransform3& GetTransform() const;

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Ignore::ms_objInstance; }
    bool NotifyAddedToNode(CSGNode* pNode) override;
    bool NotifyRemovedFromNode(CSGNode* pNode) override;
    bool NotifyNodeDestroyed(CSGNode* pNode) override;
    bool NotifyNodeAddedToParent(CSGNode* pNode, CSGNode* pParent) override;
    bool NotifyNodeRemovedFromParent(CSGNode* pNode, CSGNode* pParent) override;
    bool NotifyDataAddedToNode(CSGNode* pNode, CSGData* pAddedData) override;
    bool NotifyDataRemovedFromNode(CSGNode* pNode, CSGData* pRemovedData) override;

    // Never saved: both fail.
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void DropLinks() override { m_pNode = nullptr; }

    void OutputDebugInfo(const CQDString& rIndent) const override;
    void OutputTransformDebugInfo(const CQDString& rIndent) const override;

  private:
    void Update() const;

    CSGNode* m_pNode = nullptr;
    mutable CTransform3 m_objTransform;
    mutable bool m_bDirty = true;
};
