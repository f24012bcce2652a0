// The names of one tree, looked up once for many references.
#pragma once

#include "qdcommon/CPointerMap.h"
#include "qdcommon/CQDCompactString.h"

class CSGMaterial;
class CSGNode;

// Lives for one piece of work, such as posing all channels of an animation: the tree and the names in it must
// not change meanwhile. The tree is walked at the first question. Where several have a name, the first in
// document order is found; nothing has the empty name.
class CSGRefContext
{
  public:
    explicit CSGRefContext(CSGNode* pRoot) : m_pRoot(pRoot) {}

    // The tree's topmost node: questions from elsewhere are not answered here.
    const CSGNode* GetRoot() const { return m_pRoot; }
    // Null when the tree has none of the name.
    CSGNode* FindNode(const CQDCompactString& rGlobalName);
    CSGMaterial* FindMaterial(const CQDCompactString& rGlobalName);

  private:
    void BuildIndex();

    CSGNode* m_pRoot;
    bool m_bIndexed = false;
    // By the characters of the name, which equal names share.
    CPointerMap<CSGNode*> m_mapNodes;
    CPointerMap<CSGMaterial*> m_mapMaterials;
};
