// Finds nodes of a scene by their names.
#pragma once

#include "qdcommon/CPointerMap.h"
#include "qdscenegraph/node/CSGNode.h"

#include <vector>

// One walk over the scene answers all questions. The scene must not change meanwhile.
class CColladaSceneIndex
{
  public:
    explicit CColladaSceneIndex(CSGNode& rScene);

    // All nodes in document order.
    const std::vector<CSGNode*>& GetNodes() const { return m_vecNodes; }
    bool Contains(const CSGNode* pNode) const { return m_mapNumbers.Find(pNode, NONE) != NONE; }
    // The first node in the tree of a node of the scene, that node included, with the local name; null when
    // there is none.
    CSGNode* FindLocalName(const CSGNode& rRoot, const CQDCompactString& rName) const;
    // The first node of the scene with the global name; null when there is none.
    CSGNode* FindGlobalName(const CQDCompactString& rName) const;

  private:
    static constexpr size_t NONE = static_cast<size_t>(-1);
    // By the characters of the name, which equal names share, then by the number of the node.
    using CNames = std::vector<std::pair<const char*, size_t>>;

    CSGNode* Find(const CNames& rNames, const CQDCompactString& rName, size_t nBegin, size_t nEnd) const;

    std::vector<CSGNode*> m_vecNodes;
    std::vector<size_t> m_vecEnds; // the number behind the last node of each one's tree
    CPointerMap<size_t> m_mapNumbers;
    CNames m_vecLocalNames;
    CNames m_vecGlobalNames;
};
