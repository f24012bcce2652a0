// The unit that is saved to and loaded from a NEST file: an ordered list of top-level objects, by convention
// the scene's root node followed by its animations.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/object/CSGTombstone.h"

#include <span>

class CSGAnimation;

// Which axis of a scene points up. A NEST file does not keep it.
enum EUpAxis
{
    UP_AXIS_X,
    UP_AXIS_Y,
    UP_AXIS_Z
};

class CSGResourceSet : public CSGObject, public CEnableSGObjectWPtr
{
  public:
    using CNodePtr = CSGNode::CNodePtr;

    static boost::intrusive_ptr<CSGResourceSet> Create();
    size_t GetObjectSize() const override { return sizeof(CSGResourceSet); }

    EUpAxis GetUpAxis() const { return m_eUpAxis; }
    void SetUpAxis(EUpAxis eUpAxis) { m_eUpAxis = eUpAxis; }

    // Appends an object; one that is added twice is listed twice.
    bool AddTopLevelNode(CSGStreamable* pNode);
    int32_t GetNumTopLevelNodes() const { return static_cast<int32_t>(m_vecTopLevelNodes.size()); }
    // Null for an index outside the set.
    CSGStreamable* GetTopLevelNode(int32_t nIndex) const;

    // The first object, when it is a node; null (reported) otherwise.
    CSGNode* GetFirstNode() const;
    // A copy of the first node's tree: the set's own nodes are never handed out here. Null (reported) on
    // failure.
    CNodePtr GetSceneGraph() const;
    // The same without the given nodes and everything below them.
    CNodePtr GetSceneGraphWithIgnores(const std::vector<const CSGNode*>& rIgnores) const;
    // The first node with the global name in the first node's tree; null (reported) when there is none.
    CSGNode* GetNode(const CQDCompactString& rName) const;
    // A copy of that node's tree without the given nodes.
    CNodePtr GetNodeWithIgnores(const CQDCompactString& rName,
                                const std::vector<const CSGNode*>& rIgnores) const;

    // The skeleton alone: a copy of the first node's tree with the joints of all skins in it, what is above
    // them, and what hangs below them without geometry. Nothing in it is drawn. Null (reported) when there is
    // no joint. The copy data, a fresh one, knows which copy stands for which node.
    CNodePtr GetSkeletonNode(CSGCopyData* pCopyData) const;
    // A copy of the node with the global name and of all below it, for use beside that skeleton: it lies
    // where the original does, and its skins follow the skeleton's joints. Null (reported) when there is no
    // such node.
    CNodePtr GetNodeInSkinBinding(const CQDCompactString& rName, CSGCopyData* pSkeletonCopy) const;

    // One part of a character as a set of its own: the node with the global name and all below it, with skins
    // that have no other joints than their vertices follow, and of the skeleton these joints and what is
    // above them. The set's root stands for the first node and bears its names; below it are the skeleton,
    // without anything that is drawn, and the part, which lies where the original does. A skinned node with
    // joints below it stays in the skeleton. Then all animations, with the channels that drive something in
    // the part; one that has no others is shared with this set. Null (reported) when there is no such node or
    // it has no skin.
    boost::intrusive_ptr<CSGResourceSet> GetSkinnedSubResourceSet(const CQDCompactString& rName) const;
    // Appends a part for each name. False (reported) at the first one that cannot be made.
    bool GetSkinnedSubResourceSets(std::span<const CQDCompactString> arrNames,
                                   std::vector<boost::intrusive_ptr<CSGResourceSet>>& rvecResourceSets) const;

    // Gives the first node with the old global name, in document order over all top-level nodes, the new one;
    // a local name that was the same changes with it. The set's animations, those that are played in its
    // trees too, find it by the new name. False (reported) when there is no such node.
    bool RenameNode(const CQDCompactString& rOldName, const CQDCompactString& rNewName);

    // Gives the first animation of the old name the new one. A name that it has already is left as it is
    // (noted in the log). False (reported) when there is no such animation, and when another one has the new
    // name.
    bool RenameAnimation(const CQDCompactString& rOldName, const CQDCompactString& rNewName);

    // Appends the set's animations in their order.
    bool GetAnimations(std::vector<CSGAnimation*>& rvecAnimations) const;
    // The first animation of the name; null when there is none.
    CSGAnimation* FindAnimation(const CQDCompactString& rName) const;
    bool HasAnimation(const CQDCompactString& rName) const { return FindAnimation(rName) != nullptr; }
    // Takes all animations out of the list of top-level objects.
    void ClearAnimations();

  private:
    // A node has been renamed: lets all that animates the set's trees find it.
    void RenameNodeInAnimations(const CQDCompactString& rOldName, const CQDCompactString& rNewName) const;

    std::vector<boost::intrusive_ptr<CSGStreamable>> m_vecTopLevelNodes;
    EUpAxis m_eUpAxis = UP_AXIS_Z;
};
