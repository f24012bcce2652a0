// The tree element of the scene graph: structure and names. Everything a node is comes from its attachments.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdscenegraph/node/CSGDataSet.h"
#include "qdscenegraph/node/CSGGeomStats.h"
#include "qdscenegraph/object/CSGAllocator.h"
#include "qdscenegraph/object/CSGTombstone.h"

#include <memory>
#include <vector>

class CSGCopyData;
class CSGScene;

// A node owns its children and its attachments; the parent is a plain pointer. Nothing here recurses over the
// tree: trees may be as deep as memory allows.
class CSGNode final : public SGStreamableInterface<CSGNode>, public CEnableSGObjectWPtr
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGNode";
    using CNodePtr = boost::intrusive_ptr<CSGNode>;

    enum EPickBehavior
    {
        PICK_NORMAL,
        PICK_IGNORE
    };

    CSGNode();
    ~CSGNode() override;

    static CNodePtr Create(const CQDCompactString& rGlobalName, const CQDCompactString& rLocalName);

    // The global name is meant to be unique in a resource set, the local one among a node's descendants;
    // nothing enforces either.
    const CQDCompactString& GetGlobalName() const { return m_strGlobalName; }
    const CQDCompactString& GetLocalName() const { return m_strLocalName; }
    void SetGlobalName(const CQDCompactString& rName) { m_strGlobalName = rName; }
    void SetLocalName(const CQDCompactString& rName) { m_strLocalName = rName; }

    // False (reported) for a child that has a parent, or that is this node or one of its ancestors. A child
    // takes the oldest vacant index, else the next one.
    bool AddChild(CSGNode* pChild);
    // Leaves the child's index vacant.
    bool RemoveChild(CSGNode* pChild);
    bool RemoveAllChildren();
    // The number of children.
    int32_t GetChildCount() const;
    // One past the highest child index; vacant indices count.
    int32_t GetChildrenSize() const;
    // Null for a vacant index.
    CSGNode* GetChild(int32_t nChildIndex) const;

    CSGNode* GetParent() const { return m_pParent; }
    // Called by the parent's AddChild and RemoveChild.
    bool SetParent(CSGNode* pParent, int32_t nChildIndex);
    bool ClearParent();
    bool HasParent() const { return m_nIndexInParent >= 0; }
    int32_t GetIndexInParent() const { return m_nIndexInParent; }
    // Whether pNode stands above (below) this node.
    bool IsAncestor(const CSGNode* pNode) const;
    bool IsDescendant(const CSGNode* pNode) const;

    // The node that follows in document order (a node, then its children's trees) within the tree below
    // pRoot; null at the end.
    CSGNode* GetNextInTree(const CSGNode* pRoot) const;
    // The same, but the tree below this node is passed over.
    CSGNode* GetNextBeyondTree(const CSGNode* pRoot) const;

    bool AddData(CSGData* pData);
    bool RemoveData(CSGData* pData);
    bool RemoveDataFromAllDescendants(const CSGDataTypeInfo* pTypeInfo);
    const CSGDataSet& GetDataSet() const { return m_objDataSet; }
    // The node's own attachment of a kind, null when it has none: pNode->FindData<CSGData_Geometry>().
    template <class T>
    T* FindData() const
    {
        return static_cast<T*>(m_objDataSet.FindData(&T::ms_objDataTypeInfo));
    }
    // The first node below this one, in document order, that has an attachment of the kind; null when there
    // is none.
    CSGNode* FindDescendantWithData(const CSGDataTypeInfo* pTypeInfo) const;
    void FindDescendantsWithData(const CSGDataTypeInfo* pTypeInfo, std::vector<CSGNode*>& rResult) const;
    // The first node of the tree, this one included, with the name; null when there is none.
    CSGNode* FindNodeByGlobalName(const CQDCompactString& rName) const;
    CSGNode* FindNodeByLocalName(const CQDCompactString& rName) const;

    // The rendering side. A scene is borrowed and must outlive the attachment to it.
    bool AttachToScene(CSGScene* pScene);
    bool DetachFromScene(CSGScene* pScene);
    bool PropagateAttachToScene(CSGScene* pScene);
    bool PropagateDetachFromScene(CSGScene* pScene);
    CSGScene* GetScene() const { return m_pScene; }
    // Kept in the node's render state, which is made when an invisible node has none.
    bool SetVisible(bool bVisible);
    bool IsVisible() const;
    void SetPickBehavior(EPickBehavior ePickBehavior);
    EPickBehavior GetPickBehavior() const;
    // The effects that the node hands on to its children: its own, else those of its parent.
    bool SetRenderEffectsData(const boost::intrusive_ptr<CSGData>& spParentEffectsData);
    bool ClearRenderEffectsData();
    const boost::intrusive_ptr<CSGData>& GetRenderEffectsData() const { return m_spEffectsData; }

    // A copy of the tree below this node with its attachments, as their copy behaviour says. Null on failure,
    // or when the node is left out. Children of the copy stand without vacancies.
    CNodePtr Copy(CSGCopyData* pCopyData);
    CNodePtr Copy();
    // The nodes and names alone.
    CNodePtr CopyStructure(CSGCopyData* pCopyData);
    // Copies of the ancestors with their attachments, each with the one below it as only child. Returns the
    // topmost; null when there is no ancestor or on failure.
    CNodePtr CopyAncestors(CSGCopyData* pCopyData);
    // Gives every copied node of the tree its attachments.
    bool CopyData(CSGCopyData* pCopyData);
    // Gives one copied node its attachments.
    bool CopyLocalData(CSGCopyData* pCopyData, CSGNode* pCopy);

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;
    bool MayNestWithoutBound() const override { return true; }

    // Written to the log at level 7, each line behind the indent.
    void OutputDebugInfoNonRecursive(const CQDString& rIndent) const;
    // This node and everything below it, one after the other, indented by depth.
    void OutputDebugInfo(const CQDString& rIndent) const;
    void OutputDebugGraph(const CQDString& rIndent) const;
    void OutputTransformDebugInfo(const CQDString& rIndent) const;
    void OutputGeomStats(const CQDString& rIndent) const;
    CSGGeomStats GetGeomStats() const;

  private:
    static constexpr uint32_t FLAG_ATTACHED_TO_SCENE = 0x1;
    static constexpr uint32_t FLAG_SINGLE_CHILD = 0x2;
    static constexpr uint32_t FLAG_PICK_IGNORE = 0x4;

    using CChildSet = CSGListSet<CNodePtr, 5>;

    // Whether the children stand in the single-child slot; else there is a set.
    bool IsSingleChildMode() const { return (m_uiFlags & FLAG_SINGLE_CHILD) != 0; }
    int32_t StoreChild(CSGNode* pChild);
    bool CompleteAddChild(CSGNode* pChild, int32_t nChildIndex);
    bool ReserveChildren(int32_t nCount);
    bool SetLoadedChild(int32_t nChildIndex, CSGNode* pChild);
    void ReleaseChildren();

    uint32_t m_uiFlags = FLAG_SINGLE_CHILD;
    CQDCompactString m_strGlobalName;
    CQDCompactString m_strLocalName;
    CSGScene* m_pScene = nullptr;
    boost::intrusive_ptr<CSGData> m_spEffectsData;
    CSGNode* m_pParent = nullptr;
    int32_t m_nIndexInParent = -1;
    CNodePtr m_spSingleChild;
    std::unique_ptr<CChildSet> m_spChildSet;
    CSGDataSet m_objDataSet;
};
