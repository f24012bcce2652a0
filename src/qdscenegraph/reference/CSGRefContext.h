// The names of one tree, looked up once for many references.
#pragma once

#include "qdcommon/CPointerMap.h"
#include "qdcommon/CQDCompactString.h"

#include <unordered_map>

class CSGMaterial;
class CSGNode;
class CSGTransform;

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
    // The first of a transform and all that it is made of; null when none has the name. For any transform,
    // also of another tree.
    CSGTransform* FindTransform(CSGTransform* pRoot, const CQDCompactString& rName);

  private:
    void BuildIndex();

    CSGNode* m_pRoot;
    bool m_bIndexed = false;
    // By the characters of the name, which equal names share.
    CPointerMap<CSGNode*> m_mapNodes;
    CPointerMap<CSGMaterial*> m_mapMaterials;
    // Of what is made of many.
    std::unordered_map<const CSGTransform*, CPointerMap<CSGTransform*>> m_mapTransforms;
};
