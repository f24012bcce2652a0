// The state of one copy of a subgraph: what is left out, and which copy stands for which original.
#pragma once

#include "qdcommon/CPointerMap.h"

#include <unordered_set>

class CSGNode;
class CSGObject;

class CSGCopyData
{
  public:
    // Leaves a node with everything below it, or an attachment, out of the copy.
    void Ignore(const CSGObject* pObject) { m_setIgnored.insert(pObject); }
    bool IsIgnored(const CSGObject* pObject) const
    {
        return !m_setIgnored.empty() && m_setIgnored.contains(pObject);
    }

    void AddCopy(const CSGNode* pOriginal, CSGNode* pCopy) { m_mapNodes.Add(pOriginal, pCopy); }
    // Null for a node that was not copied. The copies own each other and live as long as the root of the
    // copy.
    CSGNode* FindCopy(const CSGNode* pOriginal) const { return m_mapNodes.Find(pOriginal, nullptr); }

  private:
    std::unordered_set<const CSGObject*> m_setIgnored;
    CPointerMap<CSGNode*> m_mapNodes;
};
