// The names of a scene graph's nodes, and the ways to them as references take them.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdscenegraph/reference/CSGRefPath.h"

#include <memory_resource>
#include <span>
#include <unordered_map>
#include <vector>

class FbxNode;

// Nodes have the names of those in the file, which need not be unique: where a name alone leads to another
// node, the way goes over nodes further up. Only an animated node that names do not tell from others even so
// (two skeletons side by side, one of them a control rig) gets a number behind its global name.
class CFBXNodePaths
{
  public:
    // All nodes of a scene in document order. The scene must outlive it.
    explicit CFBXNodePaths(std::span<FbxNode* const> arrHierarchy);

    const CQDString& GetGlobalName(const FbxNode& rNode) const { return m_mapNodes.at(&rNode).strName; }
    // From the scene graph to this node of the scene and no other. Null (reported) when there is no way: for
    // nodes alone that no animation moves.
    CSGRefPathPtr CreatePath(const FbxNode& rNode) const;

  private:
    struct CNode
    {
        CQDString strName;
        size_t nPlace = 0;              // in document order
        const FbxNode* pFrom = nullptr; // the node that the way goes over last; null: none
        int nSteps = 0;                 // 0: there is no way
    };

    // Whether the node is the first of its name from a place on.
    bool IsFirst(const CNode& rNode, size_t nFrom) const;
    // Those of the nodes above are known.
    void FindWay(const FbxNode& rFBXNode);
    void GiveName(const FbxNode& rFBXNode, CQDString strName);
    CQDString MakeUniqueName(const CQDString& rName);

    // What the maps consist of lies side by side, and goes at once.
    std::pmr::monotonic_buffer_resource m_objMapMemory;
    std::pmr::unordered_map<const FbxNode*, CNode> m_mapNodes{&m_objMapMemory};
    // Of each name, in document order.
    std::pmr::unordered_map<CQDString, std::pmr::vector<size_t>> m_mapPlaces{&m_objMapMemory};
    std::unordered_map<CQDString, int> m_mapNumbers; // the last one behind each name
};
