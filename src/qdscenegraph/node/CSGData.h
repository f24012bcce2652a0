// The base of everything that can be attached to a node.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdscenegraph/node/CSGDataCopyBehavior.h"
#include "qdscenegraph/object/CSGDataTypeInfo.h"
#include "qdscenegraph/streaming/CSGStreamable.h"

class CSGNode;
class CSGScene;
struct CSGBounds;
struct CSGGeomStats;

// The notifications are sent by the node; the objects they name are never null. False makes the node's
// operation fail. A shared attachment hears of every node that holds it.
class CSGData : public SGStreamableInterface<CSGData>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData";

    virtual const CSGDataTypeInfo* GetDataTypeInfo() const = 0;
    virtual const CSGDataCopyBehavior& GetCopyBehavior() const = 0;
    // A new attachment with the same content, for attachments with the behaviour Copy; null on failure.
    virtual boost::intrusive_ptr<CSGData> CreateCopy(CSGCopyData* pCopyData) const;
    // On the copied attachment, once the whole subgraph is copied: references into the original are bound to
    // the copy.
    virtual bool PostCopy(CSGCopyData* pCopyData);

    virtual bool NotifyAddedToNode(CSGNode* pNode);
    virtual bool NotifyRemovedFromNode(CSGNode* pNode);
    virtual bool NotifyNodeDestroyed(CSGNode* pNode);
    virtual bool NotifyNodeAddedToParent(CSGNode* pNode, CSGNode* pParent);
    virtual bool NotifyNodeRemovedFromParent(CSGNode* pNode, CSGNode* pParent);
    virtual bool NotifyDataAddedToNode(CSGNode* pNode, CSGData* pAddedData);
    virtual bool NotifyDataRemovedFromNode(CSGNode* pNode, CSGData* pRemovedData);
    virtual bool NotifyChildAddedToNode(CSGNode* pNode, CSGNode* pAddedChild);
    virtual bool NotifyChildRemovedFromNode(CSGNode* pNode, CSGNode* pRemovedChild);

    // The rendering side: nothing happens unless a kind says otherwise.
    virtual bool AttachScene(CSGScene* pScene, CSGNode* pNode);
    virtual bool PopulateRenderLists(CSGScene* pScene, CSGNode* pNode);

    // What the node's geometry takes up in the node's own space, for attachments that deform it; null for all
    // others. Good until it is asked for again. The call may add attachments to nodes.
    virtual const CSGBounds* GetDeformedBounds(CSGNode* pNode) const;

    // Writes the attachment to the log (level 7), each line behind the indent.
    virtual void OutputDebugInfo(const CQDString& rIndent) const = 0;
    // The transform the attachment contributes, under "Local:" or "World:".
    virtual void OutputTransformDebugInfo(const CQDString& rIndent) const;
    // Adds the geometry it holds.
    virtual void AddGeomStats(CSGGeomStats& rStats) const;
};

// Base of a concrete kind of attachment T, which declares `static CSGDataTypeInfo ms_objDataTypeInfo` and
// defines it in its .cpp with the kind's [[gnu::init_priority(CSGDataTypeInfo::ORDER_...)]].
template <class T>
class CSGDataInterface : public SGStreamableDerivedInterface<T, CSGData>
{
  public:
    const CSGDataTypeInfo* GetDataTypeInfo() const override { return &T::ms_objDataTypeInfo; }
};
