// What the geometry of a node takes up in the node's own space.
#pragma once

#include "qdscenegraph/geometry/CSGBounds.h"
#include "qdscenegraph/node/CSGData.h"

// Belongs to one node. The bounds are those of the node's own CSGData_Geometry as it is when they are asked
// for: they are made again whenever the vertices, the list of bindings or the attachment has changed. Empty
// for a node without geometry. The bounds of a file are believed until something changes. Geometry that
// another attachment deforms (CSGData::GetDeformedBounds) is taken as it is deformed at present.
class CSGData_GeomBounds final : public CSGDataInterface<CSGData_GeomBounds>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_GeomBounds";
    static CSGDataTypeInfo ms_objDataTypeInfo;

    // The node's bounds, made and added when it has none; null (reported) on failure.
    static boost::intrusive_ptr<CSGData_GeomBounds> GetOrCreateFromNode(CSGNode* pNode);

    // An empty sphere has the radius -1.
    const CSGBoundingSphere& GetSphere() const { return GetBounds().m_objSphere; }
    // An empty box has its minimum above its maximum.
    const CSGBoundingBox& GetBox() const { return GetBounds().m_objBox; }

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Copy::ms_objInstance; }
    boost::intrusive_ptr<CSGData> CreateCopy(CSGCopyData* pCopyData) const override;
    // False (reported) when another node has it.
    bool NotifyAddedToNode(CSGNode* pNode) override;
    bool NotifyRemovedFromNode(CSGNode* pNode) override;
    bool NotifyNodeDestroyed(CSGNode* pNode) override;
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    // What bounds are made of: the stamp of the geometry attachment, and the newest below it. Zeros stand for
    // no geometry.
    struct CSource
    {
        uint64_t m_uiData = 0;
        uint64_t m_uiNewest = 0;

        bool operator==(const CSource&) const = default;
    };

    CSource GetSource() const;
    // Those of the attachment that deforms the node's geometry, null when there is none.
    const CSGBounds* FindDeformedBounds() const;
    const CSGBounds& GetBounds() const;

    CSGNode* m_pNode = nullptr;
    mutable CSGBounds m_objBounds;
    mutable CSource m_objMadeFrom;
};
